<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Collects what is legal in payments and seldom meant. */
final class Oddities
{
    private string $today;

    private Findings $found;

    /** @var array<string, int> first row by end-to-end id */
    private array $ids = [];

    /** @var array<string, int> first row by payee and amount */
    private array $payments = [];

    /** @var array<string, list<array{string, array<string, string>}>> codes and values by date */
    private array $dates = [];

    /** Whether the date of payments without their own was told. */
    private bool $commonTold = false;

    public function __construct(Findings $found, string $today)
    {
        $this->found = $found;
        $this->today = $today;
    }

    /**
     * @param array<string, string> $values
     * @param string|null $own the payment's own date
     * @param string $common the date of those that have none
     */
    public function payment(array $values, ?string $own, string $common, int $row, ?string $label): void
    {
        $id = $values['id'] ?? null;
        if ($id !== null && isset($this->ids[$id])) {
            $this->found->add($row, $label, 'id', 'duplicate_id', ['row' => $this->ids[$id]]);
        } elseif ($id !== null) {
            $this->ids[$id] = $row;
        }
        $payment = $values['iban'] . ' ' . (float) $values['amount'];
        if (isset($this->payments[$payment])) {
            $this->found->add($row, $label, 'amount', 'duplicate_payment', ['row' => $this->payments[$payment]]);
        } else {
            $this->payments[$payment] = $row;
        }
        if ($own === null && $this->commonTold) {
            return;
        }
        $this->commonTold = $this->commonTold || $own === null;
        foreach ($this->oddInDate($own ?? $common) as [$code, $facts]) {
            $this->found->add($own === null ? null : $row, $own === null ? null : $label, 'date', $code, $facts);
        }
    }

    /**
     * @param array<string, string> $values
     * @param string $date of the collection
     */
    public function mandate(array $values, string $date, Rulebook $rulebook, int $row, ?string $label): void
    {
        if ($values['mdate'] > $date) {
            $this->found->add($row, $label, 'mdate', 'date_order', ['signed' => $values['mdate'], 'date' => $date]);
        }
        if (isset($values['smnda']) && $rulebook->smnda === Rulebook::OLD) {
            $this->found->add($row, $label, 'smnda', 'smnda_national', ['rulebook' => $rulebook->name]);
        }
        if (isset($values['smnda']) && $rulebook->smnda === Rulebook::FIRST && strtoupper($values['seq']) !== 'FRST') {
            $this->found->add($row, $label, 'smnda', 'smnda_sequence', ['sequence' => $values['seq'], 'rulebook' => $rulebook->name]);
        }
    }

    /** @param list<string> $characters of an address, outside the banks' set */
    public function characters(string $key, array $characters, int $row, ?string $label): void
    {
        $this->found->add($row, $label, $key, 'characters', ['characters' => $characters]);
    }

    /** @return list<array{string, array<string, string>}> codes and their values */
    private function oddInDate(string $date): array
    {
        if (isset($this->dates[$date]) || !Calendar::exists($date)) {
            return $this->dates[$date] ?? [];
        }
        $closed = Calendar::closed($date);
        $isFar = $date > (new \DateTimeImmutable($this->today))->modify('+1 year')->format('Y-m-d');

        return $this->dates[$date] = array_merge(
            $date < $this->today ? [['date_past', ['date' => $date]]] : [],
            $closed === null ? [] : [['no_bank_day', ['date' => $date, 'day' => $closed]]],
            $isFar ? [['date_far', ['date' => $date]]] : []
        );
    }
}
