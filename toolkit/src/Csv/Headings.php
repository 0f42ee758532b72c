<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Csv;

use Sepa\Toolkit\Payment\Keys;

/** What the headings of spreadsheets mean. */
final class Headings
{
    /** Those of what is no payment's, in the form of plain(); Payment\Keys has the others. */
    private const SYNONYMS = [
        'account' => ['konto', 'kontonummer', 'kontonr', 'ktonr', 'accountnumber', 'accountno'],
        'bank_code' => ['blz', 'bankleitzahl', 'bankid', 'sortcode'],
        'query' => ['bic', 'swift', 'swiftcode', 'iban', 'blz', 'bankleitzahl', 'bankcode', 'bank'],
    ];

    /**
     * The key that a heading means, of those that are wanted.
     *
     * @param list<string> $keys
     */
    public static function key(string $heading, array $keys): ?string
    {
        $plain = self::plain($heading);
        foreach ($keys as $key) {
            if ($plain === self::plain($key)) {
                return $key;
            }
        }
        foreach ($keys as $key) {
            $usual = array_map([self::class, 'plain'], Keys::headings($key));
            if (in_array($plain, array_merge($usual, self::SYNONYMS[$key] ?? []), true)) {
                return $key;
            }
        }

        return null;
    }

    /** Small ASCII letters and digits alone: "Fällig am:" is "faelligam". */
    private static function plain(string $heading): string
    {
        $small = strtr(mb_strtolower($heading, 'UTF-8'), ['ä' => 'ae', 'ö' => 'oe', 'ü' => 'ue', 'ß' => 'ss']);

        return (string) preg_replace('/[^a-z0-9]/', '', $small);
    }
}
