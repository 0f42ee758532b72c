<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * ISO 20022's external lists of purposes, as Austrian banks' schemas of 2023
 * have them; those of before have the codes without a star.
 */
final class PurposeCodes
{
    public const PURPOSE = 'purp';

    public const CATEGORY = 'category';

    private const LISTS = [
        self::PURPOSE => <<<'CODES'
            ACCT ADCS ADMG ADVA AEMP AGRT AIRB ALLW ALMY AMEX* ANNI ANTS AREN AUCO* B112 BBSC BCDM BCFG BECH BENE BEXP
            BFWD BKDF BKFE BKFM BKIP BKPP BLDM BNET BOCE BOND* BONU BR12 BUSB CABD* CAEQ* CAFI CASH CBCR* CBFF CBFR
            CBLK CBTV CCHD CCIR CCPC CCPM CCRD CCSM CDBL CDCB CDCD CDCS CDDP CDEP CDOC CDQC CFDI CFEE CGDD CHAR CLPR
            CMDT COLL COMC COMM COMP* COMT CORT COST CPEN* CPKC CPYR CRDS CRPR CRSP CRTL CSDB CSLP CVCF DBCR* DBTC
            DCRD DEBT* DEPD* DEPT DERI DICL* DIVD DMEQ DNTS DSMT DVPM ECPG ECPR ECPU EDUC EFTC* EFTD* ELEC ENRG EPAY
            EQPT EQTS* EQUS ESTX ETUP EXPT EXTD FACT FAND FCOL FCPM FEES FERB FIXI FLCR* FNET FORW FREX FUTR FWBC FWCC
            FWLV FWSB FWSC FXNT GAFA* GAHO* GAMB* GASB GDDS GDSV GFRP GIFT* GOVI GOVT GSCB GSTX GVEA GVEB GVEC GVED
            GWLT HEDG HLRP HLST* HLTC HLTI HREC HSPC HSTX ICCP ICRF IDCP IHRP INPC INPR* INSC* INSM INSU INTC INTE
            INTP* INTX INVS IPAY* IPCA* IPDO* IPEA* IPEC* IPEW* IPPS* IPRT* IPU2* IPUW* IVPT LBIN LBRI LCOL LFEE LICF
            LIFI LIMA LMEQ LMFI LMRK LOAN LOAR LOTT* LREB LREV LSFL LTCF MAFC* MARF* MARG MBSB MBSC MCDM MCFG MDCS
            MGCC MGSC MOMA* MP2B* MP2P* MSVC MTUP NETT NITX NOWS NWCH NWCM OCCC OCDM OCFG OFEE OPBC OPCC OPSB OPSC
            OPTN OTCD OTHR OTLC PADD PAYR PCOM* PDEP* PEFC* PENO PENS PHON PLDS* PLRF* POPE PPTI PRCP PRME PTSP PTXP
            RAPI* RCKE RCPT RDTX REBT REFU RELG* RENT REOD* REPO RETL* RHBS RIMB RINP RLWY RMCO* ROYA RPBC RPCC RPNT
            RPSB RPSC RRBN RRCT* RRTP* RVPM RVPO SALA SASW* SAVG SBSC SCIE SCIR SCRP SCVE SECU SEPI SERV* SHBC SHCC
            SHSL SLEB SLOA SLPI SPLT SPSP* SSBE STDY SUBS SUPP SWBC SWCC SWFP SWPP SWPT SWRS SWSB SWSC SWUF TAXR TAXS
            TBAN TBAS TBBC TBCC TBIL TCSC TELI TLRF TLRR TMPG TPRI TPRP TRAD TRCP TREA TRFD TRNC TRPT TRVC UBIL UNIT*
            VATX VIEW WEBI WHLD WTER
            CODES,
        self::CATEGORY => <<<'CODES'
            BONU CASH CBLK CCRD CGWV* CIPC* CONC* CORT CTDF* DCRD DIVI DVPM EPAY FCDT* FCIN* FCOL GOVT GP2P* HEDG ICCP
            IDCP INTC INTE LBOX* LOAN MP2B* MP2P* OTHR PENS RPRE* RRCT* RVPM SALA SAVG* SECU SSBE SUPP SWEP* TAXS
            TOPG* TRAD TREA VATX VOST* WHLD ZABA*
            CODES,
    ];

    /** @var array<string, array<string, bool>> whether an older list has it, by list and code */
    private static array $codes = [];

    /** @param string $list PURPOSE or CATEGORY */
    public static function exists(string $list, string $code): bool
    {
        return isset(self::codes($list)[$code]);
    }

    /** Whether the schemas of before 2023 have it. */
    public static function isOld(string $list, string $code): bool
    {
        return self::codes($list)[$code] ?? false;
    }

    /** @return array<string, bool> */
    public static function codes(string $list): array
    {
        if (!isset(self::$codes[$list])) {
            self::$codes[$list] = [];
            foreach (preg_split('/\s+/', trim(self::LISTS[$list])) as $code) {
                self::$codes[$list][rtrim($code, '*')] = substr($code, -1) !== '*';
            }
        }

        return self::$codes[$list];
    }
}
