<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

use Sepa\Toolkit\Statement\Notes;

/**
 * The lines of a text that comes in chunks, whichever way they end: CR LF, LF, CR, or @@.
 * A line keeps its first 64 kB, so that a file without line ends needs no memory.
 *
 * @internal
 */
final class Lines
{
    public const MAX_LENGTH = 65536;

    private const BYTE_ORDER_MARK = "\xEF\xBB\xBF";

    /** @var iterable<string> */
    private iterable $chunks;

    private bool $byteOrderMark = false;

    /** @var bool whether lines end in @@, as they can in a dialogue between programs */
    private bool $atSigns = false;

    private bool $mixedEnds = false;

    private bool $nulBytes = false;

    private bool $lastLineEnd = true;

    /** @var int number of the line that was cut last, 0 if none was */
    private int $cutLine = 0;

    private int $bytes = 0;

    /** @param iterable<string> $chunks none of them empty */
    public function __construct(iterable $chunks)
    {
        $this->chunks = $chunks;
    }

    /** @return \Generator<int, string> those with something in them, by number, from 1 */
    public function each(): \Generator
    {
        $number = 0;
        $rest = '';
        foreach ($this->normalised() as $chunk) {
            $lines = explode("\n", $chunk);
            $lines[0] = $rest . $lines[0];
            $rest = array_pop($lines);
            foreach ($lines as $line) {
                ++$number;
                if ($line === '') {
                    continue;
                }
                yield $number => isset($line[self::MAX_LENGTH]) ? $this->cut($line, $number) : $line;
            }
            if (isset($rest[self::MAX_LENGTH + 1])) {
                // One byte more than is kept tells that it was cut.
                $rest = substr($rest, 0, self::MAX_LENGTH + 1);
            }
        }
        if ($rest !== '') {
            $this->lastLineEnd = false;
            yield ++$number => isset($rest[self::MAX_LENGTH]) ? $this->cut($rest, $number) : $rest;
        }
    }

    /** What was mended so far that no line shows. */
    public function tell(Notes $notes, int $line): void
    {
        foreach (
            [
            'byte_order_mark' => $this->byteOrderMark,
            'line_ends' => $this->mixedEnds,
            'nul_bytes' => $this->nulBytes,
            ] as $code => $seen
        ) {
            if ($seen) {
                $notes->mended($code, $line);
            }
        }
    }

    /** Whether the line that came last had a line end. */
    public function lastLineEnds(): bool
    {
        return $this->lastLineEnd;
    }

    /** Whether that line was longer than is kept. */
    public function wasCut(int $number): bool
    {
        return $this->cutLine === $number;
    }

    /** Bytes read so far. */
    public function bytes(): int
    {
        return $this->bytes;
    }

    private function cut(string $line, int $number): string
    {
        $this->cutLine = $number;

        return substr($line, 0, self::MAX_LENGTH);
    }

    /** @return \Generator<string> the chunks with LF for every line end */
    private function normalised(): \Generator
    {
        $held = '';
        foreach ($this->chunks as $chunk) {
            $first = $this->bytes === 0;
            $this->bytes += strlen($chunk);
            $chunk = $held . $chunk;
            if ($first && strncmp($chunk, self::BYTE_ORDER_MARK, 3) === 0) {
                $this->byteOrderMark = true;
                $chunk = substr($chunk, 3);
            }
            // The LF of a CR may come with the next chunk.
            $this->atSigns = $this->atSigns || ($first && preg_match('/(?:^\s*|@@):20:[^\r\n]*?@@:/', $chunk));
            $held = substr($chunk, -1) === "\r" || ($this->atSigns && substr($chunk, -1) === '@')
                ? substr($chunk, -1)
                : '';
            if ($held !== '') {
                $chunk = substr($chunk, 0, -1);
            }
            yield $this->normalise($chunk);
        }
        if ($held !== '') {
            $this->mixedEnds = true;
            yield $held === '@' ? '@' : "\n";
        }
    }

    private function normalise(string $chunk): string
    {
        if (strpos($chunk, "\0") !== false) {
            $this->nulBytes = true;
            $chunk = strtr($chunk, "\0", ' ');
        }
        if ($this->atSigns && strpos($chunk, '@@') !== false) {
            $this->mixedEnds = true;
            $chunk = str_replace('@@', "\n", $chunk);
        }
        $pairs = substr_count($chunk, "\r\n");
        if (substr_count($chunk, "\r") > $pairs || substr_count($chunk, "\n") > $pairs) {
            $this->mixedEnds = true;
        }
        if (strpos($chunk, "\r") === false) {
            return $chunk;
        }

        return strtr(str_replace("\r\n", "\n", $chunk), "\r", "\n");
    }
}
