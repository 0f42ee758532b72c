<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Report\Words as Codes;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Bookings;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

final class StatementCommand extends TranslatedCommand
{
    private string $format;

    private Rows $rows;

    private OutputInterface $output;

    private OutputInterface $errors;

    private Progress $progress;

    /** @var string the file that was printed last */
    private string $file = '';

    protected function configure(): void
    {
        $this->describe('statement');
        $this->getDefinition()->addArgument(Files::argument('statements', $this->words));
        $this->getDefinition()->addOptions(Rows::options($this->words));
        $this->addOption('german', null, InputOption::VALUE_NONE, $this->words->of('option.german-csv'));
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $isGerman = (bool) $input->getOption('german');
        if ($isGerman && $input->getOption('json')) {
            throw new Failure($this->words->of('statement.formats'));
        }
        $isGerman && $input->setOption('csv', true);
        $this->format = Rows::format($input);
        $this->rows = Rows::of($input, $output, $this->words);
        $isGerman && $this->rows->german();
        $this->output = $output;
        $this->errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $this->progress = new Progress($output, null, static fn (): int => 0);
        $this->rows->besides($this->progress);
        $reader = Reader::files(Files::of($input, $this->words));
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
            $off = self::isOff($statement) ? $this->off($statement) : '';
            if ($off !== '') {
                $this->errors->writeln(
                    Rows::clean(trim("sepa: $statement->file") . ": $statement->account: $off"),
                    OutputInterface::OUTPUT_RAW
                );
            }
        } else {
            $this->print($statement);
        }
    }

    /** @param list<Note> $notes */
    private function tell(array $notes, string $file = ''): void
    {
        foreach ($notes as $note) {
            $text = 'sepa: ' . Files::told($note, $note->file === '' ? $file : $note->file, $this->words->locale);
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
            $rows->add(self::record($statement, $booking), static function (): array {
                return [];
            });
            $progress();
        }
    }

    /** @return array<string, mixed> what CSV has of a booking, for Rows */
    public static function record(Statement $statement, Booking $booking): array
    {
        return [
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
    }

    private function print(Statement $statement): void
    {
        $this->progress->hide();
        if ($statement->file !== $this->file && $statement->file !== '-') {
            $this->line($this->file = $statement->file);
        }
        $number = $statement->number === null
            ? ''
            : "$statement->number" . ($statement->page === null ? '' : "/$statement->page");
        $this->line(
            trim($statement->account . ' ' . ($number === '' ? '' : $this->say('number', ['number' => $number])))
        );
        $statement->opening && $this->balance('opening', $statement->opening);
        $this->table($statement->bookings, $statement->opening ? $statement->opening->amount : null);
        $statement->closing && $this->balance('closing', $statement->closing);
        if (count($statement->pending) > 0) {
            $this->line('  ' . $this->say('announced'));
            $this->table($statement->pending, null);
        }
        if (self::isOff($statement)) {
            $this->line('  ' . $this->off($statement));
        }
        foreach (
            [
            'fault' => $statement->faults,
            'note' => $statement->hints,
            'mended' => $statement->mended,
            ] as $kind => $notes
        ) {
            foreach ($notes as $note) {
                $this->line($this->note($kind, $note));
            }
        }
        $this->line('');
    }

    private static function isOff(Statement $statement): bool
    {
        return !$statement->balanced && ($statement->hasBalances() || !$statement->isGood());
    }

    private function off(Statement $statement): string
    {
        $off = $statement->difference;

        return $off ? $this->say('off', ['amount' => self::money($off)]) : $this->say('not_balanced');
    }

    private function table(Bookings $bookings, ?Amount $balance): void
    {
        foreach ($bookings as $booking) {
            $balance = $balance === null ? null : $balance->plus($booking->amount);
            $this->rows->add([], fn (): array => $this->cells($booking, $balance));
            ($this->progress)();
        }
        $this->rows->flush();
    }

    /** @return array<string, string> */
    private function cells(Booking $booking, ?Amount $balance): array
    {
        $payments = $booking->payments ?? count($booking->parts());
        $amount = self::money($booking->amount);

        return [
            'booked' => self::day($booking->booked ?? $booking->valuta),
            'name' => $booking->name ?? ($payments > 1 ? $this->say('payments', ['count' => $payments]) : ''),
            'for' => trim($booking->remittance() . ' ' . $this->reason($booking)),
            'amount' => $booking->reversal ? $this->say('reversal', ['amount' => $amount]) : $amount,
            'balance' => $balance === null ? '' : self::money($balance),
        ];
    }

    /** Why a payment came back. */
    private function reason(Booking $booking): string
    {
        $meaning = Codes::of('reason', (string) $booking->reason, $this->words->locale);

        return $booking->reason === null ? '' : '(' . ($meaning === '' ? '' : "$meaning, ") . "$booking->reason)";
    }

    private function note(string $kind, Note $note): string
    {
        $count = $note->count > 1 ? $this->say('times', ['count' => $note->count]) : '';
        $head = array_filter([$this->say("kind.$kind"), $note->place($this->words->locale), $count]);

        return '  ' . implode(', ', $head) . ': ' . $note->text($this->words->locale);
    }

    private function balance(string $which, Balance $balance): void
    {
        $amount = self::money($balance->amount) . ' ' . $balance->amount->currency;
        $this->line('  ' . $this->say($which) . '  ' . self::day($balance->date) . "  $amount");
    }

    /** @param array<string, mixed> $values */
    private function say(string $id, array $values = []): string
    {
        return $this->words->of("statement.$id", $values);
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
