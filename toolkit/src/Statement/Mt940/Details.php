<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

/**
 * The text of a ":86:" field with subfields, as German banks write it: "166?00GUTSCHRIFT
 * ?20EREF+1?21SVWZ+Rechnung?30…". Read is what the extension's parser reads of text that
 * is well formed, and more where it is not: keywords within a subfield, subfields in any
 * order, other markers.
 *
 * @internal
 */
final class Details
{
    /** Members of a booking by keyword. */
    private const KEYWORDS = [
        'EREF+' => 'eref', 'KREF+' => 'kref', 'MREF+' => 'mref', 'CRED+' => 'cred', 'DEBT+' => 'debt',
        'PURP+' => 'purp',
        'COAM+' => 'coam', 'OAMT+' => 'oamt', 'SVWZ+' => 'svwz', 'ABWA+' => 'abwa', 'ABWE+' => 'abwe',
        'IBAN+' => 'account', 'BIC+' => 'bank',
    ];

    private const KEYWORD = '/(?:EREF|KREF|MREF|CRED|DEBT|PURP|COAM|OAMT|SVWZ|ABWA|ABWE|IBAN|BIC)\+/';

    private const FIRST_KEYWORD = '/^(?:EREF|KREF|MREF|CRED|DEBT|PURP|COAM|OAMT|SVWZ|ABWA|ABWE|IBAN|BIC)\+/';

    /** Subfields that banks have; other numbers after a "?" are text. */
    private const NUMBERS = '/\?(0\d|1\d|2\d|3\d|6\d)/';

    // A line of the purpose or of a name holds so many characters; a shorter one ends with a word.
    private const FULL = 27;

    // Behind the transaction code any character can be the marker. These are seen in statements,
    // and not in plain text that begins with three digits.
    private const OTHER_MARKER = '/^\d{3}([~^<>|*])\d\d/';

    /** Three digits are a code if something structured follows; 999 says that nothing does. */
    private const CODE = '/^(?:(999)|(\d{3})(?=$|\n|[?~^<>|*]\d\d|\/[A-Z]{3,4}\/))/D';

    /** Whether the text has subfields. */
    public static function hasSubfields(string $text): bool
    {
        return (bool) preg_match('/^[^?]*\?\d\d/', $text);
    }

    /** The text with "?" for the marker, or null if it has no other. */
    public static function withMarker(string $text): ?string
    {
        if (!preg_match(self::OTHER_MARKER, $text, $match) || strpos($text, '?') !== false) {
            return null;
        }

        return preg_replace('/' . preg_quote($match[1], '/') . '(?=\d\d)/', '?', $text);
    }

    /** The business transaction code; null if there is none. */
    public static function code(string $text): ?int
    {
        return preg_match(self::CODE, $text, $code) ? (int) ($code[2] ?? $code[1]) ?: null : null;
    }

    /** Whether a keyword stands within a subfield, and not where it is quoted. */
    public static function hasKeywordInside(string $text): bool
    {
        if (substr_count($text, '+') === preg_match_all('/\?\d\d[A-Z]{3,4}\+/', $text)) {
            return false;
        }
        $texts = self::joined(self::purposeOf(self::subfields($text)));

        return count(self::parts($texts)) > count($texts);
    }

    /** @return array<string, mixed> by the members of a booking */
    public static function read(string $text): array
    {
        $fields = self::subfields($text);
        $values = self::purpose(self::parts(self::joined(self::purposeOf($fields))));
        foreach (
            [
            '00' => 'txtext',
            '10' => 'primanota',
            '30' => 'bank',
            '31' => 'account',
            '38' => 'account',
            ] as $number => $member
        ) {
            if (($fields[$number] ?? '') !== '') {
                $values[$member] = $fields[$number];
            }
        }
        $name = $fields['32'] ?? '';
        $more = $fields['33'] ?? '';
        $values['name'] = $more === '' || $name === ''
            ? $name . $more
            : $name . (self::length($name) < self::FULL ? ' ' : '') . $more;
        $values['extcode'] = (int) ($fields['34'] ?? 0) ?: null;
        $values['gvc'] = self::code($text);

        return $values;
    }

    /**
     * The subfields. Where numbers fall, a marker is one of a number that did not come.
     *
     * @return array<int|string, string> by number of two digits
     */
    private static function subfields(string $text): array
    {
        $parts = preg_split(self::NUMBERS, $text, -1, PREG_SPLIT_DELIM_CAPTURE);
        $fields = [];
        $last = null;
        for ($i = 1; isset($parts[$i]); $i += 2) {
            if (isset($fields[$parts[$i]])) {
                $fields[$last] .= '?' . $parts[$i] . $parts[$i + 1];
            } else {
                $last = $parts[$i];
                $fields[$last] = $parts[$i + 1];
            }
        }

        return $fields;
    }

    /**
     * @param array<int|string, string> $fields
     * @return list<string>
     */
    private static function purposeOf(array $fields): array
    {
        $purpose = array_filter(
            $fields,
            static fn ($number): bool => $number >= 20 && $number < 30 || $number >= 60,
            ARRAY_FILTER_USE_KEY
        );
        ksort($purpose);

        return array_values($purpose);
    }

    /**
     * The purpose with one text for each keyword that starts a subfield, and what goes on
     * with it: a full line goes on in the middle of a word.
     *
     * @param list<string> $purpose
     * @return list<string>
     */
    private static function joined(array $purpose): array
    {
        $texts = [];
        $at = -1;
        $continues = false;
        $isFull = false;
        foreach ($purpose as $part) {
            if ($at < 0 || preg_match(self::FIRST_KEYWORD, $part)) {
                $texts[++$at] = $part;
                $continues = preg_match(self::KEYWORD, $part) === 1;
            } else {
                $isTorn = strpos($part, '+') !== false
                    && preg_match(self::KEYWORD, substr($texts[$at], -4) . substr($part, 0, 4));
                $texts[$at] .= ($isTorn || ($continues && $isFull) ? '' : ($continues ? ' ' : "\n")) . $part;
                $continues = $continues || preg_match(self::KEYWORD, $texts[$at]);
            }
            $isFull = self::length($part) >= self::FULL;
        }

        return $texts;
    }

    /**
     * Each text cut before the keywords in it. A keyword that has a subfield of its own is
     * not looked for elsewhere: there it is quoted, as in the text of a return.
     *
     * @param list<string> $texts
     * @return list<string>
     */
    private static function parts(array $texts): array
    {
        $seen = $parts = [];
        foreach ($texts as $text) {
            if (preg_match(self::FIRST_KEYWORD, $text, $keyword)) {
                $seen[$keyword[0]] = true;
            }
        }
        foreach ($texts as $text) {
            $from = 0;
            if (strrpos($text, '+') > 4) {
                preg_match_all(self::KEYWORD, $text, $found, PREG_OFFSET_CAPTURE);
                foreach ($found[0] as [$keyword, $place]) {
                    if (!isset($seen[$keyword])) {
                        $seen[$keyword] = true;
                        $parts[] = rtrim(substr($text, $from, $place - $from));
                        $from = $place;
                    }
                }
            }
            $parts[] = substr($text, $from);
        }

        return $parts;
    }

    /**
     * @param list<string> $parts
     * @return array<string, string>
     */
    private static function purpose(array $parts): array
    {
        $values = [];
        foreach ($parts as $part) {
            if (!preg_match(self::FIRST_KEYWORD, $part, $keyword)) {
                $values['purpose'] = isset($values['purpose']) ? "{$values['purpose']}\n$part" : $part;
                continue;
            }
            $member = self::KEYWORDS[$keyword[0]];
            $value = ltrim(substr($part, strlen($keyword[0])));
            $isAmount = $member === 'coam' || $member === 'oamt';
            $values[$member] = $isAmount ? preg_replace('/,/', '.', $value, 1) : $value;
        }

        return $values;
    }

    /** Characters in UTF-8 or in a set of one byte each. */
    private static function length(string $text): int
    {
        $bytes = strlen($text);

        return $bytes < self::FULL || !preg_match('//u', $text) ? $bytes : mb_strlen($text, 'UTF-8');
    }
}
