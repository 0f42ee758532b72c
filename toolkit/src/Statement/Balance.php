<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * A balance of an account.
 *
 * @psalm-immutable
 */
final class Balance implements \JsonSerializable
{
    /** @var Amount negative for a debit balance */
    public Amount $amount;

    /** @var \DateTimeImmutable|null midnight UTC; null if there is none or the calendar doesn't have it */
    public ?\DateTimeImmutable $date;

    /** @var bool whether another page goes before an opening, or comes after a closing balance */
    public bool $intermediate;

    /**
     * @var string what it is: OPBD opening, PRCD closing of the statement before, CLBD
     *     closing, ITBD of an unfinished day, CLAV available, FWAV available on that day
     */
    public string $code;

    public function __construct(Amount $amount, ?\DateTimeImmutable $date, bool $intermediate, string $code = '')
    {
        $this->amount = $amount;
        $this->date = $date;
        $this->intermediate = $intermediate;
        $this->code = $code;
    }

    /** @return array{code: string, amount: Amount, currency: string, date: ?string} */
    public function jsonSerialize(): array
    {
        return [
            'code' => $this->code,
            'amount' => $this->amount,
            'currency' => $this->amount->currency,
            'date' => $this->date ? $this->date->format('Y-m-d') : null,
        ];
    }
}
