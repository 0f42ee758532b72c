<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/**
 * Who submits a message: the payer of transfers, the creditor of direct debits.
 * Nothing is tested here: the message tells what is wrong.
 *
 * @psalm-immutable
 */
final class Party
{
    public string $name;

    /** @var string in electronic form */
    public string $iban;

    public string $bic;

    /** @var string the creditor identifier, empty without one */
    public string $creditorId;

    private function __construct(string $name, string $iban, string $bic, string $creditorId)
    {
        $this->name = $name;
        $this->iban = Ibans::normalise($iban);
        $this->bic = trim($bic);
        $this->creditorId = (string) preg_replace('/\s+/', '', $creditorId);
    }

    public static function payer(string $name, string $iban, string $bic): self
    {
        return new self($name, $iban, $bic, '');
    }

    public static function creditor(string $name, string $iban, string $bic, string $creditorId): self
    {
        return new self($name, $iban, $bic, $creditorId);
    }
}
