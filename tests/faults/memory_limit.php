<?php
/* One call that meets the engine's memory limit, which ends the request in the
 * middle of the call:
 *     memory_limit.php CALL KILOBYTES
 * KILOBYTES are left below the limit, as far as the engine counts that finely.
 * The preload failing_memory.cpp tells at the end what the module still holds. */
require __DIR__ . '/../phpt/support.inc';

/** Text forms that need more and more memory, or end the request themselves. */
class Text
{
    private $size;
    public function __construct(int $size) { $this->size = $size; }
    public function __toString(): string
    {
        return $this->size ? str_repeat('x', $this->size) : exit("exit in a text form\n");
    }
}

/** A text form in whose middle its fiber rests. */
class Pause
{
    public function __toString(): string
    {
        Fiber::suspend();
        return 'x';
    }
}

function big_message(): SEPA
{
    $message = credit_transfer();
    for ($i = 0; $i < 5000; $i++) {
        $message->add(payment(['name' => "Payee $i", 'ref' => str_repeat('x', 140)]));
    }
    return $message;
}

function parser_of(string $content): SEPAStatementParser
{
    $file = tempnam(sys_get_temp_dir(), 'sepa');
    file_put_contents($file, $content);
    $parser = new SEPAStatementParser();
    $parser->load(SEPA_STMT_FORMAT_MT940, $file);
    unlink($file);
    return $parser;
}

$get_statements = function (SEPAStatementParser $parser) { return $parser->getStatements(); };

/** What to prepare, and what to call then. */
$calls = [
    'document' => ['big_message', function (SEPA $message) { return $message->toXML(); }],
    'numbers' => [function () { return [credit_transfer(), range(0.5, 60000.5)]; }, function (array $given) {
        return $given[0]->add($given[1]);
    }],
    'texts' => [function () { return [credit_transfer(), array_fill(0, 100, new Text(100000))]; }, function (array $given) {
        return $given[0]->add($given[1]);
    }],
    'exit' => [function () { return [credit_transfer(), array_merge(range(1, 50), [new Text(0)])]; }, function (array $given) {
        return $given[0]->add($given[1]);
    }],
    'handler' => [function () {
        set_error_handler(function () { static $all = []; $all[] = str_repeat('x', 50000); return true; });
        return [credit_transfer(), array_fill(0, 200, [])];
    }, function (array $given) { return $given[0]->add($given[1]); }],
    'fiber' => [function () {
        $message = credit_transfer();
        $add = function () use ($message) { $message->add(array_fill(0, 50, new Pause())); };
        class_exists('Fiber') && ($fiber = new Fiber($add))->start();
        return [$fiber ?? $message];
    }, function (array $all) {
        while (true) {
            $all[] = str_repeat('x', 50000);
        }
    }],
    'objects' => [function () { return []; }, function (array $all) {
        while (true) {
            $all[] = credit_transfer();
        }
    }],
    'statements' => [function () {
        return parser_of(str_repeat("\r\n" . file_get_contents(__DIR__ . '/../data/statements/two_accounts.sta'), 2000));
    }, $get_statements],
    // Texts of a statement and of a transaction, each far beyond the limit.
    'accounts' => [function () {
        return parser_of(str_repeat("\r\n:20:\r\n:25:" . str_repeat('x', 30 << 20) . "\r\n-\r\n", 2));
    }, $get_statements],
    'references' => [function () {
        return parser_of("\r\n:20:\r\n:61:240102C1,NTRF" . str_repeat('x', 30 << 20) . '//' . str_repeat('x', 30 << 20) . "\r\n-");
    }, $get_statements],
];

putenv('FAIL_AT=0');
if (getenv('LIVE') !== '0') {
    exit("no preload that knows the module\n");
}
[, $name, $kilobytes] = $argv;
[$prepare, $call] = $calls[$name];
$state = $prepare();
$filling = [];
gc_mem_caches();
ini_set('memory_limit', (string) memory_get_usage(true));
// Fills what is free already, so that the limit is met close to its value.
while (memory_get_usage(true) - memory_get_usage() > $kilobytes * 1024 + 4096) {
    $filling[] = str_repeat('x', 2000);
}
$call($state);
echo "the limit was not met\n";
