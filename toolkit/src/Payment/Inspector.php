<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/**
 * Finds all that is wrong with a payment. Faults are pairs of a code and values,
 * by key.
 */
final class Inspector
{
    /** As the extension has them, for BICs. */
    private const OUTSIDE_EEA = [
        'AD', 'BL', 'CH', 'GB', 'GG', 'GI', 'IM', 'JE', 'MC', 'NC', 'PF', 'PM', 'SM', 'TF', 'VA', 'WF',
    ];

    /** Anything but what all texts and ids take at any place. */
    private const NOT_SIMPLE = "~[^A-Za-z0-9 '()+,\\-.:?]~";

    /** What people write in groups. */
    private const COMPACT = ['iban', 'old_iban', 'rf', 'old_creditor_id'];

    private Extension $extension;

    private Rulebook $rulebook;

    private Reasons $reasons;

    private int $kind;

    /** @var array<string, int> as keys */
    private array $required;

    /** @var array<string, string> key by its small letters */
    private array $keys = [];

    /** @var array<string, int> keys that the rulebook has, as keys */
    private array $usable;

    /** @var array<string, int> keys of addresses, as keys */
    private array $address;

    /** @var array<string, true> keys whose values have more to be tested than texts of the extension's */
    private array $ruled = [];

    /** @var array<string, int> limit by key of which simple characters ask no further */
    private array $simple = [];

    /** @var array<string, int> keys that the extension does not take, as keys */
    private array $added;

    private Rules $rules;

    /** @var string the keys under the rulebook, for people */
    private string $list;

    /**
     * @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @param bool $hasLines whether addresses by fields may have lines besides
     */
    public function __construct(Extension $extension, Reasons $reasons, Rulebook $rulebook, int $kind, bool $hasLines)
    {
        $this->extension = $extension;
        $this->reasons = $reasons;
        $this->rulebook = $rulebook;
        $this->kind = $kind;
        $required = array_merge(
            ['iban', 'amount', 'name'],
            $rulebook->wantsBic ? ['bic'] : [],
            $kind === SEPA_MSGTYPE_DDI ? ['seq', 'mref', 'mdate'] : []
        );
        $this->required = array_flip($required);
        $this->added = Keys::added($kind) + ($hasLines ? array_flip(Keys::ofGroup(Keys::LINES)) : []);
        $this->rules = new Rules($extension, $rulebook, $this->added);
        foreach (Keys::ofKind($kind) as $key) {
            $this->keys[strtolower($key)] = $key;
            if (isset($this->added[$key]) || Rules::has(Keys::form($key))) {
                $this->ruled[$key] = true;
            }
            if (in_array(Keys::form($key), [Keys::TEXT, Keys::ID], true)) {
                $this->simple[$key] = Keys::limit($key);
            }
        }
        $this->usable = array_flip($this->keys());
        $this->address = Keys::address();
        $this->list = implode(', ', $this->keys());
    }

    /** @return list<string> the keys under the rulebook */
    public function keys(): array
    {
        $others = Keys::ofGroup($this->rulebook->structured ? Keys::LINES : Keys::FIELDS);

        return array_values(array_diff(Keys::ofKind($this->kind), array_diff($others, array_keys($this->added))));
    }

    /** @return array<string, int> keys that the extension does not take, as keys */
    public function added(): array
    {
        return $this->added;
    }

    /** @return list<string> what every payment has */
    public function required(): array
    {
        return array_keys($this->required);
    }

    /**
     * The values as texts under their keys in canonical form, and the faults of
     * those that are none.
     *
     * @param array<mixed> $payment
     * @return array{array<string, string>, array<string, array{string, array<string, int|string|list<string>>}>}
     */
    public function texts(array $payment): array
    {
        $values = [];
        $faults = [];
        foreach ($payment as $given => $value) {
            if (isset($this->usable[$given]) && is_string($value) && !isset($values[$given]) && !$faults) {
                $values[$given] = $value;
                continue;
            }
            $key = $this->keys[strtolower((string) $given)] ?? null;
            $text = is_string($value) || $key === null ? $value : self::text($key, $value);
            if ($key === null) {
                $faults[$given] = ['unknown_key', ['keys' => $this->list]];
            } elseif (isset($values[$key]) || isset($faults[$key])) {
                $faults[$key] = ['duplicate_key', []];
            } elseif (!$this->rulebook->structured && Keys::group($key) === Keys::FIELDS) {
                // Transfers would lose it without a word.
                $faults[$key] = ['rulebook', $this->reasons->values('rulebook', $key, '')];
            } elseif ($text === null) {
                $faults[$key] = ['type', ['type' => gettype($value)]];
            } else {
                $values[$key] = $text;
            }
        }
        foreach (self::COMPACT as $key) {
            if (isset($values[$key])) {
                $values[$key] = $key === 'old_creditor_id'
                    ? (string) preg_replace('/\s+/', '', $values[$key])
                    : Ibans::normalise($values[$key]);
            }
        }

        return [$values, $faults];
    }

    /**
     * What is wrong and the extension would take.
     *
     * @param array<string, string> $values
     * @param array<string, array{string, array<string, int|string|list<string>>}> $faults of keys that have no value
     * @return array<string, array{string, array<string, int|string|list<string>>}> with them
     */
    public function faults(array $values, array $faults): array
    {
        foreach ($this->faultsOfValues($values) as $key => $fault) {
            $faults[$key] = $faults[$key] ?? $fault;
        }
        $given = $faults ? $values + $faults : $values;
        foreach (array_diff_key($this->required, $given) as $key => $number) {
            $faults[$key] = ['missing', []];
        }
        if (isset($given['rf'], $given['ref'])) {
            $faults['rf'] = $faults['rf'] ?? ['reference_twice', []];
        }
        if ($this->kind === SEPA_MSGTYPE_DDI && !isset($given['bic'])) {
            $faults += $this->addressOutsideEea($values, $given);
        }
        $address = array_intersect_key($given, $this->address);

        return $address ? $faults + Address::faults($address, $this->rulebook) : $faults;
    }

    /**
     * The address of a debit that the extension asks for where a BIC shows that
     * the bank is outside the EEA, and the banks where the IBAN does.
     *
     * @param array<string, string> $values
     * @param array<string, mixed> $given
     * @return array<string, array{string, array<string, int|string|list<string>>}>
     */
    private function addressOutsideEea(array $values, array $given): array
    {
        $key = $this->rulebook->outsideEea;
        if ($key === '' || isset($given[$key]) || isset($given['addrLine2'])) {
            return [];
        }

        $code = $key === 'addrLine1' ? 'address_line' : 'address';

        return self::isOutsideEea($values['iban'] ?? '') ? [$key => [$code, []]] : [];
    }

    /**
     * @param array<string, mixed> $address of the submitting party
     * @return array{array<string, string>, array<string, array{string, array<string, int|string|list<string>>}>}
     *     texts and faults by key
     */
    public function ownAddress(array $address): array
    {
        [$values, $faults] = $this->texts($address);
        foreach (array_diff_key($values, Keys::address()) as $key => $text) {
            $faults[$key] = ['unknown_key', ['keys' => implode(', ', array_keys(Keys::address()))]];
        }
        $parts = array_intersect_key($values + $faults, Keys::address());
        $faults += $this->faultsOfValues($values) + Address::faults($parts, $this->rulebook);
        foreach (array_diff_key($values, $this->added, $faults) as $key => $text) {
            $reason = $this->extension->refusalOf($key, $text);
            $faults += $reason === null ? [] : [$key => $this->reasons->of($reason, $key, $text)];
        }

        return [$values, $faults];
    }

    /**
     * @param array<string, string> $values
     * @return array<string, array{string, array<string, int|string|list<string>>}>
     */
    private function faultsOfValues(array $values): array
    {
        $faults = [];
        // Most payments have no character that is worth a look at each value.
        $all = implode('', $values);
        $isSimple = !preg_match(self::NOT_SIMPLE, $all);
        $isPlain = $isSimple || !preg_match('/[^\x20-\x7E]/', $all);
        foreach ($values as $key => $value) {
            $isUsual = $isPlain && $value !== '' && $value[0] !== ' ';
            $asksNoFurther = !isset($this->ruled[$key]) || ($isSimple && strlen($value) <= ($this->simple[$key] ?? -1));
            if ($isUsual && $asksNoFurther) {
                continue;
            }
            $fault = ($isUsual ? null : Rules::garbled($value)) ?? $this->rules->broken($key, $value);
            if ($fault !== null) {
                $faults[$key] = $fault;
            }
        }

        return $faults;
    }

    /**
     * All faults of a payment: the extension stops at its first, so it is asked
     * value by value. Where it knows a fault, its words count.
     *
     * @param array<string, string> $values
     * @param array<string, array{string, array<string, int|string|list<string>>}> $faults found so far
     * @param string $text the extension's first refusal, or empty
     * @return non-empty-array<string, array{string, array<string, int|string|list<string>>}>
     */
    public function inWordsOfExtension(array $values, array $faults, string $text): array
    {
        $values = array_diff_key($values, $this->added);
        // What is good together is good one by one.
        $isRestGood = $faults && $this->extension->refusal(array_diff_key($values, $faults)) === null;
        $isFirst = !$faults;
        foreach ($isRestGood ? array_intersect_key($values, $faults) : $values as $key => $value) {
            $reason = Rules::garbled($value) ? null : $this->extension->refusalOf($key, $value);
            if ($reason !== null && ($faults[$key][0] ?? '') !== 'duplicate_key') {
                $faults[$key] = $this->reasons->of($reason, $key, $value);
                // Most faulty payments have one fault, so the values after it are asked about together.
                if ($isFirst && $this->extension->refusal(array_diff_key($values, $faults)) === null) {
                    return $faults;
                }
                $isFirst = false;
            }
        }
        // What is left is between values that are good by themselves.
        $between = $isRestGood ? null : $this->extension->refusal(array_diff_key($values, $faults));
        if ($between !== null && !array_intersect_key($faults, Keys::address())) {
            $key = $this->rulebook->structured ? 'addrTown' : 'addrLine1';
            $faults[$key] = $this->reasons->of($between, $key, $values[$key] ?? '');
        }

        return $faults ?: ['' => $this->reasons->of($text, '', '')];
    }

    /** Whether the banks of an IBAN's country are in SEPA and not in the EEA. */
    public static function isOutsideEea(string $iban): bool
    {
        return in_array(substr($iban, 0, 2), self::OUTSIDE_EEA, true);
    }

    /** @param mixed $value */
    private static function text(string $key, $value): ?string
    {
        if (is_int($value)) {
            return (string) $value;
        }
        if (is_float($value) && $key === 'amount') {
            // Unlike a cast this asks no locale and keeps all digits.
            return (string) preg_replace('/\.0$/D', '', var_export($value, true));
        }

        return $value === true && $key === 'smnda' ? '1' : null;
    }
}
