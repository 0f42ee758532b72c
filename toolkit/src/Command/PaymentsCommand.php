<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Columns;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Keys;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** A command that makes a document for the bank out of a CSV file. */
abstract class PaymentsCommand extends TranslatedCommand
{
    abstract protected function payments(InputInterface $input): Batches;

    /** SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI. */
    abstract protected function kind(): int;

    /** @return array<string, string> value by key, for rows that have none of their own */
    protected function common(InputInterface $input): array
    {
        return [];
    }

    protected function configure(): void
    {
        $this->addArgument('file', InputArgument::OPTIONAL, $this->words->of('argument.table'));
        array_map([$this, 'value'], ['name', 'iban', 'bic']);
        $this->value('rulebook', Rulebook::LATEST);
        array_map([$this, 'value'], ['date', 'message-id']);
        array_map([$this, 'value'], ['category', 'currency']);
        array_map([$this, 'flag'], ['no-bic', 'hybrid', 'single-booking', 'german', 'transliterate', 'shorten']);
        array_map([$this, 'values'], ['address', 'map', 'ignore']);
        $this->flag('template');
        $this->value('output', null, 'o');
        $this->getDefinition()->addOptions(Rows::options($this->words));
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        if ($input->getOption('template')) {
            return $this->writeTemplate($input, $output);
        }
        if ($input->getArgument('file') === null) {
            throw new Failure('no_file', ['command' => (string) $this->getName()]);
        }
        $payments = $this->payments($input);
        $reader = Reader::open($input->getArgument('file'));
        $file = self::output($input);
        self::demandOther($reader, $file === null ? [] : [$file]);
        $isGerman = $input->getOption('german');
        $sheet = new Sheet($reader, $isGerman, $input->getOption('ignore'), $this->map($input), $this->common($input));
        $report = new Report($input, $output, $this->words, $sheet, $file !== null);
        $progress = Progress::ofTable($output, $reader);
        $report->follow($payments, $progress);
        $sheet->fill($payments, $progress);
        $progress->hide();
        $report->end($payments);
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;

        if ($payments->faults()) {
            return $this->refuse($payments, $input, $errors);
        }
        $files = self::names($file, count($payments->messages()));
        self::demandOther($reader, $files);
        $this->deliver($payments, $files, $output, $errors, $input->getOption('message-id') === null);

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

    protected function options(InputInterface $input): Options
    {
        self::oneOf('rulebook', $input, Rulebook::names());
        $date = $input->getOption('date');

        return Options::under($input->getOption('rulebook'))
            ->on($date !== null && $input->getOption('german') ? Sheet::understood('date', $date) : $date)
            ->withMessageId($input->getOption('message-id'))
            ->bookedSingly($input->getOption('single-booking'))
            ->forCategory($input->getOption('category'))
            ->inAccountOf($input->getOption('currency'))
            ->withoutBic($input->getOption('no-bic'))
            ->withHybridAddresses($input->getOption('hybrid'))
            ->transliterating($input->getOption('transliterate'))
            ->shortening($input->getOption('shorten'));
    }

    /** The submitting party with the address that the options tell. */
    protected function located(Party $party, InputInterface $input): Party
    {
        $address = [];
        foreach ($input->getOption('address') as $pair) {
            [$key, $value] = explode('=', $pair, 2) + [1 => null];
            if ($value === null || !isset(Keys::address()[$key])) {
                $keys = implode(', ', array_keys(Keys::address()));
                throw new Failure('address', ['value' => $pair, 'keys' => $keys]);
            }
            $address[$key] = $value;
        }

        return $party->livingAt($address);
    }

    /** @param list<string> $options */
    protected function need(InputInterface $input, array $options): void
    {
        $missing = array_filter($options, static fn (string $option): bool => $input->getOption($option) === null);
        if ($missing) {
            throw new Failure('missing', ['options' => '--' . implode(', --', $missing)]);
        }
    }

    /** @param list<string> $values that an option may have */
    protected static function oneOf(string $option, InputInterface $input, array $values): void
    {
        $value = $input->getOption($option);
        if ($value !== null && !in_array($value, $values, true)) {
            throw new Failure(
                'value',
                ['option' => "--$option", 'value' => $value, 'values' => implode(', ', $values)]
            );
        }
    }

    /** @return array<string, string> key by heading */
    private function map(InputInterface $input): array
    {
        $keys = array_merge(Keys::all($this->kind()), Columns::OWN);
        $map = [];
        foreach ($input->getOption('map') as $pair) {
            // The heading itself may have an equals sign.
            $key = substr((string) strrchr($pair, '='), 1);
            if (!in_array($key, $keys, true)) {
                throw new Failure('map', ['value' => $pair, 'keys' => implode(', ', $keys)]);
            }
            $map[trim(substr($pair, 0, -strlen($key) - 1))] = $key;
        }

        return $map;
    }

    /** The file for the document; null for standard output. */
    private static function output(InputInterface $input): ?string
    {
        $file = $input->getOption('output');
        if ($file === '') {
            throw new Failure('no_output');
        }

        return in_array($file, ['-', '/dev/stdout'], true) ? null : $file;
    }

    private function writeTemplate(InputInterface $input, OutputInterface $output): int
    {
        $table = (new Template($this->kind(), $input->getOption('german')))->text(date('Y-m-d'));
        $file = self::output($input);
        if ($file === null) {
            Rows::write($output, $table);
        } else {
            OutputFile::write([$file => $table]);
        }

        return ExitCode::GOOD;
    }

    /**
     * @param list<string> $files none for standard output
     * @param bool $isNew whether message ids are new
     */
    private function deliver(
        Batches $payments,
        array $files,
        OutputInterface $output,
        OutputInterface $errors,
        bool $isNew
    ): void {
        $replaced = array_filter($files, [OutputFile::class, 'replaces']);
        if ($files) {
            OutputFile::write(array_combine($files, $payments->documents()));
        } else {
            Rows::write($output, $payments->documents()[0]);
        }
        foreach ($payments->messages() as $number => $message) {
            $this->say($errors, 'done', [
                'file' => count($files) > 1 ? $files[$number] : 'none',
                'payments' => count($message),
                'sum' => $message->sum(),
                'rulebook' => $message->rulebook(),
                'message' => $message->messageId(),
            ]);
        }
        foreach ($replaced as $file) {
            $this->say($errors, 'replaced', ['file' => $file, 'new' => $isNew ? 'yes' : 'no']);
        }
    }

    /**
     * Files of several documents: payments-1.xml and so on.
     *
     * @return list<string> none for standard output
     */
    private static function names(?string $file, int $count): array
    {
        if ($count === 1) {
            return $file === null ? [] : [$file];
        }
        // A pipe or a device has no second one, either.
        if ($file === null || (file_exists($file) && !is_file($file))) {
            throw new Failure('many', ['documents' => $count]);
        }
        $ending = pathinfo($file, PATHINFO_EXTENSION);
        $ending = $ending === '' ? '' : ".$ending";
        $start = $ending === '' ? $file : substr($file, 0, -strlen($ending));

        return array_map(static fn (int $number): string => "$start-$number$ending", range(1, $count));
    }

    /** @param list<string> $files none of which may be the table */
    private static function demandOther(Reader $reader, array $files): void
    {
        foreach ($files as $file) {
            if ($reader->reads($file)) {
                throw new Failure('same_file', ['file' => $file]);
            }
        }
    }

    private function refuse(Batches $payments, InputInterface $input, OutputInterface $errors): int
    {
        $this->say($errors, 'refused', ['payments' => count($payments), 'faults' => $payments->faultCount()]);
        $faults = $payments->faults();
        foreach ($this->suggestions($faults) as $option => $isHelpful) {
            if ($isHelpful && $input->hasOption($option) && !$input->getOption($option)) {
                $this->say($errors, "suggest.$option");
            }
        }
        foreach ($faults as $fault) {
            if (Report::option($fault) !== null) {
                return ExitCode::FAILED;
            }
        }

        return ExitCode::REFUSED;
    }

    /**
     * @param list<Fault> $faults
     * @return array<string, bool> options, and whether they would help
     */
    private function suggestions(array $faults): array
    {
        $found = [];
        foreach ($faults as $fault) {
            $place = $fault->row === null
                ? 'party'
                : (Keys::form((string) $fault->key) === Keys::TEXT ? 'text' : 'row');
            $found[$fault->code][$place][(string) $fault->key] = true;
        }
        $lacking = ($found['missing_column']['row'] ?? []) + ($found['missing_column']['text'] ?? []);

        return [
            'map' => $lacking || isset($found['unknown_heading']),
            'ignore' => isset($found['unknown_heading']),
            'german' => isset($found['amount']['row']) || isset($found['date']['row']),
            'transliterate' => isset($found['characters']['text']),
            'shorten' => isset($found['length']['text']) || isset($found['length_characters']['text']),
            'seq' => isset($lacking['seq']) || isset($found['missing']['row']['seq']),
        ];
    }

    /** @param array<string, mixed> $values */
    private function say(OutputInterface $errors, string $id, array $values = []): void
    {
        $errors->writeln(Rows::clean($this->words->of("told.$id", $values)), OutputInterface::OUTPUT_RAW);
    }
}
