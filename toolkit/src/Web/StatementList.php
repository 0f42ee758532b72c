<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Statement;

/** What a page tells of statements: one page of the bookings that are looked for, and the verdict on all. */
final class StatementList
{
    /** Bookings of a page; a statement without any is as one. */
    public const ROWS = 200;

    /** Statements that the verdict names; they can also be looked for. */
    private const MAX_NAMED = 50;

    /** Notes that are worth a look, although nothing is wrong with the statement itself. */
    private const ODD = ['gap', 'double', 'double_statement', 'pages'];

    public int $statements = 0;

    public int $bookings = 0;

    /** @var int bookings that were found */
    public int $found = 0;

    /** @var int statements that are to be checked */
    public int $wanting = 0;

    /** @var int statements without balances, which nothing proves */
    public int $unproved = 0;

    /**
     * @var list<array{number: int, account: string, no: ?int, page: ?int, difference: ?Amount, note: ?Note,
     *     isBad: bool}> the first that are worth a look
     */
    public array $named = [];

    /** @var int statements worth a look that are not named */
    public int $unnamed = 0;

    /** @var array<string, array{in: Amount|null, out: Amount|null}> of what was found, by currency; null past 64 bits */
    public array $sums = [];

    public int $page;

    public int $pages = 1;

    /** @var list<StatementPart> what the page shows */
    public array $parts = [];

    /** @var BookingRow|null the batch whose payments are wanted */
    public ?BookingRow $batch = null;

    private Search $search;

    private int $wantedStatement;

    private int $wantedBatch;

    private ?StatementAccount $account = null;

    private int $rows = 0;

    private int $number = 0;

    /** @var int rows before the statement that is being added */
    private int $before = 0;

    /** @var bool whether that is the first of its account */
    private bool $isFirst = true;

    /** @var list<StatementPart> of the page that is being filled */
    private array $filling = [];

    private bool $isDone = false;

    /**
     * @param int $page from 1
     * @param int $statement whose page is wanted instead; 0 for none
     * @param int $batch number of a booking; 0 for none
     */
    public function __construct(Search $search, int $page, int $statement = 0, int $batch = 0)
    {
        $this->search = $search;
        $this->page = $statement > 0 ? 0 : $page;
        $this->wantedStatement = $statement;
        $this->wantedBatch = $batch;
    }

    public function add(Statement $statement): void
    {
        ++$this->statements;
        $this->judge($statement);
        $this->isFirst = !$this->account || !$this->account->goesOn($statement);
        $this->account = $this->isFirst ? new StatementAccount($statement) : $this->account;
        $this->account->take($statement);
        if ($this->statements === $this->wantedStatement) {
            $this->page = intdiv($this->rows, self::ROWS) + 1;
        }
        $this->before = $this->rows;
        $balance = $statement->opening ? $statement->opening->amount : null;
        foreach ($statement->bookings as $booking) {
            ++$this->bookings;
            $balance = $balance ? $balance->plus($booking->amount) : null;
            $this->account->step($balance);
            $this->look($statement, $booking, $balance, false);
        }
        foreach ($statement->pending as $booking) {
            $this->look($statement, $booking, null, true);
        }
        if ($this->rows === $this->before && $this->search->isOfStatements() && $this->search->means($statement)) {
            $this->part($statement);
        }
        if ($this->rows > $this->before) {
            end($this->filling)->ends = true;
        }
    }

    /** After the last statement. */
    public function finish(): void
    {
        $this->pages = max(1, (int) ceil($this->rows / self::ROWS));
        if (!$this->isDone) {
            $this->parts = $this->filling;
            $this->page = $this->pages;
        }
        $this->filling = [];
    }

    /** Whether the page shows a statement. */
    public function shows(int $number): bool
    {
        return in_array($number, array_column($this->parts, 'number'), true);
    }

    private function judge(Statement $statement): void
    {
        $isGood = $statement->isGood();
        $this->wanting += $isGood ? 0 : 1;
        $this->unproved += $isGood && !$statement->balanced ? 1 : 0;
        $odd = array_filter($statement->hints, static fn (Note $note): bool => in_array($note->code, self::ODD, true));
        if ($isGood && !$odd) {
            return;
        }
        if (count($this->named) === self::MAX_NAMED) {
            ++$this->unnamed;

            return;
        }
        $this->named[] = [
            'number' => $this->statements,
            'account' => $statement->account,
            'no' => $statement->number,
            'page' => $statement->page,
            'difference' => $isGood ? null : $statement->difference,
            'note' => array_merge($statement->faults, array_values($odd))[0] ?? null,
            'isBad' => !$isGood,
        ];
    }

    private function look(Statement $statement, Booking $booking, ?Amount $balance, bool $isPending): void
    {
        $row = new BookingRow($booking, $balance, ++$this->number, $isPending, $this->search);
        if ($this->number === $this->wantedBatch) {
            $this->batch = $row;
        }
        if (!$this->search->means($statement) || !$this->search->finds($booking)) {
            return;
        }
        $this->part($statement)->rows[] = $row;
        ++$this->found;
        $isPending || $this->sum($booking->amount);
    }

    /** Where the next row stands. */
    private function part(Statement $statement): StatementPart
    {
        $begins = $this->rows === $this->before;
        if ($this->rows > 0 && $this->rows % self::ROWS === 0) {
            $this->turn();
        }
        ++$this->rows;
        $last = end($this->filling);
        if ($last && $last->number === $this->statements) {
            return $last;
        }

        $isFirst = $this->isFirst && $begins;

        return $this->filling[] = new StatementPart($statement, $this->account, $this->statements, $isFirst, $begins);
    }

    private function turn(): void
    {
        if (intdiv($this->rows, self::ROWS) === $this->page) {
            $this->parts = $this->filling;
            $this->isDone = true;
        }
        $this->filling = [];
    }

    private function sum(Amount $amount): void
    {
        $side = $amount->units < 0 ? 'out' : 'in';
        $nothing = new Amount(0, $amount->currency);
        $this->sums[$amount->currency] = $this->sums[$amount->currency] ?? ['in' => $nothing, 'out' => $nothing];
        $sum = $this->sums[$amount->currency][$side];
        $this->sums[$amount->currency][$side] = $sum ? $sum->plus($amount) : null;
    }
}
