<?php
/* Every method that allocates outside the engine's memory, with each of its
 * allocations failing: alone, and with all that follow. Runs under the preload
 * failing_memory.cpp. The last line counts attempts. */
require __DIR__ . '/../phpt/support.inc';

const NO_RESULT = 'no result';

/** What the calls of one attempt gave, and how often memory failed them. */
class Attempt
{
    public $result = NO_RESULT;
    public $exception = null;
    public $failures;

    public function __construct(callable $call, string $fail_at)
    {
        putenv("FAIL_AT=$fail_at");
        try {
            $this->result = $call();
        } catch (SEPAException $e) {
            $this->exception = $e->getCode() . ' ' . $e->getMessage();
        }
        putenv('FAIL_AT=0');
        $this->failures = (int) getenv('FAILED');
    }
}

/** A text form that constructs a message anew. */
class Anew
{
    private $message;
    private $type;
    public function __construct(SEPA $message, int $type)
    {
        $this->message = $message;
        $this->type = $type;
    }
    public function __toString(): string
    {
        $this->message->__construct($this->type);
        return 'x';
    }
}

function blocks_held(): int
{
    putenv('FAIL_AT=0');
    return getenv('LIVE') === false ? -1 : (int) getenv('LIVE');
}

$passed = $failed = 0;

function expect(bool $good, string $what): void
{
    global $passed, $failed;
    $good ? $passed++ : $failed++;
    if (!$good) {
        fwrite(STDERR, "$what\n");
    }
}

/**
 * Makes a fresh $state by $prepare and calls $call on it, with allocation 1, 2
 * and so on failing, until none is left to fail. A failed call ends with the
 * exception or result $failure; $same tells of a state what must not change.
 */
function each_allocation(string $name, callable $prepare, callable $call, array $failures, ?callable $same = null): void
{
    for ($n = 1;; $n++) {
        foreach (["$n", "$n+"] as $fail_at) {
            $state = $prepare();
            $before = $same ? $same($state) : null;
            $attempt = new Attempt(function () use ($call, $state) { return $call($state); }, $fail_at);
            $what = "$name, allocation $fail_at: ";
            if ($attempt->failures === 0) {
                expect($n > 1 && $attempt->exception === null, $what . 'a call without a failure');
                unset($state, $attempt);
                expect(blocks_held() === 0, $what . 'blocks are left');
                return;
            }
            if ($attempt->exception !== null || $attempt->result === null || $attempt->result === false) {
                $seen = $attempt->exception ?? var_export($attempt->result, true);
                expect(in_array($seen, $failures, true), $what . $seen);
                expect(!$same || $same($state) === $before, $what . 'the object has changed');
            } else {
                // A document asks for more room than it needs, and can do with less.
                expect($name === 'toXML' && $fail_at === "$n", $what . 'a success');
            }
            unset($state, $attempt);
            expect(blocks_held() === 0, $what . 'blocks are left');
        }
    }
}

if (blocks_held() < 0) {
    fwrite(STDERR, "no preload that knows the module\n");
    exit(2);
}

$nothing = function () { return null; };
$document = function (SEPA $message): string {
    try {
        return without_time($message->toXML());
    } catch (SEPAException $e) {
        return $e->getMessage();  // a debit without a transaction
    }
};
$constructed = '42 ' . "can't create SEPA message object";

each_allocation('new SEPA', $nothing, function () { return new SEPA(SEPA_MSGTYPE_DDI); }, [$constructed]);

foreach (['credit_transfer' => 'payment', 'direct_debit' => 'collection'] as $message => $transaction) {
    $ready = function () use ($message, $transaction): SEPA {
        $ready = $message();
        $ready->add($transaction(['date' => '2026-12-02', 'name' => 'First']));
        return $ready;
    };
    $type = $message === 'direct_debit' ? SEPA_MSGTYPE_DDI : SEPA_MSGTYPE_CTI;
    each_allocation("$message, __construct", $ready, function (SEPA $message) use ($type) {
        $message->__construct($type);
        return true;
    }, [$constructed], $document);
    $setters = [
        'setIBAN' => ['AT168064680654652158', 'strdup() failed'],
        'setBIC' => ['DEUTDEFF', 'sepa_setBIC: strdup() failed'],
        'setName' => ['Other', 'sepa_setName: strdup() failed'],
        'setCreditorIdentifier' => ['DE98abc09999999999', 'strdup() failed'],
        'setDate' => ['2026-12-03', 'strdup() failed'],
    ];
    foreach ($setters as $setter => [$value, $error]) {
        each_allocation("$message, $setter", $ready, function (SEPA $message) use ($setter, $value) {
            return $message->$setter($value);
        }, ["0 $error"]);
    }
    each_allocation("$message, setMessageId", $ready, function (SEPA $message) {
        return $message->setMessageId('OTHER');
    }, ['0 Out of memory'], $document);

    $lists = [
        'few' => $transaction(['name' => 'Second', 'ref' => '', 'addrTown' => 'Town', 'addrCC' => 'DE']),
        'many' => $transaction(array_fill_keys(array_map(function ($n) { return str_repeat(' ', $n); }, range(1, 40)), 1)),
        'numbers' => $transaction(range(1, 40)),
        'objects' => $transaction(['ref' => new class {
            public function __toString(): string { return str_repeat('x', 9); }
        }]),
    ];
    foreach ($lists as $kind => $list) {
        if ($message === 'direct_debit' && ($kind === 'many' || $kind === 'numbers')) {
            continue;  // a key that a direct debit does not know is a failure of its own
        }
        each_allocation("$message, first add, of $kind", $message, function (SEPA $message) use ($list) {
            return $message->add($list);
        }, ['0 Out of memory'], $document);
    }
    each_allocation('toXML', function () use ($message, $transaction) {
        $fresh = $message();
        foreach (['2026-12-03', '2026-12-02', '2026-12-03'] as $date) {
            $fresh->add($transaction(['date' => $date, 'ref' => str_repeat('x', 140)]));
        }
        return $fresh;
    }, function (SEPA $message) { return $message->toXML(); }, ['0 ', '0 Out of memory'], $document);
}

// A text form that constructs the object anew while the list is made. It throws
// if that fails, which before 7.4 a text form must not.
if (PHP_VERSION_ID >= 70400) {
    each_allocation('add that constructs', 'credit_transfer', function (SEPA $message) {
        return $message->add(payment([new Anew($message, SEPA_MSGTYPE_CTI)] + range(0, 40)));
    }, ['0 Out of memory', "42 can't create SEPA message object"]);
}

if (class_exists('SEPAStatementParser')) {
    each_allocation('new SEPAStatementParser', $nothing, function () {
        return new SEPAStatementParser();
    }, ["42 can't create SEPAStatementParser object"]);
    // So many records that their memory is in several pieces.
    $file = tempnam(sys_get_temp_dir(), 'sepa');
    file_put_contents($file, str_repeat("\r\n" . file_get_contents(__DIR__ . '/../data/statements/two_accounts.sta'), 10));
    each_allocation('load', function () { return new SEPAStatementParser(); }, function (SEPAStatementParser $parser) use ($file) {
        return $parser->load(SEPA_STMT_FORMAT_MT940, $file);
    }, [
        '0 Error while allocating 8 bytes: Cannot allocate memory',
        '0 Failed to allocate ' . filesize($file) . ' bytes',
        '0 ',
    ], function (SEPAStatementParser $parser) { return $parser->getStatements(); });
    unlink($file);
}

echo "$passed passed, $failed failed\n";
exit($failed === 0 ? 0 : 1);
