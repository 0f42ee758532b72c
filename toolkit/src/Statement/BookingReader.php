<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\Unreadable;

/**
 * Makes bookings of the lines that a Builder has kept, with the extension's parser.
 *
 * @internal
 */
final class BookingReader
{
    private const TEXTS = [
        'ref', 'bankref', 'txtext', 'primanota', 'bank', 'account', 'name', 'purpose',
        'eref', 'kref', 'mref', 'cred', 'debt', 'purp', 'coam', 'oamt', 'svwz', 'abwa', 'abwe',
    ];

    private string $currency;

    private Dates $dates;

    public function __construct(string $currency)
    {
        $this->currency = $currency;
        $this->dates = new Dates();
    }

    /** @return \Generator<Booking> */
    public function each(string $piece): \Generator
    {
        $arrays = self::parse($piece);
        $texts = explode("\r\n:61:", substr($piece, 6));
        if (count($arrays) !== count($texts)) {
            throw new \LogicException('The extension reads other bookings than were given to it.');
        }
        foreach ($texts as $i => $text) {
            $lines = explode("\r\n", $text);
            $details = array_map(static fn (string $line): string => substr($line, 4), array_slice($lines, 2));
            yield $this->booking($arrays[$i], EntryLine::restore(':61:' . $lines[0], $lines[1]), implode("\n", $details));
        }
    }

    /**
     * @param array<string, mixed> $array the extension's
     * @param array{mark: string, valuta: string, booked: string, amount: string, type: string, line: int, supplementary: string} $raw
     */
    private function booking(array $array, array $raw, string $details): Booking
    {
        $amount = Amount::read($raw['amount'], $this->currency) ?? new Amount(0, $this->currency);
        $values = [
            'amount' => EntryLine::raises($raw['mark']) ? $amount : $amount->negative(),
            'reversal' => $raw['mark'][0] === 'R',
            'expected' => $raw['mark'][0] === 'E',
            'valuta' => $this->dates->of($raw['valuta']),
            'booked' => $raw['booked'] === '' ? null : $this->dates->booked($raw['valuta'], $raw['booked']),
            'type' => $raw['type'],
            'code' => $raw['type'] === '' ? '' : $array['code'],
            'line' => $raw['line'],
            'supplementary' => self::text($raw['supplementary']),
            'details' => self::text($details),
            'gvc' => $array['gvc'] > 0 && $array['gvc'] <= 999 ? $array['gvc'] : null,
            'extcode' => isset($array['extcode']) && $array['extcode'] <= 999 ? $array['extcode'] : null,
        ];
        foreach (self::TEXTS as $key) {
            $values[$key] = isset($array[$key]) ? self::text($array[$key]) : null;
        }
        if ($details !== '' && !Details::hasSubfields($details)) {
            $values['purpose'] = $values['details'];
        }

        return new Booking($values);
    }

    /**
     * The extension reads files alone, so it gets one that nobody else can read, and
     * that is gone when this returns, or when the process ends inside.
     *
     * @return list<array<string, mixed>>
     * @throws Unreadable if there is no room for a temporary file
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

    private static function text(string $text): ?string
    {
        return $text === '' ? null : Text::utf8($text);
    }
}
