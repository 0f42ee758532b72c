<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Money as a whole number of the currency's smallest unit, so that sums are exact.
 *
 * @psalm-immutable
 */
final class Amount implements \JsonSerializable
{
    /** Decimals of the currencies that don't have two (ISO 4217). */
    private const DECIMALS = [
        'BIF' => 0, 'CLP' => 0, 'DJF' => 0, 'GNF' => 0, 'ISK' => 0, 'JPY' => 0, 'KMF' => 0, 'KRW' => 0,
        'PYG' => 0, 'RWF' => 0, 'UGX' => 0, 'UYI' => 0, 'VND' => 0, 'VUV' => 0, 'XAF' => 0, 'XOF' => 0, 'XPF' => 0,
        'BHD' => 3, 'IQD' => 3, 'JOD' => 3, 'KWD' => 3, 'LYD' => 3, 'OMR' => 3, 'TND' => 3,
        'CLF' => 4, 'UYW' => 4,
    ];

    /** Up to here, fifteen digits, a float keeps every digit. */
    private const EXACT_IN_FLOAT = 999999999999999;

    /** Digits that an integer of 64 bits holds, whatever they are. */
    private const MAX_DIGITS = 18;

    /** @var int cents, or whatever the currency's smallest unit is */
    public int $units;

    public string $currency;

    public function __construct(int $units, string $currency)
    {
        $this->units = $units;
        $this->currency = $currency;
    }

    /**
     * Reads an amount as a statement has it: digits, a decimal comma, the decimals
     * that aren't zero. Understood, too: no comma, a decimal point before at most two
     * digits, points between thousands.
     *
     * @return self|null null if the text is none of these, has more decimals than the
     *                   currency, or is beyond 64 bits
     */
    public static function read(string $text, string $currency): ?self
    {
        if (preg_match('/^\d{1,3}(?:\.\d{3})+,\d*$/D', $text)) {
            $text = str_replace('.', '', $text);
        } elseif (preg_match('/^\d+\.\d{0,2}$/D', $text)) {
            $text = str_replace('.', ',', $text);
        }
        if (!preg_match('/^(\d*)(?:,(\d*))?$/D', $text, $part) || $text === '' || $text === ',') {
            return null;
        }
        $decimals = self::decimals($currency);
        $fraction = rtrim($part[2] ?? '', '0');
        $digits = ltrim($part[1] . str_pad($fraction, $decimals, '0'), '0');
        if (strlen($fraction) > $decimals || strlen($digits) > self::MAX_DIGITS) {
            return null;
        }

        return new self((int) $digits, $currency);
    }

    /**
     * Reads an amount as XML has it: digits, and a decimal point before decimals. More
     * decimals than the currency has are rounded, halves up.
     *
     * @param bool|null $rounded set to true if that changed it
     * @return self|null null if the text is something else or beyond 64 bits
     */
    public static function decimal(string $text, string $currency, ?bool &$rounded = null): ?self
    {
        if (preg_match('/^\d{1,15}\.\d\d$/D', $text) && self::decimals($currency) === 2) {
            return new self((int) str_replace('.', '', $text), $currency);
        }
        if (!preg_match('/^\s*\+?(\d*)(?:\.(\d*))?\s*$/D', $text, $part) || $part[1] . ($part[2] ?? '') === '') {
            return null;
        }
        $decimals = self::DECIMALS[$currency] ?? 2;
        $fraction = $part[2] ?? '';
        $digits = ltrim($part[1] . substr(str_pad($fraction, $decimals, '0'), 0, $decimals), '0');
        if (strlen($digits) > self::MAX_DIGITS) {
            return null;
        }
        $rest = strlen($fraction) > $decimals ? rtrim(substr($fraction, $decimals), '0') : '';
        $rounded = $rounded || $rest !== '';

        return new self((int) $digits + ($rest !== '' && $rest[0] >= '5' ? 1 : 0), $currency);
    }

    /** The sum, or null if that is beyond 64 bits. */
    public function plus(self $other): ?self
    {
        $sum = $this->units + $other->units;

        return is_int($sum) ? new self($sum, $this->currency) : null;
    }

    /** The difference, or null if that is beyond 64 bits. */
    public function minus(self $other): ?self
    {
        $difference = $this->units - $other->units;

        return is_int($difference) ? new self($difference, $this->currency) : null;
    }

    public function negative(): self
    {
        return new self(-$this->units, $this->currency);
    }

    /** "-1234.56": a point, and all decimals of the currency; for a German reader text(',', '.'). */
    public function text(string $point = '.', string $thousands = ''): string
    {
        $decimals = self::decimals($this->currency);
        $digits = str_pad(ltrim((string) $this->units, '-'), $decimals + 1, '0', STR_PAD_LEFT);
        $whole = substr($digits, 0, strlen($digits) - $decimals);
        if ($thousands !== '') {
            $whole = strrev(implode(strrev($thousands), str_split(strrev($whole), 3)));
        }

        return ($this->units < 0 ? '-' : '') . $whole . ($decimals > 0 ? $point . substr($digits, -$decimals) : '');
    }

    /** @return int|float|string a number; a text where no float is exactly that number */
    #[\ReturnTypeWillChange]
    public function jsonSerialize()
    {
        if (abs($this->units) > self::EXACT_IN_FLOAT) {
            return $this->text();
        }

        return $this->units / 10 ** self::decimals($this->currency);
    }

    /** Decimals of the currency; 2 for one that isn't known. */
    public static function decimals(string $currency): int
    {
        return self::DECIMALS[$currency] ?? 2;
    }
}
