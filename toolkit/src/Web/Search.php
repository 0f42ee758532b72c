<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Transaction;

/** What somebody looks for among bookings: words or an amount, and days. */
final class Search
{
    /** @var array<string, string> as it was typed */
    public array $typed;

    /** @var list<string> small letters, all of which have to be there */
    private array $words;

    private string $amount;

    private string $from;

    private string $to;

    public function __construct(Input $input)
    {
        foreach (['q', 'from', 'to'] as $name) {
            $this->typed[$name] = $input->text($name);
        }
        $this->words = preg_split('/\s+/u', mb_strtolower($this->typed['q']), -1, PREG_SPLIT_NO_EMPTY) ?: [];
        $this->amount = ltrim(Sheet::understood('amount', $this->typed['q']), '-');
        $this->from = Sheet::understood('date', $this->typed['from']);
        $this->to = Sheet::understood('date', $this->typed['to']);
    }

    public function isEmpty(): bool
    {
        return implode('', $this->typed) === '';
    }

    public function finds(Booking $booking): bool
    {
        $day = $booking->booked ?? $booking->valuta;
        $date = $day ? $day->format('Y-m-d') : '';
        if (($this->from !== '' && $date < $this->from) || ($this->to !== '' && $date > $this->to)) {
            return false;
        }
        if (!$this->words || $this->isAmount($booking->amount)) {
            return true;
        }
        $text = self::text($booking);
        foreach ($booking->parts() as $part) {
            if ($part->amount && $this->isAmount($part->amount)) {
                return true;
            }
            $text .= self::text($part);
        }
        $text = mb_strtolower($text);
        foreach ($this->words as $word) {
            if (strpos($text, $word) === false) {
                return false;
            }
        }

        return true;
    }

    private function isAmount(Amount $amount): bool
    {
        $text = ltrim($amount->text(), '-');

        return $this->amount === $text || "$this->amount.00" === $text;
    }

    private static function text(Transaction $of): string
    {
        $fields = [
            $of->name, $of->account, $of->bank, $of->remittance(), $of->purpose, $of->txtext, $of->eref, $of->kref,
            $of->mref, $of->cred, $of->ref, $of->bankref, $of->reference, $of->abwa, $of->abwe,
        ];

        return implode("\n", array_filter($fields)) . "\n";
    }
}
