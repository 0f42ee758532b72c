<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** What takes the payments of a table: one message, or several. */
interface Receiver extends \Countable
{
    /** @return list<string> keys that columns of a table can have, those of other rulebooks among them */
    public function columns(): array;

    /** @return list<string> keys of a payment under the rulebook */
    public function keys(): array;

    /** @return list<string> keys that every payment must have under the rulebook */
    public function requiredKeys(): array;

    /**
     * Tests a payment and takes it.
     *
     * @param array<string, string|int|float|bool> $payment by the keys of docs/messages.md and docs/toolkit.md
     * @param string|null $label the caller's own name for it, which its faults will carry
     * @param int|null $row its number there, if it is not simply the number of the call
     * @param array<string, array{string, array<string, int|string|list<string>>}|null> $known faults that were found
     *     outside, as code and values by key; null for a key whose lack has been told for all payments
     * @return bool whether it is without fault
     */
    public function add(array $payment, ?string $label = null, ?int $row = null, array $known = []): bool;

    /**
     * Notes a fault that was found outside, such as in the file that a payment comes from.
     *
     * @param array<string, int|string|list<string>> $values what the code's texts are made from
     */
    public function refuse(?int $row, ?string $label, ?string $key, string $code, array $values = []): void;

    /**
     * Notes something odd that was found outside.
     *
     * @param array<string, int|string|list<string>> $values
     */
    public function warn(?int $row, ?string $key, string $code, array $values = []): void;

    /**
     * Notes a change of a value that was made outside.
     *
     * @param array<string, int|string|list<string>> $values
     */
    public function change(int $row, string $key, string $code, array $values): void;

    /** @return list<Fault> faults so far, the first Findings::KEPT of each code; empty if the documents can be had */
    public function faults(): array;

    /** Number of all faults. */
    public function faultCount(): int;

    /** @return list<Fault> what is legal and odd, the first Findings::KEPT of each code */
    public function warnings(): array;

    /** @return list<Fault> what was changed in values, the first Findings::KEPT of each code */
    public function changes(): array;

    /** @return array{fault: Findings, warning: Findings, change: Findings} what was found in values, with all counts */
    public function findings(): array;

    /**
     * Is given every fault, warning and change of a value, also those that are not kept.
     *
     * @param callable(string, Fault): void $listener with "fault", "warning" or "change"
     */
    public function tell(callable $listener): void;
}
