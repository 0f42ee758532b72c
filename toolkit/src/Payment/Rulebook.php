<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * What a rulebook asks for beside the extension's own tests. All that the
 * toolkit knows of one is in its row.
 *
 * @psalm-immutable
 */
final class Rulebook
{
    public const LATEST = 'DE-3.7';

    /** SMNDA stands at the account. */
    public const ACCOUNT = 'account';

    /** SMNDA stands at the bank, and the collection is the mandate's first. */
    public const FIRST = 'bank, with FRST';

    /** SMNDA is written as before November 2016. */
    public const OLD = 'bank';

    /** At least some banks take pain.001.001.03, pain.008.001.02 and older ones until this day. */
    private const NOVEMBER_2026 = '2026-11-14';

    private const COLUMNS = [
        'country', 'structured', 'wantsBic', 'hasDt', 'fewerInIds', 'smnda', 'outsideEea', 'instant', 'ends',
    ];

    private const ROWS = [
        //           country, address by fields, BIC, Dt, fewer characters in ids, SMNDA, address outside the EEA,
        //           instant, ends
        'DE-2.6' => ['DE', false, true, false, false, self::FIRST, '', false, self::NOVEMBER_2026],
        'DE-2.7' => ['DE', false, false, false, false, self::FIRST, '', false, self::NOVEMBER_2026],
        'DE-2.8' => ['DE', false, false, false, false, self::FIRST, '', false, self::NOVEMBER_2026],
        'DE-2.9' => ['DE', false, false, false, false, self::FIRST, '', false, self::NOVEMBER_2026],
        'DE-3.0' => ['DE', false, false, false, false, self::ACCOUNT, '', false, self::NOVEMBER_2026],
        'DE-3.1' => ['DE', false, false, false, false, self::ACCOUNT, 'addrLine1', false, self::NOVEMBER_2026],
        'DE-3.5' => ['DE', false, false, false, false, self::ACCOUNT, 'addrLine1', true, self::NOVEMBER_2026],
        'DE-3.7' => ['DE', true, false, true, false, self::ACCOUNT, 'addrTown', true, ''],
        'AT-6' => ['AT', false, false, false, true, self::OLD, '', true, self::NOVEMBER_2026],
        'NL-6' => ['NL', false, false, false, false, self::OLD, '', true, self::NOVEMBER_2026],
    ];

    /** @var string as the extension calls it */
    public string $name;

    /** @var string whose banks' schemas are meant; those of AT and NL are narrower than those that documents name */
    public string $country;

    /** @var bool whether addresses are given by fields, not by lines */
    public bool $structured;

    /** @var bool whether every payment has the BIC of its bank */
    public bool $wantsBic;

    /** @var bool whether the day of a transfer stands in an element of its own, Dt */
    public bool $hasDt;

    /** @var bool whether ids take fewer characters than texts */
    public bool $fewerInIds;

    /** @var string how SMNDA is written: ACCOUNT, FIRST or OLD */
    public string $smnda;

    /** @var string key that a debit from a bank outside the EEA has at least; empty if none */
    public string $outsideEea;

    /** @var bool whether a message can be one of instant payments */
    public bool $instant;

    /** @var string last day on which all banks took documents of its form; empty if they do */
    public string $ends;

    /**
     * @param string $name as SEPA::init takes it
     * @throws \InvalidArgumentException if toolkit or extension do not have it
     */
    public function __construct(string $name)
    {
        $isExtensions = \SEPA::init(SEPA_INIT_RULEBOOK, $name);
        if (!isset(self::ROWS[$name])) {
            throw new \InvalidArgumentException(
                $isExtensions ? "the extension has the rulebook $name, this toolkit has not" : "unknown rulebook: $name"
            );
        }
        if (!$isExtensions) {
            throw new \InvalidArgumentException("the toolkit has the rulebook $name, this extension has not");
        }
        $this->name = $name;
        foreach (array_combine(self::COLUMNS, self::ROWS[$name]) as $column => $value) {
            $this->$column = $value;
        }
    }

    /** @return list<string> */
    public static function names(): array
    {
        return array_keys(self::ROWS);
    }

    /** Whether its banks' schemas have a list of purposes, and not this one. */
    public function lacksPurpose(string $list, string $code): bool
    {
        return $this->country === 'AT' && !PurposeCodes::isOld($list, $code);
    }

    /**
     * Makes it the process's again. The rulebook is one setting for all
     * messages, so every use of a message begins with this.
     */
    public function select(): void
    {
        \SEPA::init(SEPA_INIT_RULEBOOK, $this->name);
    }
}
