<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

/**
 * The dates of statement lines, midnight UTC. Bookings of one day share one object.
 *
 * @internal
 */
final class Dates
{
    // Years of two digits from here on lie in the last century, as the extension reads them.
    private const LAST_CENTURY = 80;

    private \DateTimeZone $utc;

    /** @var array<string, ?\DateTimeImmutable> */
    private array $known = [];

    public function __construct()
    {
        $this->utc = new \DateTimeZone('UTC');
    }

    /**
     * A date YYMMDD. Banks that count months of thirty days write 30 February, which is
     * the month's last day.
     *
     * @return \DateTimeImmutable|null null if the calendar doesn't have it
     */
    public function of(string $date): ?\DateTimeImmutable
    {
        if (!preg_match('/^\d{6}$/D', $date)) {
            return null;
        }

        $monthAndDay = substr($date, 2);
        if ($monthAndDay === '0229' || $monthAndDay === '0230') {
            return $this->at(self::year($date), '0229') ?? $this->at(self::year($date), '0228');
        }

        return $this->at(self::year($date), $monthAndDay);
    }

    /**
     * The booking date MMDD, which has no year: the one that is nearer to the value
     * date than half a year.
     */
    public function booked(string $valuta, string $date): ?\DateTimeImmutable
    {
        return $this->at(self::year($valuta) + self::yearsApart($valuta, $date), $date);
    }

    /** Whether the booking date MMDD is of another year, and the months don't show it: only December and January do. */
    public static function turnsUnseen(string $valuta, string $date): bool
    {
        return self::yearsApart($valuta, $date) !== 0
            && abs((int) substr($date, 0, 2) - (int) substr($valuta, 2, 2)) !== 11;
    }

    private static function yearsApart(string $valuta, string $date): int
    {
        $months = (int) substr($date, 0, 2) - (int) substr($valuta, 2, 2);

        return $months > 6 ? -1 : ($months < -6 ? 1 : 0);
    }

    private static function year(string $date): int
    {
        $year = (int) substr($date, 0, 2);

        return $year + ($year < self::LAST_CENTURY ? 2000 : 1900);
    }

    private function at(int $year, string $monthAndDay): ?\DateTimeImmutable
    {
        $key = $year . $monthAndDay;
        if (!array_key_exists($key, $this->known)) {
            $month = substr($monthAndDay, 0, 2);
            $day = substr($monthAndDay, 2);
            $exists = checkdate((int) $month, (int) $day, $year);
            $this->known[$key] = $exists ? new \DateTimeImmutable("$year-$month-$day", $this->utc) : null;
        }

        return $this->known[$key];
    }
}
