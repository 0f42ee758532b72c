<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Csv\Headings;
use Sepa\Toolkit\Unreadable;

/** What the columns of a table mean, by its row of headings. */
final class Columns implements \Countable
{
    /** Keys of a table that are no payment's. */
    public const ACCOUNT = 'account';

    public const BANK_CODE = 'bank_code';

    public const CURRENCY = 'currency';

    public const OWN = [self::ACCOUNT, self::BANK_CODE, self::CURRENCY];

    /** Of a cell without a heading. */
    public const NONE = '';

    /** @var array<int, array{string, int}|null> key and place by column; null for one that is left out */
    private array $columns = [];

    /** @var array<string, array<int, string>> headings by key and place */
    private array $headings = [];

    /** @var list<string> */
    private array $unknown = [];

    /**
     * @param list<string> $headings
     * @param list<string> $keys of a payment
     * @param list<string> $ignored headings of columns that are left out
     * @param array<string, string> $map key by heading, where the table's own words are not known
     * @throws Unreadable if two columns mean the same
     */
    public function __construct(array $headings, array $keys, array $ignored, array $map)
    {
        $keys = array_merge($keys, self::OWN);
        foreach ($headings as $column => $heading) {
            $this->columns[$column] = in_array($heading, $ignored, true) ? null : $this->settled($heading, $keys, $map);
        }
    }

    /** How many keys it has: a row of headings has more than a line of title. */
    public function count(): int
    {
        return count($this->headings);
    }

    /** @return int of columns, those without a heading among them */
    public function width(): int
    {
        return count($this->columns);
    }

    /** @return array<int, string|null> key by column; empty without a heading, null for one that is left out or unknown */
    public function keys(): array
    {
        return array_map(static fn (?array $place): ?string => $place[0] ?? null, $this->columns);
    }

    /** @return list<string> headings that mean nothing here */
    public function unknown(): array
    {
        return $this->unknown;
    }

    /** What stands over a key's column or columns. */
    public function heading(string $key): ?string
    {
        return isset($this->headings[$key]) ? implode(' + ', $this->headings[$key]) : null;
    }

    /**
     * The cells that are not empty by key, several of one key joined by a blank.
     *
     * @param list<string> $cells
     * @return array<string, string>
     */
    public function pick(array $cells): array
    {
        $values = [];
        $parts = [];
        foreach ($cells as $column => $cell) {
            $place = array_key_exists($column, $this->columns) ? $this->columns[$column] : [self::NONE, 0];
            if ($cell === '' || $place === null) {
                continue;
            }
            if (count($this->headings[$place[0]] ?? []) > 1) {
                $parts[$place[0]][$place[1]] = $cell;
            } else {
                $values[$place[0]] = $cell;
            }
        }
        foreach ($parts as $key => $texts) {
            ksort($texts);
            $values[$key] = implode(' ', $texts);
        }

        return $values;
    }

    /**
     * @param list<string> $keys
     * @param array<string, string> $map
     * @return array{string, int}|null
     */
    private function settled(string $heading, array $keys, array $map): ?array
    {
        if ($heading === '') {
            return [self::NONE, 0];
        }
        $place = isset($map[$heading]) ? [$map[$heading], Headings::PLAIN] : Headings::place($heading, $keys);
        if ($place === null) {
            $this->unknown[] = $heading;

            return null;
        }
        [$key, $number] = $place;
        $other = $this->other($key, $number);
        if ($other !== null) {
            throw Unreadable::because('same', ['key' => $key, 'heading' => $other, 'other' => $heading]);
        }
        $this->headings[$key][$number] = $heading;
        ksort($this->headings[$key]);

        return $place;
    }

    /** The heading that a second one would double. A text can have many parts, a name a first one and another. */
    private function other(string $key, int $number): ?string
    {
        $others = $this->headings[$key] ?? [];
        if ($key === 'ref' || $number === 0) {
            return $others[$number] ?? null;
        }
        unset($others[0]);

        return array_shift($others);
    }
}
