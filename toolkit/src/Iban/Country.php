<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

/** Countries by the two letters at the front of an IBAN. */
final class Country
{
    /** SEPA countries that the extension does not know, since they joined late. */
    private const LATE = ['AD', 'AL', 'MD', 'ME', 'MK', 'RS', 'VA'];

    /** Two letters for which ICU has a name and which are no country. */
    private const OTHERS = ['EU', 'EZ', 'QO', 'UN', 'XA', 'XB', 'ZZ'];

    private const MODULUS = 97;

    /** @var array<string, \ResourceBundle> by language */
    private static array $names = [];

    /** @return string|null null for letters that no country has */
    public static function name(string $letters, string $locale = 'en'): ?string
    {
        if (!preg_match('/^[A-Z]{2}$/D', $letters) || in_array($letters, self::OTHERS, true)) {
            return null;
        }
        return self::names($locale)->get($letters) ?? self::names('en')->get($letters);
    }

    private static function names(string $locale): \ResourceBundle
    {
        return self::$names[$locale]
            ?? self::$names[$locale] = \ResourceBundle::create($locale, 'ICUDATA-region')->get('Countries');
    }

    /** Why an IBAN of a country that the extension does not know is refused: a code of translations/faults. */
    public static function refusal(string $iban): string
    {
        $letters = substr($iban, 0, 2);
        if (in_array($letters, self::LATE, true)) {
            return 'iban_country_unsupported';
        }
        if (!self::exists($letters)) {
            return 'iban_country';
        }

        return self::hasCheckDigits($iban) ? 'iban_country_outside' : 'iban_country_outside_checksum';
    }

    private static function exists(string $letters): bool
    {
        // Without ICU any two letters may be a country's.
        return class_exists(\ResourceBundle::class)
            ? self::name($letters) !== null
            : preg_match('/^[A-Z]{2}$/D', $letters) === 1;
    }

    /** Whether the check digits of ISO 13616 are right, whatever the country's own form. */
    public static function hasCheckDigits(string $iban): bool
    {
        if (!preg_match('/^[A-Z]{2}\d{2}[A-Z0-9]{1,30}$/D', $iban)) {
            return false;
        }
        $remainder = 0;
        foreach (str_split(substr($iban, 4) . substr($iban, 0, 4)) as $character) {
            // Letters count as two digits, A as 10.
            $remainder = (int) ($remainder . base_convert($character, 36, 10)) % self::MODULUS;
        }

        return $remainder === 1;
    }
}
