<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

use Sepa\Toolkit\Xml\Records;

/**
 * Where the messages camt.052, 053 and 054 have what, by names: versions 02 to 13 differ
 * in names and in elements around them, and a table has the rows of all.
 *
 * @internal
 */
final class Tables
{
    /** Root elements, and the words of their kinds. */
    public const ROOTS = [
        'BkToCstmrAcctRpt' => 'camt.052',
        'BkToCstmrStmt' => 'camt.053',
        'BkToCstmrDbtCdtNtfctn' => 'camt.054',
    ];

    private const ROOT = [
        '/GrpHdr' => '>header',
        '/Stmt' => '>statement',
        '/Rpt' => '>statement',
        '/Ntfctn' => '>statement',
    ];

    private const HEADER = ['/MsgPgntn/PgNb' => 'page', '/MsgPgntn/LastPgInd' => 'last'];

    private const STATEMENT = [
        '/Id' => 'id',
        '/StmtPgntn/PgNb' => 'page', '/RptPgntn/PgNb' => 'page', '/NtfctnPgntn/PgNb' => 'page',
        '/StmtPgntn/LastPgInd' => 'last', '/RptPgntn/LastPgInd' => 'last', '/NtfctnPgntn/LastPgInd' => 'last',
        '/ElctrncSeqNb' => 'number',
        '/CreDtTm' => 'created',
        '/CpyDplctInd' => 'copy',
        '/Acct/Id/IBAN' => 'account', '/Acct/Id/Othr/Id' => 'account',
        '/Acct/Ccy' => 'currency',
        '/Acct/Ownr/Nm' => 'owner',
        '/Acct/Svcr/FinInstnId/BIC' => 'bank', '/Acct/Svcr/FinInstnId/BICFI' => 'bank',
        '/Bal' => '*balances',
        '/TxsSummry/TtlNtries/NbOfNtries' => 'count',
        '/TxsSummry/TtlCdtNtries/Sum' => 'credits',
        '/TxsSummry/TtlDbtNtries/Sum' => 'debits',
        '/Ntry' => '>entry',
        '/AddtlStmtInf' => '+info', '/AddtlRptInf' => '+info', '/AddtlNtfctnInf' => '+info',
    ];

    private const BALANCE = [
        '/Tp/CdOrPrtry/Cd' => 'code', '/Tp/CdOrPrtry/Prtry' => 'code',
        '/Amt' => '$amount',
        '/CdtDbtInd' => 'sign',
        '/Dt/Dt' => 'date', '/Dt/DtTm' => 'date',
    ];

    /** What entries and the transactions within have alike. */
    private const COMMON = [
        '/Amt' => '$amount',
        '/CdtDbtInd' => 'sign',
        '/AmtDtls/InstdAmt/Amt' => '$instructed',
        '/AmtDtls/TxAmt/Amt' => '$transaction',
        '/AmtDtls/InstdAmt/CcyXchg/XchgRate' => 'rate',
        '/AmtDtls/TxAmt/CcyXchg/XchgRate' => 'rate',
        '/AmtDtls/CntrValAmt/CcyXchg/XchgRate' => 'rate',
        '/BkTxCd/Domn/Cd' => 'domain',
        '/BkTxCd/Domn/Fmly/Cd' => 'family',
        '/BkTxCd/Domn/Fmly/SubFmlyCd' => 'subfamily',
        '/BkTxCd/Prtry/Cd' => 'code',
        '/BkTxCd/Prtry/Issr' => 'issuer',
        '/Chrgs' => '*charges',
    ];

    private const ENTRY = self::COMMON + [
        '/NtryRef' => 'ref',
        '/RvslInd' => 'reversal',
        '/Sts' => 'status', '/Sts/Cd' => 'status', '/Sts/Prtry' => 'status',
        '/BookgDt/Dt' => 'booked', '/BookgDt/DtTm' => 'booked',
        '/ValDt/Dt' => 'valuta', '/ValDt/DtTm' => 'valuta',
        '/AcctSvcrRef' => 'bankref',
        '/NtryDtls/Btch/MsgId' => 'msgid',
        '/NtryDtls/Btch/PmtInfId' => 'kref',
        '/NtryDtls/Btch/NbOfTxs' => 'payments',
        '/NtryDtls/TxDtls' => '>transaction',
        '/AddtlNtryInf' => 'txtext',
    ];

    private const TRANSACTION = self::COMMON + [
        '/Refs/MsgId' => 'msgid',
        '/Refs/AcctSvcrRef' => 'bankref',
        '/Refs/PmtInfId' => 'kref',
        '/Refs/InstrId' => 'instrid',
        '/Refs/EndToEndId' => 'eref',
        '/Refs/UETR' => 'uetr',
        '/Refs/TxId' => 'txid',
        '/Refs/MndtId' => 'mref',
        '/Refs/Prtry' => '*own',
        '/Purp/Cd' => 'purp', '/Purp/Prtry' => 'purp',
        '/RmtInf/Ustrd' => '+text',
        '/RmtInf/Strd/CdtrRefInf/Ref' => 'reference',
        '/RmtInf/Strd/AddtlRmtInf' => '+structured',
        '/RtrInf/Rsn/Cd' => 'reason', '/RtrInf/Rsn/Prtry' => 'reason',
        '/RtrInf/AddtlInf' => '+why',
        '/AddtlTxInf' => 'info',
        '/RltdPties/UltmtDbtr/Nm' => 'abwa',
        '/RltdPties/UltmtCdtr/Nm' => 'abwe',
    ];

    /** The same for both sides: # is Dbtr or Cdtr, and in the key d or c. */
    private const SIDE = [
        '/RltdPties/#/Nm' => '#name', '/RltdPties/#/Agt/FinInstnId/Nm' => '#name',
        '/RltdPties/#/Id/PrvtId/Othr/Id' => '#id', '/RltdPties/#/Id/OrgId/Othr/Id' => '#id',
        '/RltdPties/#Acct/Id/IBAN' => '#account', '/RltdPties/#Acct/Id/Othr/Id' => '#account',
        '/RltdAgts/#Agt/FinInstnId/BIC' => '#bank', '/RltdAgts/#Agt/FinInstnId/BICFI' => '#bank',
        '/RltdAgts/#Agt/FinInstnId/ClrSysMmbId/MmbId' => '#bankcode',
    ];

    private const CHARGES = ['/Amt' => '$amount', '/CdtDbtInd' => 'sign', '/Rcrd' => '*records'];

    private const CHARGE = ['/Amt' => '$amount', '/CdtDbtInd' => 'sign'];

    private const OWN = ['/Tp' => 'type', '/Ref' => 'ref'];

    /** @var array<string, array<string, string>>|null */
    private static ?array $all = null;

    /** @return array<string, array<string, string>> for Records */
    public static function all(): array
    {
        return self::$all = self::$all ?? Records::tables([
            '' => self::ROOT,
            'header' => self::HEADER,
            'statement' => self::STATEMENT,
            'balances' => self::BALANCE,
            'entry' => self::ENTRY,
            'transaction' => self::TRANSACTION + self::side('Dbtr') + self::side('Cdtr'),
            'charges' => self::CHARGES,
            'records' => self::CHARGE,
            'own' => self::OWN,
        ]);
    }

    /** @return array<string, string> */
    private static function side(string $party): array
    {
        $rows = [];
        foreach (self::SIDE as $path => $key) {
            $rows[str_replace('#', $party, $path)] = ($party === 'Dbtr' ? 'd' : 'c') . substr($key, 1);
        }

        return $rows;
    }
}
