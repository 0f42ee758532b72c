<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

use Sepa\Toolkit\Texts;

/**
 * A German account number and bank code, and the IBAN that came of them.
 *
 * @psalm-immutable
 */
final class Conversion implements \JsonSerializable
{
    public string $account;

    public string $bankCode;

    /** @var string|null null if the bank's rule or the account check refuses */
    public ?string $iban;

    /** @var int the extension's status code */
    public int $status;

    /** @var list<string> keys of translations/banks: why there is no IBAN, what the bank's rule changed */
    public array $codes;

    /** @var string|null that in English; null if there is nothing to tell */
    public ?string $reason;

    /** @param list<string> $codes */
    public function __construct(string $account, string $bankCode, ?string $iban, int $status, array $codes = [])
    {
        $this->account = $account;
        $this->bankCode = $bankCode;
        $this->iban = $iban;
        $this->status = $status;
        $this->codes = $codes;
        $this->reason = $this->reason();
    }

    /** Why there is no IBAN, or what the bank's rule changed; null if there is nothing to tell. */
    public function reason(string $locale = 'en'): ?string
    {
        if (!$this->codes) {
            return null;
        }
        $texts = array_map(
            static fn (string $code): string => Texts::of('banks', "conversion.$code", [], $locale),
            $this->codes
        );

        return implode('; ', $texts);
    }

    /** @return array{account: string, bank_code: string, iban: ?string, status: int, reason: ?string} */
    public function jsonSerialize(): array
    {
        return [
            'account' => $this->account,
            'bank_code' => $this->bankCode,
            'iban' => $this->iban,
            'status' => $this->status,
            'reason' => $this->reason,
        ];
    }
}
