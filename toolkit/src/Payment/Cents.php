<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * Amounts as whole cents. They are integers; where those have 32 bits, large
 * ones are floats, which are exact up to 90 million million euro.
 */
final class Cents
{
    /**
     * @param string $amount digits, and at most two after a point
     * @return int|float
     */
    public static function of(string $amount)
    {
        $decimals = strlen($amount) - (int) strpos($amount . '.', '.') - 1;

        return str_replace('.', '', $amount) * ($decimals === 2 ? 1 : ($decimals === 1 ? 10 : 100));
    }

    /**
     * @param int|float $cents
     * @return string euro with two decimals
     */
    public static function text($cents): string
    {
        $digits = str_pad(is_int($cents) ? (string) $cents : sprintf('%.0F', $cents), 3, '0', STR_PAD_LEFT);

        return substr($digits, 0, -2) . '.' . substr($digits, -2);
    }
}
