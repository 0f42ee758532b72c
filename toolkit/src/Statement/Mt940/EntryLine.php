<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

/**
 * The statement line of a booking, ":61:", as the file has it.
 *
 * @internal
 */
final class EntryLine
{
    // The mark is C or D, after R in a reversal and after E in what is only expected;
    // the letter behind it is the third of the currency.
    private const LINE = '/^:61:(\d{6})(\d{4})?\s*([RE]?[CD])([A-Za-z]?)\s*([\d.,]+)\s*'
        . '(?:([NFS])([A-Za-z0-9 ]{3}))?(.*)$/s';

    /** @var string YYMMDD */
    public string $valuta;

    /** @var string MMDD or '' */
    public string $booked;

    public string $mark;

    /** @var string as it stands there */
    public string $amount;

    /** @var string N, F or S; '' if there is no type */
    public string $type;

    public string $code;

    /** @var string both references, with "//" between them */
    public string $references;

    /** Reads the line; null if it cannot be read. */
    public static function read(string $line): ?self
    {
        if (!preg_match(self::LINE, $line, $part)) {
            return null;
        }
        $entry = new self();
        [, $entry->valuta, $entry->booked, $entry->mark, , $entry->amount] = $part;
        [$entry->type, $entry->code, $entry->references] = [$part[6], $part[7], rtrim($part[8])];

        return $entry;
    }

    /** Whether the booking raises the balance: a credit taken back lowers it. */
    public function raises(): bool
    {
        return $this->mark === 'C' || $this->mark === 'RD' || $this->mark === 'EC';
    }
}
