--TEST--
Setters: what they take, and the exception that says what they do not
--FILE--
<?php
require __DIR__ . '/support.inc';

$message = credit_transfer();
$values = [
    'setIBAN' => ['', "DE89370400440532013000\0x"],
    'setBIC' => ['COBADEFFXXXX', 'dabadkkk'],
    'setName' => ["a\tb", "\xC3", 'Name'],
    'setCreditorIdentifier' => ['DE98ZZ', 'DE98ab.09999999999'],
    'setDate' => ['2026-1-1', '2026-02-30'],
    'setMessageId' => ['', str_repeat('x', 36), 'a_b', 'ä', str_repeat('x', 35)],
];
foreach ($values as $method => $list) {
    echo "-- $method\n";
    foreach ($list as $value) {
        show(function () use ($message, $method, $value) { return $message->$method($value); });
    }
    show_argument_error(function () use ($message, $method) { return $message->$method([]); });
    try { $message->$method("\t"); } catch (SEPAException $e) {}
}
$message->add(payment());
preg_match_all('~<(?:Nm|IBAN|BICFI|MsgId|ReqdExctnDt)>(.*)<~', $message->toXML(), $stayed);
echo implode(' ', $stayed[1]), "\n";

echo "-- setDDType\n";
show(function () use ($message) { return $message->setDDType(7); });
foreach (['DE-2.6', 'DE-2.7', 'AT-6', 'NL-6', 'DE-2.8', 'DE-2.9', 'DE-3.0', 'DE-3.1', 'DE-3.5', 'DE-3.7'] as $rulebook) {
    $debit = direct_debit($rulebook);
    $taken = [];
    foreach ([SEPA_DDTYPE_CORE, SEPA_DDTYPE_COR1, SEPA_DDTYPE_B2B, 3, -1, 2 ** 32] as $type) {
        try {
            $debit->setDDType($type) === true && $taken[] = $type;
        } catch (SEPAException $e) {
            $reasons[$type] = $e->getMessage();
        }
    }
    $types[text($taken)][] = $rulebook;
}
echo text($types), "\n";
echo text($reasons), "\n";
--EXPECT--
-- setIBAN
SEPAException 0: Invalid or unknown IBAN country code ()
bool(true)
argument error
-- setBIC
SEPAException 0: sepa_setBIC: invalid BIC
bool(true)
argument error
-- setName
SEPAException 0: sepa_setName: invalid character '\t' in name
SEPAException 0: sepa_setName: invalid character '\303' in name
bool(true)
argument error
-- setCreditorIdentifier
SEPAException 0: Creditor Identifier too short
bool(true)
argument error
-- setDate
SEPAException 0: Invalid date
bool(true)
argument error
-- setMessageId
SEPAException 0: Invalid message id
SEPAException 0: Invalid message id
SEPAException 0: Invalid message id
SEPAException 0: Invalid message id
bool(true)
argument error
xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx Name 2026-02-30 Name DE89370400440532013000 DABADKKK COBADEFF DE89370400440532013000
-- setDDType
SEPAException 0: Not a direct debit message
{"[0,2]":["DE-2.6","DE-3.0","DE-3.1","DE-3.5","DE-3.7"],"[0,1,2]":["DE-2.7","AT-6","NL-6","DE-2.8","DE-2.9"]}
{"1":"COR1 is not allowed with selected SEPA rulebook","3":"Unknown/unsupported LocalInstrumentCode (setDDType)","-1":"Unknown/unsupported LocalInstrumentCode (setDDType)","4294967296":"Unknown/unsupported LocalInstrumentCode (setDDType)"}
