<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * The bookings of a statement, in order. They are kept as text and become objects
 * one piece after the other while you walk over them, so that a statement with a
 * million of them needs little more memory than its part of the file.
 *
 * @implements \IteratorAggregate<int, Booking>
 */
final class Bookings implements \IteratorAggregate, \Countable
{
    /** @var list<mixed> */
    private array $pieces;

    private int $count;

    /** @var callable(mixed): iterable<Booking> */
    private $read;

    /**
     * @internal
     * @param list<mixed> $pieces texts of some bookings each
     * @param callable(mixed): iterable<Booking> $read makes them of such a text
     */
    public function __construct(array $pieces, int $count, callable $read)
    {
        $this->pieces = $pieces;
        $this->count = $count;
        $this->read = $read;
    }

    public function count(): int
    {
        return $this->count;
    }

    /** @return \Generator<int, Booking> */
    public function getIterator(): \Generator
    {
        $number = 0;
        foreach ($this->pieces as $piece) {
            foreach (($this->read)($piece) as $booking) {
                yield $number++ => $booking;
            }
        }
    }
}
