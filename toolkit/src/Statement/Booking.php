<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * One booking. Of a batch that the file takes apart it has what all share, and its
 * payments are its parts.
 *
 * @psalm-immutable
 */
final class Booking extends Transaction
{
    public const BOOKED = 'BOOK';

    /** @var \DateTimeImmutable|null value date, midnight UTC; null if the calendar doesn't have it */
    public ?\DateTimeImmutable $valuta = null;

    /** @var \DateTimeImmutable|null booking date; null if there is none */
    public ?\DateTimeImmutable $booked = null;

    /** @var Amount what it does to the balance: negative for a debit, and for a credit that is taken back */
    public Amount $amount;

    /** @var bool whether an earlier booking is taken back */
    public bool $reversal = false;

    /** @var bool whether it is only expected or announced, and not booked yet */
    public bool $expected = false;

    /** @var string BOOK, PDNG if it is announced, INFO if it is only told */
    public string $status = self::BOOKED;

    /** @var string|null further text of the statement line, such as /OCMT/EUR49,90/ */
    public ?string $supplementary = null;

    /** @var string|null the whole ":86:" in one text, in MT940 */
    public ?string $details = null;

    /** @var int|null how many payments were booked in this sum, if the bank tells */
    public ?int $payments = null;

    /** @var int line of the file; 0 in CAMT */
    public int $line = 0;

    /** @var int|null number in the statement, in CAMT */
    public ?int $entry = null;

    private ?Parts $parts = null;

    /** @param array<string, mixed> $values by the names of the members */
    public function __construct(array $values, ?Parts $parts = null)
    {
        parent::__construct($values);
        $this->parts = $parts;
    }

    /** The payments of a batch, if the file takes it apart; of any other booking none. */
    public function parts(): Parts
    {
        return $this->parts ?? new Parts('', 0, static fn (): array => []);
    }

    /** @return array<string, mixed> */
    public function jsonSerialize(): array
    {
        $told = parent::jsonSerialize();
        $told = array_intersect_key($told, ['valuta' => 1, 'booked' => 1, 'amount' => 1]) + $told;
        if ($this->status === self::BOOKED) {
            unset($told['status']);
        }

        return $this->parts ? $told + ['parts' => iterator_to_array($this->parts, false)] : $told;
    }
}
