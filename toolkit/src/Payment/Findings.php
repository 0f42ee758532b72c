<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * Faults, warnings or changes: the first of each code are kept, all are counted
 * by code and key. A table of a million bad rows takes no more memory than one
 * of some thousands.
 */
final class Findings implements \Countable
{
    /** So many of a code are kept, and so many keys of a code are counted apart. */
    public const KEPT = 1000;

    /** @var list<Fault> */
    private array $kept = [];

    private int $count = 0;

    /** @var array<string, array<string, int>> number by code and key; empty key for none and for further ones */
    private array $counts = [];

    /** @var array<string, int> number by code */
    private array $ofCode = [];

    /** @var callable(Fault): void|null */
    private $listener = null;

    /** @param array<string, int|string|list<string>> $values */
    public function add(?int $row, ?string $label, ?string $key, string $code, array $values = []): void
    {
        ++$this->count;
        $number = $this->ofCode[$code] = ($this->ofCode[$code] ?? 0) + 1;
        $isApart = isset($this->counts[$code][$key]) || count($this->counts[$code] ?? []) < self::KEPT;
        $column = $isApart ? (string) $key : '';
        $this->counts[$code][$column] = ($this->counts[$code][$column] ?? 0) + 1;
        if ($number > self::KEPT && $this->listener === null) {
            return;
        }
        $fault = new Fault($row, $label, $key, $code, $values);
        if ($number <= self::KEPT) {
            $this->kept[] = $fault;
        }
        if ($this->listener !== null) {
            ($this->listener)($fault);
        }
    }

    /** @return list<Fault> the first KEPT of each code, in the order in which they were found */
    public function kept(): array
    {
        return $this->kept;
    }

    public function count(): int
    {
        return $this->count;
    }

    /** @return array<string, array<string, int>> number of all by code and key, the key empty if there is none */
    public function counts(): array
    {
        return $this->counts;
    }

    /**
     * Is given each from now on, and before that what is kept so far.
     *
     * @param callable(Fault): void $listener
     */
    public function tell(callable $listener): void
    {
        array_map($listener, $this->kept);
        $this->listener = $listener;
    }
}
