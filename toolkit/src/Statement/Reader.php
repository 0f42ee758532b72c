<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\Unreadable;

/**
 * Reads the statements of an MT940 file, one after the other:
 *
 *     $reader = Reader::file('november.sta');
 *     foreach ($reader as $statement) {
 *         echo $statement->account, ' ', $statement->balanced ? 'balanced' : 'CHECK THIS', "\n";
 *     }
 *     foreach ($reader->faults() as $fault) { … }
 *
 * Line ends, missing ends, character sets and fields that the extension would lose are
 * mended; each statement tells what was. Nothing in a file raises an exception.
 *
 * @implements \IteratorAggregate<int, Statement>
 */
final class Reader implements \IteratorAggregate
{
    private const CHUNK = 65536;

    /** @var callable(): iterable<string> */
    private $open;

    /** @var list<Note> */
    private array $faults = [];

    /** @param callable(): iterable<string> $open gives the file's chunks */
    private function __construct(callable $open)
    {
        $this->open = $open;
    }

    /** @throws Unreadable when it is walked over, if it cannot be opened or read */
    public static function file(string $path): self
    {
        return new self(static function () use ($path): \Generator {
            $stream = is_dir($path) ? false : @fopen($path, 'rb');
            if (!$stream) {
                throw new Unreadable(is_dir($path) ? "$path is a folder." : "$path cannot be opened.");
            }
            try {
                yield from self::chunks($stream);
            } finally {
                fclose($stream);
            }
        });
    }

    /** @param resource $stream open for reading; read once, from where it stands, and left open */
    public static function stream($stream): self
    {
        return new self(static fn (): \Generator => self::chunks($stream));
    }

    public static function string(string $text): self
    {
        return new self(static function () use ($text): \Generator {
            for ($at = 0; $at < strlen($text); $at += self::CHUNK) {
                yield substr($text, $at, self::CHUNK);
            }
        });
    }

    /**
     * What is wrong with the file as a whole, after all its statements have been walked over.
     *
     * @return list<Note>
     */
    public function faults(): array
    {
        return $this->faults;
    }

    /** @return \Generator<int, Statement> */
    public function getIterator(): \Generator
    {
        $this->faults = [];
        $lines = new Lines(($this->open)());
        $splitter = new Splitter($lines);
        $number = 0;
        $position = 0;
        foreach ($lines->each() as $number => $line) {
            $statement = $splitter->line($line, $number);
            if ($statement) {
                yield $position++ => $statement;
                unset($statement);
            }
        }
        $statement = $splitter->end($number);
        $this->faults = $splitter->faults();
        if ($statement) {
            yield $position => $statement;
        }
    }

    /**
     * @param resource $stream
     * @return \Generator<string>
     */
    private static function chunks($stream): \Generator
    {
        while (!feof($stream)) {
            $chunk = @stream_get_contents($stream, self::CHUNK);
            if ($chunk === false) {
                throw new Unreadable('The file cannot be read.');
            }
            if ($chunk !== '') {
                yield $chunk;
            }
        }
    }
}
