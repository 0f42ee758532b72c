<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Mends the text of a ":86:" field, so that the extension finds all that is in it:
 * keywords at the start of a subfield, and "?" for the marker.
 *
 * @internal
 */
final class Details
{
    private const KEYWORDS = ['EREF+', 'KREF+', 'MREF+', 'CRED+', 'DEBT+', 'PURP+', 'COAM+', 'OAMT+', 'SVWZ+', 'ABWA+', 'ABWE+'];

    /** Numbers of the purpose's subfields, in order. */
    private const PURPOSE = [20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 60, 61, 62, 63];

    // A line of the purpose holds so many characters; a shorter one ends with a word.
    private const FULL = 27;

    // Behind the transaction code any character can be the marker. These are seen in statements,
    // and not in plain text that begins with three digits.
    private const OTHER_MARKER = '/^\d{3}([~^<>|*])\d\d/';

    private static ?string $inside = null;

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

    /** The text with each keyword at the start of a subfield, or null if they are there already. */
    public static function withKeywordsInFront(string $text): ?string
    {
        if (!preg_match(self::insidePattern(), $text)) {
            return null;
        }
        [$head, $fields] = self::subfields($text);
        $purpose = array_intersect_key($fields, array_flip(self::PURPOSE));
        $parts = self::split($purpose);
        if (!$parts || count($parts) > count(self::PURPOSE)) {
            return null;
        }
        $fields = array_diff_key($fields, $purpose);
        foreach ($parts as $i => $part) {
            $fields[self::PURPOSE[$i]] = $part;
        }
        ksort($fields);
        foreach ($fields as $number => $part) {
            $head .= sprintf('?%02d', $number) . $part;
        }

        return $head;
    }

    /** A keyword that isn't right behind a marker, also one that a marker tears in two. */
    private static function insidePattern(): string
    {
        if (self::$inside === null) {
            $torn = array_map(static fn (string $keyword): string => implode('(?:\?\d\d)?', array_map('preg_quote', str_split($keyword))), self::KEYWORDS);
            self::$inside = '/(?<!\?\d\d)(?:' . implode('|', $torn) . ')/';
        }

        return self::$inside;
    }

    /**
     * The subfields, if their numbers rise. Where they don't, some markers are text to the
     * extension, and others could become markers if numbers around them changed.
     *
     * @return array{string, array<int, string>} what goes before the first, and the subfields by number
     */
    private static function subfields(string $text): array
    {
        $parts = preg_split('/\?(\d\d)/', $text, -1, PREG_SPLIT_DELIM_CAPTURE);
        $fields = [];
        $last = -1;
        for ($i = 1; isset($parts[$i]); $i += 2) {
            $number = (int) $parts[$i];
            if ($number <= $last) {
                return [$text, []];
            }
            $fields[$number] = $parts[$i + 1];
            $last = $number;
        }

        return [$parts[0], $fields];
    }

    /**
     * The purpose cut before each keyword, or null if there is nothing to cut. A keyword
     * that has a subfield of its own is not looked for elsewhere: there it is quoted, as
     * in the text of a return.
     *
     * @param array<int, string> $purpose
     * @return list<string>|null
     */
    private static function split(array $purpose): ?array
    {
        $seen = [];
        foreach ($purpose as $part) {
            $seen[substr($part, 0, 5)] = true;
        }
        $texts = self::joined($purpose);
        $parts = [];
        foreach ($texts as $text) {
            preg_match_all(self::pattern(), $text, $found, PREG_OFFSET_CAPTURE);
            $from = 0;
            foreach ($found[0] as [$keyword, $place]) {
                if (isset($seen[$keyword])) {
                    continue;
                }
                $seen[$keyword] = true;
                $parts[] = rtrim(substr($text, $from, $place - $from));
                $from = $place;
            }
            $parts[] = substr($text, $from);
        }

        return count($parts) > count($texts) ? $parts : null;
    }

    /**
     * The purpose with one text for each keyword that starts a subfield. What continues it
     * is joined as the extension would: a full line goes on in the middle of a word.
     *
     * @param array<int, string> $purpose
     * @return list<string>
     */
    private static function joined(array $purpose): array
    {
        $texts = [];
        $full = false;
        foreach ($purpose as $part) {
            if (!$texts || in_array(substr($part, 0, 5), self::KEYWORDS, true)) {
                $texts[] = $part;
            } else {
                $before = array_pop($texts);
                $torn = preg_match(self::pattern(), substr($before, -4) . substr($part, 0, 4));
                $continues = preg_match(self::pattern(), $before);
                $texts[] = $before . ($torn || ($continues && $full) ? '' : ($continues ? ' ' : "\n")) . $part;
            }
            $full = self::length($part) >= self::FULL;
        }

        return $texts;
    }

    private static function pattern(): string
    {
        return '/' . implode('|', array_map('preg_quote', self::KEYWORDS)) . '/';
    }

    /** Characters in UTF-8 or in a set of one byte each. */
    private static function length(string $text): int
    {
        return preg_match('//u', $text) ? (int) preg_match_all('/./us', $text) : strlen($text);
    }
}
