<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Statement;

/** Statements of one account that follow from each other, as far as they are shown. */
final class StatementAccount
{
    /** @var string the account's number, grouped if it is an IBAN; empty if it is not named */
    public string $name;

    public string $currency;

    public ?Balance $opening;

    public ?Balance $closing = null;

    public ?BalanceChart $chart;

    /** @var list<array{statement: Statement, rows: list<array{booking: Booking, balance: \Sepa\Toolkit\Statement\Amount|null}>, rest: int}> */
    public array $statements = [];

    public function __construct(Statement $first)
    {
        $isIban = preg_match('/^[A-Z]{2}\d{2}[A-Z0-9]{11,30}$/D', $first->account);
        $this->name = $isIban ? Ibans::grouped($first->account) : $first->account;
        $this->currency = $first->currency;
        $this->opening = $first->opening;
        $this->chart = $first->opening ? new BalanceChart($first->currency, $first->opening->amount->units) : null;
    }

    /** @param int|null $most bookings that are shown; null if the statement itself is not */
    public function add(Statement $statement, ?int $most): void
    {
        $rows = [];
        $balance = $statement->opening ? $statement->opening->amount : null;
        foreach ($statement->bookings as $booking) {
            $balance = $balance ? $balance->plus($booking->amount) : null;
            if ($this->chart && $balance) {
                $this->chart->add($balance->units);
            }
            if (count($rows) < $most) {
                $rows[] = ['booking' => $booking, 'balance' => $balance];
            }
        }
        $this->closing = $statement->closing;
        if ($most !== null) {
            $this->statements[] = ['statement' => $statement, 'rows' => $rows, 'rest' => count($statement->bookings) - count($rows)];
        }
    }
}
