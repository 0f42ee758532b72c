<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

/** A status report (pain.002): what a bank says of a file of payments. */
final class Report implements \JsonSerializable
{
    /** @var string the file it comes from; '' if it was given without a name */
    public string $file = '';

    /** @var string its version, such as pain.002.001.10; '' if it says none */
    public string $form;

    public string $id;

    /** @var string when it was made, as the file writes it */
    public string $created;

    /** @var string BIC of the bank; '' if it is not told */
    public string $bank;

    /** @var string id of the message that it is about */
    public string $originalId;

    /** @var string form of that, such as pain.001 or pain.008.001.08 */
    public string $originalForm;

    /** @var string of the message as a whole; '' if none is told, as is usual in Germany */
    public string $status;

    /** @var list<Reason> */
    public array $reasons;

    /** @var array<string, int> how many payments have which status, as the bank counts */
    public array $counts;

    /** @var list<Block> */
    public array $blocks;

    /** @var bool whether the document breaks off within it */
    public bool $isCut = false;

    /**
     * @param array<string, mixed> $values of a record
     * @param list<array{array<string, mixed>, list<array<string, mixed>>}> $blocks records of blocks with those
     *     of their payments
     */
    public function __construct(array $values, array $blocks, string $form)
    {
        $text = static fn (string $key): string => trim($values[$key] ?? '');
        $this->form = $form;
        foreach (['id', 'created', 'originalId', 'originalForm', 'status'] as $key) {
            $this->$key = $text($key);
        }
        $this->bank = $text('debtorBank') !== '' ? $text('debtorBank') : $text('creditorBank');
        $this->reasons = array_map(static fn (array $reason): Reason => new Reason($reason), $values['reasons'] ?? []);
        $this->counts = self::counts($values['counts'] ?? []);
        $isDebit = strncmp($this->originalForm, 'pain.008', 8) === 0
            || ($text('creditorBank') !== '' && $text('debtorBank') === '');
        $this->blocks = [];
        foreach ($blocks as [$block, $payments]) {
            $status = Status::ofEach(trim($block['status'] ?? '')) ?: (
                trim($block['status'] ?? '') === '' ? Status::ofEach($this->status) : ''
            );
            $made = [];
            foreach ($payments as $payment) {
                $legend = $this->legend(trim($payment['status'] ?? '') ?: $status);
                $made[] = new Payment($payment, trim($block['id'] ?? ''), $status, $isDebit, $legend);
            }
            $this->blocks[] = new Block($block, $made);
        }
    }

    /** @return \Generator<Payment> of all blocks */
    public function payments(): \Generator
    {
        foreach ($this->blocks as $block) {
            yield from $block->payments;
        }
    }

    /** What is told of the payments that are not listed in a block; '' if nothing is. */
    public function statusOfOthers(string $block): string
    {
        foreach ($this->blocks as $told) {
            if ($told->id === $block && $told->status !== '') {
                return Status::ofEach($told->status);
            }
        }

        return Status::ofEach($this->status);
    }

    /** Whether something was refused, or a payee's name is not the account's. */
    public function isWanting(): bool
    {
        foreach (array_merge([$this->status], array_column($this->blocks, 'status')) as $status) {
            if (Status::isRefused($status) || ($status === 'PART')) {
                return true;
            }
        }
        $isTold = false;
        foreach ($this->payments() as $payment) {
            $isTold = true;
            if ($payment->isRefused() || $payment->isOtherName()) {
                return true;
            }
        }
        // Without a word about single payments the counts and the whole's status are all there is.
        foreach ($isTold ? [] : array_merge([$this->status], array_column($this->blocks, 'status')) as $status) {
            if (Status::isOtherName($status)) {
                return true;
            }
        }

        return $this->isCut;
    }

    /** @return array<string, mixed> */
    public function jsonSerialize(): array
    {
        return get_object_vars($this);
    }

    /**
     * @internal
     * @param list<array<string, string>> $records
     * @return array<string, int>
     */
    public static function counts(array $records): array
    {
        $counts = [];
        foreach ($records as $record) {
            $counts[trim($record['status'] ?? '')] = (int) ($record['count'] ?? 0);
        }

        return $counts;
    }

    /**
     * Texts about the message as a whole explain all statuses that there are, a line
     * each or several, which begins with the status: here are those of one.
     *
     * @return list<string>
     */
    private function legend(string $status): array
    {
        $lines = [];
        foreach ($status === '' ? [] : $this->reasons as $reason) {
            foreach ($reason->lines as $line) {
                if (strncmp($line, "$status ", strlen($status) + 1) === 0) {
                    $lines[] = substr($line, strlen($status) + 1);
                }
            }
        }

        return $lines;
    }
}
