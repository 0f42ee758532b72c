<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

/** What statuses mean to a program. */
final class Status
{
    public const REJECTED = 'RJCT';

    public const MATCH = 'RCVC';

    public const CLOSE_MATCH = 'RVMC';

    public const NO_MATCH = 'RVNM';

    /** What is told of many, and of which none can be said to have it. */
    private const OF_MANY = ['PART', 'RVCM', self::CLOSE_MATCH, self::NO_MATCH, 'RVNA'];

    public static function isRefused(string $status): bool
    {
        return $status === self::REJECTED;
    }

    /** Of one payment; or of many, that at least one of them is. */
    public static function isOtherName(string $status): bool
    {
        return in_array($status, [self::CLOSE_MATCH, self::NO_MATCH, 'RVCM'], true);
    }

    /** What counts most where several reports speak of one payment: a refusal, a name, whatever is told. */
    public static function weight(string $status): int
    {
        return self::isRefused($status) ? 3 : (self::isOtherName($status) ? 2 : ($status === '' ? 0 : 1));
    }

    /** What a status of many says of each. */
    public static function ofEach(string $status): string
    {
        return in_array($status, self::OF_MANY, true) ? '' : $status;
    }
}
