<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Language;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Bookings;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

final class StatementCommand extends Command
{
    private string $format;

    private Rows $rows;

    private OutputInterface $output;

    private OutputInterface $errors;

    private Progress $progress;

    private string $language;

    /** @var string the file that was printed last */
    private string $file = '';

    protected function configure(): void
    {
        $this->setName('statement')->setDescription('Reads bank statements (CAMT, MT940)');
        $this->getDefinition()->addArgument(Files::argument('What the bank delivers'));
        $this->getDefinition()->addOptions(Rows::options());
        $this->addOption('german', null, InputOption::VALUE_NONE, 'Write CSV as a German spreadsheet opens it by a double click');
        $this->setHelp(<<<'HELP'
            Prints bookings and balances, what was mended in the files, and whether opening
            balance and bookings come to the closing balance. CSV has a row for a booking,
            JSON a line for a statement.

              <info>sepa statement november.zip</info>
              <info>sepa statement --german november.zip >bookings.csv</info>
              <info>sepa statement --csv statements/ october.sta >bookings.csv</info>
              <info>sepa statement --json november.zip | jq 'select(.balanced | not) | .difference'</info>

            CAMT (camt.052, 053, 054), MT940 and MT942 are told by what is in a file, not by
            its name. Bookings that a bank only announces are in no CSV.

            Exit code: 0 if all is balanced, or has no balances that could prove it; 1 if
            something is not or could not be read; 2 if there is no statement in a file.
            HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $isGerman = (bool) $input->getOption('german');
        if ($isGerman && $input->getOption('json')) {
            throw new Failure('either --german or --json');
        }
        $isGerman && $input->setOption('csv', true);
        $this->format = Rows::format($input);
        $this->rows = $isGerman ? Rows::of($input, $output)->german() : Rows::of($input, $output);
        $this->output = $output;
        $this->errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $this->language = Language::ofCommand($input->hasOption('lang') ? $input->getOption('lang') : null, getenv());
        $this->progress = new Progress($output, null, static fn (): int => 0);
        $this->rows->besides($this->progress);
        $reader = Reader::files(Files::of($input));
        $worst = ExitCode::GOOD;
        $read = [];
        foreach ($reader as $statement) {
            $read[$statement->file] = true;
            $worst = $statement->isGood() ? $worst : ExitCode::REFUSED;
            $this->show($statement);
            unset($statement);
        }
        $this->progress->hide();
        $this->rows->flush();
        $this->tell($reader->hints());
        $this->tell($reader->faults());
        foreach ($reader->faults() as $fault) {
            $worst = max($worst, isset($read[$fault->file]) ? ExitCode::REFUSED : ExitCode::FAILED);
        }

        return $read ? $worst : ExitCode::FAILED;
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        Files::complete($input, $suggestions);
    }

    private function show(Statement $statement): void
    {
        if ($this->format === Rows::JSON) {
            self::writeJson($this->output, $statement, $this->progress);
        } elseif ($this->format === Rows::CSV) {
            self::addRecords($this->rows, $statement, $this->progress);
            $this->tell(array_merge($statement->faults, $statement->hints), $statement->file);
        } else {
            $this->print($statement);
        }
    }

    /** @param list<Note> $notes */
    private function tell(array $notes, string $file = ''): void
    {
        foreach ($notes as $note) {
            $text = 'sepa: ' . Files::told($note, $note->file === '' ? $file : $note->file, $this->language);
            $this->errors->writeln(Rows::clean($text), OutputInterface::OUTPUT_RAW);
        }
    }

    /** One line, booking by booking: a statement may have a million of them. */
    private static function writeJson(OutputInterface $output, Statement $statement, Progress $progress): void
    {
        $line = substr((string) json_encode($statement->head(), Rows::JSON_FLAGS), 0, -1);
        foreach (['transactions' => $statement->bookings, 'pending' => $statement->pending] as $key => $bookings) {
            $line .= ",\"$key\":[";
            $separator = '';
            foreach ($bookings as $booking) {
                $line .= $separator . json_encode($booking, Rows::JSON_FLAGS);
                $separator = ',';
                $progress();
                if (strlen($line) > Rows::BUFFER) {
                    Rows::write($output, $line);
                    $line = '';
                }
            }
            $line .= ']';
        }
        Rows::write($output, "$line}\n");
    }

    private static function addRecords(Rows $rows, Statement $statement, Progress $progress): void
    {
        foreach ($statement->bookings as $booking) {
            $record = [
                'account' => $statement->account,
                'number' => $statement->number,
                'balanced' => $statement->balanced,
                'valuta' => $booking->valuta,
                'booked' => $booking->booked,
                'amount' => $booking->amount,
                'currency' => $statement->currency,
                'reversal' => $booking->reversal,
                'name' => $booking->name,
                'other_account' => $booking->account,
                'other_bank' => $booking->bank,
                'remittance' => $booking->remittance(),
                'eref' => $booking->eref,
                'mref' => $booking->mref,
                'gvc' => $booking->gvc,
                'reason' => $booking->reason,
                'file' => $statement->file === '-' ? '' : $statement->file,
            ];
            $rows->add($record, static function (): array {
                return [];
            });
            $progress();
        }
    }

    private function print(Statement $statement): void
    {
        $this->progress->hide();
        if ($statement->file !== $this->file && $statement->file !== '-') {
            $this->line($this->file = $statement->file);
        }
        $number = $statement->number === null ? '' : " no. $statement->number" . ($statement->page === null ? '' : "/$statement->page");
        $this->line("$statement->account$number");
        $statement->opening && $this->line('  opening balance  ' . self::balance($statement->opening));
        $this->table($statement->bookings, $statement->opening ? $statement->opening->amount : null);
        $statement->closing && $this->line('  closing balance  ' . self::balance($statement->closing));
        if (count($statement->pending) > 0) {
            $this->line('  announced, not booked');
            $this->table($statement->pending, null);
        }
        if (!$statement->balanced && ($statement->hasBalances() || !$statement->isGood())) {
            $this->line('  NOT BALANCED' . ($statement->difference === null ? '' : ' by ' . self::money($statement->difference)));
        }
        foreach (['fault' => $statement->faults, 'note' => $statement->hints, 'mended' => $statement->mended] as $kind => $notes) {
            foreach ($notes as $note) {
                $this->line($this->note($kind, $note));
            }
        }
        $this->line('');
    }

    private function table(Bookings $bookings, ?Amount $balance): void
    {
        foreach ($bookings as $booking) {
            $balance = $balance === null ? null : $balance->plus($booking->amount);
            $this->rows->add([], static function () use ($booking, $balance): array {
                return self::cells($booking, $balance);
            });
            ($this->progress)();
        }
        $this->rows->flush();
    }

    /** @return array<string, string> */
    private static function cells(Booking $booking, ?Amount $balance): array
    {
        $payments = $booking->payments ?? count($booking->parts());

        return [
            'booked' => self::day($booking->booked ?? $booking->valuta),
            'name' => $booking->name ?? ($payments > 1 ? "$payments payments" : ''),
            'for' => $booking->remittance(),
            'amount' => self::money($booking->amount) . ($booking->reversal ? ' (reversal)' : ''),
            'balance' => $balance === null ? '' : self::money($balance),
        ];
    }

    private function note(string $kind, Note $note): string
    {
        $place = $note->place($this->language);

        return "  $kind" . ($place === '' ? '' : ", $place") . ($note->count > 1 ? ", $note->count times" : '') . ': ' . $note->text($this->language);
    }

    private static function balance(Balance $balance): string
    {
        return self::day($balance->date) . '  ' . self::money($balance->amount) . ' ' . $balance->amount->currency;
    }

    /** As German statements print it. */
    private static function money(Amount $amount): string
    {
        return $amount->text(',', '.');
    }

    private static function day(?\DateTimeInterface $date): string
    {
        return $date === null ? '' : $date->format('Y-m-d');
    }

    private function line(string $text): void
    {
        Rows::write($this->output, Rows::clean($text) . "\n");
    }
}
