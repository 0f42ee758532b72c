<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** What was found in one message, or in several that are told of together. */
final class Notes
{
    public Findings $faults;

    public Findings $warnings;

    public Findings $changes;

    public function __construct()
    {
        $this->faults = new Findings();
        $this->warnings = new Findings();
        $this->changes = new Findings();
    }

    /** From now on what is noted here is noted there. */
    public function join(self $notes): void
    {
        [$this->faults, $this->warnings, $this->changes] = [$notes->faults, $notes->warnings, $notes->changes];
    }

    /** @return array{fault: Findings, warning: Findings, change: Findings} */
    public function bySeverity(): array
    {
        return ['fault' => $this->faults, 'warning' => $this->warnings, 'change' => $this->changes];
    }

    /**
     * Is given all that is noted, also what is not kept.
     *
     * @param callable(string, Fault): void $listener with "fault", "warning" or "change"
     */
    public function tell(callable $listener): void
    {
        foreach ($this->bySeverity() as $severity => $findings) {
            $findings->tell(static function (Fault $fault) use ($listener, $severity): void {
                $listener($severity, $fault);
            });
        }
    }
}
