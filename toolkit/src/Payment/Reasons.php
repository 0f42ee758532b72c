<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/** What the extension's sentences say: codes, and what else a text in another language needs. */
final class Reasons
{
    /** Start of the extension's sentence => code; those about IBANs are in Ibans. */
    private const CODES = [
        'IBAN missing' => 'missing',
        'BIC missing' => 'missing',
        'Amount missing' => 'missing',
        'Sequence type missing' => 'missing',
        'Invalid character ' => 'characters',
        'sepa_setName: invalid character ' => 'characters',
        'Invalid name ' => 'length',
        'sepa_setAccount: Name too' => 'length',
        'Invalid BIC' => 'bic',
        'sepa_setBIC: invalid' => 'bic',
        'Invalid country code' => 'country',
        'Invalid address line' => 'length',
        'Invalid unstructured remittance information' => 'length',
        'Invalid purpose' => 'purpose',
        'Invalid amount' => 'amount',
        'Empty amount' => 'amount_zero',
        'Negative or zero amount' => 'amount_zero',
        'Invalid execution date' => 'date',
        'Invalid mandate signature date' => 'date',
        'Invalid date' => 'date',
        'Invalid end-to-end ID' => 'length',
        'Invalid mandate reference' => 'length',
        'Invalid old mandate reference' => 'length',
        'Invalid format for' => 'length',
        'selected SEPA rulebook' => 'rulebook',
        'Invalid transaction property' => 'unknown_key',
        'Invalid/unknown sequence type' => 'sequence',
        'Invalid value' => 'smnda',
        'Address required' => 'address_line',
        'Structured address required' => 'address',
        'Invalid character in Creditor Identifier' => 'creditor_id',
        'Creditor Identifier' => 'creditor_id',
        'Invalid Creditor Identifier' => 'creditor_id',
        'Invalid message id' => 'message_id',
        'COR1 is not allowed' => 'local_instrument',
        'Out of memory' => 'memory',
        'strdup() failed' => 'memory',
        'sepa_setBIC: strdup' => 'memory',
        'sepa_setName: strdup' => 'memory',
    ];

    /** Sentences whose code is kept: a table can have one in each row. */
    private const KNOWN = 100;

    /** @var array<string, string> code by sentence */
    private static array $known = [];

    private Extension $extension;

    private Rulebook $rulebook;

    public function __construct(Extension $extension, Rulebook $rulebook)
    {
        $this->extension = $extension;
        $this->rulebook = $rulebook;
    }

    /**
     * @param string $said by the extension
     * @param string $value UTF-8, which it was said of
     * @return array{string, array<string, int|string|list<string>>} code and values of a fault
     */
    public function of(string $said, string $key, string $value): array
    {
        $code = Ibans::code($said, $value) ?? self::$known[$said] ?? self::code($said);
        // Of countries the toolkit knows more.
        $words = strncmp($code, 'iban_country', 12) === 0 ? [] : [Fault::SAID => $said];

        return [$code, $words + $this->values($code, $key, $value)];
    }

    /** @return array<string, int|string|list<string>> */
    public function values(string $code, string $key, string $value): array
    {
        switch ($code) {
            case 'characters':
                return ['characters' => $this->extension->refusedCharacters($key, $value) ?: ['none']];
            case 'length':
                return self::length($key, $value);
            case 'message_id':
                return ['limit' => Keys::limit($key)];
            case 'rulebook':
                $structured = $this->rulebook->structured ? 'yes' : 'no';

                return ['rulebook' => $this->rulebook->name, 'structured' => $structured];
            default:
                return ['value' => Fault::shown($value), 'rulebook' => $this->rulebook->name];
        }
    }

    /** @return array<string, int|string> how much is too much, and for texts what would fit */
    private static function length(string $key, string $value): array
    {
        $limit = Keys::limit($key);
        $isText = Keys::form($key) === Keys::TEXT;

        return [
            'length' => strlen($value),
            'limit' => $limit,
            'over' => max(0, strlen($value) - $limit),
            'cut' => $isText ? Keys::fitting($key, $value) : 'none',
        ];
    }

    private static function code(string $said): string
    {
        $found = 'other';
        $length = 0;
        foreach (self::CODES as $start => $code) {
            if (strlen($start) > $length && strncmp($said, $start, strlen($start)) === 0) {
                $found = $code;
                $length = strlen($start);
            }
        }
        self::$known = count(self::$known) < self::KNOWN ? self::$known : [];

        return self::$known[$said] = $found;
    }
}
