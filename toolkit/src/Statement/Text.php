<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Banks write UTF-8, ISO-8859-1, which Windows-1252 includes, or code page 850, and
 * don't say which.
 *
 * @internal
 */
final class Text
{
    public const WINDOWS = 'Windows-1252';

    public const DOS = 'CP850';

    /** The bytes of ä ö ü Ä Ö Ü ß in each. */
    private const UMLAUTS = [
        self::WINDOWS => '/[\xE4\xF6\xFC\xC4\xD6\xDC\xDF]/',
        self::DOS => '/[\x84\x94\x81\x8E\x99\x9A\xE1]/',
    ];

    public static function isUtf8(string $text): bool
    {
        return (bool) preg_match('//u', $text);
    }

    public static function utf8(string $text, string $encoding = self::WINDOWS): string
    {
        return self::isUtf8($text) ? $text : mb_convert_encoding($text, 'UTF-8', $encoding);
    }

    /** How many more umlauts the text has in code page 850 than in Windows-1252. */
    public static function umlautsOfDos(string $text): int
    {
        return (int) preg_match_all(self::UMLAUTS[self::DOS], $text) - (int) preg_match_all(
            self::UMLAUTS[self::WINDOWS],
            $text
        );
    }
}
