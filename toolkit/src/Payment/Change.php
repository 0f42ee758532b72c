<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * A text that was transliterated.
 *
 * @psalm-immutable
 */
final class Change implements \JsonSerializable
{
    /** @var int|null the payment's number; null for the submitting party */
    public ?int $row;

    public ?string $label;

    public string $key;

    public string $from;

    public string $to;

    public function __construct(?int $row, ?string $label, string $key, string $from, string $to)
    {
        $this->row = $row;
        $this->label = $label;
        $this->key = $key;
        $this->from = $from;
        $this->to = $to;
    }

    /** As what is told beside faults and warnings. */
    public function fault(): Fault
    {
        return new Fault($this->row, $this->label, $this->key, 'transliterated', ['from' => $this->from, 'to' => $this->to]);
    }

    /** @return array{row: ?int, label: ?string, key: string, from: string, to: string} */
    public function jsonSerialize(): array
    {
        return get_object_vars($this);
    }
}
