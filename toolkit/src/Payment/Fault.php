<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * What is wrong, or odd, at one place of a message.
 *
 * @psalm-immutable
 */
final class Fault implements \JsonSerializable
{
    /** @var int|null the payment's number; null if it is about the submitting party or the whole message */
    public ?int $row;

    /** @var string|null the caller's own name for the payment */
    public ?string $label;

    /** @var string|null the key concerned, of a payment or of the submitting party */
    public ?string $key;

    /** @var string the kind of fault, for programs: a key of Reasons::HINTS */
    public string $code;

    /** @var string the reason, in the extension's words where it has any */
    public string $text;

    /** @var string what to do about it */
    public string $hint;

    public function __construct(?int $row, ?string $label, ?string $key, string $code, string $text, string $hint)
    {
        $this->row = $row;
        $this->label = $label;
        $this->key = $key;
        $this->code = $code;
        $this->text = $text;
        $this->hint = $hint;
    }

    public function __toString(): string
    {
        $where = $this->row === null ? '' : "row $this->row, ";

        return "$where$this->key: $this->text";
    }

    /** @return array{row: ?int, label: ?string, key: ?string, code: string, text: string, hint: string} */
    public function jsonSerialize(): array
    {
        return get_object_vars($this);
    }
}
