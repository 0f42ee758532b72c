<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Statement;
use Sepa\Toolkit\Statement\Transaction;

/**
 * Bookings that somebody looks for: every word stands in the name, a text, a reference
 * or the account, or is the amount.
 */
final class Search
{
    private const FIELDS = [
        'name', 'account', 'bank', 'purpose', 'svwz', 'txtext', 'eref', 'kref', 'mref', 'cred', 'debt', 'ref',
        'bankref', 'reference', 'abwa', 'abwe', 'primanota', 'reason', 'reasonText', 'msgid', 'instrid', 'txid', 'uetr',
    ];

    /** Banks write umlauts either way. */
    private const LETTERS = ['ä' => 'ae', 'ö' => 'oe', 'ü' => 'ue', 'ß' => 'ss'];

    /** "1.190,00", "1190" or "-1190.00": sign, whole part, mark between thousands, decimals. */
    private const AMOUNT = '/^([-+\x{2212}]?)(\d{1,3}(?:([.,])\d{3}(?:\3\d{3})*)?|\d{1,15})'
        . '(?:(?!\3)[.,](\d{1,4}))?$/Du';

    private const MAX_LENGTH = 200;

    /** @var array<string, string> as it was typed: q, from and to */
    public array $typed = [];

    /** @var bool whether only statements that are to be checked are meant */
    public bool $wanting;

    /** @var list<string> from and to, where nobody can tell which day is meant */
    public array $faults = [];

    /** @var array<string, \DateTimeImmutable|null> */
    private array $limits = [];

    /** @var list<string> */
    private array $words;

    public function __construct(Input $input)
    {
        $this->wanting = $input->text('wanting') !== '';
        foreach (['q', 'from', 'to'] as $name) {
            $this->typed[$name] = mb_substr($input->text($name), 0, self::MAX_LENGTH);
        }
        foreach (['from', 'to'] as $name) {
            $this->limits[$name] = self::day($this->typed[$name]);
            if ($this->typed[$name] !== '' && !$this->limits[$name]) {
                $this->faults[] = $name;
            }
        }
        $this->words = preg_split('/\s+/u', self::folded($this->typed['q'], ' '), -1, PREG_SPLIT_NO_EMPTY) ?: [];
    }

    /** Nothing is looked for: all is meant. */
    public static function all(): self
    {
        return new self(new Input([], []));
    }

    /** Whether all bookings of all statements are meant. */
    public function isEmpty(): bool
    {
        return $this->isOfStatements() && !$this->wanting;
    }

    /** Whether all bookings of those statements are meant that are. */
    public function isOfStatements(): bool
    {
        return !$this->words && !array_filter($this->limits);
    }

    public function means(Statement $statement): bool
    {
        return !$this->wanting || !$statement->isGood();
    }

    /** The same for all that finds the same. */
    public function digest(): string
    {
        return md5(serialize([$this->words, $this->limits, $this->wanting]));
    }

    public function finds(Booking $booking): bool
    {
        $day = $booking->booked ?? $booking->valuta;
        // A booking without a day may be of any.
        ['from' => $from, 'to' => $to] = $this->limits;
        if ($day && (($from && $day < $from) || ($to && $day > $to))) {
            return false;
        }

        return $this->isFoundIn($booking, $this->words) || ($this->words && $this->parts($booking, 1));
    }

    /**
     * Payments of a batch: all, but where they made that it was found those alone.
     *
     * @return list<Transaction> not more than so many
     */
    public function parts(Booking $booking, int $most): array
    {
        $isMissing = fn (string $word): bool => !$this->isFoundIn($booking, [$word]);
        $missing = array_values(array_filter($this->words, $isMissing));
        $found = [];
        foreach (count($booking->parts()) > 0 ? $booking->parts() : [] as $part) {
            if ($this->isFoundIn($part, $missing)) {
                $found[] = $part;
            }
            if (count($found) === $most) {
                break;
            }
        }

        return $found;
    }

    /** @param list<string> $words */
    private function isFoundIn(Transaction $transaction, array $words): bool
    {
        if (!$words) {
            return true;
        }
        $texts = [];
        foreach (self::FIELDS as $field) {
            $texts[] = $transaction->$field;
        }
        $text = self::folded(implode("\x1F", array_filter($texts)), '');
        foreach ($words as $word) {
            if (strpos($text, $word) === false && !self::isAmount($word, $transaction->amount)) {
                return false;
            }
        }

        return true;
    }

    /** Whether a word is that amount; without a sign it is of either. */
    private static function isAmount(string $word, ?Amount $amount): bool
    {
        if (!$amount || !preg_match(self::AMOUNT, $word, $part)) {
            return false;
        }
        $wanted = Amount::read(preg_replace('/\D/', '', $part[2]) . ',' . ($part[4] ?? '0'), $amount->currency);
        $hasSign = $part[1] === '' || ($part[1] === '+') === ($amount->units > 0);

        return $wanted && $hasSign && $wanted->units === abs($amount->units);
    }

    private static function folded(string $text, string $blank): string
    {
        $small = mb_strtolower(mb_scrub($text, 'UTF-8'), 'UTF-8');

        return (string) preg_replace('/\s+/u', $blank, strtr($small, self::LETTERS));
    }

    private static function day(string $typed): ?\DateTimeImmutable
    {
        $typed = (string) preg_replace('/^(\d{1,2}\.\d{1,2}\.)(\d{2})$/D', '${1}20$2', $typed);
        $isDay = preg_match('/^(\d{4})-(\d\d)-(\d\d)$/D', Sheet::understood('date', $typed), $part);
        if (!$isDay || !checkdate((int) $part[2], (int) $part[3], (int) $part[1])) {
            return null;
        }

        return new \DateTimeImmutable("$part[0] 00:00:00 UTC");
    }
}
