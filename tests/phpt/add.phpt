--TEST--
add() turns an array into a transaction
--FILE--
<?php
require __DIR__ . '/support.inc';

$message = credit_transfer();
$add = function (array $tx) use ($message) {
    try {
        echo var_export($message->add($tx), true), ', ';
    } catch (Throwable $e) {
        echo get_class($e), ' "', $e->getMessage(), '", ';
    }
    echo totals($message), "\n";
};

echo "-- values of every type\n";
foreach (['1', 2, 0.1 + 0.2, new Text(function () { return '3e1'; }), false, "7\0xyz"] as $amount) {
    $add(payment(['amount' => $amount]));
}
$text = '4.00';
$add(payment(['amount' => &$text]));
$add(['IBAN' => 'nonsense', 'iban' => 'DE89370400440532013000'] + payment());
$add(['IBAN' => 'AT483200000012345864', 'iBAN' => 'nonsense'] + payment());

echo "-- arrays of every shape\n";
$add([]);
$add([-1234567890 => 'x', PHP_INT_MAX => 'y'] + payment());
$add(payment(array_fill_keys(range(1, 5000), 'x')));

echo "-- values that run script code\n";
error_reporting(0);
$add(payment(['name' => ['a']]));
error_reporting(E_ALL);
$rename = function () {  // and takes the memory of the name that goes
    $GLOBALS['name'] = $GLOBALS['renamer'] = str_repeat('L', 20);
    return $GLOBALS['taken'] = str_repeat('T', 20);
};
set_error_handler($rename);
foreach ([new Text($rename), [], NAN] as $renamer) {  // 8.5 began to warn of the last
    $name = str_repeat('E', 20);
    $message->add(payment(['name' => &$name, 'ref' => &$renamer]));
    echo substr_count($message->toXML(), '<Nm>EEEEEEEEEEEEEEEEEEEE</Nm>'), ' earlier, ', totals($message), "\n";
}
restore_error_handler();
$again = function () use ($message) { $message->__construct(SEPA_MSGTYPE_CTI); return '2.50'; };
$add(payment(['amount' => new Text($again)]));
$within = function () use ($message) { $message->add(payment(['amount' => '3.25'])); return '4.50'; };
$add(payment(['amount' => new Text($within)]));

// Before 7.4 no text form may throw, but an error handler that is told of an array may.
set_error_handler(function () { throw new LogicException('thrown in mid-walk'); });
$thrower = PHP_VERSION_ID < 70400 ? [] : new Text(function () { throw new LogicException('thrown in mid-walk'); });
foreach ([['name' => []], ['name' => $thrower], array_fill_keys(range(1, 100), $thrower)] as $tx) {
    $add(payment($tx));
}
restore_error_handler();

echo "-- direct debits know every key\n";
$debit = direct_debit();
foreach ([['x'], [-1234567890 => 'x'], ["foo\0bar" => 1], ["smnda\0r" => 2], ['smnda' => true, 'seq' => 'RCUR']] as $tx) {
    echo outcome(function () use ($debit, $tx) { return $debit->add($tx + payment()); }), "\n";
}
echo outcome(function () use ($debit) { return $debit->add(); }), "\n";
echo outcome(function () use ($debit) { return $debit->add('text'); }), "\n";
--EXPECT--
-- values of every type
true, 1 x, 1.00 EUR
true, 2 x, 3.00 EUR
true, 3 x, 3.30 EUR
true, 4 x, 33.30 EUR
SEPAException "Empty amount not allowed", 4 x, 33.30 EUR
true, 5 x, 40.30 EUR
true, 6 x, 44.30 EUR
SEPAException "Wrong IBAN length", 6 x, 44.30 EUR
SEPAException "Wrong IBAN length", 6 x, 44.30 EUR
-- arrays of every shape
SEPAException "IBAN missing", 6 x, 44.30 EUR
true, 7 x, 45.30 EUR
true, 8 x, 46.30 EUR
-- values that run script code
true, 9 x, 47.30 EUR
1 earlier, 10 x, 48.30 EUR
2 earlier, 11 x, 49.30 EUR
3 earlier, 12 x, 50.30 EUR
true, 1 x, 2.50 EUR
true, 3 x, 10.25 EUR
LogicException "thrown in mid-walk", 3 x, 10.25 EUR
LogicException "thrown in mid-walk", 3 x, 10.25 EUR
LogicException "thrown in mid-walk", 3 x, 10.25 EUR
-- direct debits know every key
SEPAException 0: Invalid transaction property '0'
SEPAException 0: Invalid transaction property '-1234567'
SEPAException 0: Invalid transaction property 'foo'
SEPAException 0: Invalid value '2' for SMNDA flag
true
argument error
argument error
