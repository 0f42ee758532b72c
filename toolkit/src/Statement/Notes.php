<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Notes by code: a file that has one fault a million times takes no more room than one.
 *
 * @internal
 */
final class Notes
{
    /** @var array<string, Note> */
    private array $mended = [];

    /** @var array<string, Note> */
    private array $faults = [];

    /** @var array<string, Note> */
    private array $hints = [];

    private bool $byEntry;

    /** @param bool $byEntry whether places are numbers of entries, as in XML, and not of lines */
    public function __construct(bool $byEntry = false)
    {
        $this->byEntry = $byEntry;
    }

    /** Something is read as if the bank had written it well. */
    public function mended(string $code, int $place, int $times = 1): void
    {
        $this->tell($this->mended, $code, $place);
        $this->mended[$code]->count += $times - 1;
    }

    /**
     * Something leaves the statement wanting.
     *
     * @param array<string, string|int> $values
     */
    public function fault(string $code, int $place, array $values = []): void
    {
        $this->tell($this->faults, $code, $place, $values);
    }

    /**
     * Something is good to know.
     *
     * @param array<string, string|int> $values
     */
    public function hint(string $code, int $place, array $values = []): void
    {
        $this->tell($this->hints, $code, $place, $values);
    }

    /** @param list<string> $codes of faults */
    public function has(array $codes): bool
    {
        return (bool) array_intersect_key($this->faults, array_flip($codes));
    }

    /** Takes those of another page. */
    public function take(self $page): void
    {
        foreach (['mended', 'faults', 'hints'] as $kind) {
            foreach ($page->$kind as $code => $note) {
                isset($this->$kind[$code]) ? $this->$kind[$code]->count += $note->count : $this->$kind[$code] = $note;
            }
        }
    }

    /** @return list<Note> */
    public function allMended(): array
    {
        return array_values($this->mended);
    }

    /** @return list<Note> */
    public function allFaults(): array
    {
        return array_values($this->faults);
    }

    /** @return list<Note> */
    public function allHints(): array
    {
        return array_values($this->hints);
    }

    /**
     * @param array<string, Note> $notes
     * @param array<string, string|int> $values
     */
    private function tell(array &$notes, string $code, int $place, array $values = []): void
    {
        if (isset($notes[$code])) {
            ++$notes[$code]->count;

            return;
        }
        $notes[$code] = $this->byEntry
            ? new Note($code, 0, $values, $place > 0 ? $place : null) : new Note($code, $place, $values);
    }
}
