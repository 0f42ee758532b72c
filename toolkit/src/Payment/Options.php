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

    /** @var bool whether the message is one of instant payments */
    public bool $instant = false;

    /** @var string|null time of execution with its offset from UTC, such as 2026-12-01T10:00:00+01:00 */
    public ?string $at = null;

    /** @var string|null category purpose, such as SALA */
    public ?string $category = null;

    /** @var string|null HIGH or NORM */
    public ?string $priority = null;

    /** @var string|null of the own account, such as EUR */
    public ?string $currency = null;

    /** @var bool whether a message without the own BIC is meant */
    public bool $needsNoBic = false;

    /** @var bool whether addresses may have lines beside town and country */
    public bool $hybridAddresses = false;

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

    /** Within seconds, also at night and on holidays. */
    public function instant(bool $instant = true): self
    {
        return $this->with('instant', $instant);
    }

    /** Instant payments at a time of a day, with its offset from UTC: 2026-12-01T10:00:00+01:00. */
    public function at(?string $time): self
    {
        return $this->with('at', $time);
    }

    /** What all payments are for: a code of ISO 20022's list of category purposes, such as SALA. */
    public function forCategory(?string $category): self
    {
        return $this->with('category', $category);
    }

    /** HIGH or NORM, as agreed with the bank. */
    public function withPriority(?string $priority): self
    {
        return $this->with('priority', $priority);
    }

    /** Currency of the own account, where the bank asks for it. */
    public function inAccountOf(?string $currency): self
    {
        return $this->with('currency', $currency);
    }

    /** The document says NOTPROVIDED where the party gives no BIC: what is not given is not looked up. */
    public function withoutBic(bool $needsNone = true): self
    {
        return $this->with('needsNoBic', $needsNone);
    }

    /**
     * Addresses may have up to two lines beside town, country and postcode.
     * Schemas of before April 2025 refuse such documents.
     */
    public function withHybridAddresses(bool $areHybrid = true): self
    {
        return $this->with('hybridAddresses', $areHybrid);
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
