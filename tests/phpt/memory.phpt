--TEST--
Ten thousand messages leave nothing behind
--FILE--
<?php
require __DIR__ . '/support.inc';

function work(): void
{
    for ($i = 0; $i < 1000; $i++) {
        $message = credit_transfer();
        $message->setName("Name $i");
        $message->setName('Other name');
        $message->add(payment(['name' => 'Payee', 'ref' => str_repeat('x', 140)]));
        try { $message->add(payment(['name' => 'Payee', 'amount' => 'x'])); } catch (SEPAException $e) {}
        try { $message->add(payment(array_fill_keys(range(1, 40), 'x') + ['amount' => 'x'])); } catch (SEPAException $e) {}
        try { new SEPA(7); } catch (SEPAException $e) {}
        $message->toXML();
        $debit = direct_debit();
        $debit->add(collection(['old_mref' => 'OLD', 'addrTown' => 'Bern', 'addrCC' => 'CH']));
        $debit->toXML();
        SEPA::BIC_getBankName('MARKDEFF');
        SEPA::IBAN_convert('DE', '532013000', '37040044', $status);
    }
}

work();
$engine = memory_get_usage();
$process = resident_kilobytes();
for ($i = 0; $i < 9; $i++) {
    work();
}
var_dump(memory_get_usage() - $engine < 1024, resident_kilobytes() - $process < 512);
--EXPECT--
bool(true)
bool(true)
