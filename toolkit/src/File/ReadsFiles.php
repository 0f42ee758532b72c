<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Unreadable;

/**
 * What readers of a bank's files share: the ways to name files, and what is told of
 * them as wholes.
 *
 * @internal
 */
trait ReadsFiles
{
    /** @var callable(): iterable<Source> */
    private $sources;

    /** @var list<Note> */
    private array $faults = [];

    /** @var list<Note> */
    private array $hints = [];

    /** @param callable(): iterable<Source> $sources */
    private function __construct(callable $sources)
    {
        $this->sources = $sources;
    }

    /** @throws Unreadable when it is walked over, if it cannot be opened or read */
    public static function file(string $path): self
    {
        return new self(static fn (): array => [Source::file($path)]);
    }

    /**
     * Several files, folders, of which the files in them by name, streams and sources.
     *
     * @param iterable<string|resource|Source> $paths
     * @throws Unreadable when it is walked over, if one cannot be opened or read
     */
    public static function files(iterable $paths): self
    {
        return new self(static fn (): \Generator => Source::each($paths));
    }

    /** @param resource $stream open for reading; read once, from where it stands, and left open */
    public static function stream($stream, string $name = ''): self
    {
        return new self(static fn (): array => [Source::stream($stream, $name)]);
    }

    public static function string(string $text, string $name = ''): self
    {
        return new self(static fn (): array => [Source::string($text, $name)]);
    }

    /**
     * What is wrong with the files as wholes, after all that is in them has been
     * walked over.
     *
     * @return list<Note>
     */
    public function faults(): array
    {
        return $this->faults;
    }

    /**
     * What is good to know of the files, such as what was left out of an archive,
     * after all that is in them has been walked over.
     *
     * @return list<Note>
     */
    public function hints(): array
    {
        return $this->hints;
    }
}
