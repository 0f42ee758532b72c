<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * The statement line of a booking, ":61:", as the file has it.
 *
 * @internal
 */
final class EntryLine
{
    // The mark is C or D, after R in a reversal and after E in what is only expected;
    // the letter behind it is the third of the currency.
    private const LINE = '/^:61:(\d{6})(\d{4})?\s*([RE]?[CD])([A-Za-z]?)\s*([\d.,]+)\s*(?:([NFS])([A-Za-z0-9 ]{3}))?(.*)$/s';

    private const NO_CODE = 'MSC';

    /** @var string YYMMDD */
    public string $valuta;

    /** @var string MMDD or '' */
    public string $booked;

    public string $mark;

    public string $letter;

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
        [, $entry->valuta, $entry->booked, $entry->mark, $entry->letter, $entry->amount] = $part;
        [$entry->type, $entry->code, $entry->references] = [$part[6], $part[7], $part[8]];

        return $entry;
    }

    /** Whether the booking raises the balance: a credit taken back lowers it. */
    public static function raises(string $mark): bool
    {
        return $mark === 'C' || $mark === 'RD' || $mark === 'EC';
    }

    /** The line as the extension reads it without loss, after a line end. */
    public function forExtension(Amount $amount): string
    {
        return "\r\n:61:" . $this->valuta . $this->booked . ltrim($this->mark, 'E') . $this->letter . $amount->text(',')
            . 'N' . ($this->type === '' ? self::NO_CODE : $this->code) . rtrim($this->references);
    }

    /** A line that the extension skips, for what the other does not show. */
    public function aside(int $line): string
    {
        return 'T' . str_pad($this->type, 1) . ($this->mark[0] === 'E' ? 'E' : ' ') . $line . '|';
    }

    /**
     * What the two lines tell beside the extension's array.
     *
     * @return array{mark: string, valuta: string, booked: string, amount: string, type: string, line: int, supplementary: string}
     */
    public static function restore(string $line, string $aside): array
    {
        preg_match('/^:61:(\d{6})(\d{4})?(R?[CD])[A-Za-z]?([\d,]+)N/', $line, $part);
        preg_match('/^T(.)(.)(\d+)\|(.*)$/s', $aside, $more);

        return [
            'mark' => ($more[2] === 'E' ? 'E' : '') . $part[3],
            'valuta' => $part[1],
            'booked' => $part[2],
            'amount' => $part[4],
            'type' => trim($more[1]),
            'line' => (int) $more[3],
            'supplementary' => $more[4],
        ];
    }
}
