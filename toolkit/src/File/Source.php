<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

use Sepa\Toolkit\Unreadable;

/**
 * The documents of a file, a stream or a text: one, or those in a gzip file or a
 * ZIP archive. What is in an archive within an archive is not looked for.
 */
final class Source
{
    /** Bytes that one packed file may hold; a bank's files have some megabytes. */
    private const MAX_UNPACKED = 1000000000;

    /** So many are always fine; beyond them a packed byte may become the others. */
    private const FREE = 50000000, RATIO = 200;

    private string $name;

    private ?string $path = null;

    private bool $isMember = false;

    /** @var callable(): \Iterator<string> */
    private $chunks;

    /** @param callable(): \Iterator<string> $chunks */
    private function __construct(string $name, callable $chunks)
    {
        $this->name = $name;
        $this->chunks = $chunks;
    }

    public static function file(string $path): self
    {
        $source = new self($path, static function () use ($path): \Generator {
            $stream = is_dir($path) ? false : @fopen($path, 'rb');
            if (!$stream) {
                throw new Unreadable(is_dir($path) ? "$path is a folder." : "$path cannot be opened.");
            }
            try {
                yield from Chunks::ofStream($stream);
            } finally {
                fclose($stream);
            }
        });
        $source->path = $path;

        return $source;
    }

    /** @param resource $stream open for reading; read once, from where it stands, and left open */
    public static function stream($stream, string $name = ''): self
    {
        return new self($name, static fn (): \Generator => Chunks::ofStream($stream));
    }

    public static function string(string $text, string $name = ''): self
    {
        return new self($name, static fn (): \Generator => Chunks::ofString($text));
    }

    /**
     * The files that are named, those in folders that are, by name and not in folders
     * within them, streams and sources.
     *
     * @param iterable<string|resource|self> $paths
     * @return \Generator<self>
     */
    public static function each(iterable $paths): \Generator
    {
        foreach ($paths as $path) {
            if (!is_string($path) || !is_dir($path)) {
                yield $path instanceof self
                    ? $path
                    : (is_resource($path) ? self::stream($path, '-') : self::file($path));
                continue;
            }
            foreach (@scandir($path) ?: [] as $name) {
                $file = rtrim($path, '/') . "/$name";
                if ($name[0] !== '.' && is_file($file)) {
                    $source = self::file($file);
                    $source->isMember = true;
                    yield $source;
                }
            }
        }
    }

    /** Whether that is more than a packed file may hold. */
    public static function isTooMuch(int $unpacked, int $packed): bool
    {
        return $unpacked > self::FREE && $unpacked > min(self::MAX_UNPACKED, self::RATIO * $packed);
    }

    /**
     * @return \Generator<Part>
     * @throws Unreadable if it cannot be opened or read
     */
    public function parts(): \Generator
    {
        $chunks = new Chunks(($this->chunks)());
        $trouble = new Trouble();
        $kind = Kind::of($chunks->head());
        if ($kind === Kind::ZIP) {
            yield from $this->members($chunks);
        } elseif ($kind === Kind::GZIP) {
            $part = new Part(
                $this->name,
                new Chunks(Gzip::unpack($chunks->all(), $trouble)),
                $trouble,
                $this->isMember
            );
            if ($part->kind === Kind::ZIP || $part->kind === Kind::GZIP) {
                $trouble->tell('nested');
            }
            yield $part;
        } else {
            yield new Part($this->name, $chunks, $trouble, $this->isMember);
        }
    }

    /** @return \Generator<Part> */
    private function members(Chunks $chunks): \Generator
    {
        if ($this->path !== null && is_file($this->path)) {
            yield from Archive::parts($this->path, $this->name);

            return;
        }
        // An archive is read from its end: it takes a file.
        $copy = @tmpfile();
        foreach ($copy ? $chunks->all() : [] as $chunk) {
            if (@fwrite($copy, $chunk) !== strlen($chunk)) {
                $copy = false;
                break;
            }
        }
        if (!$copy || !fflush($copy)) {
            throw new Unreadable('There is no room for a temporary file in ' . sys_get_temp_dir() . '.');
        }
        yield from Archive::parts(stream_get_meta_data($copy)['uri'], $this->name);
        fclose($copy);
    }
}
