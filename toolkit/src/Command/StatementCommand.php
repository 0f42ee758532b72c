<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\StreamableInputInterface;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

final class StatementCommand extends Command
{
    protected function configure(): void
    {
        $this->setName('statement')->setDescription('Reads bank statements (MT940)');
        $this->addArgument('file', InputArgument::REQUIRED, 'File as the bank exports it; - for standard input');
        $this->getDefinition()->addOptions(Rows::options());
        $this->setHelp(<<<'HELP'
            Prints bookings and balances, what was mended in the file, and whether opening
            balance and bookings come to the closing balance. CSV has a row for a booking,
            JSON a line for a statement.

              <info>sepa statement november.sta</info>
              <info>sepa statement --csv november.sta >bookings.csv</info>
              <info>sepa statement --json november.sta | jq 'select(.balanced | not) | .difference'</info>

            Exit code: 0 if all is balanced, 1 if something is not or could not be read,
            2 if there is no statement.
            HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $format = Rows::format($input);
        $rows = Rows::of($input, $output);
        $stream = $this->open($input);
        $size = fstat($stream)['size'] ?? 0;
        $progress = new Progress($output, $size ?: null, static function () use ($stream): int {
            return (int) ftell($stream);
        });
        $rows->besides($progress);
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $count = 0;
        $isGood = true;
        $reader = Reader::stream($stream);
        foreach ($reader as $statement) {
            ++$count;
            $isGood = $isGood && $statement->isGood();
            if ($format === Rows::JSON) {
                self::writeJson($output, $statement, $progress);
            } elseif ($format === Rows::CSV) {
                self::addRecords($rows, $statement, $progress);
                self::tell($errors, $input, $statement->faults);
            } else {
                self::print($output, $rows, $statement, $progress);
            }
        }
        $progress->hide();
        $rows->flush();
        self::tell($errors, $input, $reader->faults());
        if ($count === 0) {
            return ExitCode::FAILED;
        }

        return $isGood && !$reader->faults() ? ExitCode::GOOD : ExitCode::REFUSED;
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('file')) {
            $suggestions->suggestValues(glob($input->getCompletionValue() . '*', GLOB_MARK) ?: []);
        }
    }

    /** @return resource */
    private function open(InputInterface $input)
    {
        $file = $input->getArgument('file');
        if ($file === '-') {
            return ($input instanceof StreamableInputInterface ? $input->getStream() : null) ?? STDIN;
        }
        $stream = is_dir($file) ? false : @fopen($file, 'rb');
        if ($stream === false) {
            throw new Failure("cannot read $file");
        }

        return $stream;
    }

    /** @param list<Note> $faults */
    private static function tell(OutputInterface $errors, InputInterface $input, array $faults): void
    {
        foreach ($faults as $fault) {
            $text = "sepa: {$input->getArgument('file')}, line $fault->line: $fault->text";
            $errors->writeln(Rows::clean($text), OutputInterface::OUTPUT_RAW);
        }
    }

    /** One line, booking by booking: a statement may have a million of them. */
    private static function writeJson(OutputInterface $output, Statement $statement, Progress $progress): void
    {
        $line = substr((string) json_encode($statement->head(), Rows::JSON_FLAGS), 0, -1) . ',"transactions":[';
        $separator = '';
        foreach ($statement->bookings as $booking) {
            $line .= $separator . json_encode($booking, Rows::JSON_FLAGS);
            $separator = ',';
            $progress();
            if (strlen($line) > Rows::BUFFER) {
                Rows::write($output, $line);
                $line = '';
            }
        }
        Rows::write($output, "$line]}\n");
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
            ];
            $rows->add($record, static function (): array {
                return [];
            });
            $progress();
        }
    }

    private static function print(OutputInterface $output, Rows $rows, Statement $statement, Progress $progress): void
    {
        $progress->hide();
        $number = $statement->number === null ? '' : " no. $statement->number" . ($statement->page === null ? '' : "/$statement->page");
        self::line($output, "$statement->account$number");
        self::line($output, '  opening balance  ' . self::balance($statement->opening));
        $balance = $statement->opening === null ? null : $statement->opening->amount;
        foreach ($statement->bookings as $booking) {
            $balance = $balance === null ? null : $balance->plus($booking->amount);
            $rows->add([], static function () use ($booking, $balance): array {
                return self::cells($booking, $balance);
            });
            $progress();
        }
        $rows->flush();
        self::line($output, '  closing balance  ' . self::balance($statement->closing));
        if (!$statement->balanced) {
            $difference = $statement->difference === null ? '' : ' by ' . self::money($statement->difference);
            self::line($output, "  NOT BALANCED$difference");
        }
        foreach (['fault' => $statement->faults, 'mended' => $statement->mended] as $kind => $notes) {
            foreach ($notes as $note) {
                self::line($output, self::note($kind, $note));
            }
        }
        self::line($output, '');
    }

    /** @return array<string, string> */
    private static function cells(Booking $booking, ?Amount $balance): array
    {
        return [
            'booked' => self::day($booking->booked ?? $booking->valuta),
            'name' => (string) $booking->name,
            'for' => $booking->remittance(),
            'amount' => self::money($booking->amount) . ($booking->reversal ? ' (reversal)' : ''),
            'balance' => $balance === null ? '' : self::money($balance),
        ];
    }

    private static function note(string $kind, Note $note): string
    {
        return "  $kind, line $note->line" . ($note->count > 1 ? ", $note->count times" : '') . ": $note->text";
    }

    private static function balance(?Balance $balance): string
    {
        return $balance === null ? 'missing' : self::day($balance->date) . '  ' . self::money($balance->amount) . ' ' . $balance->amount->currency;
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

    private static function line(OutputInterface $output, string $text): void
    {
        Rows::write($output, Rows::clean($text) . "\n");
    }
}
