--TEST--
Ten thousand statement parsers leave nothing behind
--FILE--
<?php
require __DIR__ . '/support.inc';

function work(): void
{
    $sample = __DIR__ . '/../../examples/statement.sta';
    for ($i = 0; $i < 1000; $i++) {
        $parser = new SEPAStatementParser();
        $parser->load(SEPA_STMT_FORMAT_MT940, $sample);
        $parser->getStatements();
        $parser->getStatements();
        try { $parser->load(SEPA_STMT_FORMAT_MT940, $sample); } catch (SEPAException $e) {}
        $parser->__construct();
        try { $parser->load(SEPA_STMT_FORMAT_MT940, '/no/such/file'); } catch (SEPAException $e) {}
        try { $parser->load(7, $sample); } catch (SEPAException $e) {}
    }
}

work();
$engine = memory_get_usage();
$process = resident_kilobytes();
for ($i = 0; $i < 9; $i++) {
    work();
}
var_dump(memory_get_usage() - $engine < 1024, resident_kilobytes() - $process < 512);

echo "-- thousands of transactions with the same megabyte as their reference\n";
$file = __DIR__ . '/statement_memory.sta';
file_put_contents($file, "\r\n:20:A" . str_repeat("\r\n:61:240102C1,", 5000) . "\r\nNTRF" . str_repeat('x', 1000000) . "\r\n-");
$parser = new SEPAStatementParser();
$parser->load(SEPA_STMT_FORMAT_MT940, $file);
$tx = $parser->getStatements()[0]['tx'];
var_dump(count($tx), strlen($tx[0]['ref']), $tx[4999]['ref'] === $tx[0]['ref'], memory_get_usage() < 20000000);
--CLEAN--
<?php unlink(__DIR__ . '/statement_memory.sta');
--EXPECT--
bool(true)
bool(true)
-- thousands of transactions with the same megabyte as their reference
int(5000)
int(1000003)
bool(true)
bool(true)
