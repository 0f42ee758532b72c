<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * How a message is made. Each method answers with a copy that differs in one point:
 *
 *     Options::latest()->on('2026-12-01')->transliterating()
 *
 * @psalm-immutable
 */
final class Options
{
    /** Kinds of direct debit. */
    public const TYPES = ['CORE' => SEPA_DDTYPE_CORE, 'COR1' => SEPA_DDTYPE_COR1, 'B2B' => SEPA_DDTYPE_B2B];

    public string $rulebook;

    /** @var string|null yyyy-mm-dd, of payments that have none of their own; today if null */
    public ?string $date = null;

    /** @var string|null generated if null */
    public ?string $messageId = null;

    /** @var bool whether the bank books the payments of a day as one sum */
    public bool $batchBooking = true;

    /** @var bool whether texts are changed where the character set refuses them */
    public bool $transliterates = false;

    /** @var bool whether names and texts that are too long are cut */
    public bool $shortens = false;

    /** @var string of direct debits: a key of TYPES */
    public string $type = 'CORE';

    /** @var string|null yyyy-mm-dd, in place of the clock's day */
    public ?string $today = null;

    private function __construct(string $rulebook)
    {
        $this->rulebook = $rulebook;
    }

    /** Under the rulebook that banks take today. */
    public static function latest(): self
    {
        return new self(Rulebook::LATEST);
    }

    /** Under a rulebook of Rulebook::names(). */
    public static function under(string $rulebook): self
    {
        return new self($rulebook);
    }

    /** Day of payments that have none of their own. */
    public function on(?string $date): self
    {
        return $this->with('date', $date);
    }

    public function withMessageId(?string $messageId): self
    {
        return $this->with('messageId', $messageId);
    }

    /** The bank books each payment by itself. */
    public function bookedSingly(bool $singly = true): self
    {
        return $this->with('batchBooking', !$singly);
    }

    /** Characters that the bank does not take are replaced, and told as changes. */
    public function transliterating(bool $transliterates = true): self
    {
        return $this->with('transliterates', $transliterates);
    }

    /** Names and texts that are too long are cut, and told as changes; ids are not. */
    public function shortening(bool $shortens = true): self
    {
        return $this->with('shortens', $shortens);
    }

    /** Kind of direct debit: CORE, COR1 or B2B. */
    public function ofType(string $type): self
    {
        return $this->with('type', $type);
    }

    /** What counts as today. */
    public function asOf(string $today): self
    {
        return $this->with('today', $today);
    }

    /** @param mixed $value */
    private function with(string $property, $value): self
    {
        $copy = clone $this;
        $copy->$property = $value;

        return $copy;
    }
}
