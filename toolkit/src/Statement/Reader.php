<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\File\Source;
use Sepa\Toolkit\Unreadable;

/**
 * Reads bank statements, one after the other, whatever their form: CAMT (camt.052, 053
 * and 054), MT940 and MT942, alone, in gzip or in a ZIP archive:
 *
 *     $reader = Reader::file('november.zip');
 *     foreach ($reader as $statement) {
 *         echo $statement->account, ' ', $statement->isGood() ? 'good' : 'CHECK THIS', "\n";
 *     }
 *     foreach ($reader->faults() as $fault) { … }
 *
 * What can be mended is; each statement tells what was. Nothing in a file raises an
 * exception.
 *
 * @implements \IteratorAggregate<int, Statement>
 */
final class Reader implements \IteratorAggregate
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
     * What is wrong with the files as wholes, after all statements have been walked over.
     *
     * @return list<Note>
     */
    public function faults(): array
    {
        return $this->faults;
    }

    /**
     * What is good to know of the files, such as what was left out of an archive, after
     * all statements have been walked over.
     *
     * @return list<Note>
     */
    public function hints(): array
    {
        return $this->hints;
    }

    /** @return \Generator<int, Statement> */
    public function getIterator(): \Generator
    {
        $this->faults = $this->hints = [];
        $watch = new Watch();
        $number = 0;
        foreach ($this->finished() as [$statement, $ids]) {
            $watch->look($statement, $ids);
            yield $number++ => $statement;
            unset($statement);
        }
    }

    /**
     * Statements with the ids of their bookings; joined are those whose pages come in
     * several messages or files.
     *
     * @return \Generator<array{Statement, string}>
     */
    private function finished(): \Generator
    {
        $held = null;
        foreach ($this->read() as $next) {
            if ($held) {
                $isPage = $next instanceof Camt\Builder && $held->goOn($next);
                if (!$isPage || !$held->isOpen()) {
                    yield $held->finish();
                    $held = null;
                }
                if ($isPage) {
                    continue;
                }
            }
            if ($next instanceof Camt\Builder && $next->isOpen()) {
                $held = $next;
            } else {
                yield $next instanceof Statement ? [$next, ''] : $next->finish();
            }
            unset($next);
        }
        if ($held) {
            yield $held->finish();
        }
    }

    /** @return \Generator<Statement|Camt\Builder> */
    private function read(): \Generator
    {
        foreach (($this->sources)() as $source) {
            foreach ($source->parts() as $file) {
                $reader = new FileReader($file);
                yield from $reader->each();
                $this->faults = array_merge($this->faults, $reader->faults());
                $this->hints = array_merge($this->hints, $reader->hints());
            }
        }
    }
}
