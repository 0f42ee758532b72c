<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\File\ReadsFiles;

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
    use ReadsFiles;

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
