<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Language;
use Sepa\Toolkit\Report\Payment;
use Sepa\Toolkit\Report\PaymentFile;
use Sepa\Toolkit\Report\Reader;
use Sepa\Toolkit\Report\Reason;
use Sepa\Toolkit\Report\Report;
use Sepa\Toolkit\Report\SentPayment;
use Sepa\Toolkit\Report\Status;
use Sepa\Toolkit\Report\Words;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Texts;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

final class StatusCommand extends Command
{
    private Rows $rows;

    private OutputInterface $output;

    private OutputInterface $errors;

    private string $language;

    private bool $isTable;

    private int $told = 0;

    private int $refused = 0;

    private int $otherNames = 0;

    protected function configure(): void
    {
        $this->setName('status')->setDescription('Reads what a bank reports about payments (pain.002)');
        $this->getDefinition()->addArgument(Files::argument('Status reports'));
        $this->addOption('payments', null, InputOption::VALUE_REQUIRED, 'The file of payments that was sent (pain.001, pain.008)');
        $this->getDefinition()->addOptions(Rows::options());
        $this->setHelp(<<<'HELP'
            Prints what became of each payment, and why: refused, executed, or that the name of a
            payee is not that of the account. With the file that was sent every payment in it
            stands there, in its order, also those that no report tells of.

              <info>sepa status report.zip</info>
              <info>sepa status report.xml --payments payments.xml</info>
              <info>sepa status --csv report.xml >results.csv</info>

            A payment that no report tells of is not thereby accepted: most banks report what
            they refuse alone.

            Exit code: 0 if nothing was refused and all names match; 1 if something was refused,
            a name does not match or a report is damaged; 2 if there is no report in a file.
            HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $this->rows = Rows::of($input, $output);
        $this->isTable = Rows::format($input) === Rows::TABLE;
        $this->output = $output;
        $this->errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        $this->language = Language::ofCommand($input->hasOption('lang') ? $input->getOption('lang') : null, getenv());
        $file = $input->getOption('payments');
        $sent = $file === null ? null : PaymentFile::read($file);
        $reader = Reader::files(Files::of($input));
        $read = [];
        $isGood = true;
        $reports = [];
        foreach ($reader as $report) {
            $read[$report->file] = true;
            $isGood = $isGood && !$report->isWanting();
            $report->isCut && $this->tell($report->file . ': ' . $this->text('command.cut'));
            if ($sent) {
                $reports[] = $report;
            } else {
                $this->show($report);
            }
        }
        $sent && $this->showBeside($sent, $reports);
        $this->rows->flush();
        foreach (array_merge($reader->hints(), $reader->faults()) as $note) {
            $this->tell(Files::told($note, $note->file, $this->language));
        }
        $this->tell($this->text('command.summary', ['count' => $this->told, 'refused' => $this->refused, 'names' => $this->otherNames]));
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
        $text = $this->text('command.head', ['id' => $report->id, 'original' => $report->originalId]);
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
                $this->tell($this->text('command.other_file', ['original' => $report->originalId, 'message' => $sent->id]));
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
        $lost && $this->tell($this->text('command.not_sent', ['count' => count($lost)]));
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
        $column = fn (string $key): string => $this->text("column.$key");
        $why = array_filter([
            $record['reason_text'] === $record['name_at_bank'] ? '' : $record['reason_text'],
            $record['name_at_bank'] === '' ? '' : $this->text('command.at_bank', ['name' => $record['name_at_bank']]),
        ]);

        return [
            $column('payment') => $record['eref'] === '' ? $record['block'] : $record['eref'],
            $column('name') => $record['name'],
            $column('iban') => $record['iban'],
            $column('amount') => $amount ? $amount->text(',', '.') . ' ' . $amount->currency : '',
            $column('status') => $record['status'] === '' ? $this->text('command.none') : $record['meaning'],
            $column('reason') => implode(' ', $why),
        ];
    }

    /** A code with what it means; the code alone if nobody knows it. */
    private function words(string $kind, string $code): string
    {
        $words = Words::of($kind, $code, $this->language);

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
        return Texts::of('reports', $id, $values, $this->language);
    }

    private function tell(string $text): void
    {
        $this->errors->writeln(Rows::clean("sepa: $text"), OutputInterface::OUTPUT_RAW);
    }
}
