<?php

declare(strict_types=1);

namespace Sepa\Toolkit;

/** Why a file could not be opened, read or written. */
final class SystemError
{
    /** Before the calls whose reason may be asked for. */
    public static function forget(): void
    {
        error_clear_last();
    }

    /** The system's words since forget(), such as "Permission denied"; empty if there are none. */
    public static function reason(): string
    {
        // "fopen(x): Failed to open stream: Reason", "fwrite(): Write of 8 bytes failed with errno=28 Reason"
        preg_match('/^.*(?:errno=\d+|:) ([^:]+)$/sD', error_get_last()['message'] ?? '', $part);

        return $part[1] ?? '';
    }

    /** A reason in another language, if translations/system has it. */
    public static function translated(string $reason, string $locale): string
    {
        return Texts::of('system', $reason, [], $locale);
    }
}
