<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

/** What a report says of a payment block, and of payments in it. */
final class Block implements \JsonSerializable
{
    public string $id;

    /** @var string '' if none is told */
    public string $status;

    /** @var list<Reason> */
    public array $reasons;

    /** @var array<string, int> how many payments have which status, as the bank counts */
    public array $counts;

    /** @var list<Payment> those that the report lists: often the refused alone */
    public array $payments;

    /**
     * @param array<string, mixed> $values of a record
     * @param list<Payment> $payments
     */
    public function __construct(array $values, array $payments)
    {
        $this->id = trim($values['id'] ?? '');
        $this->status = trim($values['status'] ?? '');
        $this->reasons = array_map(static fn (array $reason): Reason => new Reason($reason), $values['reasons'] ?? []);
        $this->counts = Report::counts($values['counts'] ?? []);
        $this->payments = $payments;
    }

    /** @return array<string, mixed> */
    public function jsonSerialize(): array
    {
        return get_object_vars($this);
    }
}
