<?php

declare(strict_types=1);

namespace Sepa\Toolkit;

/** Which release this is. */
final class Version
{
    /** Such as 2.28.0, with "+dev" between two releases, in packages with the release of the bank lists. */
    public static function number(): string
    {
        return trim((string) file_get_contents(dirname(__DIR__) . '/VERSION'));
    }
}
