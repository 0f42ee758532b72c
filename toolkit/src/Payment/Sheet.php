<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Unreadable;

/**
 * Payments from a table whose headings are transaction keys or usual German and
 * English words for them. An empty cell leaves its key out. Lines of title may
 * stand before the headings.
 */
final class Sheet
{
    private const TITLE_LINES = 10;

    /** A row with so many known headings is one of headings. */
    private const CERTAIN = 2;

    private Reader $reader;

    private bool $german;

    /** @var list<string> */
    private array $ignored;

    /** @var array<string, string> */
    private array $map;

    /** @var array<string, string> */
    private array $common;

    /** @var array<int, array<string, string>> */
    private array $mended;

    private ?Columns $columns = null;

    /** @var list<string> the row of headings */
    private array $headings = [];

    /** @var array<int, list<string>> rows before the headings */
    private array $title = [];

    /**
     * @param bool $german whether amounts such as 1.190,00 and dates such as 31.12.2026 are understood
     * @param list<string> $ignored headings of columns that are not for the bank
     * @param array<string, string> $map key by heading, where a heading is no usual word for it
     * @param array<string, string> $common value by key, for rows that have none of their own
     * @param array<int, array<string, string>> $mended values in place of the table's, by row and key; empty for none.
     *                                                  Rows after the last one follow it.
     */
    public function __construct(
        Reader $reader,
        bool $german = false,
        array $ignored = [],
        array $map = [],
        array $common = [],
        array $mended = []
    ) {
        $this->reader = $reader;
        $this->german = $german;
        $this->ignored = $ignored;
        $this->map = $map;
        $this->common = $common;
        $this->mended = $mended;
        ksort($this->mended);
    }

    /**
     * Adds all rows to a message; what the sheet itself has wrong is among the
     * message's faults.
     *
     * @param callable|null $progress called after each row, without arguments
     * @throws Unreadable if the file is no table
     */
    public function fill(Receiver $payments, ?callable $progress = null): void
    {
        $cells = new Cells($payments, $this->german, $this->common);
        $lacking = [];
        $isHeaded = false;
        foreach ($this->allRows($payments->columns()) as $number => $row) {
            if (!$isHeaded) {
                $lacking = $this->lacking($payments, $number);
                $isHeaded = true;
                continue;
            }
            $cells->add($number, ...$this->picked($number, $row, $lacking));
            if ($progress !== null) {
                $progress();
            }
        }
        if (!$this->reader->endsInLine()) {
            $payments->warn($number, null, 'no_line_end');
        }
    }

    /**
     * What the rows have, by number and key, with what was mended in them.
     *
     * @param list<string> $keys of a payment
     * @return \Generator<int, array<string, string>>
     * @throws Unreadable if the file is no table
     */
    public function values(array $keys): \Generator
    {
        $isHeaded = false;
        foreach ($this->allRows($keys) as $number => $row) {
            if ($isHeaded) {
                yield $number => $this->picked($number, $row, [])[0];
            }
            $isHeaded = true;
        }
    }

    /** What its columns mean; null before it is read. */
    public function columns(): ?Columns
    {
        return $this->columns;
    }

    /** @return list<string> the row of headings; empty before it is read */
    public function headings(): array
    {
        return $this->headings;
    }

    /** The heading under which a key stands in the file. */
    public function heading(string $key): ?string
    {
        return $this->columns === null ? null : $this->columns->heading($key);
    }

    /**
     * With the rows that follow the table's.
     *
     * @param list<string> $keys of a payment
     * @return \Generator<int, list<string>>
     */
    private function allRows(array $keys): \Generator
    {
        $last = 0;
        foreach ($this->rows($keys) as $last => $cells) {
            yield $last => $cells;
        }
        foreach ($this->mended as $number => $values) {
            if ($number > $last && implode('', $values) !== '') {
                yield $number => [];
            }
        }
    }

    /**
     * The row of headings and what follows it.
     *
     * @param list<string> $keys of a payment
     * @return \Generator<int, list<string>>
     */
    private function rows(array $keys): \Generator
    {
        $this->reader->expectTitle();
        $early = [];
        $columns = [];
        foreach ($this->reader as $number => $cells) {
            if (implode('', $cells) === '') {
                continue;
            }
            if ($this->columns !== null) {
                yield $number => $cells;
                continue;
            }
            $early[$number] = $cells;
            $columns[$number] = new Columns($cells, $keys, $this->ignored, $this->map);
            if (count($columns[$number]) >= self::CERTAIN || count($early) > self::TITLE_LINES) {
                yield from $this->headed($early, $columns);
            }
        }
        if ($this->columns === null) {
            yield from $this->headed($early, $columns);
        }
    }

    /**
     * @param array<int, list<string>> $early first rows
     * @param array<int, Columns> $columns what each would mean as a row of headings
     * @return array<int, list<string>> from the row of headings on
     */
    private function headed(array $early, array $columns): array
    {
        if (!$early) {
            throw Unreadable::because('empty');
        }
        $known = array_map('count', $columns);
        $place = array_search(max($known), array_values($known), true);
        if (max($known) === 0) {
            $first = implode("', '", array_slice(reset($early), 0, 8));
            throw Unreadable::because('headings', ['first' => $first]);
        }
        $this->reader->endTitle();
        $this->title = array_slice($early, 0, $place, true);
        $this->columns = array_values($columns)[$place];
        $this->headings = array_values($early)[$place];
        $strange = array_diff(array_keys($this->map), array_values($early)[$place]);
        if ($strange) {
            throw Unreadable::because('no_heading', ['heading' => implode("', '", $strange)]);
        }

        return array_slice($early, $place, null, true);
    }

    /**
     * Tells what is wrong with the headings.
     *
     * @return array<string, null> keys that every row lacks
     */
    private function lacking(Receiver $payments, int $number): array
    {
        if ($this->title) {
            $texts = array_map(
                static fn (array $cells): string => implode(' ', array_filter($cells, 'strlen')),
                $this->title
            );
            $payments->warn($number, null, 'title_lines', ['lines' => count($texts), 'text' => (string) reset($texts)]);
        }
        foreach ($this->columns->unknown() as $heading) {
            $payments->refuse($number, null, $heading, 'unknown_heading', ['keys' => implode(', ', $payments->keys())]);
        }
        $lacking = [];
        foreach ($payments->requiredKeys() as $key) {
            $isThere = isset($this->common[$key]) || $this->columns->heading($key) !== null
                || ($key === 'iban' && $this->columns->heading(Columns::ACCOUNT) !== null);
            if (!$isThere) {
                $payments->refuse($number, null, $key, 'missing_column');
                $lacking[$key] = null;
            }
        }

        return $lacking;
    }

    /**
     * @param list<string> $cells
     * @param array<string, null> $lacking
     * @return array{array<string, string>, array<string, array{string, array<string, int>}|null>} values and faults
     */
    private function picked(int $number, array $cells, array $lacking): array
    {
        $values = $this->columns->pick($cells);
        if (isset($this->mended[$number])) {
            return self::mended($values, $this->mended[$number], $lacking);
        }
        $isOff = isset($values[Columns::NONE]) || count($cells) < $this->columns->width();
        unset($values[Columns::NONE]);
        $counts = ['cells' => count($cells), 'headings' => $this->columns->width()];

        return [$values, $lacking + ($isOff ? [Columns::NONE => ['cells', $counts]] : [])];
    }

    /**
     * @param array<string, string> $values
     * @param array<string, string> $mended
     * @param array<string, null> $lacking
     * @return array{array<string, string>, array<string, null>} values and faults
     */
    private static function mended(array $values, array $mended, array $lacking): array
    {
        if (($mended['iban'] ?? '') !== '') {
            unset($values[Columns::ACCOUNT], $values[Columns::BANK_CODE]);
        }
        unset($values[Columns::NONE]);
        $filled = array_filter($mended, static fn (string $value): bool => $value !== '');

        return [$filled + array_diff_key($values, $mended), array_diff_key($lacking, $filled)];
    }

    /** A cell as the bank wants it, if it is an amount or a day in German notation. */
    public static function understood(string $key, string $cell): string
    {
        $form = Keys::form($key);
        if (
            $form === Keys::AMOUNT
            && preg_match('/^(?:(?:€|EUR)\s*)?(\d+|\d{1,3}(?:\.\d{3})+)(,\d{1,2})?(?:\s*(?:€|EUR))?$/Du', $cell, $part)
        ) {
            $cents = $part[2] ?? '';
            // Without cents, 1.190 could also be meant as 1.19.
            return $cents === '' && strpos($part[1], '.') !== false
                ? $cell
                : str_replace('.', '', $part[1]) . str_replace(',', '.', $cents);
        }
        if ($form === Keys::DATE && preg_match('/^(\d{1,2})\.(\d{1,2})\.(\d{4})$/D', $cell, $part)) {
            return sprintf('%s-%02d-%02d', $part[3], $part[2], $part[1]);
        }

        return $cell;
    }
}
