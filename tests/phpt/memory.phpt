--TEST--
Ten thousand messages and statement files leave nothing behind
--FILE--
<?php
require __DIR__ . '/support.inc';

const SAMPLE = __DIR__ . '/memory.sta';
file_put_contents(SAMPLE, "\r\n:20:A\r\n:25:1/2\r\n:60F:C240101EUR1,\r\n:61:240102C1,NTRFX//Y\r\n:86:166?20EREF+Z?32N\r\n:62F:C240102EUR2,\r\n-\r\n");

function work(): void
{
    $message = credit_transfer();
    $parser = new SEPAStatementParser();
    $failing = [
        function () use ($message) { $message->add(payment(['name' => 'Payee', 'amount' => 'x'])); },
        function () use ($message) { $message->add(payment(array_fill_keys(range(1, 40), 'x') + ['amount' => 'x'])); },
        function () { new SEPA(7); },
        function () use ($parser) { $parser->__construct(); $parser->load(SEPA_STMT_FORMAT_MT940, '/no/such/file'); },
    ];
    for ($i = 0; $i < 1000; $i++) {
        array_map('outcome', $failing);
        $parser->__construct();
        $parser->load(SEPA_STMT_FORMAT_MT940, SAMPLE);
        $parser->getStatements();
        $message = credit_transfer();
        $message->setName("Name $i");
        $message->add(payment(['name' => 'Payee', 'ref' => str_repeat('x', 140)]));
        $message->toXML();
        $debit = direct_debit();
        $debit->add(collection(['old_mref' => 'OLD', 'addrTown' => 'Bern', 'addrCC' => 'CH']));
        $debit->toXML();
    }
}

// Kilobytes that the process holds; 0 under a checker, which holds freed memory back.
function resident_kilobytes(): int
{
    return getenv('USE_ZEND_ALLOC') === '0' ? 0 : explode(' ', file_get_contents('/proc/self/statm'))[1] * 4;
}

work();
$engine = memory_get_usage();
$process = resident_kilobytes();
for ($i = 0; $i < 9; $i++) {
    work();
}
var_dump(memory_get_usage() - $engine < 1024, resident_kilobytes() - $process < 512);
--CLEAN--
<?php unlink(__DIR__ . '/memory.sta');
--EXPECT--
bool(true)
bool(true)
