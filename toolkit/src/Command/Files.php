<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Statement\Note;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\StreamableInputInterface;

/** The files of a bank that a command reads: names, folders, archives, or standard input. */
final class Files
{
    /** @param string $what id in the group "argument" */
    public static function argument(string $what, Words $words): InputArgument
    {
        return new InputArgument(
            'file',
            InputArgument::REQUIRED | InputArgument::IS_ARRAY,
            $words->of("argument.$what")
        );
    }

    /**
     * @return list<string|resource>
     * @throws Failure if one cannot be opened
     */
    public static function of(InputInterface $input, Words $words): array
    {
        $files = [];
        foreach ($input->getArgument('file') as $file) {
            if ($file === '-') {
                $files[] = ($input instanceof StreamableInputInterface ? $input->getStream() : null) ?? STDIN;
                continue;
            }
            // Better now than in the middle of what is written.
            $stream = is_dir($file) ? null : @fopen($file, 'rb');
            if ($stream === false) {
                throw Failure::ofSystem('cannot_read', $file);
            }
            $stream === null || fclose($stream);
            $files[] = $file;
        }

        return $files;
    }

    public static function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('file')) {
            $suggestions->suggestValues(glob($input->getCompletionValue() . '*', GLOB_MARK) ?: []);
        }
    }

    /** What a note says of a file, in one line. */
    public static function told(Note $note, string $file, string $language): string
    {
        $place = $note->place($language);

        return ($file === '' ? '' : $file . ($place === '' ? '' : ', '))
            . $place
            . ($file . $place === '' ? '' : ': ')
            . $note->text($language);
    }
}
