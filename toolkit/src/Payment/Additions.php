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
    private const NONE = ['i' => '', 'd' => '', 'D' => '', 'c' => '', 'C' => '', 'p' => '', 'r' => '', 'n' => '', 'N' => '',
        '1' => '', '2' => ''];

    private const REFERENCE = "\t\t\t\t<RmtInf>\n\t\t\t\t\t<Strd><CdtrRefInf><Tp><CdOrPrtry><Cd>SCOR</Cd></CdOrPrtry>"
        . "<Issr>ISO</Issr></Tp><Ref>%s</Ref></CdtrRefInf></Strd>\n\t\t\t\t</RmtInf>\n";

    private const PURPOSE = "\t\t\t\t<Purp>\n\t\t\t\t\t<Cd>%s</Cd>\n\t\t\t\t</Purp>\n";

    private const NO_REFERENCE = "\t\t\t\t<RmtInf>\n\t\t\t\t</RmtInf>\n";

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
        $end = ($ref === '' ? self::NO_REFERENCE : self::reference($ref)) . "\t\t\t</CdtTrfTxInf>\n";

        [$before, $between] = self::cut($xml, $start . $amount, $account, $end);
        self::prove(strpos($before, "\t\t\t\t<Cdtr>\n\t\t\t\t\t<Nm>$name</Nm>\n") !== false);

        return $start . self::instruction($added) . $amount
            . self::party('UltmtDbtr', $added['d'], $added['D'])
            . self::withLines($before, $added) . $account
            . self::party('UltmtCdtr', $added['c'], $added['C'])
            . $between
            . ($added['r'] === '' ? $end : str_replace(self::NO_REFERENCE, sprintf(self::REFERENCE, $added['r']), $end));
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
        self::prove($between === '' && strpos($debtor, "\t\t\t\t<Dbtr>\n\t\t\t\t\t<Nm>$name</Nm>\n") !== false);

        return $start . self::instruction($added) . $amount
            . self::amended($before, $added['n'], $added['N']) . $mandate
            . self::party('UltmtCdtr', $added['c'], $added['C'])
            . self::withLines($debtor, $added) . $account
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
        for ($i = 5, $count = count($fields); $i < $count; ++$i) {
            $added[$fields[$i][0]] = substr($fields[$i], 1);
        }

        return [$fields[0], $fields[1], $fields[2], $fields[3], $fields[4], $added];
    }

    /**
     * What stands between start, middle and end.
     *
     * @return array{string, string}
     */
    private static function cut(string $xml, string $start, string $middle, string $end): array
    {
        $from = strlen($start);
        $to = strlen($xml) - strlen($end);
        self::prove($to >= $from && strncmp($xml, $start, $from) === 0 && substr_compare($xml, $end, $to) === 0);

        return self::divide(substr($xml, $from, $to - $from), $middle);
    }

    /** @return array{string, string} before and after the only place of some lines */
    private static function divide(string $xml, string $lines): array
    {
        $place = strpos($xml, $lines);
        self::prove($place !== false && strrpos($xml, $lines) === $place);

        return [substr($xml, 0, $place), substr($xml, $place + strlen($lines))];
    }

    private static function prove(bool $isProved): void
    {
        if (!$isProved) {
            throw new Misplaced('a payment of the document is not the one that something has to be added to');
        }
    }

    private static function reference(string $ref): string
    {
        return "\t\t\t\t<RmtInf>\n\t\t\t\t\t<Ustrd>$ref</Ustrd>\n\t\t\t\t</RmtInf>\n";
    }

    /** @param array<string, string> $added */
    private static function instruction(array $added): string
    {
        return $added['i'] === '' ? '' : "\t\t\t\t\t<InstrId>{$added['i']}</InstrId>\n";
    }

    private static function party(string $element, string $name, string $id): string
    {
        if ($name === '' && $id === '') {
            return '';
        }
        $name = $name === '' ? '' : "\t\t\t\t\t<Nm>$name</Nm>\n";
        $id = $id === '' ? '' : "\t\t\t\t\t<Id>\n\t\t\t\t\t\t<OrgId>\n\t\t\t\t\t\t\t<Othr>\n\t\t\t\t\t\t\t\t<Id>$id</Id>\n"
            . "\t\t\t\t\t\t\t</Othr>\n\t\t\t\t\t\t</OrgId>\n\t\t\t\t\t</Id>\n";

        return "\t\t\t\t<$element>\n$name$id\t\t\t\t</$element>\n";
    }

    /** @param array<string, string> $added */
    private static function withLines(string $xml, array $added): string
    {
        if ($added['1'] . $added['2'] === '') {
            return $xml;
        }
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
                . "\t\t\t\t\t\t\t\t\t\t\t<Id>$id</Id>\n\t\t\t\t\t\t\t\t\t\t\t<SchmeNm>\n\t\t\t\t\t\t\t\t\t\t\t\t<Prtry>SEPA</Prtry>\n"
                . "\t\t\t\t\t\t\t\t\t\t\t</SchmeNm>\n\t\t\t\t\t\t\t\t\t\t</Othr>\n\t\t\t\t\t\t\t\t\t</PrvtId>\n\t\t\t\t\t\t\t\t</Id>\n")
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
