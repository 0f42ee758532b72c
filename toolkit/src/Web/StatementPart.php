<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Statement\Statement;

/** A statement, as far as one page shows it. */
final class StatementPart
{
    public Statement $statement;

    public StatementAccount $account;

    /** @var int of all statements, from 1 */
    public int $number;

    /** @var bool whether nothing of its account goes before it */
    public bool $isFirst;

    /** @var bool whether its bookings begin here */
    public bool $begins;

    /** @var bool whether they end here */
    public bool $ends = false;

    /** @var list<BookingRow> */
    public array $rows = [];

    public function __construct(
        Statement $statement,
        StatementAccount $account,
        int $number,
        bool $isFirst,
        bool $begins
    ) {
        $this->statement = $statement;
        $this->account = $account;
        $this->number = $number;
        $this->isFirst = $isFirst;
        $this->begins = $begins;
    }
}
