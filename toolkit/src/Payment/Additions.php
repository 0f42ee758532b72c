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
        $text = implode("\n", [
            $values['id'] ?? 'NOTPROVIDED', $amount, $values['name'], $values['iban'], $values['ref'] ?? '',
            $added['instr_id'] ?? '', $added['ultm_dbtr'] ?? '', $added['ultm_dbtr_id'] ?? '',
            $added['ultm_cdtr'] ?? '', $added['ultm_cdtr_id'] ?? '', $added['rf'] ?? '',
            $added['addrLine1'] ?? '', $added['addrLine2'] ?? '', $added['purp'] ?? '',
            $added['old_name'] ?? '', $added['old_creditor_id'] ?? '',
        ]);

        return strpbrk($text, '&<>') === false ? $text : htmlspecialchars($text, ENT_NOQUOTES);
    }

    /**
     * @param string $xml of a credit transfer in the extension's document
     * @throws Misplaced if it is not the payment that was packed
     */
    public static function toTransfer(string $xml, string $packed): string
    {
        [
            $id, $amount, $name, $iban, $ref, $instruction, $debtor, $debtorId, $creditor, $creditorId, $rf, $line1,
            $line2,
        ]
            = explode("\n", $packed);
        $start = "\t\t\t<CdtTrfTxInf>\n\t\t\t\t<PmtId>\n";
        $amount = "\t\t\t\t\t<EndToEndId>$id</EndToEndId>\n\t\t\t\t</PmtId>\n\t\t\t\t<Amt>\n"
            . "\t\t\t\t\t<InstdAmt Ccy=\"EUR\">$amount</InstdAmt>\n\t\t\t\t</Amt>\n";
        $account = "\t\t\t\t\t<IBAN>$iban</IBAN>\n\t\t\t\t</Id>\n\t\t\t\t</CdtrAcct>\n";
        $reference = $ref === '' ? self::NO_REFERENCE : self::reference($ref);
        $end = "\t\t\t</CdtTrfTxInf>\n";

        [$before, $between] = self::cut($xml, $start . $amount, $account, $reference . $end);
        if ($ref === '') {
            $reference = $rf === '' ? '' : sprintf(self::REFERENCE, $rf);
        }
        if (strpos($before, "\t\t\t\t<Cdtr>\n\t\t\t\t\t<Nm>$name</Nm>\n") === false) {
            throw self::misplaced();
        }

        return $start . ($instruction === '' ? '' : "\t\t\t\t\t<InstrId>$instruction</InstrId>\n") . $amount
            . self::party('UltmtDbtr', $debtor, $debtorId)
            . ($line1 . $line2 === '' ? $before : self::withLines($before, [$line1, $line2])) . $account
            . self::party('UltmtCdtr', $creditor, $creditorId)
            . $between . $reference . $end;
    }

    /**
     * @param string $xml of a direct debit in the extension's document
     * @throws Misplaced if it is not the payment that was packed
     */
    public static function toDebit(string $xml, string $packed): string
    {
        [$id, $amount, $name, $iban, $ref, $instruction, $debtor, $debtorId, $creditor, $creditorId, $rf, $line1,
            $line2, $purpose, $oldName, $oldId] = explode("\n", $packed);
        $start = "\t\t\t<DrctDbtTxInf>\n\t\t\t\t<PmtId>\n";
        $amount = "\t\t\t\t\t<EndToEndId>$id</EndToEndId>\n\t\t\t\t</PmtId>\n"
            . "\t\t\t\t<InstdAmt Ccy=\"EUR\">$amount</InstdAmt>\n";
        $mandate = "\t\t\t\t</DrctDbtTx>\n";
        $account = "\t\t\t\t\t\t<IBAN>$iban</IBAN>\n\t\t\t\t\t</Id>\n\t\t\t\t</DbtrAcct>\n";
        $end = ($ref === '' ? '' : self::reference($ref)) . "\t\t\t</DrctDbtTxInf>\n";

        [$before, $between] = self::cut($xml, $start . $amount, $account, $end);
        [$before, $payer] = self::divide($before, $mandate);
        if ($between !== '' || strpos($payer, "\t\t\t\t<Dbtr>\n\t\t\t\t\t<Nm>$name</Nm>\n") === false) {
            throw self::misplaced();
        }

        return $start . ($instruction === '' ? '' : "\t\t\t\t\t<InstrId>$instruction</InstrId>\n") . $amount
            . ($oldName . $oldId === '' ? $before : self::amended($before, $oldName, $oldId)) . $mandate
            . self::party('UltmtCdtr', $creditor, $creditorId)
            . ($line1 . $line2 === '' ? $payer : self::withLines($payer, [$line1, $line2])) . $account
            . self::party('UltmtDbtr', $debtor, $debtorId)
            . ($purpose === '' ? '' : sprintf(self::PURPOSE, $purpose))
            . ($rf === '' ? '' : sprintf(self::REFERENCE, $rf))
            . $end;
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

    /** @param list<string> $lines of an address, empty ones among them */
    private static function withLines(string $xml, array $lines): string
    {
        [$before, $after] = self::divide($xml, "</Ctry>\n");
        $elements = '';
        foreach (array_filter($lines, 'strlen') as $line) {
            $elements .= "\t\t\t\t\t\t<AdrLine>$line</AdrLine>\n";
        }

        return "$before</Ctry>\n$elements$after";
    }

    /** The mandate with the creditor's old name and identifier. */
    private static function amended(string $xml, string $name, string $id): string
    {
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
