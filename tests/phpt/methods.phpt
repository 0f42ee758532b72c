--TEST--
Methods: a value that is taken, some that are not, and one of another type
--FILE--
<?php
require __DIR__ . '/support.inc';

$message = direct_debit('DE-2.9');
$values = [
    'setIBAN' => ["AT168064680654652158\0x", ''],
    'setBIC' => ['dabadkkk', 'COBADEFFXXXX'],
    'setName' => ['Name', "a\tb", "\xC3"],
    'setCreditorIdentifier' => ['DE98ab.09999999999', 'DE98ZZ'],
    'setDate' => ['2026-02-30', '2026-1-1'],
    'setMessageId' => ['ID-1', 'ä'],
    'setBatchBooking' => [false, 0.5],
    'setDDType' => [SEPA_DDTYPE_COR1, 3, beyond_int32()],
    'IBAN_check' => ["DE89370400440532013000\0", 'DE98370400440532013000', str_repeat('9', 1000000)],
    'IBAN_getBIC' => ['DE89370400440532013000', 'DE00600500090000000000', 'FR00'],
    'BIC_getBankName' => ['markdeffxxx', 'XXXXFI22'],
    'BIC_getBankFlags' => ['MARKDEFF', ''],
];
foreach ($values as $method => $list) {
    echo "$method: ";
    foreach ($list as $value) {
        echo outcome(function () use ($message, $method, $value) { return $message->$method($value); }), ', ';
    }
    echo outcome(function () use ($message, $method) { return $message->$method([]); }), "\n";
}
$message->add(collection());
preg_match_all('~<(?:Nm|BIC|IBAN|MsgId|BtchBookg|ReqdColltnDt|Cd|Id)>([^<\s][^<]*)<~', $message->toXML(), $written);
echo implode(' ', $written[1]), "\n";
echo outcome(function () { return credit_transfer()->setDDType(SEPA_DDTYPE_CORE); }), "\n";

echo "-- init and IBAN_convert\n";
foreach ([[3, "DE-3.7\0"], [3, 'de-3.7'], [3, 'DE-3.70'], [3, ''], [2, 'DE-3.7'], [beyond_int32() + 3, 'DE-3.7'], [3]] as $arguments) {
    echo outcome(function () use ($arguments) { return SEPA::init(...$arguments); }), "\n";
}
foreach ([['532013000', '37040044'], ["135\0", '10050000'], ['1234567', '37040044'], ['1', '1']] as [$account, $bank]) {
    echo outcome(function () use ($account, $bank, &$status) {
        return SEPA::IBAN_convert('DE', $account, $bank, $status);
    }), " $status\n";
}
echo outcome(function () { return SEPA::IBAN_convert('DE', '1'); }), "\n";
--EXPECT--
setIBAN: true, SEPAException 0: Invalid or unknown IBAN country code (), argument error
setBIC: true, SEPAException 0: sepa_setBIC: invalid BIC, argument error
setName: true, SEPAException 0: sepa_setName: invalid character '\t' in name, SEPAException 0: sepa_setName: invalid character '\303' in name, argument error
setCreditorIdentifier: true, SEPAException 0: Creditor Identifier too short, argument error
setDate: true, SEPAException 0: Invalid date, argument error
setMessageId: true, SEPAException 0: Invalid message id, argument error
setBatchBooking: true, true, argument error
setDDType: true, SEPAException 0: Unknown/unsupported LocalInstrumentCode (setDDType), SEPAException 0: Unknown/unsupported LocalInstrumentCode (setDDType), argument error
IBAN_check: true, false, false, argument error
IBAN_getBIC: "COBADEFFXXX", "", null, argument error
BIC_getBankName: "DEUTSCHE BUNDESBANK, ZENTRALE", null, argument error
BIC_getBankFlags: 11, null, argument error
ID-1 Name true SEPA COR1 2026-02-30 Name AT168064680654652158 DABADKKK DE98ab.09999999999 COBADEFF DE89370400440532013000
SEPAException 0: Not a direct debit message
-- init and IBAN_convert
true
false
false
false
false
false
argument error
"DE89370400440532013000" 0
"DE86100500000990021440" 1
null 11
null 0
argument error
