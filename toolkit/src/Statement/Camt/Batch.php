<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

use Sepa\Toolkit\Statement\Amount;

/**
 * The transactions of one entry, and what they come to.
 *
 * @internal
 */
final class Batch
{
    /** Where a transaction can have its amount, the surest first. */
    private const AMOUNTS = ['amount', 'transaction', 'instructed'];

    public int $count = 0;

    /** @var array<string, mixed>|null the only one */
    public ?array $first = null;

    /** @var string a line for each of several */
    public string $text = '';

    /** @var list<array<string, string>> the bank's own references of the first */
    public array $own = [];

    /** @var array<string, int|float> sums by sign; of those without under '' */
    private array $sums = ['CRDT' => 0, 'DBIT' => 0, '' => 0];

    private bool $isKnown = true;

    /**
     * @param array<string, mixed> $values
     * @param string|null $currency of the entry; null if it is not read yet
     * @return int|null the transaction's amount without sign; null if it is not told in the entry's currency
     */
    public function add(array $values, ?string $currency): ?int
    {
        ++$this->count;
        $this->own = $this->own ?: $values['own'] ?? [];
        foreach (self::AMOUNTS as $key) {
            $its = $values[$key . '@'] ?? $currency;
            $amount = isset($values[$key]) && ($currency ?? $its) === $its
                ? Amount::decimal($values[$key], (string) $its)
                : null;
            if ($amount) {
                $sign = trim($values['sign'] ?? '');
                $this->sums[isset($this->sums[$sign]) ? $sign : ''] += $amount->units;

                return $amount->units;
            }
        }
        $this->isKnown = false;

        return null;
    }

    /** Whether several transactions are told, and come to another amount than the entry's. */
    public function differs(Amount $entry): bool
    {
        if ($this->count < 2 || !$this->isKnown) {
            return false;
        }
        [$mine, $against] = $entry->units < 0 ? ['DBIT', 'CRDT'] : ['CRDT', 'DBIT'];
        $sum = $this->sums[$mine] + $this->sums[''] - $this->sums[$against];
        // Where all are against the entry, their signs are those of the original payments.
        $isTurned = $this->sums[$mine] === 0 && $this->sums[''] === 0;

        return ($isTurned ? -$sum : $sum) !== abs($entry->units);
    }
}
