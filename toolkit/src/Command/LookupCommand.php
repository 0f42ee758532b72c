<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Csv\Headings;
use Sepa\Toolkit\Csv\Reader;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Input\StreamableInputInterface;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** A command that answers row by row, for arguments or a table on standard input. */
abstract class LookupCommand extends TranslatedCommand
{
    /** Rows in which a column without a known heading is looked for. */
    private const PEEK = 2;

    /** Endings of names of tables, which nobody looks up. */
    private const TABLES = '/\.(csv|tsv|txt|xlsx?|ods)$/Di';

    /** @return list<string> what a row has for a question */
    abstract protected function keys(): array;

    /** Whether a cell looks like what a key stands for. */
    abstract protected function looksLike(string $key, string $cell): bool;

    /**
     * @param list<string> $question in the order of keys()
     * @return bool whether it was answered
     */
    abstract protected function answer(array $question, Rows $rows): bool;

    protected function configure(): void
    {
        $names = ['names' => $this->names()];
        $many = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $this->addArgument('values', InputArgument::IS_ARRAY, $this->words->of('argument.values', $names));
        $this->addOption('column', 'c', $many, $this->words->of('option.column', $names));
        $this->getDefinition()->addOptions(Rows::options($this->words));
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $rows = Rows::of($input, $output, $this->words);
        $refused = 0;
        $arguments = $input->getArgument('values');
        if ($arguments) {
            $this->refuseFiles($arguments);
            $questions = array_chunk($arguments, count($this->keys()));
            if (count(end($questions)) !== count($this->keys())) {
                throw new Failure('pairs', ['names' => $this->names()]);
            }
            foreach ($questions as $question) {
                $refused += $this->answer($question, $rows) ? 0 : 1;
            }
            $rows->flush();

            return $refused ? ExitCode::REFUSED : ExitCode::GOOD;
        }

        $stream = $input instanceof StreamableInputInterface ? $input->getStream() : null;
        $reader = new Reader($stream ?? STDIN, 'standard input');
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        if ($stream === null && stream_isatty(STDIN)) {
            $errors->writeln($this->words->of('told.type'));
        }
        $progress = Progress::ofTable($output, $reader);
        $rows->besides($progress);
        $count = 0;
        try {
            foreach ($this->questions($reader, $input->getOption('column')) as $question) {
                ++$count;
                $refused += $this->answer($question, $rows) ? 0 : 1;
                $progress();
            }
        } finally {
            // What was read before a fault of the file is answered.
            $progress->hide();
            $rows->flush();
        }
        if (Rows::format($input) === Rows::TABLE) {
            $errors->writeln($this->words->of('told.rows', ['rows' => $count, 'refused' => $refused]));
        }

        return $refused ? ExitCode::REFUSED : ExitCode::GOOD;
    }

    /** @param list<string> $arguments */
    private function refuseFiles(array $arguments): void
    {
        foreach ($arguments as $argument) {
            if (is_file($argument) || preg_match(self::TABLES, $argument)) {
                throw new Failure('is_file', ['file' => $argument, 'command' => (string) $this->getName()]);
            }
        }
    }

    /**
     * @param list<string> $named headings
     * @return \Generator<list<string>>
     */
    private function questions(Reader $reader, array $named): \Generator
    {
        $columns = null;
        $peeked = [];
        foreach ($reader as $cells) {
            if (implode('', $cells) === '') {
                continue;
            }
            if ($columns !== null) {
                yield self::pick($cells, $columns);
                continue;
            }
            $peeked[] = $cells;
            $columns = $this->columns($peeked, $named);
            if ($columns !== null) {
                foreach ($peeked as $early) {
                    yield self::pick($early, $columns);
                }
            }
        }
        if ($columns === null && $peeked) {
            throw $this->noColumn($peeked[0]);
        }
    }

    /**
     * @param list<list<string>> $peeked first rows; a row of headings is taken off
     * @param list<string> $named
     * @return list<int>|null null if another row is needed to tell
     */
    private function columns(array &$peeked, array $named): ?array
    {
        $first = $peeked[0];
        $columns = $this->namedColumns($first, $named);
        if ($columns !== null) {
            array_shift($peeked);

            return $columns;
        }
        foreach ($peeked as $number => $cells) {
            $columns = $this->guess($cells);
            if ($columns !== null) {
                $peeked = array_slice($peeked, $number);

                return $columns;
            }
        }
        if (count($first) === 1 && count($this->keys()) === 1) {
            return [0];
        }
        if (count($peeked) === self::PEEK) {
            throw $this->noColumn($first);
        }

        return null;
    }

    /**
     * @param list<string> $headings
     * @param list<string> $named
     * @return list<int>|null
     */
    private function namedColumns(array $headings, array $named): ?array
    {
        if ($named) {
            $columns = array_map(static function (string $name) use ($headings) {
                return array_search($name, $headings, true);
            }, $named);
            if (in_array(false, $columns, true) || count($named) !== count($this->keys())) {
                throw $this->noColumn($headings);
            }

            return $columns;
        }
        $columns = [];
        foreach ($this->keys() as $key) {
            foreach ($headings as $column => $heading) {
                if (Headings::key($heading, [$key]) !== null) {
                    $columns[] = $column;
                    break;
                }
            }
        }

        return count($columns) === count($this->keys()) ? $columns : null;
    }

    /**
     * The columns, if there is no doubt: a wrong account number could make a valid IBAN.
     *
     * @param list<string> $cells
     * @return list<int>|null
     */
    private function guess(array $cells): ?array
    {
        $columns = [];
        foreach ($this->keys() as $key) {
            $alike = array_keys(array_filter($cells, function (string $cell) use ($key): bool {
                return $this->looksLike($key, $cell);
            }));
            if (count($alike) !== 1) {
                return null;
            }
            $columns[] = $alike[0];
        }

        return $columns;
    }

    /** The keys as people call them: they and the examples of --column go together. */
    private function names(): string
    {
        $names = array_map(fn (string $key): string => $this->words->word('key', $key), $this->keys());

        return implode($this->words->of('key.and'), $names);
    }

    /** @param list<string> $headings */
    private function noColumn(array $headings): Failure
    {
        $headings = array_map([Rows::class, 'clean'], $headings);

        return new Failure('no_column', ['names' => $this->names(), 'headings' => implode("', '", $headings)]);
    }

    /**
     * @param list<string> $cells
     * @param list<int> $columns
     * @return list<string>
     */
    private static function pick(array $cells, array $columns): array
    {
        return array_map(static function (int $column) use ($cells): string {
            return $cells[$column] ?? '';
        }, $columns);
    }
}
