<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\Xml\Records;

/**
 * Where status reports (pain.002) and the payment files that they are about have what,
 * by names: see Records.
 *
 * @internal
 */
final class Tables
{
    /** Roots of a report; the older has the name of its form. */
    public const REPORT_ROOTS = ['CstmrPmtStsRpt', 'pain.002.001.02'];

    /** Roots of payment files, and whether they are debits. */
    public const PAYMENT_ROOTS = ['CstmrCdtTrfInitn' => false, 'CstmrDrctDbtInitn' => true];

    private const REPORT = [
        '' => [
            '/GrpHdr/MsgId' => 'id',
            '/GrpHdr/CreDtTm' => 'created',
            '/GrpHdr/DbtrAgt/FinInstnId/BIC' => 'debtorBank', '/GrpHdr/DbtrAgt/FinInstnId/BICFI' => 'debtorBank',
            '/GrpHdr/CdtrAgt/FinInstnId/BIC' => 'creditorBank', '/GrpHdr/CdtrAgt/FinInstnId/BICFI' => 'creditorBank',
            '/OrgnlGrpInfAndSts/OrgnlMsgId' => 'originalId',
            '/OrgnlGrpInfAndSts/OrgnlMsgNmId' => 'originalForm',
            '/OrgnlGrpInfAndSts/GrpSts' => 'status',
            '/OrgnlGrpInfAndSts/StsRsnInf' => '*reasons',
            '/OrgnlGrpInfAndSts/NbOfTxsPerSts' => '*counts',
            '/OrgnlPmtInfAndSts' => '>block',
            '/TxInfAndSts' => '>payment',
        ],
        'block' => [
            '/OrgnlPmtInfId' => 'id',
            '/PmtInfSts' => 'status',
            '/StsRsnInf' => '*reasons',
            '/NbOfTxsPerSts' => '*counts',
            '/TxInfAndSts' => '>payment',
        ],
        'payment' => [
            '/OrgnlPmtInfId' => 'block',
            '/OrgnlInstrId' => 'instrid',
            '/OrgnlEndToEndId' => 'eref',
            '/OrgnlUETR' => 'uetr',
            '/TxSts' => 'status',
            '/StsRsnInf' => '*reasons',
            '/AccptncDtTm' => 'accepted',
            '/AcctSvcrRef' => 'bankref',
            '/OrgnlTxRef/Amt/InstdAmt' => '$amount', '/OrgnlTxRef/Amt/EqvtAmt/Amt' => '$amount',
            '/OrgnlTxRef/PmtMtd' => 'method',
            '/OrgnlTxRef/MndtRltdInf/MndtId' => 'mref', '/OrgnlTxRef/MndtRltdInf/DrctDbtMndt/MndtId' => 'mref',
            '/OrgnlTxRef/RmtInf/Ustrd' => '+text',
            '/OrgnlTxRef/Dbtr/Nm' => 'debtor', '/OrgnlTxRef/DbtrAcct/Id/IBAN' => 'debtorAccount',
            '/OrgnlTxRef/Cdtr/Nm' => 'creditor', '/OrgnlTxRef/CdtrAcct/Id/IBAN' => 'creditorAccount',
        ],
        'reasons' => [
            '/Orgtr/Nm' => 'by', '/Orgtr/Id/OrgId/BICOrBEI' => 'by', '/Orgtr/Id/OrgId/AnyBIC' => 'by',
            '/Rsn/Cd' => 'code', '/Rsn/Prtry' => 'code',
            '/AddtlInf' => '+text',
        ],
        'counts' => ['/DtldSts' => 'status', '/DtldNbOfTxs' => 'count'],
    ];

    private const PAYMENTS = [
        '' => ['/GrpHdr/MsgId' => 'id', '/PmtInf' => '>block'],
        'block' => ['/PmtInfId' => 'id', '/CdtTrfTxInf' => '>payment', '/DrctDbtTxInf' => '>payment'],
        'payment' => [
            '/PmtId/InstrId' => 'instrid',
            '/PmtId/EndToEndId' => 'eref',
            '/Amt/InstdAmt' => '$amount', '/InstdAmt' => '$amount',
            '/Dbtr/Nm' => 'debtor', '/DbtrAcct/Id/IBAN' => 'debtorAccount',
            '/Cdtr/Nm' => 'creditor', '/CdtrAcct/Id/IBAN' => 'creditorAccount',
        ],
    ];

    /** @return array<string, array<int|string, mixed>> */
    public static function report(): array
    {
        static $tables = null;

        return $tables = $tables ?? Records::tables(self::REPORT);
    }

    /** @return array<string, array<int|string, mixed>> */
    public static function payments(): array
    {
        static $tables = null;

        return $tables = $tables ?? Records::tables(self::PAYMENTS);
    }
}
