<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * What the toolkit writes into a payment of the extension's document. The
 * extension escapes three characters and refuses line ends and tabs, so every
 * line of a payment is known, and values cannot be taken for lines.
 */
final class Additions
{
    /** Letter by key, for packing. */
    private const LETTERS = [
        'instr_id' => 'i', 'ultm_dbtr' => 'd', 'ultm_dbtr_id' => 'D', 'ultm_cdtr' => 'c', 'ultm_cdtr_id' => 'C',
        'purp' => 'p', 'rf' => 'r', 'old_name' => 'n', 'old_creditor_id' => 'N', 'addrLine1' => '1', 'addrLine2' => '2',
    ];

    /** No values. */
    private const NONE = [
        'i' => '', 'd' => '', 'D' => '', 'c' => '', 'C' => '', 'p' => '', 'r' => '', 'n' => '', 'N' => '',
        '1' => '', '2' => '',
    ];

    private const REFERENCE = "\t\t\t\t<RmtInf>\n\t\t\t\t\t<Strd><CdtrRefInf><Tp><CdOrPrtry><Cd>SCOR</Cd></CdOrPrtry>"
        . "<Issr>ISO</Issr></Tp><Ref>%s</Ref></CdtrRefInf></Strd>\n\t\t\t\t</RmtInf>\n";

    private const PURPOSE = "\t\t\t\t<Purp>\n\t\t\t\t\t<Cd>%s</Cd>\n\t\t\t\t</Purp>\n";

    /** What the extension writes into a transfer without remittance information. */
    public const NO_REFERENCE = "\t\t\t\t<RmtInf>\n\t\t\t\t</RmtInf>\n";

    /**
     * One text for a payment: what it is known by, and what is added, escaped.
     *
     * @param array<string, string> $values of the payment
     * @param array<string, string> $added of them, those that the extension does not have
     * @param string $amount with two decimals
     */
    public static function pack(array $values, array $added, string $amount): string
    {
        $id = $values['id'] ?? 'NOTPROVIDED';
        $text = "$id\n$amount\n{$values['name']}\n{$values['iban']}\n" . ($values['ref'] ?? '');
        foreach ($added as $key => $value) {
            $text .= "\n" . self::LETTERS[$key] . $value;
        }

        return strpbrk($text, '&<>') === false ? $text : htmlspecialchars($text, ENT_NOQUOTES);
    }

    /**
     * @param string $xml of a credit transfer in the extension's document
     * @throws Misplaced if it is not the payment that was packed
     */
    public static function toTransfer(string $xml, string $packed): string
    {
        [$id, $amount, $name, $iban, $ref, $added] = self::unpack($packed);
        $start = "\t\t\t<CdtTrfTxInf>\n\t\t\t\t<PmtId>\n";
        $amount = "\t\t\t\t\t<EndToEndId>$id</EndToEndId>\n\t\t\t\t</PmtId>\n\t\t\t\t<Amt>\n"
            . "\t\t\t\t\t<InstdAmt Ccy=\"EUR\">$amount</InstdAmt>\n\t\t\t\t</Amt>\n";
        $account = "\t\t\t\t\t<IBAN>$iban</IBAN>\n\t\t\t\t</Id>\n\t\t\t\t</CdtrAcct>\n";
        $reference = $ref === '' ? self::NO_REFERENCE : self::reference($ref);
        $end = "\t\t\t</CdtTrfTxInf>\n";

        [$before, $between] = self::cut($xml, $start . $amount, $account, $reference . $end);
        if ($ref === '') {
            $reference = $added['r'] === '' ? '' : sprintf(self::REFERENCE, $added['r']);
        }
        if (strpos($before, "\t\t\t\t<Cdtr>\n\t\t\t\t\t<Nm>$name</Nm>\n") === false) {
            throw self::misplaced();
        }

        return $start . ($added['i'] === '' ? '' : "\t\t\t\t\t<InstrId>{$added['i']}</InstrId>\n") . $amount
            . self::party('UltmtDbtr', $added['d'], $added['D'])
            . ($added['1'] . $added['2'] === '' ? $before : self::withLines($before, $added)) . $account
            . self::party('UltmtCdtr', $added['c'], $added['C'])
            . $between . $reference . $end;
    }

    /**
     * @param string $xml of a direct debit in the extension's document
     * @throws Misplaced if it is not the payment that was packed
     */
    public static function toDebit(string $xml, string $packed): string
    {
        [$id, $amount, $name, $iban, $ref, $added] = self::unpack($packed);
        $start = "\t\t\t<DrctDbtTxInf>\n\t\t\t\t<PmtId>\n";
        $amount = "\t\t\t\t\t<EndToEndId>$id</EndToEndId>\n\t\t\t\t</PmtId>\n"
            . "\t\t\t\t<InstdAmt Ccy=\"EUR\">$amount</InstdAmt>\n";
        $mandate = "\t\t\t\t</DrctDbtTx>\n";
        $account = "\t\t\t\t\t\t<IBAN>$iban</IBAN>\n\t\t\t\t\t</Id>\n\t\t\t\t</DbtrAcct>\n";
        $end = ($ref === '' ? '' : self::reference($ref)) . "\t\t\t</DrctDbtTxInf>\n";

        [$before, $between] = self::cut($xml, $start . $amount, $account, $end);
        [$before, $debtor] = self::divide($before, $mandate);
        if ($between !== '' || strpos($debtor, "\t\t\t\t<Dbtr>\n\t\t\t\t\t<Nm>$name</Nm>\n") === false) {
            throw self::misplaced();
        }

        return $start . ($added['i'] === '' ? '' : "\t\t\t\t\t<InstrId>{$added['i']}</InstrId>\n") . $amount
            . self::amended($before, $added['n'], $added['N']) . $mandate
            . self::party('UltmtCdtr', $added['c'], $added['C'])
            . ($added['1'] . $added['2'] === '' ? $debtor : self::withLines($debtor, $added)) . $account
            . self::party('UltmtDbtr', $added['d'], $added['D'])
            . ($added['p'] === '' ? '' : sprintf(self::PURPOSE, $added['p']))
            . ($added['r'] === '' ? '' : sprintf(self::REFERENCE, $added['r']))
            . $end;
    }

    /** @return array{string, string, string, string, string, array<string, string>} */
    private static function unpack(string $packed): array
    {
        $fields = explode("\n", $packed);
        $added = self::NONE;
        foreach (array_splice($fields, 5) as $field) {
            $added[$field[0]] = substr($field, 1);
        }
        $fields[] = $added;

        return $fields;
    }

    /**
     * What stands between start, middle and end.
     *
     * @return array{string, string}
     */
    private static function cut(string $xml, string $start, string $middle, string $end): array
    {
        $from = min(strlen($start), strlen($xml));
        $to = strlen($xml) - strlen($end);
        $place = strpos($xml, $middle, $from);
        $after = $place + strlen($middle);
        $isMeant = $place !== false && $after <= $to && strncmp($xml, $start, $from) === 0
            && substr_compare($xml, $end, $to) === 0 && strpos($xml, $middle, $after) === false;
        if (!$isMeant) {
            throw self::misplaced();
        }

        return [substr($xml, $from, $place - $from), substr($xml, $after, $to - $after)];
    }

    /** @return array{string, string} before and after the only place of some lines */
    private static function divide(string $xml, string $lines): array
    {
        $place = strpos($xml, $lines);
        if ($place === false || strpos($xml, $lines, $place + 1) !== false) {
            throw self::misplaced();
        }

        return [substr($xml, 0, $place), substr($xml, $place + strlen($lines))];
    }

    private static function misplaced(): Misplaced
    {
        return new Misplaced('a payment of the document is not the one that something has to be added to');
    }

    private static function reference(string $ref): string
    {
        return "\t\t\t\t<RmtInf>\n\t\t\t\t\t<Ustrd>$ref</Ustrd>\n\t\t\t\t</RmtInf>\n";
    }

    private static function party(string $element, string $name, string $id): string
    {
        if ($name === '' && $id === '') {
            return '';
        }
        $name = $name === '' ? '' : "\t\t\t\t\t<Nm>$name</Nm>\n";
        $id = $id === '' ? '' : "\t\t\t\t\t<Id>\n\t\t\t\t\t\t<OrgId>\n\t\t\t\t\t\t\t<Othr>\n"
            . "\t\t\t\t\t\t\t\t<Id>$id</Id>\n"
            . "\t\t\t\t\t\t\t</Othr>\n\t\t\t\t\t\t</OrgId>\n\t\t\t\t\t</Id>\n";

        return "\t\t\t\t<$element>\n$name$id\t\t\t\t</$element>\n";
    }

    /** @param array<string, string> $added */
    private static function withLines(string $xml, array $added): string
    {
        [$before, $after] = self::divide($xml, "</Ctry>\n");
        $lines = '';
        foreach (array_filter([$added['1'], $added['2']], 'strlen') as $line) {
            $lines .= "\t\t\t\t\t\t<AdrLine>$line</AdrLine>\n";
        }

        return "$before</Ctry>\n$lines$after";
    }

    /** The mandate with the creditor's old name and identifier. */
    private static function amended(string $xml, string $name, string $id): string
    {
        if ($name === '' && $id === '') {
            return $xml;
        }
        $scheme = "\t\t\t\t\t\t\t<OrgnlCdtrSchmeId>\n"
            . ($name === '' ? '' : "\t\t\t\t\t\t\t\t<Nm>$name</Nm>\n")
            . ($id === '' ? '' : "\t\t\t\t\t\t\t\t<Id>\n\t\t\t\t\t\t\t\t\t<PrvtId>\n\t\t\t\t\t\t\t\t\t\t<Othr>\n"
                . "\t\t\t\t\t\t\t\t\t\t\t<Id>$id</Id>\n\t\t\t\t\t\t\t\t\t\t\t<SchmeNm>\n"
                . "\t\t\t\t\t\t\t\t\t\t\t\t<Prtry>SEPA</Prtry>\n\t\t\t\t\t\t\t\t\t\t\t</SchmeNm>\n"
                . "\t\t\t\t\t\t\t\t\t\t</Othr>\n\t\t\t\t\t\t\t\t\t</PrvtId>\n\t\t\t\t\t\t\t\t</Id>\n")
            . "\t\t\t\t\t\t\t</OrgnlCdtrSchmeId>\n";
        $details = "\t\t\t\t\t\t<AmdmntInfDtls>\n";
        if (strpos($xml, $details) === false) {
            $scheme = "\t\t\t\t\t\t<AmdmntInd>true</AmdmntInd>\n$details$scheme\t\t\t\t\t\t</AmdmntInfDtls>\n";
            $place = "</DtOfSgntr>\n";
        } else {
            $place = strpos($xml, "</OrgnlMndtId>\n") === false ? $details : "</OrgnlMndtId>\n";
        }
        [$before, $after] = self::divide($xml, $place);

        return $before . $place . $scheme . $after;
    }
}
