<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

use Sepa\Toolkit\Texts;

/** IBANs as people type them, checked, explained and looked up by the extension. */
final class Ibans
{
    /** Code by the extension's reason. */
    private const REASONS = [
        'Invalid or unknown IBAN country code' => 'iban_country',
        'Wrong IBAN length' => 'iban_length',
        'Invalid IBAN format' => 'iban_format',
        'Invalid character in IBAN' => 'iban_format',
        'Invalid IBAN checksum' => 'iban_checksum',
        'Invalid bank ID (BLZ) in IBAN' => 'iban_bank',
        'Invalid account number in IBAN' => 'iban_account',
    ];

    /** Of the extension: what is to be told about a conversion. */
    private const TOLD = [1, 10, 11, 12, 13, 15, 50];

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
            foreach (self::REASONS as $reason => $code) {
                if (strncmp($e->getMessage(), $reason, strlen($reason)) === 0) {
                    return self::texts((string) self::code($reason, $iban), $reason);
                }
            }
        }

        return self::texts('iban', 'invalid IBAN');
    }

    /** Code of the extension's sentence about an IBAN; null if it is about something else. */
    public static function code(string $said, string $iban): ?string
    {
        foreach (self::REASONS as $start => $code) {
            if (strncmp($said, $start, strlen($start)) === 0) {
                return $code === 'iban_country' ? Country::refusal($iban) : $code;
            }
        }

        return null;
    }

    /** @return array{string, string, string} as refusal() */
    private static function texts(string $code, string $said): array
    {
        static $texts = [];
        $texts[$code] = $texts[$code] ?? [
            $code,
            strncmp($code, 'iban_country', 12) === 0 ? Texts::of('faults', "$code.reason") : $said,
            Texts::of('faults', "$code.hint"),
        ];

        return $texts[$code];
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
            return new Bank($query, null, null, null, 'form');
        }
        $isBankCode = preg_match('/^\d{8}$/D', $text) === 1;
        $isBic = !$isBankCode && in_array(strlen($text), [8, 11], true);
        if (!$isBankCode && !$isBic && !in_array(substr($text, 0, 2), self::DIRECTORY_COUNTRIES, true)) {
            return new Bank($query, null, null, null, 'country');
        }
        // Of an IBAN, only the bank code in it counts here.
        $bic = $isBic ? $text : \SEPA::IBAN_getBIC($isBankCode ? "DE00{$text}0000000000" : $text);
        if ($bic === null || $bic === '') {
            return new Bank($query, null, null, null, $bic === null ? 'unknown' : 'no_bic');
        }
        $name = self::bankName($bic);
        if ($name === null && $isBic) {
            return new Bank($query, null, null, null, 'unknown');
        }

        return new Bank($query, $bic, $name, self::schemes($bic), null);
    }

    /** German account number to IBAN by the rule of the bank. */
    public static function convert(string $account, string $bankCode): Conversion
    {
        $account = (string) preg_replace('/[\s.\-]+/', '', $account);
        $bankCode = (string) preg_replace('/[\s.\-]+/', '', $bankCode);
        if (!preg_match('/^\d{1,10}$/D', $account)) {
            return new Conversion($account, $bankCode, null, 0, ['account']);
        }
        if (!preg_match('/^\d{8}$/D', $bankCode)) {
            return new Conversion($account, $bankCode, null, 0, ['bank_code']);
        }
        $status = 0;
        $iban = \SEPA::IBAN_convert('DE', $account, $bankCode, $status);
        $codes = in_array($status, self::TOLD, true) ? [(string) $status] : [];
        if ($iban === null && in_array($status, [0, 1, 13, 15], true)) {
            $codes[] = 'refused';
        }

        return new Conversion($account, $bankCode, $iban, $status, $codes);
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
