<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Csv\Headings;
use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Unreadable;

/**
 * Payments from a table whose headings are transaction keys or usual German and
 * English words for them. An empty cell leaves its key out.
 */
final class Sheet
{
    private Reader $reader;

    private bool $german;

    /** @var list<string> */
    private array $ignored;

    /** @var array<string, string> heading by key */
    private array $headings = [];

    /**
     * @param bool $german whether amounts such as 1.190,00 and dates such as 31.12.2026 are understood
     * @param list<string> $ignored headings of columns that are not for the bank
     */
    public function __construct(Reader $reader, bool $german = false, array $ignored = [])
    {
        $this->reader = $reader;
        $this->german = $german;
        $this->ignored = $ignored;
    }

    /**
     * Adds all rows to a message; what the sheet itself has wrong is among the
     * message's faults.
     *
     * @param callable|null $progress called after each row, without arguments
     * @throws Unreadable if the file is no table
     */
    public function fill(Payments $payments, ?callable $progress = null): void
    {
        $columns = null;
        foreach ($this->reader as $number => $cells) {
            if (implode('', $cells) === '') {
                continue;
            }
            if ($columns === null) {
                $columns = $this->columns($number, $cells, $payments);
                continue;
            }
            $this->fillRow($payments, $number, $columns, $cells);
            if ($progress !== null) {
                $progress();
            }
        }
        if ($columns === null) {
            throw new Unreadable('the file is empty: a row of headings is expected, such as name, iban, amount, ref');
        }
        if (!$this->reader->endsInLine()) {
            $payments->warn($number, null, 'no_line_end');
        }
    }

    /** The heading under which a key stands in the file. */
    public function heading(string $key): ?string
    {
        return $this->headings[$key] ?? null;
    }

    /**
     * @param list<string> $cells of the row of headings
     * @return array<int, string|null> key by column; empty without a heading, null for one that is ignored
     */
    private function columns(int $number, array $cells, Payments $payments): array
    {
        $columns = [];
        foreach ($cells as $column => $heading) {
            if (in_array($heading, $this->ignored, true)) {
                $columns[$column] = null;
                continue;
            }
            $key = $heading === '' ? '' : Headings::key($heading, $payments::transactionKeys());
            if ($key === null) {
                $payments->refuse($number, null, $heading, 'unknown_heading', ['keys' => implode(', ', $payments->keys())]);
                $columns[$column] = null;
                continue;
            }
            if ($key !== '' && isset($this->headings[$key])) {
                throw new Unreadable("two columns are '$key': '{$this->headings[$key]}' and '$heading'");
            }
            $this->headings[$key] = $heading;
            $columns[$column] = $key;
        }
        if (!isset($this->headings['iban']) && !isset($this->headings['amount'])) {
            throw new Unreadable("no headings iban and amount in the first row: '" . implode("', '", array_slice($cells, 0, 8)) . "'");
        }

        return $columns;
    }

    /**
     * @param array<int, string|null> $columns
     * @param list<string> $cells
     */
    private function fillRow(Payments $payments, int $number, array $columns, array $cells): void
    {
        $payment = [];
        foreach ($cells as $column => $cell) {
            $key = array_key_exists($column, $columns) ? $columns[$column] : '';
            if ($cell !== '' && $key !== null) {
                $payment[$key] = $this->german ? self::understood($key, $cell) : $cell;
            }
        }
        if (isset($payment['']) || count($cells) < count($columns)) {
            unset($payment['']);
            $counts = ['cells' => count($cells), 'headings' => count($columns)];
            $payments->refuse($number, null, null, 'cells', $counts);
        }
        $payments->add($payment, null, $number);
    }

    /** A cell as the bank wants it, if it is an amount or a day in German notation. */
    public static function understood(string $key, string $cell): string
    {
        if (Keys::form($key) === Keys::AMOUNT && preg_match('/^(\d+|\d{1,3}(?:\.\d{3})+)(,\d{1,2})?(?:\s*(?:€|EUR))?$/Du', $cell, $part)) {
            $cents = $part[2] ?? '';
            // Without cents, 1.190 could also be meant as 1.19.
            return $cents === '' && strpos($part[1], '.') !== false
                ? $cell
                : str_replace('.', '', $part[1]) . str_replace(',', '.', $cents);
        }
        if (Keys::form($key) === Keys::DATE && preg_match('/^(\d{1,2})\.(\d{1,2})\.(\d{4})$/D', $cell, $part)) {
            return sprintf('%s-%02d-%02d', $part[3], $part[2], $part[1]);
        }

        return $cell;
    }
}
