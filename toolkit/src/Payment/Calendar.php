<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Days, as texts yyyy-mm-dd. */
final class Calendar
{
    /** Days of every year on which TARGET is closed; Good Friday and Easter Monday are the others. */
    private const CLOSED = [
        '01-01' => 'new_year', '05-01' => 'labour_day', '12-25' => 'christmas', '12-26' => 'december_26',
    ];

    public static function exists(string $date): bool
    {
        return preg_match('/^(\d{4})-(\d\d)-(\d\d)$/D', $date, $part)
            && checkdate((int) $part[2], (int) $part[3], (int) $part[1]);
    }

    /** The name, as texts have it, of an existing day on which banks do not settle; null if they do. */
    public static function closed(string $date): ?string
    {
        $day = new \DateTimeImmutable($date);
        if ($day->format('N') >= 6) {
            return strtolower($day->format('l'));
        }
        $holiday = self::CLOSED[$day->format('m-d')] ?? null;
        if ($holiday === null) {
            $easter = self::easter((int) $day->format('Y'));
            $movable = [
                $easter->modify('-2 days')->format('Y-m-d') => 'good_friday',
                $easter->modify('+1 day')->format('Y-m-d') => 'easter_monday',
            ];
            $holiday = $movable[$date] ?? null;
        }

        return $holiday;
    }

    /** The first day after an existing one on which banks settle. */
    public static function nextBankDay(string $date): string
    {
        $day = new \DateTimeImmutable($date);
        do {
            $day = $day->modify('+1 day');
        } while (self::closed($day->format('Y-m-d')) !== null);

        return $day->format('Y-m-d');
    }

    /** Gauss's Easter, for the Gregorian calendar. */
    private static function easter(int $year): \DateTimeImmutable
    {
        $century = intdiv($year, 100);
        $moon = (15 + $century - intdiv($century, 4) - intdiv(8 * $century + 13, 25)) % 30;
        $epact = (19 * ($year % 19) + $moon) % 30;
        if ($epact === 29 || ($epact === 28 && $year % 19 > 10)) {
            --$epact;
        }
        $sunday = (2 * ($year % 4) + 4 * ($year % 7) + 6 * $epact + 4 + $century - intdiv($century, 4)) % 7;

        return (new \DateTimeImmutable(sprintf('%04d-03-22', $year)))->modify(sprintf('+%d days', $epact + $sunday));
    }
}
