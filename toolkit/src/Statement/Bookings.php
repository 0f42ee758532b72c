<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\Unreadable;

/**
 * The bookings of a statement, in order. They are kept as text and become objects
 * one piece after the other while you walk over them, so that a statement with a
 * million of them needs little more memory than its part of the file.
 *
 * @implements \IteratorAggregate<int, Booking>
 */
final class Bookings implements \IteratorAggregate, \Countable
{
    /** @var list<string> */
    private array $pieces;

    private int $count;

    private string $currency;

    /**
     * @internal
     * @param list<string> $pieces bookings as the extension reads them
     */
    public function __construct(array $pieces, int $count, string $currency)
    {
        $this->pieces = $pieces;
        $this->count = $count;
        $this->currency = $currency;
    }

    public function count(): int
    {
        return $this->count;
    }

    /**
     * @return \Generator<int, Booking>
     * @throws Unreadable if there is no room for a temporary file
     */
    public function getIterator(): \Generator
    {
        $dates = new Dates();
        $number = 0;
        foreach ($this->pieces as $piece) {
            $arrays = self::parse($piece);
            $texts = explode("\r\n:61:", substr($piece, 6));
            if (count($arrays) !== count($texts)) {
                throw new \LogicException('The extension reads other bookings than were given to it.');
            }
            foreach ($texts as $i => $text) {
                $lines = explode("\r\n", $text);
                $details = array_map(static fn (string $line): string => substr($line, 4), array_slice($lines, 2));
                $raw = EntryLine::restore(':61:' . $lines[0], $lines[1]);
                yield $number++ => new Booking($arrays[$i], $raw, implode("\n", $details), $this->currency, $dates);
            }
        }
    }

    /**
     * The extension reads files alone, so it gets one that nobody else can read, and
     * that is gone when this returns, or when the process ends inside.
     *
     * @return list<array<string, mixed>>
     */
    private static function parse(string $piece): array
    {
        $file = @tmpfile();
        if (!$file) {
            throw new Unreadable('No temporary file can be made in ' . sys_get_temp_dir() . '.');
        }
        try {
            // Details count only if another field follows them.
            $text = "\r\n:20:" . $piece . "\r\n:64:\r\n-\r\n";
            if (@fwrite($file, $text) !== strlen($text) || !fflush($file)) {
                throw new Unreadable('There is no room for a temporary file in ' . sys_get_temp_dir() . '.');
            }
            $parser = new \SEPAStatementParser();
            $parser->load(SEPA_STMT_FORMAT_MT940, stream_get_meta_data($file)['uri']);
        } catch (\SEPAException $e) {
            throw new Unreadable('The temporary file cannot be read: ' . $e->getMessage(), 0, $e);
        } finally {
            fclose($file);
        }

        return $parser->getStatements()[0]['tx'];
    }
}
