<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Report\Payment;
use Sepa\Toolkit\Report\PaymentFile;
use Sepa\Toolkit\Report\Reader;
use Sepa\Toolkit\Report\Reason;
use Sepa\Toolkit\Report\Report;
use Sepa\Toolkit\Report\SentPayment;
use Sepa\Toolkit\Report\Status;
use Sepa\Toolkit\Report\Words as Codes;
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
        $this->tell($this->text('summary', ['count' => $this->told, 'refused' => $this->refused, 'names' => $this->otherNames]));
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
        foreach ($report->blocks as $block) {
            if (!$block->payments && $block->status !== '') {
                $this->add($report, null, null, $block->id, $block->status, $block->reasons);
            }
            foreach ($block->payments as $payment) {
                $this->add($report, $payment, null, $payment->block, $payment->status, $payment->reasons);
            }
        }
        $this->isTable && $this->rows->flush();
    }

    /** What is told of the whole, which has no row of its own. */
    private function head(Report $report): void
    {
        if (!$this->isTable) {
            if (!$report->blocks) {
                $this->add($report, null, null, '', $report->status, $report->reasons);
            }

            return;
        }
        $text = $this->text('head', ['id' => $report->id, 'original' => $report->originalId]);
        $status = $report->status === '' ? '' : ': ' . $this->words('status', $report->status);
        $why = $report->blocks ? '' : $this->reasons($report->reasons);
        Rows::write($this->output, Rows::clean($text . $status . ($why === '' ? '' : ", $why")) . "\n");
    }

    /** @param list<Report> $reports */
    private function showBeside(PaymentFile $sent, array $reports): void
    {
        $found = $lost = [];
        $whole = null;
        foreach ($reports as $report) {
            if ($report->originalId !== $sent->id) {
                $this->tell($this->text('other_file', ['original' => $report->originalId, 'message' => $sent->id]));
                continue;
            }
            $whole = $report;
            foreach ($report->payments() as $payment) {
                $place = $sent->find($payment);
                if ($place === null) {
                    $lost[] = [$report, $payment];
                } else {
                    $found[$place] = [$report, $payment];
                }
            }
        }
        foreach ($sent->payments as $place => $payment) {
            [$report, $told] = $found[$place] ?? [$whole, null];
            $status = $told ? $told->status : ($report ? $report->statusOfOthers($payment->block) : '');
            $this->add($report, $told, $payment, $payment->block, $status, $told ? $told->reasons : []);
        }
        foreach ($lost as [$report, $payment]) {
            $this->add($report, $payment, null, $payment->block, $payment->status, $payment->reasons);
        }
        $lost && $this->tell($this->text('not_sent', ['count' => count($lost)]));
    }

    /** @param list<Reason> $reasons */
    private function add(?Report $report, ?Payment $told, ?SentPayment $sent, string $block, string $status, array $reasons): void
    {
        $this->told += $told ? 1 : 0;
        $this->refused += Status::isRefused($status) ? 1 : 0;
        $this->otherNames += $told && $told->isOtherName() ? 1 : 0;
        $amount = $sent ? $sent->amount : ($told ? $told->amount : null);
        $record = [
            'message' => $report ? $report->originalId : '',
            'block' => $block,
            'eref' => $sent ? $sent->eref : ($told ? $told->eref : ''),
            'name' => $sent ? $sent->name : ($told ? $told->name : ''),
            'iban' => $sent ? $sent->iban : ($told ? $told->iban : ''),
            'amount' => $amount,
            'currency' => $amount ? $amount->currency : '',
            'status' => $status,
            'meaning' => $status === '' ? '' : $this->words('status', $status),
            'reason' => implode(' ', array_filter(array_column($reasons, 'code'))),
            'reason_text' => $this->reasons($reasons) ?: ($told ? $told->said : ''),
            'name_at_bank' => $told ? $told->nameAtBank : '',
            'file' => $report ? $report->file : '',
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

    /** A code with what it means; the code alone if nobody knows it. */
    private function words(string $kind, string $code): string
    {
        $words = Codes::of($kind, $code, $this->words->locale);

        return $words === '' ? $code : "$words ($code)";
    }

    /** @param list<Reason> $reasons */
    private function reasons(array $reasons): string
    {
        $texts = [];
        foreach ($reasons as $reason) {
            $texts[] = trim($this->words('reason', $reason->code) . ($reason->said() === '' ? '' : ": {$reason->said()}"), ': ');
        }

        return implode('; ', array_filter($texts));
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
