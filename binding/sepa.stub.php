<?php

/**
 * What the extension offers to scripts, for readers and IDEs. The module
 * itself does not read this file; tests/phpt/reflection.phpt holds both
 * together.
 */

/** Kinds of message. */
const SEPA_MSGTYPE_CTI = 2; // credit transfer, pain.001
const SEPA_MSGTYPE_DDI = 1; // direct debit, pain.008

/** Local instruments of a direct debit message. */
const SEPA_DDTYPE_CORE = 0;
const SEPA_DDTYPE_COR1 = 1;
const SEPA_DDTYPE_B2B = 2;

/** Options of SEPA::init. */
const SEPA_INIT_RULEBOOK = 3;

/** Bits of SEPA::BIC_getBankFlags: schemes that the bank takes part in. */
const SEPA_SCL_SCT = 1;  // credit transfer
const SEPA_SCL_SDD = 2;  // direct debit, core
const SEPA_SCL_COR1 = 4; // direct debit, COR1
const SEPA_SCL_B2B = 8;  // direct debit, business to business

/** Statement formats. */
const SEPA_STMT_FORMAT_MT940 = 1;

/**
 * One payment message, and the services that need none.
 *
 * Instance methods return true or the text, and raise a SEPAException with
 * the reason otherwise. Static methods raise none.
 */
class SEPA
{
    /**
     * @param int $msgtype SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @throws SEPAException with code 42 for anything else
     */
    public function __construct($msgtype) {}

    /**
     * Account of the party that submits the message, without blanks.
     * @return true
     * @throws SEPAException
     */
    public function setIBAN($iban) {}

    /**
     * That party's bank, 8 or 11 characters in either case.
     * @return true
     * @throws SEPAException
     */
    public function setBIC($bic) {}

    /**
     * That party's name, 1 to 70 bytes of the SEPA character set.
     * @return true
     * @throws SEPAException
     */
    public function setName($name) {}

    /**
     * SEPA creditor identifier, for direct debits.
     * @return true
     * @throws SEPAException
     */
    public function setCreditorIdentifier($identifier) {}

    /**
     * Date, yyyy-mm-dd, of every transaction that has none of its own; today if never set.
     * @return true
     * @throws SEPAException
     */
    public function setDate($date) {}

    /**
     * Local instrument of a direct debit: SEPA_DDTYPE_CORE (the default), _COR1 or _B2B.
     * @return true
     * @throws SEPAException
     */
    public function setDDType($type) {}

    /**
     * Whether the bank books a payment block as one sum (the default).
     * @return true
     * @throws SEPAException
     */
    public function setBatchBooking($batchbooking) {}

    /**
     * Message id of 1 to 35 bytes; generated at the first toXML() if never set.
     * @return true
     * @throws SEPAException
     */
    public function setMessageId($msgid) {}

    /**
     * Appends one transaction. docs/messages.md has the keys. On an exception
     * the message is as it was.
     * @return true
     * @throws SEPAException
     */
    public function add(array $tx) {}

    /**
     * The document under the rulebook in force. Can be called again, also
     * after further adds.
     * @return string
     * @throws SEPAException
     */
    public function toXML() {}

    /**
     * Selects the rulebook of the whole process, which later requests of a web
     * server's process keep: select it at the start of each.
     * @return bool false for an unknown option or rulebook, which change nothing
     */
    public static function init($option, $value) {}

    /**
     * IBAN of a German account ("DE" is the only country) by the bank's rule.
     * @param int $status receives what happened; docs/iban.md has the codes. May be left out.
     * @return string|null
     */
    public static function IBAN_convert($country, $account, $bank_id, &$status = null) {}

    /**
     * BIC of a German, Austrian, Swiss or Liechtenstein IBAN; "" for a known
     * bank without one.
     * @return string|null
     */
    public static function IBAN_getBIC($iban) {}

    /** @return bool */
    public static function IBAN_check($iban) {}

    /** @return string|null */
    public static function BIC_getBankName($bic) {}

    /**
     * SEPA_SCL_... bits; 0 for a bank in no scheme, null for an unknown BIC.
     * @return int|null
     */
    public static function BIC_getBankFlags($bic) {}
}

class SEPAException extends Exception
{
}

/** Reads one bank statement file. */
class SEPAStatementParser
{
    public function __construct() {}

    /**
     * Reads a file; once for each object, also if it failed.
     * @param int $format SEPA_STMT_FORMAT_MT940
     * @param string $filename used as it is: relative names are the process's, open_basedir is not consulted
     * @return true
     * @throws SEPAException with code 42 for another format
     */
    public function load($format, $filename) {}

    /**
     * The statements of the file; docs/statements.md has the keys.
     * @return array[]|null null if there are none
     */
    public function getStatements() {}
}
