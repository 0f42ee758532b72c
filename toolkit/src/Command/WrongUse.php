<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Symfony\Component\Console\Exception\CommandNotFoundException;
use Symfony\Component\Console\Exception\ExceptionInterface;

/** What Symfony's Console says of wrong use, in the language of the commands. */
final class WrongUse
{
    /** Its sentences, and the texts here. */
    private const SENTENCES = [
        '/^The "(?<what>.*)" option does not exist\.$/s' => 'option',
        '/^The "(?<what>.*)" option requires a value\.$/s' => 'option_value',
        '/^The "(?<what>.*)" option does not accept a value\.$/s' => 'option_no_value',
        '/^Too many arguments to "(?<what>\w+)" command/' => 'arguments',
    ];

    private Words $words;

    public function __construct(Words $words)
    {
        $this->words = $words;
    }

    public function text(ExceptionInterface $e): string
    {
        if ($e instanceof CommandNotFoundException) {
            preg_match('/"(.*)"/s', $e->getMessage(), $name);
            $values = ['what' => $name[1] ?? '', 'alternatives' => implode(', ', $e->getAlternatives()) ?: 'none'];

            return $this->words->of('usage.command', $values);
        }
        foreach (self::SENTENCES as $sentence => $id) {
            if (preg_match($sentence, $e->getMessage(), $part)) {
                return $this->words->of("usage.$id", ['what' => $part['what']]);
            }
        }

        return $e->getMessage();
    }
}
