<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Part;
use Sepa\Toolkit\Statement\Parts;

/**
 * Makes bookings of the entries that a Builder has kept.
 *
 * @internal
 */
final class BookingReader
{
    private string $account;

    /** @var string of entries that tell none */
    private string $currency;

    private bool $turnsReversals;

    private Days $days;

    public function __construct(string $account, string $currency, bool $turnsReversals)
    {
        $this->account = $account;
        $this->currency = $currency;
        $this->turnsReversals = $turnsReversals;
        $this->days = new Days();
    }

    /**
     * @param string|array{string, string} $text entries with their parts; or one entry, and its parts apart
     * @return \Generator<Booking>
     */
    public function each($text): \Generator
    {
        if (is_array($text)) {
            yield $this->booking(json_decode($text[0], true), $text[1]);

            return;
        }
        $at = 0;
        while ($at < strlen($text)) {
            $end = strpos($text, "\n", $at);
            $entry = json_decode(substr($text, $at, $end - $at), true);
            $parts = substr($text, $end + 1, $entry['bytes']);
            $at = $end + 1 + $entry['bytes'];
            yield $this->booking($entry, $parts);
        }
    }

    /** @param array<string, mixed> $entry */
    private function booking(array $entry, string $parts): Booking
    {
        $currency = $entry['amount@'] ?? $this->currency;
        $units = $this->turnsReversals && $entry['reversal'] ? -$entry['units'] : $entry['units'];
        $status = trim($entry['status'] ?? Booking::BOOKED);
        $valuta = $entry['valuta'] ?? $entry['booked'] ?? '';
        $values = [
            'amount' => new Amount($units, $currency),
            'valuta' => $this->days->of($valuta),
            'booked' => $this->days->of($entry['booked'] ?? $valuta),
            'reversal' => $entry['reversal'],
            'expected' => $status !== Booking::BOOKED,
            'status' => $status,
            'entry' => $entry['number'],
            'payments' => isset($entry['payments']) ? (int) $entry['payments'] : null,
            'ref' => Details::reference($entry['ref'] ?? null),
        ] + (new Details($this->account, $entry))->values($entry['first'] ?? [], $entry['units'] < 0);
        if ($entry['parts'] < 2) {
            return new Booking($values);
        }

        return new Booking(
            $values,
            new Parts($parts, $entry['parts'], fn (string $text): \Generator => $this->parts($entry, $text))
        );
    }

    /**
     * @param array<string, mixed> $entry
     * @return \Generator<Part>
     */
    private function parts(array $entry, string $text): \Generator
    {
        $details = new Details($this->account, $entry);
        $currency = $entry['amount@'] ?? $this->currency;
        $mine = $entry['units'] < 0 ? 'DBIT' : 'CRDT';
        $against = strpos($text, "\"sign\":\"$mine\"") === false;
        for ($at = 0; $at < strlen($text); $at = $end + 1) {
            $end = strpos($text, "\n", $at);
            $part = json_decode(substr($text, $at, $end - $at), true);
            $sign = trim($part['sign'] ?? '');
            $isDebit = $against || $sign === '' ? $mine === 'DBIT' : $sign === 'DBIT';
            $isDebit = $isDebit !== ($this->turnsReversals && $entry['reversal']);
            $amount = $part['units'] === null
                ? null
                : new Amount($isDebit ? -$part['units'] : $part['units'], $currency);
            yield new Part(['amount' => $amount] + $details->values($part, $isDebit));
        }
    }
}
