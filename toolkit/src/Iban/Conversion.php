<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

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

    /** @var string|null why there is no IBAN, or what the bank's rule changed; null if there is nothing to tell */
    public ?string $reason;

    public function __construct(string $account, string $bankCode, ?string $iban, int $status, ?string $reason)
    {
        $this->account = $account;
        $this->bankCode = $bankCode;
        $this->iban = $iban;
        $this->status = $status;
        $this->reason = $reason;
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
