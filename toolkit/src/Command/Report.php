<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Findings;
use Sepa\Toolkit\Payment\Keys;
use Sepa\Toolkit\Payment\Receiver;
use Sepa\Toolkit\Payment\Sheet;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;
use Symfony\Component\Console\Output\StreamOutput;

/** Tells what was found in the payments of a table: all to programs, the first of each kind to people. */
final class Report
{
    /** Findings of one code in one column that people see. */
    private const SHOWN = 20;

    /** Unknown headings are one kind, though each is a column of its own. */
    private const HEADING = 'unknown_heading';

    /** Options that give what the submitting party is asked for, by key of its faults. */
    private const PARTY = [
        'name' => 'name', 'iban' => 'iban', 'bic' => 'bic', 'creditorId' => 'creditor-id', 'type' => 'type',
        'date' => 'date', 'messageId' => 'message-id', 'instant' => 'instant', 'at' => 'at', 'category' => 'category',
        'priority' => 'priority', 'currency' => 'currency', 'hybrid' => 'hybrid', 'rulebook' => 'rulebook',
    ];

    private OutputInterface $output;

    private OutputInterface $errors;

    /** @var StreamOutput|null what waits until it is known whether standard output is for a document */
    private ?StreamOutput $spool = null;

    private bool $isForPeople;

    private Rows $rows;

    private Words $words;

    private Sheet $sheet;

    private bool $german;

    /** @param bool $hasFile whether the document has a file of its own */
    public function __construct(
        InputInterface $input,
        OutputInterface $output,
        Words $words,
        Sheet $sheet,
        bool $hasFile
    ) {
        $this->output = $output;
        $this->errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $this->words = $words;
        $this->sheet = $sheet;
        $this->german = $input->getOption('german');
        $this->isForPeople = Rows::format($input) === Rows::TABLE;
        if (!$this->isForPeople && !$hasFile) {
            $this->spool = new StreamOutput(fopen('php://memory', 'w+b'));
        }
        $this->rows = Rows::of($input, $this->isForPeople ? $this->errors : $this->spool ?? $output, $words);
    }

    /** Tells programs whatever is found, as it is found. */
    public function follow(Receiver $payments, Progress $progress): void
    {
        if ($this->isForPeople) {
            return;
        }
        $this->rows->besides($progress);
        $payments->tell(function (string $severity, Fault $fault): void {
            $this->record($severity, $fault);
        });
    }

    /** Tells people what was found, and programs what is wrong with the message as a whole. */
    public function end(Receiver $payments): void
    {
        if ($this->isForPeople) {
            $this->print($payments);
        } else {
            $known = count($payments->findings()['fault']->kept());
            foreach (array_slice($payments->faults(), $known) as $fault) {
                $this->record('fault', $fault);
            }
        }
        $this->rows->flush();
        if ($this->spool !== null) {
            $stream = $this->spool->getStream();
            $output = $payments->faults() ? $this->output : $this->errors;
            rewind($stream);
            while (!feof($stream)) {
                Rows::write($output, (string) fread($stream, Rows::BUFFER));
            }
        }
    }

    private function print(Receiver $payments): void
    {
        $all = ['fault' => $payments->faults(), 'warning' => $payments->warnings(), 'change' => $payments->changes()];
        foreach ($all as $severity => $found) {
            $this->printFirst($severity, $found, $payments->findings()[$severity]);
        }
    }

    /** @param list<Fault> $found */
    private function printFirst(string $severity, array $found, Findings $findings): void
    {
        $left = $findings->counts();
        if (isset($left[self::HEADING])) {
            $left[self::HEADING] = ['' => array_sum($left[self::HEADING])];
        }
        $shown = [];
        $hints = [];
        foreach ($found as $fault) {
            $key = $fault->code === self::HEADING ? '' : (string) $fault->key;
            $number = $shown[$fault->code][$key] = ($shown[$fault->code][$key] ?? 0) + 1;
            if ($number <= self::SHOWN) {
                $hint = $fault->hint($this->words->locale, $this->german);
                // Twenty times the same is not read twenty times.
                $isNew = ($hints[$fault->code][$key] ?? null) !== $hint;
                $hints[$fault->code][$key] = $hint;
                $text = $fault->text($this->words->locale);
                $this->cells($severity, $fault->row, $this->label($fault), $text, $isNew ? $hint : '');
                $left[$fault->code][$key] = ($left[$fault->code][$key] ?? 1) - 1;
            } elseif ($number === self::SHOWN + 1) {
                $this->printMore($severity, $key === '' ? '' : $this->label($fault), $left[$fault->code][$key]);
                $left[$fault->code][$key] = 0;
            }
        }
        // Columns of which nothing is kept, since others had so many faults of the code.
        foreach ($left as $keys) {
            foreach (array_filter($keys) as $key => $more) {
                $this->printMore($severity, $this->sheet->heading((string) $key) ?? (string) $key, $more);
            }
        }
    }

    private function printMore(string $severity, string $column, int $more): void
    {
        $this->cells($severity, null, $column, $this->words->of('told.more', ['more' => $more]), '');
    }

    private function cells(string $severity, ?int $row, string $column, string $reason, string $hint): void
    {
        $this->rows->add([], fn (): array => [
            'severity' => $this->words->word('severity', $severity),
            'row' => (string) $row,
            'column' => $column,
            'reason' => $reason,
            'hint' => $hint,
        ]);
    }

    private function record(string $severity, Fault $fault): void
    {
        $this->rows->add([
            'severity' => $severity,
            'row' => $fault->row,
            'column' => $this->column($fault),
            'key' => $fault->key,
            'code' => $fault->code,
            'reason' => $fault->text(),
            'hint' => $fault->hint('en', $this->german),
        ], static fn (): array => []);
    }

    /** The heading or the option, else the key. */
    private function column(Fault $fault): ?string
    {
        return self::option($fault) ?? $this->sheet->heading((string) $fault->key) ?? $fault->key;
    }

    /** The option that a fault of the submitting party is about. */
    public static function option(Fault $fault): ?string
    {
        if ($fault->row !== null || $fault->key === null) {
            return null;
        }
        if (isset(Keys::address()[$fault->key])) {
            return "--address $fault->key";
        }

        return isset(self::PARTY[$fault->key]) ? '--' . self::PARTY[$fault->key] : null;
    }

    /** A key without a column by its name. */
    private function label(Fault $fault): string
    {
        $column = (string) $this->column($fault);
        $isKey = $column === $fault->key && $this->sheet->heading($column) === null;

        return $isKey ? Keys::label($column, $this->words->locale) : $column;
    }
}
