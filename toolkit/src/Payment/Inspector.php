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
    /** What an address by fields cannot do without. */
    private const ADDRESS = ['addrTown', 'addrCC'];

    private Extension $extension;

    private Rulebook $rulebook;

    private Reasons $reasons;

    /** @var array<string, int> as keys */
    private array $required;

    /** @var array<string, string> key by its small letters */
    private array $keys = [];

    /** @var string the keys under the rulebook, for people */
    private string $list;

    /**
     * @param list<string> $keys
     * @param list<string> $required
     */
    public function __construct(Extension $extension, Reasons $reasons, Rulebook $rulebook, array $keys, array $required)
    {
        $this->extension = $extension;
        $this->reasons = $reasons;
        $this->rulebook = $rulebook;
        $this->required = array_flip($required);
        foreach ($keys as $key) {
            $this->keys[strtolower($key)] = $key;
        }
        $this->list = implode(', ', $this->keys());
    }

    /** @return list<string> the keys under the rulebook */
    public function keys(): array
    {
        return array_values(array_diff($this->keys, Keys::ofGroup($this->rulebook->structured ? Keys::LINES : Keys::FIELDS)));
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
            $key = $this->keys[strtolower((string) $given)] ?? null;
            $text = $key === null ? null : self::text($key, $value);
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
                $values[$key] = Keys::form($key) === Keys::IBAN ? Ibans::normalise($text) : $text;
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
        foreach ($values as $key => $value) {
            $fault = Rules::garbled($key, $value) ?? Rules::broken($key, $value, $this->rulebook);
            if ($fault !== null && !isset($faults[$key])) {
                $faults[$key] = $fault;
            }
        }
        $given = $values + $faults;
        foreach (array_diff_key($this->required, $given) as $key => $number) {
            $faults[$key] = ['missing', []];
        }
        if ($this->rulebook->structured && array_intersect_key($given, Keys::address())) {
            foreach (array_diff(self::ADDRESS, array_keys($given)) as $key) {
                $faults[$key] = ['address', []];
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
        foreach ($values as $key => $value) {
            $reason = Rules::garbled($key, $value) ? null : $this->extension->refusalOf($key, $value);
            if ($reason !== null && ($faults[$key][0] ?? '') !== 'duplicate_key') {
                $faults[$key] = $this->reasons->of($reason, $key, $value);
            }
        }
        // What is left is between values that are good by themselves.
        $between = $this->extension->refusal(array_diff_key($values, $faults));
        if ($between !== null && !array_intersect_key($faults, Keys::address())) {
            $key = $this->rulebook->structured ? 'addrTown' : 'addrLine1';
            $faults[$key] = $this->reasons->of($between, $key, $values[$key] ?? '');
        }

        return $faults ?: ['' => $this->reasons->of($text, '', '')];
    }

    /** @param mixed $value */
    private static function text(string $key, $value): ?string
    {
        if (is_string($value) || is_int($value)) {
            return (string) $value;
        }
        if (is_float($value) && $key === 'amount') {
            // Unlike a cast this asks no locale and keeps all digits.
            return (string) preg_replace('/\.0$/D', '', var_export($value, true));
        }

        return $value === true && $key === 'smnda' ? '1' : null;
    }
}
