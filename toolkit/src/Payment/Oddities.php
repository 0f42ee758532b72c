<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Collects what is legal in payments and seldom meant. */
final class Oddities
{
    /** Countries whose banks an IBAN can belong to, beside its own. */
    private const SERVED = [
        'GB' => ['GG', 'IM', 'JE'],
        'FR' => ['BL', 'GF', 'GP', 'MF', 'MQ', 'NC', 'PF', 'PM', 'RE', 'TF', 'WF', 'YT'],
    ];

    /** Since this day banks refuse an address that has lines alone. */
    private const NO_LINES = '2026-11-15';

    private Notes $notes;

    private Rulebook $rulebook;

    private bool $isDebit;

    private string $today;

    /** @var bool whether payments are executed on every day of the year */
    private bool $isInstant;

    /** @var array<string, int> first row by end-to-end id */
    private array $ids = [];

    /** @var array<string, int> first row by account and cents */
    private array $payments = [];

    /** @var array<string, list<array{string, array<string, string>}>> codes and values by date */
    private array $dates = [];

    /** Whether the date of payments without their own was told. */
    private bool $commonTold = false;

    public function __construct(Notes $notes, Rulebook $rulebook, int $kind, string $today, bool $isInstant)
    {
        $this->notes = $notes;
        $this->rulebook = $rulebook;
        $this->isDebit = $kind === SEPA_MSGTYPE_DDI;
        $this->today = $today;
        $this->isInstant = $isInstant;
    }

    /**
     * @param array<string, string> $values of a good payment
     * @param string $date its own or that of the message
     */
    public function payment(array $values, int $cents, string $date, int $row, ?string $label): void
    {
        $this->again($values, $cents, $row, $label);
        $isOwn = isset($values['date']);
        if ($isOwn || !$this->commonTold) {
            $this->commonTold = $this->commonTold || !$isOwn;
            foreach ($this->dates[$date] ?? $this->oddInDate($date) as [$code, $facts]) {
                $this->add($isOwn ? $row : null, $isOwn ? $label : null, 'date', $code, $facts);
            }
        }
        if (isset($values['bic'])) {
            $this->bic($values['bic'], $values['iban'], $row, $label);
        }
        if (isset($values['purp']) && !PurposeCodes::exists(PurposeCodes::PURPOSE, $values['purp'])) {
            $this->add($row, $label, 'purp', 'purpose_unknown', ['value' => $values['purp']]);
        }
        if ($this->isInstant && Inspector::isOutsideEea($values['iban'])) {
            $this->add($row, $label, 'iban', 'instant_outside_eea');
        }
        if (isset($values['addrLine1']) || isset($values['addrLine2'])) {
            $this->address($values, $row, $label);
        }
        if ($this->isDebit) {
            $this->mandate($values, $date, $row, $label);
        }
    }

    /** @param array<string, string> $values of a payment, or of the submitting party's address */
    public function address(array $values, ?int $row, ?string $label): void
    {
        if (!$this->rulebook->structured && (isset($values['addrLine1']) || isset($values['addrLine2']))) {
            $key = isset($values['addrLine1']) ? 'addrLine1' : 'addrLine2';
            $this->add($row, $label, $key, 'address_lines', ['date' => self::NO_LINES]);
        }
    }

    /** @param array<string, int|string> $facts */
    private function add(?int $row, ?string $label, string $key, string $code, array $facts = []): void
    {
        $this->notes->warnings->add($row, $label, $key, $code, $facts);
    }

    /** @param array<string, string> $values */
    private function again(array $values, int $cents, int $row, ?string $label): void
    {
        $id = $values['id'] ?? null;
        if ($id !== null && isset($this->ids[$id])) {
            $this->add($row, $label, 'id', 'duplicate_id', ['row' => $this->ids[$id]]);
        } elseif ($id !== null) {
            $this->ids[$id] = $row;
        }
        $payment = "{$values['iban']} $cents";
        if (isset($this->payments[$payment])) {
            $this->add($row, $label, 'amount', 'duplicate_payment', ['row' => $this->payments[$payment]]);
        } else {
            $this->payments[$payment] = $row;
        }
    }

    private function bic(string $bic, string $iban, int $row, ?string $label): void
    {
        $bank = strtoupper(substr($bic, 4, 2));
        $country = substr($iban, 0, 2);
        if ($bank !== $country && !in_array($bank, self::SERVED[$country] ?? [], true)) {
            $this->add($row, $label, 'bic', 'bic_other_country', ['bank' => $bank, 'country' => $country]);
        }
    }

    /**
     * @param array<string, string> $values
     * @param string $date of the collection
     */
    private function mandate(array $values, string $date, int $row, ?string $label): void
    {
        $rulebook = $this->rulebook->name;
        if ($values['mdate'] > $date) {
            $this->add($row, $label, 'mdate', 'date_order', ['signed' => $values['mdate'], 'date' => $date]);
        }
        if (isset($values['smnda']) && $this->rulebook->smnda === Rulebook::OLD) {
            $this->add($row, $label, 'smnda', 'smnda_national', ['rulebook' => $rulebook]);
        }
        $isFirst = strtoupper($values['seq']) === 'FRST';
        if (isset($values['smnda']) && $this->rulebook->smnda === Rulebook::FIRST && !$isFirst) {
            $facts = ['sequence' => $values['seq'], 'rulebook' => $rulebook];
            $this->add($row, $label, 'smnda', 'smnda_sequence', $facts);
        }
    }

    /** @return list<array{string, array<string, string>}> codes and their values */
    private function oddInDate(string $date): array
    {
        if (!Calendar::exists($date)) {
            return [];
        }
        $closed = $this->isInstant ? null : Calendar::closed($date);
        $earliest = $this->isDebit ? Calendar::nextBankDay($this->today) : $this->today;
        $isFar = $date > (new \DateTimeImmutable($this->today))->modify('+1 year')->format('Y-m-d');

        return $this->dates[$date] = array_merge(
            $date < $this->today ? [['date_past', ['date' => $date]]] : [],
            $date >= $this->today && $date < $earliest ? [['notice', ['date' => $date, 'earliest' => $earliest]]] : [],
            $closed === null ? [] : [['no_bank_day', ['date' => $date, 'day' => $closed]]],
            $isFar ? [['date_far', ['date' => $date]]] : []
        );
    }
}
