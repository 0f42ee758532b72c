<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** What a message says once for all payments of a block, beside what the extension says. */
final class Head
{
    /** Stands in the extension's document where the submitting party gives no BIC. */
    public const FILLER = 'ABNANL2A';

    private const PRIORITIES = ['HIGH', 'NORM'];

    /** What debits never have. */
    private const OF_TRANSFERS = ['instant' => 0, 'at' => 0, 'priority' => 0];

    private const TIME = '/^(\d{4}-\d\d-\d\d)T([01]\d|2[0-3]):[0-5]\d:[0-5]\d(Z|[+-](0\d|1[0-4]):[0-5]\d)$/D';

    /** For each kind: element of the own account, of the submitting party's day, and the end of that day's block. */
    private const ELEMENTS = [
        SEPA_MSGTYPE_CTI => ['DbtrAcct', 'ReqdExctnDt'],
        SEPA_MSGTYPE_DDI => ['CdtrAcct', 'ReqdColltnDt'],
    ];

    private Party $party;

    private Options $options;

    private Rulebook $rulebook;

    private int $kind;

    /** @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI */
    public function __construct(Party $party, Options $options, Rulebook $rulebook, int $kind)
    {
        $this->party = $party;
        $this->options = $options;
        $this->rulebook = $rulebook;
        $this->kind = $kind;
    }

    /**
     * What cannot be said under the rulebook, or in a message of this kind.
     *
     * @return list<array{string, string, array<string, string>}> key, code and values
     */
    public function faults(): array
    {
        $options = $this->options;
        $isDebit = $this->kind === SEPA_MSGTYPE_DDI;
        $asked = array_filter([
            'instant' => $options->instant,
            'at' => $options->at !== null,
            'priority' => $options->priority !== null,
            'hybrid' => $options->hybridAddresses,
            'bic' => $options->needsNoBic,
        ]);
        $possible = array_filter([
            'instant' => $this->rulebook->instant,
            'at' => $this->rulebook->hasDt,
            'priority' => true,
            'hybrid' => $this->rulebook->structured,
            'bic' => !$this->rulebook->wantsBic,
        ]);
        $faults = [];
        foreach (array_intersect_key($asked, $isDebit ? self::OF_TRANSFERS : []) as $key => $is) {
            $faults[$key] = [$key, 'not_in_debits', []];
        }
        foreach (array_diff_key($asked, $possible) as $key => $is) {
            $faults[$key] = $faults[$key] ?? [$key, 'not_in_rulebook', ['rulebook' => $this->rulebook->name]];
        }

        return array_values($faults + $this->faultsOfValues());
    }

    /**
     * What is legal and odd.
     *
     * @return list<array{string, string, array<string, string>}> key, code and values
     */
    public function oddities(): array
    {
        $odd = [];
        if ($this->rulebook->ends !== '') {
            $odd[] = ['rulebook', 'form_ends', ['rulebook' => $this->rulebook->name, 'date' => $this->rulebook->ends]];
        }
        if ($this->options->instant && $this->options->priority !== null) {
            $odd[] = ['priority', 'instant_priority', []];
        }
        $category = $this->options->category;
        $isTested = $category === null || $this->rulebook->country === 'AT';
        if (!$isTested && !PurposeCodes::exists(PurposeCodes::CATEGORY, $category)) {
            $odd[] = ['category', 'purpose_unknown', ['value' => Fault::shown($category)]];
        }

        return $odd;
    }

    /** The day of the block that a time of execution makes, or null. */
    public function day(): ?string
    {
        $day = substr((string) $this->options->at, 0, 10);

        return Calendar::exists($day) ? $day : null;
    }

    /**
     * A block's lines up to its first payment.
     *
     * @param string $xml as the extension wrote it
     * @param string $date of the block
     * @throws Misplaced if they are not of a block of that day
     */
    public function complete(string $xml, string $date): string
    {
        foreach ($this->edits($date) as $lines => $others) {
            $count = 0;
            $xml = str_replace($lines, $others, $xml, $count);
            if ($count !== 1) {
                throw new Misplaced('a payment block of the document lacks a line that something has to be added to');
            }
        }

        return $xml;
    }

    /** @return array<string, array{string, string, array<string, string>}> */
    private function faultsOfValues(): array
    {
        $faults = [];
        [$at, $category, $priority, $currency] =
            [$this->options->at, $this->options->category, $this->options->priority, $this->options->currency];
        if ($at !== null && (!preg_match(self::TIME, $at, $part) || !Calendar::exists($part[1]))) {
            $faults['at'] = ['at', 'time', ['value' => Fault::shown($at)]];
        } elseif ($at !== null && !$this->options->instant) {
            $faults['at'] = ['at', 'time_not_instant', []];
        } elseif ($at !== null && ($this->options->date ?? $part[1]) !== $part[1]) {
            $faults['date'] = ['date', 'time_other_day', ['time' => $at]];
        }
        if ($category !== null && !preg_match('/^[A-Z0-9]{4}$/D', $category)) {
            $faults['category'] = ['category', 'purpose', ['value' => Fault::shown($category)]];
        } elseif ($category !== null && $this->rulebook->lacksPurpose(PurposeCodes::CATEGORY, $category)) {
            $facts = ['value' => $category, 'rulebook' => $this->rulebook->name];
            $faults['category'] = ['category', 'purpose_national', $facts];
        }
        if ($priority !== null && !in_array($priority, self::PRIORITIES, true)) {
            $faults['priority'] = ['priority', 'priority', ['value' => Fault::shown($priority)]];
        }
        if ($currency !== null && !preg_match('/^[A-Z]{3}$/D', $currency)) {
            $faults['currency'] = ['currency', 'account_currency', ['value' => Fault::shown($currency)]];
        }

        return $faults;
    }

    /** @return array<string, string> lines that every block has once, and what stands in their place */
    private function edits(string $date): array
    {
        [$account, $day] = self::ELEMENTS[$this->kind];
        $dateLine = "\t\t\t<$day>$date</$day>\n";
        $hasDt = $this->kind === SEPA_MSGTYPE_CTI && $this->rulebook->hasDt;
        $edits = [$dateLine => $hasDt ? $this->dated($date) : $dateLine];
        if ($this->options->priority !== null) {
            $priority = "\t\t\t\t<InstrPrty>{$this->options->priority}</InstrPrty>\n";
            $edits["\t\t\t<PmtTpInf>\n"] = "\t\t\t<PmtTpInf>\n$priority";
        }
        $type = ($this->options->instant ? self::code('LclInstrm', 'INST') : '')
            . ($this->options->category === null ? '' : self::code('CtgyPurp', $this->options->category));
        if ($type !== '') {
            $edits["\t\t\t</PmtTpInf>\n"] = "$type\t\t\t</PmtTpInf>\n";
        }
        if ($this->party->address) {
            $line = "\t\t\t\t<Nm>" . htmlspecialchars($this->party->name, ENT_NOQUOTES) . "</Nm>\n";
            $edits[$line] = $line . Address::element($this->party->address, 4);
        }
        if ($this->options->currency !== null) {
            $edits["\t\t\t</$account>\n"] = "\t\t\t\t<Ccy>{$this->options->currency}</Ccy>\n\t\t\t</$account>\n";
        }
        if ($this->party->bic === '') {
            $bic = $this->rulebook->structured ? 'BICFI' : 'BIC';
            $none = "\t\t\t\t\t<Othr>\n\t\t\t\t\t\t<Id>NOTPROVIDED</Id>\n\t\t\t\t\t</Othr>\n";
            $edits["\t\t\t\t\t<$bic>" . self::FILLER . "</$bic>\n"] = $none;
        }

        return $edits;
    }

    private function dated(string $date): string
    {
        $time = $this->options->at === null ? "<Dt>$date</Dt>" : "<DtTm>{$this->options->at}</DtTm>";

        return "\t\t\t<ReqdExctnDt>\n\t\t\t\t$time\n\t\t\t</ReqdExctnDt>\n";
    }

    private static function code(string $element, string $code): string
    {
        return "\t\t\t\t<$element>\n\t\t\t\t\t<Cd>$code</Cd>\n\t\t\t\t</$element>\n";
    }
}
