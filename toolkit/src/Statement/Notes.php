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

    /** @param string $code a key of Note::MENDED */
    public function mended(string $code, int $line): void
    {
        self::tell($this->mended, $code, $line);
    }

    /** @param string $code a key of Note::FAULTS */
    public function fault(string $code, int $line): void
    {
        self::tell($this->faults, $code, $line);
    }

    /** @param list<string> $codes of faults */
    public function has(array $codes): bool
    {
        return (bool) array_intersect_key($this->faults, array_flip($codes));
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

    /** @param array<string, Note> $notes */
    private static function tell(array &$notes, string $code, int $line): void
    {
        if (isset($notes[$code])) {
            ++$notes[$code]->count;

            return;
        }
        $notes[$code] = new Note($code, $line);
    }
}
