<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * One booking: the extension's array with what the raw line tells besides. Texts are
 * UTF-8, and null where the file doesn't have the field.
 *
 * @psalm-immutable
 */
final class Booking implements \JsonSerializable
{
    private const TEXTS = [
        'ref', 'bankref', 'txtext', 'primanota', 'bank', 'account', 'name', 'purpose',
        'eref', 'kref', 'mref', 'cred', 'debt', 'purp', 'coam', 'oamt', 'svwz', 'abwa', 'abwe',
    ];

    /** @var \DateTimeImmutable|null value date, midnight UTC; null if the calendar doesn't have it */
    public ?\DateTimeImmutable $valuta;

    /** @var \DateTimeImmutable|null booking date; null if there is none */
    public ?\DateTimeImmutable $booked;

    /** @var Amount what it does to the balance: negative for a debit, and for a credit that is taken back */
    public Amount $amount;

    /** @var bool whether an earlier booking is taken back */
    public bool $reversal;

    /** @var bool whether it is only expected, in an interim report */
    public bool $expected;

    /** @var string N, F or S; '' if there is none */
    public string $type;

    /** @var string three characters; '' if there is no type */
    public string $code;

    /** @var string|null reference for the account owner */
    public ?string $ref = null;

    /** @var string|null reference of the bank */
    public ?string $bankref = null;

    /** @var string|null further text of the statement line, such as /OCMT/EUR49,90/ */
    public ?string $supplementary;

    /** @var int|null business transaction code */
    public ?int $gvc;

    /** @var int|null extension code, the reason of a return */
    public ?int $extcode;

    /** @var string|null booking text */
    public ?string $txtext = null;

    public ?string $primanota = null;

    /** @var string|null the other party's bank */
    public ?string $bank = null;

    /** @var string|null the other party's account */
    public ?string $account = null;

    /** @var string|null the other party's name */
    public ?string $name = null;

    /** @var string|null text without keyword; all the details if they have no subfields */
    public ?string $purpose = null;

    /** @var string|null end-to-end reference */
    public ?string $eref = null;

    /** @var string|null customer reference */
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

    /** @var string|null deviating ordering party */
    public ?string $abwa = null;

    /** @var string|null deviating beneficiary */
    public ?string $abwe = null;

    /** @var string|null the whole ":86:" in one text */
    public ?string $details;

    /** @var int line of the file */
    public int $line;

    /**
     * @param array<string, mixed> $array the extension's
     * @param array{mark: string, valuta: string, booked: string, amount: string, type: string, line: int, supplementary: string} $raw
     */
    public function __construct(array $array, array $raw, string $details, string $currency, Dates $dates)
    {
        $amount = Amount::read($raw['amount'], $currency) ?? new Amount(0, $currency);
        $this->amount = EntryLine::raises($raw['mark']) ? $amount : $amount->negative();
        $this->reversal = $raw['mark'][0] === 'R';
        $this->expected = $raw['mark'][0] === 'E';
        $this->valuta = $dates->of($raw['valuta']);
        $this->booked = $raw['booked'] === '' ? null : $dates->booked($raw['valuta'], $raw['booked']);
        $this->type = $raw['type'];
        $this->code = $raw['type'] === '' ? '' : $array['code'];
        $this->line = $raw['line'];
        $this->supplementary = self::text($raw['supplementary']);
        $this->details = self::text($details);
        $this->gvc = $array['gvc'] > 0 && $array['gvc'] <= 999 ? $array['gvc'] : null;
        $this->extcode = isset($array['extcode']) && $array['extcode'] <= 999 ? $array['extcode'] : null;
        foreach (self::TEXTS as $key) {
            if (isset($array[$key])) {
                $this->$key = self::text($array[$key]);
            }
        }
        if ($details !== '' && !Details::hasSubfields($details)) {
            $this->purpose = $this->details;
        }
    }

    /** What it is for, in the bank's own field, else in free text, else in the name of the kind of booking. */
    public function remittance(): string
    {
        return $this->svwz ?? $this->purpose ?? $this->txtext ?? '';
    }

    /** @return array<string, mixed> what is there, in the order of the fields; dates yyyy-mm-dd */
    public function jsonSerialize(): array
    {
        $values = array_filter(get_object_vars($this), static fn ($value): bool => $value !== null && $value !== '' && $value !== false);
        foreach (['valuta', 'booked'] as $key) {
            if (isset($values[$key])) {
                $values[$key] = $values[$key]->format('Y-m-d');
            }
        }

        return $values;
    }

    private static function text(string $text): ?string
    {
        return $text === '' ? null : Text::utf8($text);
    }
}
