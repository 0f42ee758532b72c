<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Csv;

use Sepa\Toolkit\Payment\Keys;

/** What the headings of spreadsheets mean. */
final class Headings
{
    /** Those of what is no payment's, in the form of plain(); Payment\Keys has the others. */
    private const SYNONYMS = [
        'account' => ['konto', 'kontonummer', 'kontonr', 'ktonr', 'kto', 'accountnumber', 'accountno'],
        'bank_code' => [
            'blz', 'bankleitzahl', 'bankid', 'sortcode', 'bicblz', 'blzbic', 'bankleitzahlbic', 'bicbankleitzahl',
        ],
        'currency' => ['waehrung', 'whg', 'currencycode', 'ccy'],
        'query' => ['bic', 'swift', 'swiftcode', 'iban', 'blz', 'bankleitzahl', 'bankcode', 'bank'],
    ];

    /** Place of a heading that is the key's own. */
    public const PLAIN = 1;

    private const PLACES = [
        'name' => [
            0 => ['vorname', 'firstname', 'givenname'],
            2 => ['nachname', 'familienname', 'zuname', 'lastname', 'surname', 'familyname'],
        ],
        'ref' => [
            0 => ['rechnung', 'rechnungsnr', 'rechnungsnummer', 'rechnungnr', 'renr', 'rgnr', 'belegnr', 'belegnummer',
                'invoice', 'invoiceno', 'invoicenr', 'invoicenumber'],
        ],
    ];

    /** @var array<string, array<string, string>> key by plain heading, by list of keys */
    private static array $words = [];

    /** Words for the other party, around which the rest of a heading stands: "IBAN des Empfängers", "Beneficiary name". */
    private const PARTY = '/^(.*?)(?:des|der|vom|von|ofthe|of)?(?:zahlungsempfaenger|empfaenger|beguenstigte'
        . '|zahlungspflichtige|zahler|schuldner|debitor|kreditor|kontoinhaber|kunde'
        . '|lieferant|mitglied|recipient|payee|beneficiary|debtor|payer'
        . '|creditor|customer|supplier|vendor|member)(?<rest>.*)$/';

    /** Endings of these words. */
    private const ENDINGS = ['', 's', 'n', 'r', 'er', 'en', 'ern', 'ers'];

    /** What can stand there. An id, for one, would be another thing. */
    private const OF_PARTY = [
        'name', 'iban', 'bic', 'account', 'bank_code', 'addrStreet', 'addrNum', 'addrCode', 'addrTown', 'addrCC',
    ];

    /**
     * The key that a heading means, of those that are wanted.
     *
     * @param list<string> $keys
     */
    public static function key(string $heading, array $keys): ?string
    {
        $plain = self::plain($heading);

        return self::find($plain, $keys) ?? self::ofParty($plain, $keys);
    }

    /**
     * The key that a heading means, and the place of its cell where several make one
     * text: first name before name, invoice number before "Verwendungszweck 1".
     *
     * @param list<string> $keys
     * @return array{string, int}|null
     */
    public static function place(string $heading, array $keys): ?array
    {
        $plain = self::plain($heading);
        foreach (array_intersect_key(self::PLACES, array_flip($keys)) as $key => $places) {
            foreach ($places as $place => $words) {
                if (in_array($plain, $words, true)) {
                    return [$key, $place];
                }
            }
        }
        if (preg_match('/^(.+?)(\d{1,2})$/D', $plain, $part) && self::find($part[1], $keys) === 'ref') {
            return ['ref', self::PLAIN + (int) $part[2]];
        }
        $key = self::key($heading, $keys);

        return $key === null ? null : [$key, self::PLAIN];
    }

    /** @param list<string> $keys */
    private static function find(string $plain, array $keys): ?string
    {
        $list = implode(' ', $keys);
        self::$words[$list] = self::$words[$list] ?? self::wordsOf($keys);

        return self::$words[$list][$plain] ?? null;
    }

    /**
     * @param list<string> $keys
     * @return array<string, string> key by plain heading: keys themselves first, then the words of the first of them
     */
    private static function wordsOf(array $keys): array
    {
        $words = array_combine(array_map([self::class, 'plain'], $keys), $keys);
        foreach ($keys as $key) {
            $usual = array_merge(array_map([self::class, 'plain'], Keys::headings($key)), self::SYNONYMS[$key] ?? []);
            $words += array_fill_keys($usual, $key);
        }

        return $words;
    }

    /** @param list<string> $keys */
    private static function ofParty(string $plain, array $keys): ?string
    {
        $keys = array_values(array_intersect($keys, self::OF_PARTY));
        if (!preg_match(self::PARTY, $plain, $part)) {
            return null;
        }
        foreach (self::ENDINGS as $ending) {
            if (strncmp($part['rest'], $ending, strlen($ending)) === 0) {
                $rest = $part[1] . substr($part['rest'], strlen($ending));
                $key = self::find($rest === '' ? 'name' : $rest, $keys);
            }
            if (isset($key)) {
                return $key;
            }
        }

        return null;
    }

    /** Small ASCII letters and digits alone: "Fällig am:" is "faelligam". */
    public static function plain(string $heading): string
    {
        $small = strtr(
            mb_strtolower($heading, 'UTF-8'),
            ['ä' => 'ae', 'ö' => 'oe', 'ü' => 'ue', 'ß' => 'ss', '€' => 'eur']
        );

        return (string) preg_replace('/[^a-z0-9]/', '', $small);
    }
}
