<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * The payments of a batch, in order. As bookings they become objects while you walk
 * over them.
 *
 * @implements \IteratorAggregate<int, Part>
 */
final class Parts implements \IteratorAggregate, \Countable
{
    private string $text;

    private int $count;

    /** @var callable(string): iterable<Part> */
    private $read;

    /**
     * @internal
     * @param callable(string): iterable<Part> $read
     */
    public function __construct(string $text, int $count, callable $read)
    {
        $this->text = $text;
        $this->count = $count;
        $this->read = $read;
    }

    public function count(): int
    {
        return $this->count;
    }

    /** @return \Generator<int, Part> */
    public function getIterator(): \Generator
    {
        yield from ($this->read)($this->text);
    }
}
