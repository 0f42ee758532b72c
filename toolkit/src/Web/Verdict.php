<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Statement\Amount;

/** What has come of payments, for those who read it: each point beside its field, or by row and column of a file. */
final class Verdict
{
    /** @var list<Fault> while there are any there is no document; of many the first */
    public array $faults;

    /** @var int number of all */
    public int $faultCount;

    /** @var list<Fault> what is legal and odd */
    public array $warnings;

    /** @var int number of all, and of changes */
    public int $oddCount;

    /** @var list<Fault> texts that were changed */
    public array $changes;

    public int $count;

    public Amount $sum;

    /** @var int number of documents */
    public int $messages;

    /** @var array<string, Amount> sum by day; empty while there are faults */
    public array $days = [];

    /** @var string of what is odd: when it comes back, it was seen */
    public string $seen;

    private PaymentForm $form;

    private Sheet $sheet;

    /** @var array<string, array<string, list<Fault>>> by kind, row and key */
    private array $index = [];

    public function __construct(Batches $payments, PaymentForm $form, Sheet $sheet)
    {
        $this->form = $form;
        $this->sheet = $sheet;
        $this->warnings = $this->placed($payments->warnings());
        $this->changes = $this->placed($payments->changes());
        ['warning' => $warnings, 'change' => $changes] = $payments->findings();
        $this->oddCount = count($warnings) + count($changes);
        $this->count = count($payments);
        $this->messages = count($payments->messages());
        $this->sum = new Amount((int) str_replace('.', '', $payments->sum()), 'EUR');
        $this->seen = hash('sha256', serialize([$this->warnings, $this->changes, $this->oddCount]));
        // Without a good IBAN nobody can tell its bank's BIC.
        $faults = $payments->faults();
        $own = static function (string $key) use ($faults): array {
            $isOwn = static fn (Fault $fault): bool => $fault->row === null && $fault->key === $key;

            return array_filter($faults, $isOwn);
        };
        $hidden = $form->party['bic'] === '' && $own('iban') ? $own('bic') : [];
        $this->faults = $this->placed(array_values(array_diff_key($faults, $hidden)));
        $this->faultCount = $payments->faultCount() - count($hidden);
        if (!$this->faults) {
            $this->days = $this->sums();
        }
        foreach ($form->table->isThere() ? [] : array_merge($this->faults, $this->warnings) as $fault) {
            $form->showColumns($fault->row === null ? [] : [(string) $fault->key]);
        }
    }

    /** @param string $seen what came back of an earlier verdict */
    public function mayLeave(string $seen): bool
    {
        return !$this->faults && ((!$this->warnings && !$this->changes) || $seen === $this->seen);
    }

    /** @return list<Fault> what is to be seen before the document leaves */
    public function odd(): array
    {
        return array_merge($this->points($this->warnings), $this->points($this->changes));
    }

    /**
     * As the fields stand on the page; those of a file in its own order.
     *
     * @param list<Fault> $points
     * @return list<Fault>
     */
    public function points(array $points): array
    {
        $fields = array_flip(array_merge(PaymentForm::PARTY[$this->form->kind], $this->form->columns));
        $place = static fn ($point): array => [$point->row ?? 0, $fields[$point->key ?? ''] ?? count($fields)];
        if (!$this->form->table->isThere()) {
            usort($points, static fn ($a, $b): int => $place($a) <=> $place($b));
        }

        return $points;
    }

    /**
     * What stands beside a field.
     *
     * @param string $kind faults or warnings
     * @param int|null $row null for the submitting party
     * @return list<Fault>
     */
    public function beside(string $kind, ?int $row, string $key): array
    {
        if (!isset($this->index[$kind])) {
            $this->index[$kind] = [];
            foreach ($this->$kind as $fault) {
                $this->index[$kind]["$fault->row $fault->key"][] = $fault;
            }
        }

        return $this->index[$kind]["$row $key"] ?? [];
    }

    /** @return list<int>|null rows of a table that need fields; null for all */
    public function rows(): ?array
    {
        if (!$this->form->table->travels()) {
            return [];
        }
        if ($this->form->showsAll && $this->count <= PaymentForm::MAX_ROWS) {
            return null;
        }
        $rows = array_filter(array_column($this->faults, 'row'));

        return array_slice(array_values(array_unique($rows)), 0, PaymentForm::MAX_ROWS);
    }

    /** Whether somebody has to tell what columns mean, or has begun to. */
    public function asksForColumns(): bool
    {
        $isOpen = (bool) array_intersect(['unknown_heading', 'missing_column'], array_column($this->faults, 'code'));
        $table = $this->form->table;

        return $table->isThere() && ($isOpen || $table->map || $table->ignored);
    }

    /** What stands over a key's column in the table; null if there is none. */
    public function heading(string $key): ?string
    {
        return $this->form->table->isThere() ? $this->sheet->heading($key) : null;
    }

    /** @return array<string, Amount> by day */
    private function sums(): array
    {
        $days = [];
        foreach ($this->form->sheet()->values($this->form->keys()) as $values) {
            $day = Sheet::understood('date', $values['date'] ?? '') ?: $this->form->date();
            $amount = Amount::read(str_replace('.', ',', Sheet::understood('amount', $values['amount'] ?? '')), 'EUR');
            $days[$day] = $amount ? $amount->plus($days[$day] ?? new Amount(0, 'EUR')) : null;
        }
        ksort($days);

        return array_filter($days);
    }

    /**
     * With the rows as the page counts them.
     *
     * @param list<Fault> $points
     * @return list<Fault>
     */
    private function placed(array $points): array
    {
        $offset = $this->form->offset();
        foreach ($points as $i => $point) {
            $points[$i] = clone $point;
            $points[$i]->row = $point->row === null ? null : $point->row - $offset;
            if (isset($point->values['row'])) {
                $points[$i]->values['row'] = $point->values['row'] - $offset;
            }
        }

        return $points;
    }
}
