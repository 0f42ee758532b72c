<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

use Sepa\Toolkit\Statement\Amount;

/**
 * Who and what for: the members of a booking, or of a part of it, out of an entry and
 * one transaction in it.
 *
 * @internal
 */
final class Details
{
    /** Texts that mean that there is none. */
    private const NONE = ['NOTPROVIDED', 'NONREF', 'keine Information vorhanden'];

    /** A line of remittance text that is full goes on in the next within a word. */
    private const FULL = 140;

    /** Issuers of the German codes. */
    private const GERMAN = ['DK', 'ZKA'];

    private const PLAIN = [
        'eref', 'mref', 'instrid', 'txid', 'uetr', 'purp', 'reference', 'abwa', 'abwe', 'reason', 'rate',
    ];

    /** @var string the own */
    private string $account;

    /** @var array<string, mixed> */
    private array $entry;

    /** @param array<string, mixed> $entry */
    public function __construct(string $account, array $entry)
    {
        $this->account = $account;
        $this->entry = $entry;
    }

    /** The text of a reference; null if it says that there is none. */
    public static function reference(?string $text): ?string
    {
        $text = trim((string) $text);

        return $text === '' || in_array($text, self::NONE, true) ? null : $text;
    }

    /**
     * @param array<string, mixed> $transaction empty where the entry has none, or several
     * @return array<string, mixed> by the members' names
     */
    public function values(array $transaction, bool $isDebit): array
    {
        $values = [];
        foreach (self::PLAIN as $key) {
            if (isset($transaction[$key])) {
                $values[$key] = self::reference($transaction[$key]);
            }
        }
        $entry = $this->entry;
        $values['bankref'] = self::reference($entry['bankref'] ?? null)
            ?? self::reference($transaction['bankref'] ?? null);
        $values['msgid'] = self::reference($transaction['msgid'] ?? $entry['msgid'] ?? null);
        $values['kref'] = self::reference($transaction['kref'] ?? $entry['kref'] ?? null);
        $values['txtext'] = self::reference($entry['txtext'] ?? null);
        $values['cred'] = self::reference($transaction['cid'] ?? null);
        $values['debt'] = self::reference($transaction['did'] ?? null);
        $values += $this->kind($transaction) + $this->money($transaction);
        if ($transaction) {
            $values += $this->party($transaction, $isDebit) + $this->text($transaction);
            foreach (Labels::read((string) $values['svwz']) as $member => $value) {
                $values[$member] = $values[$member] ?? $value;
            }
        }

        return $values;
    }

    /**
     * The other party: the side whose account is not the own; else the one that pays
     * for a credit and is paid by a debit, and the other way round in a return, whose
     * roles are those of the payment that came back.
     *
     * @param array<string, mixed> $transaction
     * @return array<string, ?string>
     */
    private function party(array $transaction, bool $isDebit): array
    {
        $account = static fn (string $side): string => str_replace(' ', '', $transaction[$side . 'account'] ?? '');
        $own = str_replace(' ', '', $this->account);
        $isReturn = isset($transaction['reason']) || isset($transaction['why']) || $this->entry['reversal'];
        $side = $isDebit !== $isReturn ? 'c' : 'd';
        if ($own !== '' && ($account('d') === $own) !== ($account('c') === $own)) {
            $side = $account('d') === $own ? 'c' : 'd';
        }
        $other = $side === 'c' ? 'd' : 'c';
        if (
            ($transaction[$side . 'name'] ?? '') . $account($side) === ''
            && $account($other) !== ''
            && $account($other) !== $own
        ) {
            $side = $other;
        }

        return [
            'name' => self::reference($transaction[$side . 'name'] ?? null),
            'account' => self::reference($account($side)),
            'bank' => self::reference($transaction[$side . 'bank'] ?? $transaction[$side . 'bankcode'] ?? null),
        ];
    }

    /**
     * @param array<string, mixed> $transaction
     * @return array<string, ?string>
     */
    private function text(array $transaction): array
    {
        $text = '';
        $isFull = true;
        foreach ($transaction['text'] ?? [] as $line) {
            $joins = $isFull || preg_match('/\s$/', $text) || preg_match('/^\s/', $line);
            $text .= ($joins ? '' : ' ') . $line;
            $isFull = strlen($line) >= self::FULL && mb_strlen($line, 'UTF-8') >= self::FULL;
        }
        $why = isset($transaction['why']) ? implode(' ', $transaction['why']) : null;
        $else = isset($transaction['structured'])
            ? implode(' ', $transaction['structured'])
            : $transaction['info'] ?? $why;

        return ['svwz' => self::reference($text), 'purpose' => self::reference($else), 'reasonText' => $why];
    }

    /**
     * The codes of what kind of booking it is.
     *
     * @param array<string, mixed> $transaction
     * @return array<string, mixed>
     */
    private function kind(array $transaction): array
    {
        $from = isset($transaction['code']) || isset($transaction['domain'])
            ? $transaction + $this->entry
            : $this->entry;
        $values = [
            'domain' => isset($from['domain'])
                ? trim($from['domain'] . '/' . ($from['family'] ?? '') . '/' . ($from['subfamily'] ?? ''), '/')
                : null,
        ];
        $code = self::reference($from['code'] ?? null);
        if ($code === null || !in_array(trim($from['issuer'] ?? ''), self::GERMAN, true)) {
            return $values + ['ownCode' => $code];
        }
        $groups = explode('+', $code);
        if (preg_match('/^[A-Z][A-Z0-9]{3}$/D', $groups[0])) {
            $values += ['type' => $groups[0][0], 'code' => substr($groups[0], 1)];
            array_shift($groups);
        }
        if (preg_match('/^\d{3}$/D', $groups[0] ?? '')) {
            $values += [
                'gvc' => (int) $groups[0],
                'primanota' => self::reference($groups[1] ?? null),
                'extcode' => (int) ($groups[2] ?? 0) ?: null,
            ];
        }

        return $values;
    }

    /**
     * @param array<string, mixed> $transaction
     * @return array<string, mixed>
     */
    private function money(array $transaction): array
    {
        $entry = $this->entry;
        $from = isset($transaction['instructed']) || isset($transaction['rate']) ? $transaction : $entry;
        $currency = $from['instructed@'] ?? '';
        $instructed = isset($from['instructed']) ? Amount::decimal($from['instructed'], $currency) : null;
        $units = $transaction['units'] ?? abs($entry['units']);
        $isOther = $instructed && ($currency !== ($entry['amount@'] ?? '')
            || $instructed->units !== ($entry['parts'] > 1 ? $units : abs($entry['units'])));
        if ($isOther) {
            $values = ['instructed' => $instructed, 'oamt' => $instructed->text()];
        }

        return ($values ?? []) + [
            'rate' => self::reference($from['rate'] ?? null),
            'charges' => self::charges($transaction['charges'] ?? $entry['charges'] ?? []),
        ];
    }

    /**
     * @param list<array<string, mixed>> $groups
     * @return list<Amount>
     */
    private static function charges(array $groups): array
    {
        $charges = [];
        foreach ($groups as $group) {
            foreach ($group['records'] ?? [$group] as $charge) {
                $amount = Amount::decimal($charge['amount'] ?? '', $charge['amount@'] ?? '');
                if ($amount && $amount->units !== 0) {
                    $charges[] = trim($charge['sign'] ?? 'DBIT') === 'CRDT' ? $amount : $amount->negative();
                }
            }
        }

        return $charges;
    }
}
