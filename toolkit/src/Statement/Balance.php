<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * An opening or closing balance.
 *
 * @psalm-immutable
 */
final class Balance
{
    /** @var Amount negative for a debit balance */
    public Amount $amount;

    /** @var \DateTimeImmutable|null midnight UTC; null if the calendar doesn't have the date */
    public ?\DateTimeImmutable $date;

    /** @var bool whether another page goes before an opening, or comes after a closing balance */
    public bool $intermediate;

    public function __construct(Amount $amount, ?\DateTimeImmutable $date, bool $intermediate)
    {
        $this->amount = $amount;
        $this->date = $date;
        $this->intermediate = $intermediate;
    }
}
