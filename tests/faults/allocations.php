<?php
/* Every method that allocates outside the engine's memory, with each of its
 * allocations failing: alone, and with all that follow. Runs under the preload
 * failing_memory.cpp. The last line counts attempts. */
require __DIR__ . '/../phpt/support.inc';

$passed = $failed = 0;

function blocks_held(): int
{
    putenv('FAIL_AT=0');
    return getenv('LIVE') === false ? -1 : (int) getenv('LIVE');
}

/**
 * Makes a fresh $state by $prepare and calls $call on it, with allocation 1, 2
 * and so on failing, until none is left to fail. A failed call has one of these
 * outcomes and leaves an object that $check approves of; that is, unless
 * another is named, one with the same document or statements as before.
 */
function each_allocation(string $name, callable $prepare, callable $call, array $outcomes, ?string $check = 'is_as_before'): void
{
    global $passed, $failed;
    for ($n = 1, $failures = 1; $failures; $n++) {
        foreach (["$n", "$n+"] as $fail_at) {
            $state = $prepare();
            $before = contents($state);
            putenv("FAIL_AT=$fail_at");
            $outcome = outcome(function () use ($call, $state) { return $call($state); });
            putenv('FAIL_AT=0');
            $failures = (int) getenv('FAILED');
            if ($failures) {
                $good = in_array($outcome, $outcomes, true) && (!$check || $check($state, $before));
            } else {
                $good = $n > 1 && !preg_match('/Exception|^argument error/', $outcome);
            }
            unset($state);
            $good = $good && blocks_held() === 0;
            $good ? $passed++ : $failed++;
            $good || fwrite(STDERR, "$name, allocation $fail_at: $outcome\n");
        }
    }
}

/** What an object holds, as far as a script can see. */
function contents($object)
{
    try {
        return $object instanceof SEPA ? without_time($object->toXML()) : ($object ? $object->getStatements() : null);
    } catch (SEPAException $e) {
        return $e->getMessage();  // a debit without a transaction
    }
}

function is_as_before($state, $before): bool { return contents($state) === $before; }

/** Whether the field that all setters are tested on, and no other, is empty. */
function is_emptied(SEPA $message, string $before): bool
{
    $emptied = contents($message);
    $message->{$GLOBALS['setter']}($GLOBALS['setters'][$GLOBALS['setter']][0]);
    return $emptied !== $before && contents($message) === $before;
}

if (blocks_held() < 0) {
    fwrite(STDERR, "no preload that knows the module\n");
    exit(2);
}

$nothing = function () { return null; };
$constructed = "SEPAException 42: can't create SEPA message object";
$no_memory = 'SEPAException 0: Out of memory';
each_allocation('new SEPA', $nothing, function () { return new SEPA(SEPA_MSGTYPE_DDI); }, [$constructed]);

$ready = function (): SEPA {
    $message = direct_debit();
    $message->add(collection(['name' => 'First']));
    return $message;
};
each_allocation('__construct', $ready, function (SEPA $message) { $message->__construct(SEPA_MSGTYPE_DDI); }, [$constructed]);
// What is set before, what cannot be set, and the reason.
$setters = [
    'setIBAN' => ['DE89370400440532013000', 'AT168064680654652158', 'strdup() failed'],
    'setBIC' => ['COBADEFFXXX', 'DEUTDEFF', 'sepa_setBIC: strdup() failed'],
    'setName' => ['Test', 'Other', 'sepa_setName: strdup() failed'],
    'setCreditorIdentifier' => ['DE98ZZZ09999999999', 'DE98abc09999999999', 'strdup() failed'],
    'setDate' => ['2026-12-01', '2026-12-03', 'strdup() failed'],
];
foreach ($setters as $setter => [, $value, $error]) {
    $set = function (SEPA $message) use ($setter, $value) { return $message->$setter($value); };
    each_allocation($setter, $ready, $set, ["SEPAException 0: $error"], 'is_emptied');
}
each_allocation('setMessageId', $ready, function (SEPA $message) { return $message->setMessageId('OTHER'); }, [$no_memory]);

foreach (['credit_transfer' => 'payment', 'direct_debit' => 'collection'] as $message => $transaction) {
    $lists = [
        'few' => ['name' => 'Second', 'ref' => '', 'addrTown' => 'Town', 'addrCC' => 'DE'],
        'objects' => ['ref' => new Text(function () { return str_repeat('x', 9); })],
    ];
    if ($message === 'credit_transfer') {  // what it does not know is no failure
        $lists['many'] = array_fill_keys(array_map(function ($n) { return str_repeat(' ', $n); }, range(1, 40)), 1);
        $lists['numbers'] = range(1, 40);
    }
    foreach ($lists as $kind => $list) {
        $add = function (SEPA $message) use ($transaction, $list) { return $message->add($transaction($list)); };
        each_allocation("$message, first add, of $kind", $message, $add, [$no_memory]);
    }
    each_allocation('toXML', function () use ($message, $transaction): SEPA {
        $fresh = $message();
        foreach (['2026-12-03', '2026-12-02', '2026-12-03'] as $date) {
            $fresh->add($transaction(['date' => $date, 'ref' => str_repeat('x', 140)]));
        }
        return $fresh;
    }, function (SEPA $message) { return $message->toXML(); }, ['SEPAException 0: ', $no_memory]);

    // Without any memory the reason is that of the first step: the date, then the message id.
    $kind = $message === 'credit_transfer' ? 'cti' : 'ddi';
    foreach (['malloc() failed' => null, "{$kind}_toXML: strdup() failed" => '2026-12-01'] as $reason => $date) {
        $fresh = new SEPA($kind === 'cti' ? SEPA_MSGTYPE_CTI : SEPA_MSGTYPE_DDI);
        foreach (array_diff_key($setters, ['setDate' => 0]) as $setter => [$value]) {
            $fresh->$setter($value);
        }
        $date && $fresh->setDate($date);
        $fresh->add($transaction());
        putenv('FAIL_AT=1+');
        $outcome = outcome(function () use ($fresh) { return $fresh->toXML(); });
        putenv('FAIL_AT=0');
        $good = $outcome === "SEPAException 0: $reason";
        $good ? $passed++ : $failed++;
        $good || fwrite(STDERR, "$message, toXML without memory: $outcome\n");
        unset($fresh);
    }
}

// A text form that constructs the object anew while the list is made. It throws
// if that fails, which before 7.4 a text form must not.
if (PHP_VERSION_ID >= 70400) {
    each_allocation('add that constructs', 'credit_transfer', function (SEPA $message) {
        $again = new Text(function () use ($message) { $message->__construct(SEPA_MSGTYPE_CTI); return 'x'; });
        return $message->add(payment([$again] + range(0, 40)));
    }, [$no_memory, $constructed], null);
}

$new_parser = function () { return new SEPAStatementParser(); };
each_allocation('new SEPAStatementParser', $nothing, $new_parser, ["SEPAException 42: can't create SEPAStatementParser object"]);
// So many records that their memory is in several pieces.
$file = tempnam(sys_get_temp_dir(), 'sepa');
file_put_contents($file, str_repeat("\r\n" . file_get_contents(__DIR__ . '/../data/statements/two_accounts.sta'), 10));
each_allocation('load', $new_parser, function (SEPAStatementParser $parser) use ($file) {
    return $parser->load(SEPA_STMT_FORMAT_MT940, $file);
}, [
    'SEPAException 0: Error while allocating ' . PHP_INT_SIZE . ' bytes: Cannot allocate memory',
    'SEPAException 0: Failed to allocate ' . filesize($file) . ' bytes',
    'SEPAException 0: ',
]);
unlink($file);

echo "$passed passed, $failed failed\n";
exit($failed === 0 ? 0 : 1);
