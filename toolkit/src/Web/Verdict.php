<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Payments;
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

    /** @var Sheet|null a file whose rows are not those of the form, and which is to be chosen again */
    public ?Sheet $sheet;

    /** @var string of what is odd: when it comes back, it was seen */
    public string $seen;

    private string $digest;

    /** @var list<string> keys of the fields of a row */
    private array $columns;

    public function __construct(Payments $payments, TransferForm $form, ?Sheet $sheet)
    {
        $this->sheet = $sheet;
        $this->warnings = $this->placed($payments->warnings());
        $this->changes = $this->placed($payments->changes());
        ['warning' => $warnings, 'change' => $changes] = $payments->findings();
        $this->oddCount = count($warnings) + count($changes);
        $this->count = count($payments);
        $this->sum = new Amount((int) str_replace('.', '', $payments->sum()), 'EUR');
        $this->digest = self::digest($this->warnings, $this->changes);
        // What is true of a file alone is not found again when the form comes back with its rows.
        $again = array_filter($this->warnings, static fn (Fault $fault): bool => $sheet || $fault->code !== 'no_line_end');
        $this->seen = self::digest(array_values($again), $this->changes);
        // Without a good IBAN nobody can tell its bank's BIC.
        $own = static fn (string $key): array => array_filter($payments->faults(), static fn (Fault $fault): bool => $fault->row === null && $fault->key === $key);
        $hidden = $form->party['bic'] === '' && $own('iban') ? $own('bic') : [];
        $this->faults = $this->placed(array_values(array_diff_key($payments->faults(), $hidden)));
        $this->faultCount = $payments->faultCount() - count($hidden);
        foreach ($sheet ? [] : array_merge($this->faults, $this->warnings) as $fault) {
            $form->showColumns($fault->row === null ? [] : [(string) $fault->key]);
        }
        $this->columns = $form->columns;
    }

    /** @param string $seen what came back of an earlier verdict */
    public function mayLeave(string $seen): bool
    {
        return !$this->faults && ((!$this->warnings && !$this->changes) || $seen === $this->digest);
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
        $fields = array_flip(array_merge(TransferForm::PARTY, $this->columns));
        $place = static fn ($point): array => [$point->row ?? 0, $fields[$point->key ?? ''] ?? count($fields)];
        if (!$this->sheet) {
            usort($points, static fn ($a, $b): int => $place($a) <=> $place($b));
        }

        return $points;
    }

    /**
     * What stands beside a field; the rows of a file are not those of the form.
     *
     * @param list<Fault> $points faults or warnings
     * @param int|null $row null for the submitting party
     * @param string|null $key null for a row as a whole
     * @return list<Fault>
     */
    public function beside(array $points, ?int $row, ?string $key): array
    {
        if ($this->sheet && $row !== null) {
            return [];
        }

        return array_values(array_filter($points, static fn (Fault $fault): bool => $fault->row === $row && $fault->key === $key));
    }

    /**
     * With the rows of the form, which count from 1, where they come from the sheet that it was made.
     *
     * @param list<Fault> $points
     * @return list<Fault>
     */
    private function placed(array $points): array
    {
        foreach ($this->sheet ? [] : $points as $i => $point) {
            $points[$i] = clone $point;
            $points[$i]->row = $point->row === null ? null : $point->row - 1;
            if (isset($point->values['row'])) {
                $points[$i]->values['row'] = $point->values['row'] - 1;
            }
        }

        return $points;
    }

    /**
     * @param list<Fault> $warnings
     * @param list<Fault> $changes
     */
    private static function digest(array $warnings, array $changes): string
    {
        return hash('sha256', serialize([$warnings, $changes]));
    }
}
