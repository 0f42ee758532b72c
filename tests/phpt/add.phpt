--TEST--
add() turns an array into a transaction
--FILE--
<?php
require __DIR__ . '/support.inc';

class Text
{
    private $text;
    public function __construct($text) { $this->text = $text; }
    public function __toString(): string { return $this->text; }
}
class Renamer
{
    public function __toString(): string { $GLOBALS['name'] = $GLOBALS['renamer'] = 'Later'; return 'text'; }
}
class Again
{
    public function __toString(): string { $GLOBALS['message']->__construct(SEPA_MSGTYPE_CTI); return '2.50'; }
}

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
$add(payment());
$add(payment(['amount' => 2]));
$add(payment(['amount' => 0.1 + 0.2]));
$add(payment(['amount' => new Text('3e1')]));
$add(payment(['amount' => false]));
$add(payment(['amount' => "7\0" . 'xyz']));
$text = '4.00';
$add(payment(['amount' => &$text]));
$add(['IBAN' => 'nonsense', 'iban' => 'DE89370400440532013000'] + payment());
$add(['IBAN' => 'AT483200000012345864', 'iBAN' => 'nonsense'] + payment());

echo "-- arrays of every shape\n";
$add([]);
$add([-12345678901 => 'x', PHP_INT_MAX => 'y'] + payment());
$add(payment(array_fill_keys(range(1, 5000), 'x')));

echo "-- values that run script code\n";
set_error_handler(function ($level, $text) { throw new ErrorException($text); });
$add(payment(['name' => ['a']]));
restore_error_handler();
error_reporting(0);
$add(payment(['name' => ['a']]));
error_reporting(E_ALL);
$name = 'Earlier';
$renamer = new Renamer();
$message->add(payment(['name' => &$name, 'ref' => &$renamer]));
echo strpos($message->toXML(), '<Nm>Earlier</Nm>') ? 'Earlier, ' : 'Later, ', totals($message), "\n";
$add(payment(['amount' => new Again()]));

echo "-- direct debits know every key\n";
$debit = direct_debit();
foreach ([['x'], [-12345678901 => 'x'], ['foo' => 1], ['smnda' => 2], ['smnda' => true, 'seq' => 'RCUR']] as $tx) {
    show(function () use ($debit, $tx) { return $debit->add($tx + payment()); });
}

echo "-- arguments\n";
show_argument_error(function () use ($message) { return $message->add(); });
try {
    $message->add('text');
} catch (TypeError $e) {
    echo "TypeError\n";
}
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
ErrorException "Array to string conversion", 8 x, 46.30 EUR
true, 9 x, 47.30 EUR
Earlier, 10 x, 48.30 EUR
true, 1 x, 2.50 EUR
-- direct debits know every key
SEPAException 0: Invalid transaction property '0'
SEPAException 0: Invalid transaction property '-1234567'
SEPAException 0: Invalid transaction property 'foo'
SEPAException 0: Invalid value '2' for SMNDA flag
bool(true)
-- arguments
argument error
TypeError
