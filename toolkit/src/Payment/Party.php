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

    /** @var string empty if it is not given */
    public string $bic;

    /** @var string the creditor identifier, empty without one */
    public string $creditorId;

    /** @var array<string, string> by the keys of addresses; empty without one */
    public array $address = [];

    private function __construct(string $name, string $iban, ?string $bic, string $creditorId)
    {
        $this->name = $name;
        $this->iban = Ibans::normalise($iban);
        $this->bic = trim((string) $bic);
        $this->creditorId = (string) preg_replace('/\s+/', '', $creditorId);
    }

    /** @param string|null $bic looked up by the IBAN if it is not given, where the directory has the country */
    public static function payer(string $name, string $iban, ?string $bic = null): self
    {
        return new self($name, $iban, $bic, '');
    }

    /** @param string|null $bic as of payer() */
    public static function creditor(string $name, string $iban, ?string $bic, string $creditorId): self
    {
        return new self($name, $iban, $bic, $creditorId);
    }

    /** @param array<string, string> $address by the keys of a payment's address, such as addrTown and addrCC */
    public function livingAt(array $address): self
    {
        $copy = clone $this;
        $copy->address = $address;

        return $copy;
    }

    public function named(string $name): self
    {
        $copy = clone $this;
        $copy->name = $name;

        return $copy;
    }

    /** The same party with another account. */
    public function withAccount(string $iban, ?string $bic = null): self
    {
        $copy = clone $this;
        $copy->iban = Ibans::normalise($iban);
        $copy->bic = trim((string) $bic);

        return $copy;
    }
}
