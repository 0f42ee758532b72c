--TEST--
Setters: what they take, and the exception that says what they do not
--FILE--
<?php
require __DIR__ . '/support.inc';

$message = credit_transfer();
$wrong = [
    'setIBAN' => ['', 'DE', 'XX89370400440532013000', 'de89370400440532013000', 'DE8937040044053201300', 'DE98370400440532013000',
                  "DE89370400440532013000\0x"],
    'setBIC' => ['', 'COBADEFF50', 'COBADEFFXXXX', 'COBADE1F'],
    'setName' => ['', str_repeat('x', 71), "a\tb", "\xC3", 'a_b'],
    'setCreditorIdentifier' => ['', 'DE98ZZ', str_repeat('D', 36), 'DE98ZZZ0999999999a', 'DE99ZZZ09999999999', 'DE98ab.09999999999'],
    'setDate' => ['', '2026-1-1', '2026/12/01', '2026-12-01 ', '2026-02-30'],
    'setMessageId' => ['', str_repeat('x', 36), 'a_b', 'ä', str_repeat('x', 35)],
];
foreach ($wrong as $method => $values) {
    echo "-- $method\n";
    foreach ($values as $value) {
        show(function () use ($message, $method, $value) { return $message->$method($value); });
    }
    show_argument_error(function () use ($message, $method) { return $message->$method(); });
    show_argument_error(function () use ($message, $method) { return $message->$method([]); });
}
echo "-- what stayed\n";
echo implode("\n", preg_grep('~<(Nm|IBAN|BICFI|MsgId)>~', explode("\n", (function () {
    $m = credit_transfer();
    foreach (['setName', 'setIBAN', 'setBIC', 'setMessageId'] as $method) {
        try { $m->$method('_'); } catch (SEPAException $e) {}
    }
    $m->setBIC('dabadkkk');
    $m->setBatchBooking(false);
    $m->add(payment());
    return $m->toXML();
})()))), "\n";

echo "-- setDDType\n";
show(function () use ($message) { return $message->setDDType(7); });
foreach (['DE-2.6', 'DE-2.7', 'AT-6', 'NL-6', 'DE-2.8', 'DE-2.9', 'DE-3.0', 'DE-3.1', 'DE-3.5', 'DE-3.7'] as $rulebook) {
    $debit = direct_debit($rulebook);
    $taken = [];
    foreach ([SEPA_DDTYPE_CORE, SEPA_DDTYPE_COR1, SEPA_DDTYPE_B2B, 3, -1, 2 ** 32] as $type) {
        try {
            $taken[] = var_export($debit->setDDType($type), true);
        } catch (SEPAException $e) {
            $taken[] = $e->getMessage();
        }
    }
    echo $rulebook, ': ', implode(' | ', array_unique($taken)), "\n";
}
--EXPECT--
-- setIBAN
SEPAException 0: Invalid or unknown IBAN country code ()
SEPAException 0: Wrong IBAN length (DE)
SEPAException 0: Invalid or unknown IBAN country code (XX89370400440532013000)
SEPAException 0: Invalid IBAN format (de89370400440532013000)
SEPAException 0: Wrong IBAN length (DE8937040044053201300)
SEPAException 0: Invalid IBAN checksum (DE98370400440532013000)
bool(true)
argument error
argument error
-- setBIC
SEPAException 0: sepa_setBIC: invalid BIC format
SEPAException 0: sepa_setBIC: invalid BIC format
SEPAException 0: sepa_setBIC: invalid BIC
SEPAException 0: sepa_setBIC: invalid BIC format
argument error
argument error
-- setName
SEPAException 0: sepa_setAccount: Name too short
SEPAException 0: sepa_setAccount: Name too long
SEPAException 0: sepa_setName: invalid character '\t' in name
SEPAException 0: sepa_setName: invalid character '\303' in name
SEPAException 0: sepa_setName: invalid character '_' in name
argument error
argument error
-- setCreditorIdentifier
SEPAException 0: Creditor Identifier too short
SEPAException 0: Creditor Identifier too short
SEPAException 0: Creditor Identifier too long
SEPAException 0: Invalid character in Creditor Identifier
SEPAException 0: Invalid Creditor Identifier checksum
bool(true)
argument error
argument error
-- setDate
SEPAException 0: Invalid date
SEPAException 0: Invalid date
SEPAException 0: Invalid date format
SEPAException 0: Invalid date
bool(true)
argument error
argument error
-- setMessageId
SEPAException 0: Invalid message id
SEPAException 0: Invalid message id
SEPAException 0: Invalid message id
SEPAException 0: Invalid message id
bool(true)
argument error
argument error
-- what stayed
			<MsgId>TEST-1</MsgId>
				<Nm>Test</Nm>
				<Nm>Test</Nm>
					<IBAN>DE89370400440532013000</IBAN>
					<BICFI>DABADKKK</BICFI>
					<BICFI>COBADEFF</BICFI>
					<IBAN>DE89370400440532013000</IBAN>
-- setDDType
SEPAException 0: Not a direct debit message
DE-2.6: true | COR1 is not allowed with selected SEPA rulebook | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-2.7: true | Unknown/unsupported LocalInstrumentCode (setDDType)
AT-6: true | Unknown/unsupported LocalInstrumentCode (setDDType)
NL-6: true | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-2.8: true | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-2.9: true | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-3.0: true | COR1 is not allowed with selected SEPA rulebook | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-3.1: true | COR1 is not allowed with selected SEPA rulebook | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-3.5: true | COR1 is not allowed with selected SEPA rulebook | Unknown/unsupported LocalInstrumentCode (setDDType)
DE-3.7: true | COR1 is not allowed with selected SEPA rulebook | Unknown/unsupported LocalInstrumentCode (setDDType)
