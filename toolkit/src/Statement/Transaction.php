<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * What a booking and a payment within one tell alike: who, what for, which references.
 * Texts are UTF-8, and null where the file doesn't have them.
 *
 * @psalm-immutable
 */
abstract class Transaction implements \JsonSerializable
{
    /** @var string N, F or S; '' if there is none */
    public string $type = '';

    /** @var string three characters; '' if there is no type */
    public string $code = '';

    /** @var string|null reference for the account owner */
    public ?string $ref = null;

    /** @var string|null reference of the bank */
    public ?string $bankref = null;

    /** @var int|null business transaction code */
    public ?int $gvc = null;

    /** @var int|null extension code, the reason of a return */
    public ?int $extcode = null;

    /** @var string|null booking text */
    public ?string $txtext = null;

    public ?string $primanota = null;

    /** @var string|null the other party's bank: BIC or bank code */
    public ?string $bank = null;

    /** @var string|null the other party's account: IBAN or number */
    public ?string $account = null;

    /** @var string|null the other party's name */
    public ?string $name = null;

    /** @var string|null text without keyword; all the details if they have no subfields */
    public ?string $purpose = null;

    /** @var string|null end-to-end reference */
    public ?string $eref = null;

    /** @var string|null customer reference; of a batch the id of its payment block */
    public ?string $kref = null;

    /** @var string|null mandate reference */
    public ?string $mref = null;

    /** @var string|null creditor identifier */
    public ?string $cred = null;

    /** @var string|null debtor identifier */
    public ?string $debt = null;

    /** @var string|null purpose code */
    public ?string $purp = null;

    /** @var string|null compensation, with a decimal point */
    public ?string $coam = null;

    /** @var string|null amount before fees or in another currency, with a decimal point */
    public ?string $oamt = null;

    /** @var string|null remittance text */
    public ?string $svwz = null;

    /** @var string|null deviating ordering party: the ultimate debtor */
    public ?string $abwa = null;

    /** @var string|null deviating beneficiary: the ultimate creditor */
    public ?string $abwe = null;

    /** @var string|null structured reference of the creditor, such as RF18539007547034 */
    public ?string $reference = null;

    /** @var string|null why a payment came back, a code such as AC04 */
    public ?string $reason = null;

    /** @var string|null the bank's own words for that */
    public ?string $reasonText = null;

    /** @var Amount|null what was instructed, where that is not the amount itself: before fees, or in another currency */
    public ?Amount $instructed = null;

    /** @var string|null exchange rate, with a decimal point */
    public ?string $rate = null;

    /** @var list<Amount> charges within the amount, negative where they cost the account owner */
    public array $charges = [];

    /** @var string|null id of the message it was sent in */
    public ?string $msgid = null;

    /** @var string|null instruction id, by the account owner */
    public ?string $instrid = null;

    /** @var string|null transaction id, by the first bank */
    public ?string $txid = null;

    /** @var string|null unique end-to-end reference (UETR) */
    public ?string $uetr = null;

    /** @var string|null ISO 20022 code of the kind, such as PMNT/RCDT/ESCT */
    public ?string $domain = null;

    /** @var string|null the bank's own code of the kind, where it is no German one */
    public ?string $ownCode = null;

    /** @param array<string, mixed> $values by the names of the members */
    public function __construct(array $values)
    {
        foreach ($values as $name => $value) {
            $this->$name = $value;
        }
    }

    /** What it is for, in the bank's own field, else in free text, else in the name of the kind of booking. */
    public function remittance(): string
    {
        return $this->svwz ?? $this->purpose ?? $this->txtext ?? '';
    }

    /** @return array<string, mixed> what is there, in the order of the members; dates yyyy-mm-dd */
    public function jsonSerialize(): array
    {
        $told = [];
        foreach (get_object_vars($this) as $name => $value) {
            if ($value instanceof \DateTimeImmutable) {
                $told[$name] = $value->format('Y-m-d');
            } elseif ($value !== null && $value !== '' && $value !== false && $value !== []) {
                $told[$name] = $value;
            }
        }
        if (($told['line'] ?? null) === 0) {
            unset($told['line']);
        }
        if ($this->instructed) {
            $told['instructedCurrency'] = $this->instructed->currency;
        }

        return $told;
    }
}
