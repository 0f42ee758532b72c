<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Banks write UTF-8 or ISO-8859-1, which Windows-1252 includes, and don't say which.
 *
 * @internal
 */
final class Text
{
    public static function isUtf8(string $text): bool
    {
        return (bool) preg_match('//u', $text);
    }

    public static function utf8(string $text): string
    {
        return self::isUtf8($text) ? $text : mb_convert_encoding($text, 'UTF-8', 'Windows-1252');
    }
}
