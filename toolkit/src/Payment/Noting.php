<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Notes what was found, and answers with it. */
trait Noting
{
    private Notes $notes;

    public function refuse(?int $row, ?string $label, ?string $key, string $code, array $values = []): void
    {
        $this->notes->faults->add($row, $label, $key, $code, $values);
    }

    public function warn(?int $row, ?string $key, string $code, array $values = []): void
    {
        $this->notes->warnings->add($row, null, $key, $code, $values);
    }

    public function change(int $row, string $key, string $code, array $values): void
    {
        $this->notes->changes->add($row, null, $key, $code, $values);
    }

    public function faults(): array
    {
        return array_merge($this->notes->faults->kept(), $this->messageFaults());
    }

    public function faultCount(): int
    {
        return count($this->notes->faults) + count($this->messageFaults());
    }

    public function warnings(): array
    {
        return $this->notes->warnings->kept();
    }

    public function changes(): array
    {
        return $this->notes->changes->kept();
    }

    public function findings(): array
    {
        return $this->notes->bySeverity();
    }

    public function tell(callable $listener): void
    {
        $this->notes->tell($listener);
    }

    /** @return list<Fault> of messages as a whole */
    abstract public function messageFaults(): array;
}
