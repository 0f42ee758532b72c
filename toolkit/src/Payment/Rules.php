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

    private const RULED = [
        Keys::AMOUNT => 0, Keys::DATE => 0, Keys::PURPOSE => 0, Keys::ID => 0, Keys::CREDITOR => 0, Keys::RF => 0,
    ];

    /** ISO 11649: RF, two check digits, up to 21 letters and digits. */
    private const RF = '/^RF\d\d[A-Z0-9]{1,21}$/D';

    /** Taken in every text under every rulebook. */
    private const USUAL = "~^[A-Za-z0-9 '()+,\\-./:?]+$~D";

    private Extension $extension;

    private Rulebook $rulebook;

    /** @var array<string, int> keys that the extension does not test, as keys */
    private array $added;

    /** @var array<string, bool> by date: whether it exists */
    private array $dates = [];

    /** @param array<string, int> $added keys that the extension does not test, as keys */
    public function __construct(Extension $extension, Rulebook $rulebook, array $added = [])
    {
        $this->extension = $extension;
        $this->rulebook = $rulebook;
        $this->added = $added;
    }

    /** Whether values of a form have more to be tested than texts have. */
    public static function has(string $form): bool
    {
        return isset(self::RULED[$form]);
    }

    /** @return array{string, array<string, int|string|list<string>>}|null of a text that no bank can read */
    public static function garbled(string $value): ?array
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

    /**
     * @param string $value UTF-8
     * @return array{string, array<string, int|string|list<string>>}|null of a value that the extension would take
     */
    public function broken(string $key, string $value): ?array
    {
        if ($value === '') {
            return ['empty', ['blanks' => 'no']];
        }
        switch (Keys::form($key)) {
            case Keys::AMOUNT:
                return self::brokenAmount($value);
            case Keys::DATE:
                return $this->exists($value) ? null : ['date', ['value' => Fault::shown($value)]];
            case Keys::PURPOSE:
                return $this->brokenPurpose($value);
            case Keys::RF:
                return self::isReference($value) ? null : ['reference', ['value' => Fault::shown($value)]];
            case Keys::CREDITOR:
                return $this->brokenCreditorId($value);
            case Keys::ID:
                return $this->brokenId($key, $value);
            default:
                return isset($this->added[$key]) ? $this->brokenText($key, 'name', $value) : null;
        }
    }

    private function exists(string $date): bool
    {
        if (count($this->dates) > 1000) {
            $this->dates = [];
        }

        return $this->dates[$date] ?? $this->dates[$date] = Calendar::exists($date);
    }

    /** @return array{string, array<string, string>}|null */
    private static function brokenAmount(string $value): ?array
    {
        if (!preg_match('/^(\d+)(?:\.\d{1,2})?$/D', $value, $part)) {
            return ['amount', ['value' => Fault::shown($value)]];
        }

        return strlen(ltrim($part[1], '0')) > 9 ? ['amount_limit', ['limit' => self::MAX_AMOUNT]] : null;
    }

    /** @return array{string, array<string, string>}|null */
    private function brokenPurpose(string $value): ?array
    {
        if (!preg_match('/^[A-Z0-9]{4}$/D', $value)) {
            return ['purpose', ['value' => Fault::shown($value)]];
        }

        return $this->rulebook->lacksPurpose(PurposeCodes::PURPOSE, $value)
            ? ['purpose_national', ['value' => $value, 'rulebook' => $this->rulebook->name]]
            : null;
    }

    /** Whether it is a creditor reference with the right check digits. */
    public static function isReference(string $value): bool
    {
        if (!preg_match(self::RF, $value)) {
            return false;
        }
        $remainder = 0;
        foreach (str_split(substr($value, 4) . substr($value, 0, 4)) as $character) {
            // Letters count as two digits, A as 10.
            $remainder = (int) ($remainder . base_convert($character, 36, 10)) % 97;
        }

        return $remainder === 1;
    }

    /** @return array{string, array<string, int|string|list<string>>}|null */
    private function brokenId(string $key, string $value): ?array
    {
        if (strpos($value, '/') !== false && preg_match('~^/|//|/$~D', $value)) {
            return ['id', ['value' => Fault::shown($value)]];
        }
        // Further characters of the Austrian set are for texts only.
        if ($this->rulebook->fewerInIds && preg_match_all("~[^A-Za-z0-9'()+,\\-./:? ]~u", $value, $bad)) {
            return ['characters', ['characters' => array_values(array_unique($bad[0]))]];
        }
        // Payment blocks are numbered by an ending of at least three characters.
        if ($key === 'messageId' && strlen($value) > Keys::limit($key)) {
            return ['message_id', ['limit' => Keys::limit($key)]];
        }

        return isset($this->added[$key]) ? $this->brokenText($key, 'id', $value) : null;
    }

    /**
     * Length and characters of a text that the extension does not see.
     *
     * @param string $like key of a text that takes the same characters
     * @return array{string, array<string, int|string|list<string>>}|null
     */
    private function brokenText(string $key, string $like, string $value): ?array
    {
        $length = mb_strlen($value, 'UTF-8');
        if ($length > Keys::limit($key)) {
            return ['length_characters', [
                'length' => $length,
                'limit' => Keys::limit($key),
                'over' => $length - Keys::limit($key),
                'cut' => Keys::form($key) === Keys::TEXT ? Keys::fitting($key, $value) : 'none',
            ]];
        }
        $refused = preg_match(self::USUAL, $value) ? [] : $this->extension->refusedCharacters($like, $value);

        return $refused ? ['characters', ['characters' => $refused]] : null;
    }

    /** @return array{string, array<string, string>}|null */
    private function brokenCreditorId(string $value): ?array
    {
        $national = self::CREDITOR_IDS[substr($value, 0, 2)] ?? '[A-Z0-9]{1,28}';
        $isGood = preg_match("/^[A-Z]{2}\\d{2}[A-Z0-9]{3}$national$/D", $value)
            && $this->extension->isCreditorId($value);

        return $isGood ? null : ['creditor_id', ['value' => Fault::shown($value)]];
    }
}
