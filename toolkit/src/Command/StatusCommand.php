<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Report\Payment;
use Sepa\Toolkit\Report\PaymentFile;
use Sepa\Toolkit\Report\Reader;
use Sepa\Toolkit\Report\Report;
use Sepa\Toolkit\Report\Result;
use Sepa\Toolkit\Statement\Amount;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

final class StatusCommand extends TranslatedCommand
{
    private Rows $rows;

    private OutputInterface $output;

    private OutputInterface $errors;

    private bool $isTable;

    private int $told = 0;

    private int $refused = 0;

    private int $otherNames = 0;

    protected function configure(): void
    {
        $this->describe('status');
        $this->getDefinition()->addArgument(Files::argument('reports', $this->words));
        $this->addOption('payments', null, InputOption::VALUE_REQUIRED, $this->words->of('option.payments'));
        $this->getDefinition()->addOptions(Rows::options($this->words));
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $this->rows = Rows::of($input, $output, $this->words);
        $this->isTable = Rows::format($input) === Rows::TABLE;
        $this->output = $output;
        $this->errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $file = $input->getOption('payments');
        $sent = $file === null ? null : PaymentFile::read($file);
        $reader = Reader::files(Files::of($input, $this->words));
        $read = [];
        $isGood = true;
        $reports = [];
        foreach ($reader as $report) {
            $read[$report->file] = true;
            $isGood = $isGood && !$report->isWanting();
            $report->isCut && $this->tell($this->text('cut', ['file' => $report->file]));
            if ($sent) {
                $reports[] = $report;
            } else {
                $this->show($report);
            }
        }
        $sent && $this->showBeside($sent, $reports);
        $this->rows->flush();
        foreach (array_merge($reader->hints(), $reader->faults()) as $note) {
            $this->tell(Files::told($note, $note->file, $this->words->locale));
        }
        $this->tell(
            $this->text('summary', ['count' => $this->told, 'refused' => $this->refused, 'names' => $this->otherNames])
        );
        foreach ($reader->faults() as $fault) {
            $isGood = false;
            if (!isset($read[$fault->file])) {
                return ExitCode::FAILED;
            }
        }

        return !$read ? ExitCode::FAILED : ($isGood ? ExitCode::GOOD : ExitCode::REFUSED);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        Files::complete($input, $suggestions);
    }

    private function show(Report $report): void
    {
        $this->head($report);
        array_map([$this, 'add'], Result::ofReport($report));
        $this->isTable && $this->rows->flush();
    }

    /** What is told of the whole, which has no row of its own. */
    private function head(Report $report): void
    {
        if (!$this->isTable) {
            $report->blocks || $this->add(Result::ofWhole($report));

            return;
        }
        $text = $this->text('head', ['id' => $report->id, 'original' => $report->originalId]);
        $status = $report->status === '' ? '' : ': ' . Result::words('status', $report->status, $this->words->locale);
        $why = $report->blocks ? '' : Result::reasons($report->reasons, $this->words->locale);
        Rows::write($this->output, Rows::clean($text . $status . ($why === '' ? '' : ", $why")) . "\n");
    }

    /** @param list<Report> $reports */
    private function showBeside(PaymentFile $sent, array $reports): void
    {
        $about = array_values(
            array_filter($reports, static fn (Report $report): bool => $report->originalId === $sent->id)
        );
        foreach ($reports as $report) {
            if ($report->originalId !== $sent->id) {
                $this->tell($this->text('other_file', ['original' => $report->originalId, 'message' => $sent->id]));
            }
        }
        $lost = 0;
        foreach (Result::beside($sent, $about) as $result) {
            $lost += $result->sent ? 0 : 1;
            $this->add($result);
        }
        $lost && $this->tell($this->text('not_sent', ['count' => $lost]));
    }

    private function add(Result $result): void
    {
        $told = $result->told;
        $amount = $result->amount();
        $this->told += $told ? 1 : 0;
        $this->refused += $result->isRefused() ? 1 : 0;
        $this->otherNames += $result->isOtherName() ? 1 : 0;
        $record = [
            'message' => $result->report ? $result->report->originalId : '',
            'block' => $result->block,
            'eref' => $result->of('eref'),
            'name' => $result->of('name'),
            'iban' => $result->of('iban'),
            'amount' => $amount,
            'currency' => $amount ? $amount->currency : '',
            'status' => $result->status,
            'meaning' => $result->status === '' ? '' : Result::words('status', $result->status, $this->words->locale),
            'reason' => implode(' ', array_filter(array_column($result->reasons, 'code'))),
            'reason_text' => $result->why($this->words->locale),
            'name_at_bank' => $told ? $told->nameAtBank : '',
            'file' => $result->report ? $result->report->file : '',
        ];
        $this->rows->add($record, fn (): array => $this->cells($record, $amount, $told));
    }

    /**
     * @param array<string, mixed> $record
     * @return array<string, string>
     */
    private function cells(array $record, ?Amount $amount, ?Payment $told): array
    {
        $why = array_filter([
            $record['reason_text'] === $record['name_at_bank'] ? '' : $record['reason_text'],
            $record['name_at_bank'] === '' ? '' : $this->text('at_bank', ['name' => $record['name_at_bank']]),
        ]);

        return [
            'payment' => $record['eref'] === '' ? $record['block'] : $record['eref'],
            'name' => $record['name'],
            'IBAN' => $record['iban'],
            'amount' => $amount ? $amount->text(',', '.') . ' ' . $amount->currency : '',
            'status' => $record['status'] === '' ? $this->text('none') : $record['meaning'],
            'reason' => implode(' ', $why),
        ];
    }

    /** @param array<string, mixed> $values */
    private function text(string $id, array $values = []): string
    {
        return $this->words->of("status.$id", $values);
    }

    private function tell(string $text): void
    {
        $this->errors->writeln(Rows::clean("sepa: $text"), OutputInterface::OUTPUT_RAW);
    }
}
