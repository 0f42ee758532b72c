<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/** What the cells of a row say: from the keys of Columns to those of a payment. */
final class Cells
{
    /** What spreadsheets write in place of a value: errors, narrow columns, formulas. */
    private const ERRORS = '~^(?:#(?:NAME\?'
        . '|(?:REF|BEZUG|VALUE|WERT|DIV/0|NUM|ZAHL|NULL|SPILL|ÜBERLAUF|CALC|KALK|FIELD|FELD)!|N/A|NV)'
        . '|##+|Err:\d{3}|=.*)$~DuUs';

    private const EURO = ['EUR', 'EURO', '€'];

    private const ACCOUNT = '/^[\d\s.\-]{1,14}$/D';

    private const BIC = '/^[A-Z]{6}[A-Z0-9]{2}(?:[A-Z0-9]{3})?$/D';

    private Receiver $payments;

    private bool $german;

    /** @var array<string, string> value by key, for rows that have none */
    private array $common;

    private int $row = 0;

    /** @var array<string, string> */
    private array $values = [];

    /** @var array<string, array{string, array<string, int|string|list<string>>}|null> */
    private array $faults = [];

    /** @param array<string, string> $common */
    public function __construct(Receiver $payments, bool $german, array $common)
    {
        $this->payments = $payments;
        $this->german = $german;
        $this->common = $common;
    }

    /**
     * Adds a row to the payments.
     *
     * @param array<string, string> $values
     * @param array<string, array{string, array<string, int|string|list<string>>}|null> $faults by key; null for
     *                                                                                 what has been told
     */
    public function add(int $row, array $values, array $faults): void
    {
        $this->row = $row;
        $this->faults = $faults;
        $this->values = $values + $this->common;
        foreach ($this->values as $key => $cell) {
            if (strpos('#=E', $cell[0]) !== false && preg_match(self::ERRORS, $cell)) {
                $this->fault($key, 'spreadsheet_error', ['value' => $cell]);
            } elseif ($this->german) {
                $this->values[$key] = Sheet::understood($key, $cell);
            }
        }
        $this->dropCurrency();
        $this->convertAccount();
        $this->payments->add($this->values, null, $row, $this->faults);
    }

    /** @param array<string, int|string|list<string>> $values */
    private function fault(string $key, string $code, array $values): void
    {
        unset($this->values[$key]);
        $this->faults[$key] = [$code, $values];
    }

    private function take(string $key): string
    {
        $value = $this->values[$key] ?? '';
        unset($this->values[$key]);

        return $value;
    }

    private function dropCurrency(): void
    {
        $currency = $this->take(Columns::CURRENCY);
        if ($currency !== '' && !in_array(mb_strtoupper($currency, 'UTF-8'), self::EURO, true)) {
            $this->fault(Columns::CURRENCY, 'currency', ['value' => $currency]);
        }
    }

    /** An account number and a bank code become an IBAN. Columns may have both, row by row. */
    private function convertAccount(): void
    {
        $account = $this->take(Columns::ACCOUNT);
        $bankCode = $this->take(Columns::BANK_CODE);
        $key = Columns::ACCOUNT;
        if (preg_match(self::BIC, Ibans::normalise($bankCode))) {
            $this->values += ['bic' => $bankCode];
            $bankCode = '';
        }
        if ($account === '' && preg_match(self::ACCOUNT, $this->values['iban'] ?? '')) {
            $account = $this->take($key = 'iban');
        } elseif (preg_match('/^[A-Z]{2}\d\d/i', $account) && !isset($this->values['iban'])) {
            $this->values['iban'] = $account;
            $account = '';
        }
        $isBroken = isset($this->faults[Columns::ACCOUNT]) || isset($this->faults[Columns::BANK_CODE]);
        if ($isBroken && !isset($this->values['iban'])) {
            $this->faults += ['iban' => null];
        } elseif ($account . $bankCode !== '') {
            $this->convert($key, $account, $bankCode);
        }
    }

    private function convert(string $key, string $account, string $bankCode): void
    {
        $conversion = Ibans::convert($account, $bankCode);
        $told = ['account' => $account, 'bank_code' => $bankCode, 'conversion' => $conversion->codes[0] ?? 'none'];
        $given = $this->values['iban'] ?? null;
        if ($given !== null) {
            $isOther = $conversion->iban !== null && $conversion->iban !== Ibans::normalise($given);
            if ($isOther) {
                $told['to'] = Ibans::grouped((string) $conversion->iban);
                $this->payments->warn($this->row, $key, 'account_differs', $told);
            }
        } elseif ($conversion->iban === null) {
            $this->fault($key, 'conversion', $told);
            $this->faults += ['iban' => null];
        } else {
            $this->values['iban'] = $conversion->iban;
            $this->payments->change($this->row, $key, 'converted', $told + ['to' => Ibans::grouped($conversion->iban)]);
        }
    }
}
