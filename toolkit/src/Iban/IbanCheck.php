<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

use Sepa\Toolkit\Texts;

/**
 * What is known about one IBAN.
 *
 * @psalm-immutable
 */
final class IbanCheck implements \JsonSerializable
{
    /** @var string in electronic form: capitals, no blanks */
    public string $iban;

    public bool $valid;

    /** @var string|null why it is refused, for programs: a key of translations/faults */
    public ?string $code;

    /** @var string|null why it is refused, in the extension's words */
    public ?string $reason;

    /** @var string|null what to do about it */
    public ?string $hint;

    public ?string $bic;

    /** @var string|null the bank's name */
    public ?string $bank;

    public function __construct(
        string $iban,
        ?string $code,
        ?string $reason,
        ?string $hint,
        ?string $bic = null,
        ?string $bank = null
    ) {
        $this->iban = $iban;
        $this->valid = $code === null;
        $this->code = $code;
        $this->reason = $reason;
        $this->hint = $hint;
        $this->bic = $bic;
        $this->bank = $bank;
    }

    /** Why it is refused, in German or else in the extension's words; null for a good one. */
    public function reason(string $locale = 'en'): ?string
    {
        return $locale === 'en' ? $this->reason : $this->text('reason', $locale);
    }

    /** What to do about it; null for a good one. */
    public function hint(string $locale = 'en'): ?string
    {
        return $locale === 'en' ? $this->hint : $this->text('hint', $locale);
    }

    private function text(string $part, string $locale): ?string
    {
        $code = $this->code === 'empty' ? 'missing' : $this->code;

        return $code === null
            ? null
            : Texts::of('faults', "$code.$part", ['key' => 'iban', 'label' => 'IBAN'], $locale);
    }

    /** @return array{iban: string, valid: bool, code: ?string, reason: ?string, bic: ?string, bank: ?string} */
    public function jsonSerialize(): array
    {
        return [
            'iban' => $this->iban,
            'valid' => $this->valid,
            'code' => $this->code,
            'reason' => $this->reason,
            'bic' => $this->bic,
            'bank' => $this->bank,
        ];
    }
}
