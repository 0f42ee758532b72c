<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Sums up what is booked and lays it against the balances.
 *
 * @internal
 */
final class Proof
{
    /** Faults with which no statement is called balanced, whatever its sums are. */
    private const DOUBTS = ['balance', 'balances', 'account', 'booking', 'amount', 'currency', 'malformed'];

    private ?Amount $sum = null;

    /** What reversals come to. */
    private ?Amount $reversals = null;

    private bool $isTooLarge = false;

    private int $bookings = 0;

    /** @var int what is told and not booked, which banks may count or not */
    private int $announced = 0;

    /** @var array<string, int|float> */
    private array $sides = ['credits' => 0, 'debits' => 0];

    /** @var array<string, string> what the bank tells of these */
    private array $told = [];

    /** @return bool false if the amount is in another currency than those before it */
    public function book(Amount $amount, bool $isReversal): bool
    {
        ++$this->bookings;
        $this->sides[$amount->units < 0 ? 'debits' : 'credits'] += abs($amount->units);
        $this->sum = $this->sum ?? new Amount(0, $amount->currency);
        if ($this->sum->currency === '') {
            // What comes before the first balance of MT940 has no currency yet.
            $this->sum = new Amount($this->sum->units, $amount->currency);
        }
        if ($amount->currency !== '' && $amount->currency !== $this->sum->currency) {
            return false;
        }
        $this->sum = $this->plus($this->sum, $amount);
        if ($isReversal) {
            $this->reversals = $this->plus($this->reversals ?? new Amount(0, $amount->currency), $amount);
        }

        return true;
    }

    public function announce(): void
    {
        ++$this->announced;
    }

    /** @param array<string, mixed> $told the bank's own "count", "credits" and "debits" */
    public function tell(array $told): void
    {
        $this->told = array_intersect_key($told, ['count' => 1, 'credits' => 1, 'debits' => 1]);
    }

    /** Takes those of another page. */
    public function add(self $page): void
    {
        $this->bookings += $page->bookings;
        $this->told = [];
        $this->announced += $page->announced;
        foreach ($page->sides as $side => $units) {
            $this->sides[$side] += $units;
        }
        $this->isTooLarge = $this->isTooLarge || $page->isTooLarge;
        if ($page->sum) {
            $this->sum = $this->plus($this->sum ?? new Amount(0, $page->sum->currency), $page->sum);
        }
        if ($page->reversals) {
            $this->reversals = $this->plus(
                $this->reversals ?? new Amount(0, $page->reversals->currency),
                $page->reversals
            );
        }
    }

    /** @return bool whether the signs of reversals have to be turned for it to balance */
    public function settle(Statement $statement, Notes $notes): bool
    {
        if ($this->isTooLarge) {
            $notes->fault('too_large', 0);
        }
        $opening = $statement->opening;
        $closing = $statement->closing;
        $statement->currency = $statement->currency ?: ($this->sum ? $this->sum->currency : '');
        $currency = $opening ? $opening->amount->currency : $statement->currency;
        $isOther = $this->sum && $this->sum->currency !== '' && $this->sum->currency !== $currency;
        if ($isOther || ($opening && $closing && $closing->amount->currency !== $currency)) {
            $isOther && !$notes->has(['currency']) && $notes->fault('currency', 0);

            return false;
        }
        $turns = false;
        if ($opening && $closing && !$this->isTooLarge) {
            $statement->difference = self::difference($opening->amount, $this->sum, $closing->amount);
            $turns = $statement->difference && $this->reversals && $statement->difference->units !== 0
                && $statement->difference->units === -2 * $this->reversals->units;
            if ($turns) {
                $statement->difference = new Amount(0, $currency);
                $notes->mended('reversals_turned', 0);
            }
            $statement->balanced = $statement->difference
                && $statement->difference->units === 0
                && !$notes->has(self::DOUBTS);
        }
        $this->compare($statement, $notes, $currency, $turns);

        return $turns;
    }

    private function compare(Statement $statement, Notes $notes, string $currency, bool $turns): void
    {
        $counts = [$this->bookings, $this->bookings + $this->announced];
        $differs = isset($this->told['count']) && !in_array((int) $this->told['count'], $counts, true);
        foreach ($turns || $this->announced > 0 ? [] : $this->sides as $side => $units) {
            $amount = isset($this->told[$side]) ? Amount::decimal($this->told[$side], $currency) : null;
            $differs = $differs || ($amount && $amount->units !== $units);
        }
        if ($differs && !$statement->cut) {
            $statement->balanced ? $notes->hint('summary', 0) : $notes->fault('summary', 0);
        }
    }

    /** What is missing between the balances; null if that is beyond 64 bits. */
    private static function difference(Amount $opening, ?Amount $sum, Amount $closing): ?Amount
    {
        $expected = $sum ? $opening->plus($sum) : $opening;

        return $expected ? $closing->minus($expected) : null;
    }

    private function plus(Amount $one, Amount $other): Amount
    {
        $sum = $one->plus($other);
        $this->isTooLarge = $this->isTooLarge || !$sum;

        return $sum ?? $one;
    }
}
