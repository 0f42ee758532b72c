<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** A document was asked for while there are faults. */
final class FaultyPayments extends \RuntimeException
{
    /** @var list<Fault> */
    private array $faults;

    /**
     * @param non-empty-list<Fault> $faults
     * @param int $count of all, those that were not kept among them
     */
    public function __construct(array $faults, int $count)
    {
        $more = $count - 1;
        parent::__construct($faults[0] . ($more > 0 ? " (and $more more)" : ''));
        $this->faults = $faults;
    }

    /** @return list<Fault> */
    public function faults(): array
    {
        return $this->faults;
    }
}
