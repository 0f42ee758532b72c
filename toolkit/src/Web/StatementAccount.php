<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Statement;

/** Statements of one account that follow from each other, as far as they are shown. */
final class StatementAccount
{
    /** @var string the IBAN, grouped, else the account as the bank writes it; empty if it is not named */
    public string $name;

    /** @var string|null the bank's name */
    public ?string $bank;

    public string $currency;

    public ?Balance $opening;

    public ?Balance $closing = null;

    public ?BalanceChart $chart;

    /** @var list<array{id: string, statement: Statement, rows: list<array<string, Booking|Amount|null>>}> */
    public array $statements = [];

    public function __construct(Statement $first)
    {
        $isGerman = preg_match('~^(\d{8})/(\d{1,10})$~D', $first->account, $part);
        $iban = Ibans::check($isGerman ? (string) Ibans::convert($part[2], $part[1])->iban : $first->account);
        $this->name = $iban->valid ? Ibans::grouped($iban->iban) : $first->account;
        $this->bank = $iban->bank;
        $this->currency = $first->currency;
        $this->opening = $first->opening;
        $this->chart = $first->opening ? new BalanceChart($first->currency, $first->opening->amount->units) : null;
    }

    /**
     * @param string $id of the statement on the page
     * @param callable(Booking): bool $isShown asked once for each booking
     * @param bool $showsEmpty whether it is shown without bookings
     */
    public function add(Statement $statement, string $id, callable $isShown, bool $showsEmpty): void
    {
        $rows = [];
        $balance = $statement->opening ? $statement->opening->amount : null;
        foreach ($statement->bookings as $booking) {
            $balance = $balance ? $balance->plus($booking->amount) : null;
            if ($this->chart && $balance) {
                $this->chart->add($balance->units);
            }
            if ($isShown($booking)) {
                $rows[] = ['booking' => $booking, 'balance' => $balance];
            }
        }
        foreach ($statement->pending as $booking) {
            if ($isShown($booking)) {
                $rows[] = ['booking' => $booking, 'balance' => null];
            }
        }
        $this->closing = $statement->closing;
        $isEmpty = count($statement->bookings) + count($statement->pending) === 0;
        if ($rows || ($isEmpty && $showsEmpty)) {
            $this->statements[] = ['id' => $id, 'statement' => $statement, 'rows' => $rows];
        }
    }
}
