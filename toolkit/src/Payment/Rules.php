<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * What the schemas of the banks ask for and the extension does not test.
 * Each test answers with a code and values of a fault, or null.
 */
final class Rules
{
    /** Highest amount of a payment in the SEPA schemes. */
    public const MAX_AMOUNT = '999999999.99';

    /** Form of the national part of a creditor identifier, where it is known. */
    private const CREDITOR_IDS = ['DE' => '\d{11}', 'AT' => '\d{11}', 'NL' => '\d{12}'];

    private const RULED = [Keys::AMOUNT => 0, Keys::DATE => 0, Keys::PURPOSE => 0, Keys::ID => 0, Keys::CREDITOR => 0];

    /** Whether values of a form have more to be tested than texts have. */
    public static function has(string $form): bool
    {
        return isset(self::RULED[$form]);
    }

    /** @return array{string, array<string, int|string|list<string>>}|null of a text that no bank can read */
    public static function garbled(string $key, string $value): ?array
    {
        if (!preg_match('//u', $value)) {
            return ['utf8', []];
        }
        // U+FFFE and U+FFFF have no place in XML.
        if (preg_match('/[\p{Cc}\x{2028}\x{2029}\x{FFFE}\x{FFFF}]/u', $value)) {
            return ['control_characters', []];
        }
        if ($value !== '' && preg_match('/^[\s\p{Z}]*$/u', $value)) {
            return ['empty', ['blanks' => 'yes']];
        }

        return null;
    }

    /** @return array{string, array<string, int|string|list<string>>}|null of a value that the extension would take */
    public static function broken(string $key, string $value, Rulebook $rulebook): ?array
    {
        $form = Keys::form($key);
        if ($value === '') {
            return ['empty', ['blanks' => 'no']];
        }
        if ($form === Keys::AMOUNT) {
            return self::brokenAmount($value);
        }
        if ($form === Keys::DATE) {
            return Calendar::exists($value) ? null : ['date', ['value' => Fault::shown($value)]];
        }
        if ($form === Keys::PURPOSE) {
            return preg_match('/^[A-Z0-9]{4}$/D', $value) ? null : ['purpose', ['value' => Fault::shown($value)]];
        }
        if ($form === Keys::ID) {
            return self::brokenId($key, $value, $rulebook);
        }
        if ($form === Keys::CREDITOR) {
            return self::brokenCreditorId($value);
        }

        return null;
    }

    /** @return array{string, array<string, int|string|list<string>>}|null */
    private static function brokenAmount(string $value): ?array
    {
        if (!preg_match('/^(\d+)(?:\.\d{1,2})?$/D', $value, $part)) {
            return ['amount', ['value' => Fault::shown($value)]];
        }

        return strlen(ltrim($part[1], '0')) > 9 ? ['amount_limit', ['limit' => self::MAX_AMOUNT]] : null;
    }

    /** @return array{string, array<string, int|string|list<string>>}|null */
    private static function brokenId(string $key, string $value, Rulebook $rulebook): ?array
    {
        if (preg_match('~^/|//|/$~D', $value)) {
            return ['id', ['value' => Fault::shown($value)]];
        }
        // Further characters of the Austrian set are for texts only.
        if ($rulebook->fewerInIds && preg_match_all("~[^A-Za-z0-9'()+,\\-./:? ]~u", $value, $bad)) {
            return ['characters', ['characters' => array_values(array_unique($bad[0]))]];
        }
        // Payment blocks are numbered by an ending of at least three characters.
        if ($key === 'messageId' && strlen($value) > Keys::limit($key)) {
            return ['message_id', ['limit' => Keys::limit($key)]];
        }

        return null;
    }

    /** @return array{string, array<string, int|string|list<string>>}|null */
    private static function brokenCreditorId(string $value): ?array
    {
        $national = self::CREDITOR_IDS[substr($value, 0, 2)] ?? '[A-Z0-9]{1,28}';

        return preg_match("/^[A-Z]{2}\\d{2}[A-Z0-9]{3}$national$/D", $value)
            ? null
            : ['creditor_id', ['value' => Fault::shown($value)]];
    }
}
