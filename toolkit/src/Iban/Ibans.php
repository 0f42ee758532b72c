<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

/** IBANs as people type them, checked, explained and looked up by the extension. */
final class Ibans
{
    /** The extension's reasons: code and hint by text. */
    public const REASONS = [
        'Invalid or unknown IBAN country code' => [
            'iban_country',
            'An IBAN starts with the two letters of a SEPA country, such as DE. Is a part missing at the front?',
        ],
        'Wrong IBAN length' => [
            'iban_length',
            'Characters are missing or too many: compare it with the invoice, four by four.',
        ],
        'Invalid IBAN format' => [
            'iban_format',
            'There is a letter where this country has digits, or the other way round: O and 0, I and 1?',
        ],
        'Invalid character in IBAN' => ['iban_format', 'An IBAN consists of digits and letters only.'],
        'Invalid IBAN checksum' => [
            'iban_checksum',
            'The check digits do not fit: a digit is wrong, or two are swapped.',
        ],
        'Invalid bank ID (BLZ) in IBAN' => [
            'iban_bank',
            'The bank code in it (characters 5 to 12) is not in the list: a typing error, or the bank has merged, '
                . 'or newer than the lists of this program. Ask the payee.',
        ],
        'Invalid account number in IBAN' => [
            'iban_account',
            'The account number in it (the last ten digits) cannot exist at this bank. Ask the payee.',
        ],
    ];

    /** Of countries that the extension does not know: reason and hint by code. */
    private const COUNTRY_REASONS = [
        'iban_country' => [
            'No country has these letters',
            'An IBAN starts with the two letters of its country, such as DE. Is a part missing at the front?',
        ],
        'iban_country_unsupported' => [
            'Country of SEPA that is not known here',
            'It joined later: this program can neither check nor use its IBANs. Pay it in the online banking.',
        ],
        'iban_country_outside' => [
            'Country outside of SEPA, or without IBANs',
            'The check digits are right; more of it is not known here. No SEPA payment goes there.',
        ],
        'iban_country_outside_checksum' => [
            'Country outside of SEPA, or without IBANs',
            'The check digits are wrong, too: compare it with the invoice. No SEPA payment goes there.',
        ],
    ];

    private const STATUS = [
        1 => "the bank's rule changed the account number",
        10 => 'the bank code is unknown',
        11 => 'the account number fails its check',
        12 => 'the bank, or this kind of account, takes no conversion',
        13 => 'the bank code was replaced by its successor',
        15 => "the bank's rule changed the bank code",
        50 => "the bank's rule refuses this account",
    ];

    private const DIRECTORY_COUNTRIES = ['DE', 'AT', 'CH', 'LI'];

    private const SCHEMES = [
        'SCT' => SEPA_SCL_SCT,
        'SDD' => SEPA_SCL_SDD,
        'COR1' => SEPA_SCL_COR1,
        'B2B' => SEPA_SCL_B2B,
    ];

    /** "IBAN: de89 3704 0044 …" to "DE8937040044…": blanks, dots and dashes go, letters become capitals. */
    public static function normalise(string $text): string
    {
        if (preg_match('/^(?!IBAN)[A-Z0-9]+$/D', $text)) {
            return $text;
        }
        $compact = preg_replace('/[\s\x{200B}-\x{200D}\x{2010}-\x{2013}\x{FEFF}.\-]+/u', '', $text);
        // Not strtoupper, which follows the locale in PHP 7.
        $compact = strtr($compact ?? trim($text), 'abcdefghijklmnopqrstuvwxyz', 'ABCDEFGHIJKLMNOPQRSTUVWXYZ');

        return (string) preg_replace('/^IBAN:?(?=[A-Z]{2})/', '', $compact);
    }

    /** In groups of four, as printed on paper; what is no IBAN stays whole. */
    public static function grouped(string $iban): string
    {
        $iban = self::normalise($iban);

        return preg_match('/^[A-Z0-9]+$/D', $iban) ? rtrim(chunk_split($iban, 4, ' ')) : $iban;
    }

    /** @param string $text as somebody typed it */
    public static function check(string $text): IbanCheck
    {
        $iban = self::normalise($text);
        [$code, $reason, $hint] = self::refusal($iban);
        if ($code !== null) {
            return new IbanCheck($iban, $code, $reason, $hint);
        }
        $bic = \SEPA::IBAN_getBIC($iban) ?: null;

        return new IbanCheck($iban, null, null, null, $bic, $bic === null ? null : self::bankName($bic));
    }

    /**
     * Why an IBAN in electronic form is refused.
     *
     * @return array{?string, ?string, ?string} code, the extension's text, hint; nulls for a good one
     */
    public static function refusal(string $iban): array
    {
        if ($iban === '') {
            return ['empty', 'IBAN missing', 'There is no IBAN here.'];
        }
        if (strpos($iban, "\0") !== false) {
            return ['control_characters', 'Control character in IBAN', 'An IBAN consists of digits and letters only.'];
        }
        if (\SEPA::IBAN_check($iban)) {
            return [null, null, null];
        }
        try {
            (new \SEPA(SEPA_MSGTYPE_CTI))->setIBAN($iban);
        } catch (\SEPAException $e) {
            foreach (self::REASONS as $text => [$code, $hint]) {
                if (strncmp($e->getMessage(), $text, strlen($text)) === 0) {
                    return $code === 'iban_country' ? self::countryRefusal($iban) : [$code, $text, $hint];
                }
            }
        }

        return ['iban', 'invalid IBAN', 'Compare it with the invoice.'];
    }

    /** @return array{string, string, string} as refusal() */
    private static function countryRefusal(string $iban): array
    {
        $code = Country::refusal($iban);

        return [$code, self::COUNTRY_REASONS[$code][0], self::COUNTRY_REASONS[$code][1]];
    }

    /** Name of the bank, or of its head office if the branch has no entry of its own. */
    public static function bankName(string $bic): ?string
    {
        $name = \SEPA::BIC_getBankName($bic);
        if (($name === null || $name === '') && strlen($bic) === 11) {
            $name = \SEPA::BIC_getBankName(substr($bic, 0, 8));
        }

        return $name === '' ? null : $name;
    }

    /** @param string $query a BIC, an IBAN or a German bank code */
    public static function bank(string $query): Bank
    {
        $text = self::normalise($query);
        if ($text === '' || !ctype_alnum($text)) {
            return new Bank($query, null, null, null, 'neither a BIC nor an IBAN nor a bank code');
        }
        $isBankCode = preg_match('/^\d{8}$/D', $text) === 1;
        $isBic = !$isBankCode && in_array(strlen($text), [8, 11], true);
        if (!$isBankCode && !$isBic && !in_array(substr($text, 0, 2), self::DIRECTORY_COUNTRIES, true)) {
            return new Bank($query, null, null, null, 'the directory finds banks by IBANs of DE, AT, CH and LI only');
        }
        // Of an IBAN, only the bank code in it counts here.
        $bic = $isBic ? $text : \SEPA::IBAN_getBIC($isBankCode ? "DE00{$text}0000000000" : $text);
        if ($bic === null || $bic === '') {
            return new Bank($query, null, null, null, $bic === null ? 'unknown bank' : 'the directory has no BIC for this bank');
        }
        $name = self::bankName($bic);
        if ($name === null && $isBic) {
            return new Bank($query, null, null, null, 'unknown bank');
        }

        return new Bank($query, $bic, $name, self::schemes($bic), null);
    }

    /** German account number to IBAN by the rule of the bank. */
    public static function convert(string $account, string $bankCode): Conversion
    {
        $account = (string) preg_replace('/[\s.\-]+/', '', $account);
        $bankCode = (string) preg_replace('/[\s.\-]+/', '', $bankCode);
        if (!preg_match('/^\d{1,10}$/D', $account)) {
            return new Conversion($account, $bankCode, null, 0, 'an account number has 1 to 10 digits');
        }
        if (!preg_match('/^\d{8}$/D', $bankCode)) {
            return new Conversion($account, $bankCode, null, 0, 'a bank code has 8 digits');
        }
        $status = 0;
        $iban = \SEPA::IBAN_convert('DE', $account, $bankCode, $status);
        $reason = self::STATUS[$status] ?? null;
        if ($iban === null && in_array($status, [0, 1, 13, 15], true)) {
            $reason = ($reason === null ? '' : "$reason; ") . 'the account is refused';
        }

        return new Conversion($account, $bankCode, $iban, $status, $reason);
    }

    /** @return list<string>|null */
    private static function schemes(string $bic): ?array
    {
        $flags = \SEPA::BIC_getBankFlags($bic) ?? \SEPA::BIC_getBankFlags(substr($bic, 0, 8));
        if ($flags === null) {
            return null;
        }

        return array_keys(array_filter(self::SCHEMES, static function (int $bit) use ($flags): bool {
            return ($flags & $bit) !== 0;
        }));
    }
}
