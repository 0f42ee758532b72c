<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

/**
 * The days of XML dates and times, midnight UTC: the day as it is written, whatever
 * the zone. Bookings of one day share one object.
 *
 * @internal
 */
final class Days
{
    /** @var array<string, ?\DateTimeImmutable> */
    private array $known = [];

    private \DateTimeZone $utc;

    public function __construct()
    {
        $this->utc = new \DateTimeZone('UTC');
    }

    /** @return \DateTimeImmutable|null null if it is none, or the calendar doesn't have it */
    public function of(string $text): ?\DateTimeImmutable
    {
        $day = substr(trim($text), 0, 10);
        if (!array_key_exists($day, $this->known)) {
            $exists = preg_match('/^(\d{4})-(\d\d)-(\d\d)$/D', $day, $part)
                && checkdate((int) $part[2], (int) $part[3], (int) $part[1]);
            $this->known[$day] = $exists ? new \DateTimeImmutable($day, $this->utc) : null;
        }

        return $this->known[$day];
    }
}
