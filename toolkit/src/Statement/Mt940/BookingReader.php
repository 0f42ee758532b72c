<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Text;

/**
 * Makes bookings of what a Builder has kept of them: bookings with a NUL after each,
 * their parts with a CR between them, none of which a line can have in it.
 *
 * @internal
 */
final class BookingReader
{
    private const TEXTS = [
        'ref', 'bankref', 'txtext', 'primanota', 'bank', 'account', 'name', 'purpose', 'eref', 'kref', 'mref',
        'cred', 'debt', 'purp', 'coam', 'oamt', 'svwz', 'abwa', 'abwe', 'reason', 'supplementary', 'details',
    ];

    private const FOREIGN = '~/(OCMT|CHGS)/([A-Z]{3})([\d,.]+)(?=/)~';

    private string $currency;

    /** @var string digits of the own account */
    private string $account;

    /** @var string the character set of what is not UTF-8 */
    private string $encoding;

    private Dates $dates;

    public function __construct(string $currency, string $account, string $encoding)
    {
        $this->currency = $currency;
        $this->account = self::plain((string) preg_replace('~^.*/~', '', $account));
        $this->encoding = $encoding;
        $this->dates = new Dates();
    }

    /** @return \Generator<Booking> */
    public function each(string $piece): \Generator
    {
        foreach (explode("\0", substr($piece, 0, -1)) as $text) {
            yield $this->booking(explode("\r", $text));
        }
    }

    /** @param list<string> $kept see Builder */
    private function booking(array $kept): Booking
    {
        [$line, $valuta, $booked, $mark, $units, $type, $code, $references, $supplementary] = $kept;
        $values = ['supplementary' => $supplementary, 'details' => implode("\n", array_slice($kept, 9))];
        $separator = strpos($references, '//');
        $values['ref'] = $separator === false ? $references : substr($references, 0, $separator);
        $values['bankref'] = $separator === false ? '' : substr($references, $separator + 2);
        foreach (array_slice($kept, 9) as $details) {
            $values = array_filter(
                $this->details($details),
                static fn ($value): bool => $value !== '' && $value !== null
            ) + $values;
        }
        foreach (self::TEXTS as $key) {
            if (isset($values[$key])) {
                $values[$key] = $this->text($values[$key]);
            }
        }
        if (strpos($supplementary, '/') !== false) {
            $values += $this->foreign($supplementary);
        }

        return new Booking($values + [
            'amount' => new Amount((int) $units, $this->currency),
            'reversal' => $mark[0] === 'R',
            'expected' => $mark[0] === 'E',
            'valuta' => $this->dates->of($valuta),
            'booked' => $booked === '' ? null : $this->dates->booked($valuta, $booked),
            'type' => $type,
            'code' => $code,
            'line' => (int) $line,
        ]);
    }

    /** @return array<string, mixed> */
    private function details(string $text): array
    {
        if (!Details::hasSubfields($text)) {
            return Tagged::read($text) + ['gvc' => Details::code($text), 'purpose' => $text];
        }
        $values = Details::read($text);
        if (isset($values['account']) && strpos($values['account'], ' ') !== false) {
            // Lines that are padded to their width tear what goes on in the next.
            $whole = str_replace(' ', '', $values['account']);
            $values['account'] = preg_match('/^[A-Z]{2}\d{2}[A-Z0-9]{11,30}$/D', $whole)
                ? $whole
                : trim($values['account']);
        }
        // Some banks put the own account there, and the other party's where the primanota is.
        if (
            $this->account !== ''
            && self::plain($values['account'] ?? '') === $this->account
            && preg_match('/^[A-Z]{0,4}\d{7,}[A-Z0-9]*$/D', $values['primanota'] ?? '')
        ) {
            $values['account'] = $values['primanota'];
            $values['primanota'] = null;
        }

        return $values;
    }

    /**
     * Original amount and charges, where the statement line tells them.
     *
     * @return array<string, mixed>
     */
    private function foreign(string $text): array
    {
        $values = [];
        preg_match_all(self::FOREIGN, $text, $found, PREG_SET_ORDER);
        foreach ($found as [, $tag, $currency, $digits]) {
            $amount = Amount::read($digits, $currency);
            if ($amount && $tag === 'OCMT') {
                $values['instructed'] = $amount;
            } elseif ($amount && $amount->units !== 0) {
                $values['charges'][] = $amount->negative();
            }
        }

        return $values;
    }

    private function text(string $text): ?string
    {
        return $text === '' ? null : Text::utf8($text, $this->encoding);
    }

    private static function plain(string $account): string
    {
        return ltrim(str_replace(' ', '', $account), '0');
    }
}
