<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Transaction;

/** A booking as a page shows it. */
final class BookingRow
{
    /** Payments of a batch that stand below their booking; the rest has pages of its own. */
    public const PARTS = 20;

    /** What stands in the details beside the other party's account, by the names of the members. */
    private const DETAILS = [
        'eref', 'mref', 'cred', 'debt', 'kref', 'reference', 'abwa', 'abwe', 'reason', 'reasonText', 'rate', 'coam',
        'oamt', 'purp', 'ref', 'bankref', 'gvc', 'extcode', 'primanota', 'msgid', 'instrid', 'txid', 'uetr', 'domain',
        'ownCode',
    ];

    public Booking $booking;

    public ?Amount $balance;

    /** @var int of all bookings, from 1 */
    public int $number;

    /** @var bool whether the bank only announces it */
    public bool $isPending;

    private Search $search;

    public function __construct(Booking $booking, ?Amount $balance, int $number, bool $isPending, Search $search)
    {
        $this->booking = $booking;
        $this->balance = $balance;
        $this->number = $number;
        $this->isPending = $isPending;
        $this->search = $search;
    }

    /** @return list<Transaction> payments of a batch, of those that were looked for the first */
    public function parts(): array
    {
        return $this->search->parts($this->booking, self::PARTS);
    }

    /** @return array<string, string> what is there, by the names of its members */
    public static function details(Transaction $transaction): array
    {
        $bank = (string) $transaction->bank;
        $details = [
            'account' => Ibans::grouped((string) $transaction->account),
            'bank' => trim($bank . ' ' . ($bank === '' || ctype_digit($bank) ? '' : Ibans::bankName($bank))),
        ];
        foreach (self::DETAILS as $name) {
            $details[$name] = (string) $transaction->$name;
        }

        return array_filter($details, static fn (string $detail): bool => $detail !== '');
    }
}
