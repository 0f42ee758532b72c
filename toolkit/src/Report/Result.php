<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\Statement\Amount;

/** What became of one payment, or of a block or a message of which a report tells no single ones. */
final class Result
{
    /** @var Report|null null if no report is about its message */
    public ?Report $report;

    /** @var Payment|null null if the report does not name it */
    public ?Payment $told;

    /** @var SentPayment|null null without the file that was sent, or if it is not in there */
    public ?SentPayment $sent;

    public string $block;

    /** @var string '' if nothing is told */
    public string $status;

    /** @var list<Reason> */
    public array $reasons;

    /** @param list<Reason> $reasons */
    private function __construct(
        ?Report $report,
        ?Payment $told,
        ?SentPayment $sent,
        string $block,
        string $status,
        array $reasons
    ) {
        $this->report = $report;
        $this->told = $told;
        $this->sent = $sent;
        $this->block = $block;
        $this->status = $status;
        $this->reasons = $reasons;
    }

    /** @return list<self> of each payment that a report names, and of blocks of which it names none */
    public static function ofReport(Report $report): array
    {
        $results = [];
        foreach ($report->blocks as $block) {
            if (!$block->payments && $block->status !== '') {
                $results[] = new self($report, null, null, $block->id, $block->status, $block->reasons);
            }
            foreach ($block->payments as $payment) {
                $results[] = self::ofPayment($report, $payment);
            }
        }

        return $results;
    }

    /** Of a report as a whole. */
    public static function ofWhole(Report $report): self
    {
        return new self($report, null, null, '', $report->status, $report->reasons);
    }

    /**
     * Of every payment of a file that was sent, in its order; then what reports name and
     * the file does not have.
     *
     * @param list<Report> $reports about that file
     * @return list<self>
     */
    public static function beside(PaymentFile $sent, array $reports): array
    {
        $found = $lost = $others = $results = [];
        foreach ($reports as $report) {
            foreach ($report->payments() as $payment) {
                $place = $sent->find($payment);
                if ($place === null) {
                    $lost[] = self::ofPayment($report, $payment);
                } elseif (self::counts($payment->status, isset($found[$place]) ? $found[$place][1]->status : '')) {
                    $found[$place] = [$report, $payment];
                }
            }
        }
        foreach ($sent->payments as $place => $payment) {
            $block = $payment->block;
            $others[$block] = $others[$block] ?? self::ofOthers($reports, $block);
            [$report, $status] = $others[$block];
            [$by, $told] = $found[$place] ?? [null, null];
            if ($told && ($by === $report || Status::weight($status) <= Status::weight($told->status))) {
                $results[] = new self($by, $told, $payment, $block, $told->status, $told->reasons);
            } else {
                $results[] = new self($report, null, $payment, $block, $status, []);
            }
        }

        return array_merge($results, $lost);
    }

    /** Whether what a later report says counts more than, or as much as, what an earlier one did. */
    private static function counts(string $later, string $earlier): bool
    {
        return Status::weight($later) >= Status::weight($earlier);
    }

    /**
     * What counts of all that reports say of the payments of a block that they do not list.
     *
     * @param list<Report> $reports
     * @return array{Report|null, string} report and status
     */
    private static function ofOthers(array $reports, string $block): array
    {
        $counting = [null, ''];
        foreach ($reports as $report) {
            $status = $report->statusOfOthers($block);
            $counting = self::counts($status, $counting[1]) ? [$report, $status] : $counting;
        }

        return $counting;
    }

    public function isRefused(): bool
    {
        return Status::isRefused($this->status);
    }

    public function isOtherName(): bool
    {
        return $this->told && $this->told->isOtherName();
    }

    public function amount(): ?Amount
    {
        return $this->sent ? $this->sent->amount : ($this->told ? $this->told->amount : null);
    }

    /** Of the payment as it was sent, else as the report has it: eref, name or iban. */
    public function of(string $member): string
    {
        return $this->sent ? $this->sent->$member : ($this->told ? $this->told->$member : '');
    }

    /** Its reasons in words, or the bank's own text. */
    public function why(string $locale): string
    {
        return self::reasons($this->reasons, $locale) ?: ($this->told ? $this->told->said : '');
    }

    /** @param list<Reason> $reasons */
    public static function reasons(array $reasons, string $locale): string
    {
        $texts = [];
        foreach ($reasons as $reason) {
            $said = $reason->said();
            $texts[] = trim(self::words('reason', $reason->code, $locale) . ($said === '' ? '' : ": $said"), ': ');
        }

        return implode('; ', array_filter($texts));
    }

    /** A code of a status or a reason with what it means; the code alone if nobody knows it. */
    public static function words(string $kind, string $code, string $locale): string
    {
        $words = Words::of($kind, $code, $locale);

        return $words === '' ? $code : "$words ($code)";
    }

    private static function ofPayment(Report $report, Payment $payment): self
    {
        return new self($report, $payment, null, $payment->block, $payment->status, $payment->reasons);
    }
}
