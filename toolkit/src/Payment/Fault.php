<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Texts;

/**
 * What is wrong, or odd, at one place of a message. Its texts are made when
 * they are asked for, from its code and values.
 *
 * @psalm-immutable
 */
final class Fault implements \JsonSerializable
{
    /** The value that is the extension's own sentence. */
    public const SAID = 'said';

    /** Bytes of a value that a text shows at most. */
    private const SHOWN = 40;

    /** @var int|null the payment's number; null if it is about the submitting party or the whole message */
    public ?int $row;

    /** @var string|null the caller's own name for the payment */
    public ?string $label;

    /** @var string|null the key concerned, of a payment or of the submitting party */
    public ?string $key;

    /** @var string the kind of fault, for programs: a key of translations/faults */
    public string $code;

    /** @var array<string, int|string|list<string>> what the texts of the code are made from */
    public array $values;

    /** @param array<string, int|string|list<string>> $values */
    public function __construct(?int $row, ?string $label, ?string $key, string $code, array $values = [])
    {
        $this->row = $row;
        $this->label = $label;
        $this->key = $key === '' || $key === null ? null : mb_scrub($key, 'UTF-8');
        $this->code = $code;
        $this->values = $values;
    }

    /** What a text shows of a value. */
    public static function shown(string $value): string
    {
        return mb_strcut($value, 0, self::SHOWN, 'UTF-8');
    }

    /** The reason; in English in the extension's words where it has any. */
    public function text(string $locale = 'en'): string
    {
        $said = $this->values[self::SAID] ?? null;
        if ($said === null || strncmp($locale, 'en', 2) !== 0) {
            return $this->translated('reason', $locale);
        }
        // The sentence may quote one byte of a longer character.
        $quoted = "'" . ($this->values['characters'][0] ?? '?') . "'";

        return mb_scrub((string) preg_replace("/'[\x80-\xFF]'/", $quoted, $said), 'UTF-8');
    }

    /**
     * What to do about it.
     *
     * @param bool|null $german whether 1.190,00 and 31.12.2026 are understood where it is said; as the language has
     *     it if null
     */
    public function hint(string $locale = 'en', ?bool $german = null): string
    {
        return $this->translated('hint', $locale, $german);
    }

    public function __toString(): string
    {
        $where = implode(', ', array_filter([$this->row === null ? null : "row $this->row", $this->key]));

        return ($where === '' ? '' : "$where: ") . $this->text();
    }

    /** @return array{row: ?int, label: ?string, key: ?string, code: string, text: string, hint: string} */
    public function jsonSerialize(): array
    {
        return [
            'row' => $this->row,
            'label' => $this->label,
            'key' => $this->key,
            'code' => $this->code,
            'text' => $this->text(),
            'hint' => $this->hint(),
        ];
    }

    private function translated(string $part, string $locale, ?bool $german = null): string
    {
        $key = (string) $this->key;
        $more = [
            'key' => $key,
            'label' => Keys::label($key, $locale, $this->row === null),
            'form' => Keys::form($key),
            'german' => $german ?? strncmp($locale, 'de', 2) === 0 ? 'yes' : 'no',
        ];
        if (is_array($this->values['characters'] ?? null)) {
            // A blank that is refused would not be seen.
            $blank = Texts::of('faults', 'blank', [], $locale);
            $more['characters'] = preg_replace('/^[\s\p{Z}]$/u', $blank, $this->values['characters']);
        }

        return Texts::of('faults', "$this->code.$part", $more + $this->values, $locale);
    }
}
