<?php
/* One call that meets the engine's memory limit, which ends the request in the
 * middle of the call:
 *     memory_limit.php CALL KILOBYTES
 * KILOBYTES are left below the limit, as far as the engine counts that finely.
 * The preload failing_memory.cpp tells at the end what the module still holds. */
require __DIR__ . '/../phpt/support.inc';

function parser_of(string $content): SEPAStatementParser
{
    $file = tempnam(sys_get_temp_dir(), 'sepa');
    file_put_contents($file, $content);
    $parser = new SEPAStatementParser();
    $parser->load(SEPA_STMT_FORMAT_MT940, $file);
    unlink($file);
    return $parser;
}

function take_all_memory(array $all): void
{
    while (true) {
        $all[] = str_repeat('x', 50000);
    }
}

$add = function (array $list) { return credit_transfer()->add($list); };
$statements = function (SEPAStatementParser $parser) { return $parser->getStatements(); };
$large = str_repeat('x', 30 << 20);
$sample = file_get_contents(__DIR__ . '/../data/statements/two_accounts.sta');

/** What to prepare, and what to call then. */
$calls = [
    'document' => [function () {
        $message = credit_transfer();
        for ($i = 0; $i < 5000; $i++) {
            $message->add(payment(['name' => "Payee $i", 'ref' => str_repeat('x', 140)]));
        }
        return $message;
    }, function (SEPA $message) { return $message->toXML(); }],
    'numbers' => [function () { return range(0.5, 60000.5); }, $add],
    'texts' => [function () {
        return array_fill(0, 100, new Text(function () { return str_repeat('x', 100000); }));
    }, $add],
    'exit' => [function () {
        return array_merge(range(1, 50), [new Text(function () { return exit("exit in a text form\n"); })]);
    }, $add],
    'handler' => [function () {
        set_error_handler(function () { static $all = []; $all[] = str_repeat('x', 50000); return true; });
        return array_fill(0, 200, []);
    }, $add],
    // An add whose fiber rests in the middle of a text form.
    'fiber' => [function () use ($add) {
        $pause = new Text(function () { Fiber::suspend(); return 'x'; });
        class_exists('Fiber') && ($fiber = new Fiber($add))->start(array_fill(0, 50, $pause));
        return [$fiber ?? null];
    }, 'take_all_memory'],
    'objects' => [function () { return array_map('credit_transfer', array_fill(0, 100, 'DE-3.7')); }, 'take_all_memory'],
    'statements' => [function () use ($sample) { return parser_of(str_repeat("\r\n$sample", 2000)); }, $statements],
    // Texts of a statement and of a transaction, each far beyond the limit.
    'accounts' => [function () use ($large) { return parser_of(str_repeat("\r\n:20:\r\n:25:$large\r\n-\r\n", 2)); }, $statements],
    'references' => [function () use ($large) { return parser_of("\r\n:20:\r\n:61:240102C1,NTRF$large//$large\r\n-"); }, $statements],
];

putenv('FAIL_AT=0');
if (getenv('LIVE') !== '0') {
    exit("no preload that knows the module\n");
}
[, $name, $kilobytes] = $argv;
[$prepare, $call] = $calls[$name];
$state = $prepare();
unset($large, $calls, $prepare);
$filling = [];
gc_mem_caches();
ini_set('memory_limit', (string) memory_get_usage(true));
// Fills what is free already, so that the limit is met close to its value.
while (memory_get_usage(true) - memory_get_usage() > $kilobytes * 1024 + 4096) {
    $filling[] = str_repeat('x', 2000);
}
$call($state);
echo "the limit was not met\n";
