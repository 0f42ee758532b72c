--TEST--
Documents of both kinds, from the setters and keys to the text
--FILE--
<?php
require __DIR__ . '/support.inc';

$message = credit_transfer();
$message->setName('Müller & Söhne');
$message->setBatchBooking(false);
$message->add(payment(['name' => 'Jörg & Änne', 'amount' => 12.345, 'id' => 'A-1', 'purp' => 'SALA', 'ref' => 'Lohn']));
$document = without_time($message->toXML());
// Debug engines from 8.0 on stop at arguments that a method neither declares nor reads.
$surplus = PHP_DEBUG && PHP_VERSION_ID >= 80000 ? [] : ['surplus', 'arguments'];
var_dump($document === without_time($message->toXML(...$surplus)));
$debit = direct_debit('DE-2.9');
$debit->setDDType(SEPA_DDTYPE_B2B);
$debit->add(collection(['smnda' => 1]));
foreach ([$document, $debit->toXML()] as $text) {
    preg_match_all('~<(Document|Orgnl)[^ >]*|>([^<\s]+[^<]*)<~', $text, $found);
    echo implode(' ', preg_replace('~.*T.*Z$~', 'TIME', array_map(function ($part) { return trim($part, '<>'); }, $found[0]))), "\n";
}

echo "-- failures\n";
echo outcome(function () { return direct_debit()->toXML(); }), "\n";
$debit->add(payment(['seq' => 'FRST', 'mref' => 'M-1']));
echo outcome(function () use ($debit) { return $debit->toXML(); }), "\n";
--EXPECT--
bool(true)
Document TEST-2 TIME 1 12.35 Müller &amp; Söhne TEST-2-P1 TRF false 1 12.35 SEPA 2026-12-01 Müller &amp; Söhne DE89370400440532013000 COBADEFFXXX SLEV A-1 12.35 COBADEFF Jörg &amp; Änne DE89370400440532013000 SALA Lohn
Document TEST-1 TIME 1 1.00 Test TEST-1-P1 DD true 1 1.00 SEPA B2B RCUR 2026-12-01 Test DE89370400440532013000 COBADEFFXXX SLEV DE98ZZZ09999999999 SEPA NOTPROVIDED 1.00 M-1 2020-01-31 true OrgnlDbtrAgt SMNDA COBADEFF DE89370400440532013000
-- failures
SEPAException 0: No transactions available
SEPAException 0: Mandate signature date missing
