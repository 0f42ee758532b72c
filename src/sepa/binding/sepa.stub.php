<?php

/**
 * What the extension offers to scripts, for readers, IDEs and static analysers.
 * The module itself does not read this file; tests/phpt holds both together.
 */

/** Kind of message: direct debit, pain.008. */
const SEPA_MSGTYPE_DDI = 1;
/** Kind of message: credit transfer, pain.001. */
const SEPA_MSGTYPE_CTI = 2;

/** Local instrument of a direct debit message: core. */
const SEPA_DDTYPE_CORE = 0;
/** Local instrument of a direct debit message: core with a shorter lead time, until 2016. */
const SEPA_DDTYPE_COR1 = 1;
/** Local instrument of a direct debit message: business to business. */
const SEPA_DDTYPE_B2B = 2;

/** Option of SEPA::init: the rulebook. */
const SEPA_INIT_RULEBOOK = 3;

/** Bit of SEPA::BIC_getBankFlags: the bank takes credit transfers. */
const SEPA_SCL_SCT = 1;
/** Bit of SEPA::BIC_getBankFlags: the bank takes core direct debits. */
const SEPA_SCL_SDD = 2;
/** Bit of SEPA::BIC_getBankFlags: the bank took COR1 direct debits. */
const SEPA_SCL_COR1 = 4;
/** Bit of SEPA::BIC_getBankFlags: the bank takes business to business direct debits. */
const SEPA_SCL_B2B = 8;

/** Statement format: SWIFT MT940. */
const SEPA_STMT_FORMAT_MT940 = 1;

/**
 * One payment message, and the services that need none.
 *
 * Instance methods return true or the text, and raise a SEPAException with
 * the reason otherwise. Static methods raise none. docs/messages.md has every
 * key, limit and reason, docs/iban.md the services.
 *
 * Texts are UTF-8, their limits count bytes, and they end at a NUL byte.
 */
class SEPA
{
    /**
     * An empty message. The first one of a process settles the rulebook, by
     * the date, unless init() has.
     *
     * @param int $msgtype SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @phpstan-param SEPA_MSGTYPE_CTI|SEPA_MSGTYPE_DDI $msgtype
     * @throws SEPAException with code 42 for anything else
     */
    public function __construct($msgtype) {}

    /**
     * Account of the party that submits the message.
     *
     * @param string $iban in capitals and without blanks
     * @return true
     * @throws SEPAException
     */
    public function setIBAN($iban) {}

    /**
     * That party's bank.
     *
     * @param string $bic 8 or 11 characters in either case
     * @return true
     * @throws SEPAException
     */
    public function setBIC($bic) {}

    /**
     * That party's name.
     *
     * @param string $name 1 to 70 bytes of the SEPA character set
     * @return true
     * @throws SEPAException
     */
    public function setName($name) {}

    /**
     * SEPA creditor identifier, for direct debits.
     *
     * @param string $identifier 7 to 35 bytes with right check digits: DE98ZZZ09999999999
     * @return true
     * @throws SEPAException
     */
    public function setCreditorIdentifier($identifier) {}

    /**
     * Date of every transaction that has none of its own; today if never set.
     *
     * @param string $date yyyy-mm-dd; test it before, no calendar is asked
     * @return true
     * @throws SEPAException
     */
    public function setDate($date) {}

    /**
     * Local instrument of a direct debit message, SEPA_DDTYPE_CORE if never set.
     *
     * @param int $type SEPA_DDTYPE_CORE, SEPA_DDTYPE_COR1 (not under every rulebook) or SEPA_DDTYPE_B2B
     * @phpstan-param SEPA_DDTYPE_CORE|SEPA_DDTYPE_COR1|SEPA_DDTYPE_B2B $type
     * @return true
     * @throws SEPAException
     */
    public function setDDType($type) {}

    /**
     * How the bank books a payment block.
     *
     * @param bool $batchbooking true: one booking for the block (if never set); false: one for each transaction
     * @return true
     * @throws SEPAException
     */
    public function setBatchBooking($batchbooking) {}

    /**
     * The message id; generated at the first toXML() if never set.
     *
     * @param string $msgid 1 to 35 bytes of the SEPA character set and blanks; 30 leave room for what blocks add
     * @return true
     * @throws SEPAException
     */
    public function setMessageId($msgid) {}

    /**
     * Appends one transaction. On an exception the message is as it was; the
     * reason names no transaction.
     *
     * Required are `iban` and `amount`, in direct debits also `seq`, `mref`
     * and `mdate`. Keys may be written in any case. `purp` is for credit
     * transfers, `seq` to `smnda` are for direct debits. Address lines are for
     * the rulebooks before DE-3.7, the other address fields for DE-3.7.
     *
     * @param array<string, string|int|float> $tx
     * @phpstan-param array{
     *     iban: string,
     *     amount: string|int|float,
     *     name?: string,
     *     bic?: string,
     *     date?: string,
     *     id?: string|int,
     *     ref?: string|int,
     *     purp?: string,
     *     addrCC?: string,
     *     addrLine1?: string,
     *     addrLine2?: string,
     *     addrDept?: string,
     *     addrSubDept?: string,
     *     addrStreet?: string,
     *     addrNum?: string|int,
     *     addrBldg?: string,
     *     addrFloor?: string|int,
     *     addrPoBox?: string|int,
     *     addrRoom?: string|int,
     *     addrCode?: string|int,
     *     addrTown?: string,
     *     addrLoc?: string,
     *     addrDstrct?: string,
     *     addrCtrySub?: string,
     *     seq?: 'FRST'|'RCUR'|'OOFF'|'FNAL',
     *     mref?: string|int,
     *     mdate?: string,
     *     old_mref?: string|int,
     *     old_iban?: string,
     *     smnda?: '1'|1
     * } $tx
     * @return true
     * @throws SEPAException
     */
    public function add(array $tx) {}

    /**
     * The document under the rulebook in force. Can be called again, also
     * after further adds.
     *
     * @return string XML; docs/messages.md tells what a bank's schema may want changed
     * @throws SEPAException
     */
    public function toXML() {}

    /**
     * Selects the rulebook of the whole process, which later requests of a web
     * server's process keep: select it at the start of each.
     *
     * @param int $option SEPA_INIT_RULEBOOK
     * @param string $value 'DE-2.6' to 'DE-2.9', 'DE-3.0', 'DE-3.1', 'DE-3.5', 'DE-3.7', 'AT-6' or 'NL-6'
     * @phpstan-param SEPA_INIT_RULEBOOK $option
     * @return bool false for an unknown option or rulebook, which change nothing
     */
    public static function init($option, $value) {}

    /**
     * IBAN of a German account by the rule of its bank. The result decides,
     * not the status.
     *
     * @param string $country 'DE'
     * @param string $account account number, 1 to 10 digits without blanks
     * @param string $bank_id bank code, 8 digits without blanks
     * @param int $status receives what happened, 0 if there is nothing to report; docs/iban.md has the
     *     codes. May be left out.
     * @param-out 0|1|10|11|12|13|15|50 $status
     * @return string|null null if there is no IBAN
     */
    public static function IBAN_convert($country, $account, $bank_id, &$status = null) {}

    /**
     * BIC of an IBAN, which is not validated.
     *
     * @param string $iban a German, Austrian, Swiss or Liechtenstein IBAN without blanks
     * @return string|null "" for a known bank without a BIC, null for an unknown bank or another country
     */
    public static function IBAN_getBIC($iban) {}

    /**
     * Whether an IBAN is valid; a German one down to bank code and account
     * number. The exception of setIBAN() tells what is wrong with one.
     *
     * @param string $iban in capitals and without blanks
     * @return bool
     */
    public static function IBAN_check($iban) {}

    /**
     * A bank's name. Many branches have no entry: ask again with the first 8
     * characters.
     *
     * @param string $bic 8 or 11 characters in either case
     * @return string|null null for an unknown BIC
     */
    public static function BIC_getBankName($bic) {}

    /**
     * The schemes that a bank takes part in.
     *
     * @param string $bic 8 or 11 characters in either case
     * @return int|null bits SEPA_SCL_...; 0 for a bank in no scheme, null for an unknown BIC
     */
    public static function BIC_getBankFlags($bic) {}
}

/** Why a message or a statement file was refused; the texts stand in docs/messages.md. */
class SEPAException extends Exception
{
}

/** Reads one bank statement file. docs/statements.md tells what it understands. */
class SEPAStatementParser
{
    public function __construct() {}

    /**
     * Reads a file; once for each object, also if it failed.
     *
     * @param int $format SEPA_STMT_FORMAT_MT940
     * @param string $filename used as it is: relative names are the process's, open_basedir is not consulted
     * @phpstan-param SEPA_STMT_FORMAT_MT940 $format
     * @return true
     * @throws SEPAException with code 42 for another format
     */
    public function load($format, $filename) {}

    /**
     * The statements of the file. Dates are yyyy-mm-dd, amounts and balances
     * negative for debits; check that they add up before you book.
     *
     * @return array[]|null null if there are none
     * @phpstan-return non-empty-list<array{
     *     ref?: string,
     *     account?: string,
     *     number?: int,
     *     page?: int,
     *     openSaldo: float,
     *     openCurrency: string,
     *     openDate: string,
     *     closeSaldo: float,
     *     closeCurrency: string,
     *     closeDate: string,
     *     tx: list<array{
     *         valuta: string,
     *         booked?: string,
     *         amount: float,
     *         code: string,
     *         ref?: string,
     *         bankref?: string,
     *         gvc: int,
     *         extcode?: int,
     *         txtext?: string,
     *         primanota?: string,
     *         bank: string,
     *         account: string,
     *         name: string,
     *         purpose?: string,
     *         eref?: string,
     *         kref?: string,
     *         mref?: string,
     *         cred?: string,
     *         debt?: string,
     *         purp?: string,
     *         coam?: string,
     *         oamt?: string,
     *         svwz?: string,
     *         abwa?: string,
     *         abwe?: string
     *     }>
     * }>|null
     */
    public function getStatements() {}
}
