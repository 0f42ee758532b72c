<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

use Sepa\Toolkit\Unreadable;

/**
 * Bytes in pieces, of which the first can be looked at before they are read.
 *
 * @internal
 */
final class Chunks
{
    private const SIZE = 65536;

    private const HEAD = 4096;

    private \Iterator $rest;

    private string $head = '';

    /** @param \Iterator<string> $chunks */
    public function __construct(\Iterator $chunks)
    {
        $this->rest = $chunks;
        for ($this->rest->rewind(); strlen($this->head) < self::HEAD && $this->rest->valid(); $this->rest->next()) {
            $this->head .= $this->rest->current();
        }
    }

    /**
     * @param resource $stream
     * @return \Generator<string>
     */
    public static function ofStream($stream): \Generator
    {
        while (!feof($stream)) {
            $chunk = @stream_get_contents($stream, self::SIZE);
            if ($chunk === false) {
                throw new Unreadable('The file cannot be read.');
            }
            if ($chunk !== '') {
                yield $chunk;
            }
        }
    }

    /** @return \Generator<string> */
    public static function ofString(string $text): \Generator
    {
        for ($at = 0; $at < strlen($text); $at += self::SIZE) {
            yield substr($text, $at, self::SIZE);
        }
    }

    public function head(): string
    {
        return $this->head;
    }

    /** @return \Generator<string> once; none of them empty */
    public function all(): \Generator
    {
        if ($this->head !== '') {
            yield $this->head;
        }
        for (; $this->rest->valid(); $this->rest->next()) {
            yield $this->rest->current();
        }
    }
}
