<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** A command that makes a document for the bank out of a CSV file. */
abstract class PaymentsCommand extends Command
{
    /** Options that give what the submitting party is asked for, by key of its faults. */
    private const PARTY = [
        'name' => 'name', 'iban' => 'iban', 'bic' => 'bic', 'creditorId' => 'creditor-id', 'type' => 'type',
        'date' => 'date', 'messageId' => 'message-id',
    ];

    abstract protected function payments(InputInterface $input): Payments;

    protected function configure(): void
    {
        $required = InputOption::VALUE_REQUIRED;
        $this->addArgument('file', InputArgument::REQUIRED, 'CSV file with a row of headings; - for standard input');
        $this->addOption('name', null, $required, 'Your name');
        $this->addOption('iban', null, $required, 'Your IBAN');
        $this->addOption('bic', null, $required, "Your bank's BIC");
        $this->addOption('rulebook', null, $required, implode(', ', Rulebook::names()), Rulebook::LATEST);
        $this->addOption('date', null, $required, 'Day for rows without one, such as 2026-12-31; today without');
        $this->addOption('message-id', null, $required, 'Id of the message, at most 30 characters; generated without');
        $this->addOption('single-booking', null, InputOption::VALUE_NONE, 'One booking for each payment instead of one for all');
        $this->addOption('german', null, InputOption::VALUE_NONE, 'Read amounts such as 1.190,00 and dates such as 31.12.2026');
        $this->addOption('transliterate', null, InputOption::VALUE_NONE, 'Replace characters that are not allowed, and tell them');
        $this->addOption('ignore', null, $required | InputOption::VALUE_IS_ARRAY, 'Heading of a column that is not for the bank');
        $this->addOption('output', 'o', $required, 'File for the document; standard output without');
        $this->getDefinition()->addOptions(Rows::options());
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $payments = $this->payments($input);
        $reader = Reader::open($input->getArgument('file'));
        $file = self::output($input, $reader);
        $sheet = new Sheet($reader, $input->getOption('german'), $input->getOption('ignore'));
        $progress = Progress::ofTable($output, $reader);
        $sheet->fill($payments, $progress);
        $progress->hide();

        $format = Rows::format($input);
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $faults = $payments->faults();
        // Standard output is for the document, if there is one and no file for it.
        $toErrors = $format === Rows::TABLE || (!$faults && $file === null);
        $report = Rows::of($input, $toErrors ? $errors : $output);
        foreach (['fault' => $faults, 'warning' => $payments->warnings()] as $severity => $found) {
            foreach ($found as $fault) {
                self::report($report, $severity, $fault, $sheet);
            }
        }
        foreach ($payments->changes() as $change) {
            self::report($report, 'change', $change, $sheet);
        }
        $report->flush();
        if ($faults) {
            $errors->writeln(sprintf('payments: %d, faults: %d, no document was written', count($payments), $payments->faultCount()));
            $this->suggest($faults, $input, $errors);

            return self::isUsage($faults) ? ExitCode::FAILED : ExitCode::REFUSED;
        }
        $isReplaced = $file !== null && OutputFile::replaces($file);
        $this->deliver($payments, $file, $output);
        $summary = sprintf(
            'payments: %d, %s EUR, rulebook %s, message %s',
            count($payments),
            $payments->sum(),
            $payments->rulebook(),
            $payments->messageId()
        );
        $errors->writeln(Rows::clean($summary), OutputInterface::OUTPUT_RAW);
        if ($isReplaced) {
            $new = $input->getOption('message-id') === null ? ' The message id is new: to the bank this is another message.' : '';
            $errors->writeln(Rows::clean("$file was there and is replaced.$new"), OutputInterface::OUTPUT_RAW);
        }

        return ExitCode::GOOD;
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestOptionValuesFor('rulebook')) {
            $suggestions->suggestValues(Rulebook::names());
        }
        if ($input->mustSuggestArgumentValuesFor('file') || $input->mustSuggestOptionValuesFor('output')) {
            $suggestions->suggestValues(glob($input->getCompletionValue() . '*', GLOB_MARK) ?: []);
        }
    }

    protected static function options(InputInterface $input): Options
    {
        return Options::under($input->getOption('rulebook'))
            ->on($input->getOption('date'))
            ->withMessageId($input->getOption('message-id'))
            ->bookedSingly($input->getOption('single-booking'))
            ->transliterating($input->getOption('transliterate'));
    }

    /** @param list<string> $options */
    protected static function need(InputInterface $input, array $options): void
    {
        $missing = array_filter($options, static function (string $option) use ($input): bool {
            return $input->getOption($option) === null;
        });
        if ($missing) {
            throw new Failure('missing: --' . implode(', --', $missing));
        }
    }

    /** The file for the document; null for standard output. */
    private static function output(InputInterface $input, Reader $reader): ?string
    {
        $file = $input->getOption('output');
        if ($file === '') {
            throw new Failure('--output needs the name of a file');
        }
        if ($file !== null && $reader->reads($file)) {
            throw new Failure("$file is the file that is read: give the document another name");
        }

        return in_array($file, ['-', '/dev/stdout'], true) ? null : $file;
    }

    private function deliver(Payments $payments, ?string $file, OutputInterface $output): void
    {
        $document = $payments->document();
        if ($file === null) {
            Rows::write($output, $document);
        } else {
            OutputFile::write([$file => $document]);
        }
    }

    private static function report(Rows $rows, string $severity, Fault $fault, Sheet $sheet): void
    {
        $option = self::PARTY[$fault->key ?? ''] ?? null;
        $column = $fault->row === null && $option !== null ? "--$option" : $sheet->heading((string) $fault->key) ?? $fault->key;
        $record = [
            'severity' => $severity,
            'row' => $fault->row,
            'column' => $column,
            'key' => $fault->key,
            'code' => $fault->code,
            'reason' => $fault->text(),
            'hint' => $fault->hint(),
        ];
        $rows->add($record, static function () use ($record): array {
            return array_map('strval', array_diff_key($record, ['key' => 0, 'code' => 0]));
        });
    }

    /** @param list<Fault> $faults */
    private function suggest(array $faults, InputInterface $input, OutputInterface $errors): void
    {
        $codes = array_column($faults, 'code');
        if (in_array('unknown_heading', $codes, true)) {
            $errors->writeln('--ignore leaves out a column that is not for the bank.');
        }
        $inRows = array_column(array_filter($faults, static function (Fault $fault): bool {
            return $fault->row !== null;
        }), 'code');
        if (array_intersect(['amount', 'date'], $inRows) && !$input->getOption('german')) {
            $errors->writeln('--german reads amounts such as 1.190,00 and dates such as 31.12.2026.');
        }
        if (in_array('characters', $codes, true) && !$input->getOption('transliterate')) {
            $errors->writeln('--transliterate replaces characters that are not allowed in names and texts.');
        }
    }

    /** @param list<Fault> $faults */
    private static function isUsage(array $faults): bool
    {
        foreach ($faults as $fault) {
            if ($fault->row === null && isset(self::PARTY[$fault->key ?? ''])) {
                return true;
            }
        }

        return false;
    }
}
