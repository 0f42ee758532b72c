--TEST--
Making message objects: types, a second construction, subclasses, no copies
--FILE--
<?php
require __DIR__ . '/support.inc';

echo "-- message types\n";
foreach ([0, 3, 2 ** 32 + 1] as $type) {
    show(function () use ($type) { return new SEPA($type); });
}
show_argument_error(function () { $r = new ReflectionMethod('SEPA', '__construct'); return $r->invoke(credit_transfer(), 'two'); });

echo "-- a second construction\n";
$message = credit_transfer();
$message->add(payment());
show(function () use ($message) { $message->__construct(7); });
echo totals($message), "\n";
$message->__construct(SEPA_MSGTYPE_CTI);
echo totals($message), "\n";

echo "-- without a handle\n";
class Lazy extends SEPA
{
    public $a = 1;
    protected $b = [2];
    public function __construct() {}
}
$calls = [
    'setIBAN' => ['x'], 'setBIC' => ['x'], 'setName' => ['x'], 'setCreditorIdentifier' => ['x'], 'setDate' => ['x'],
    'setDDType' => [0], 'setBatchBooking' => [true], 'setMessageId' => ['x'], 'add' => [[]], 'toXML' => [],
];
$lazy = new Lazy();
foreach ($calls as $method => $arguments) {
    try {
        $lazy->$method(...$arguments);
        echo "$method went through\n";
    } catch (SEPAException $e) {
        $reasons[] = $e->getMessage();
    }
}
echo count($reasons), ' x ', implode(' ', array_unique($reasons)), "\n";
show(function () { return (new ReflectionClass('SEPA'))->newInstanceWithoutConstructor()->toXML(); });

echo "-- subclasses keep their properties and the handle\n";
class Mine extends SEPA
{
    public $note = 'kept';
    private $list = [1, 2, 3];
    public function __construct() { parent::__construct(SEPA_MSGTYPE_CTI); }
    public function list() { return count($this->list); }
}
$mine = new Mine();
@$mine->added = 'dynamic';  // deprecated from 8.2 on
var_dump($mine->setName('Name'), $mine->note, $mine->list(), $mine instanceof SEPA);
unset($mine);

echo "-- no copies of either class, nor of a subclass\n";
class Statements extends SEPAStatementParser
{
}
foreach ([credit_transfer(), new Mine(), new SEPAStatementParser(), new Statements()] as $object) {
    show(function () use ($object) { return clone $object; });
    show(function () use ($object) { return serialize([$object]); });
    $name = get_class($object);
    foreach (['O:%d:"%s":0:{}', 'C:%d:"%s":0:{}'] as $format) {  // the engine throws, or warns and gives false
        try {
            var_dump(@unserialize(sprintf($format, strlen($name), $name)));
        } catch (Exception $e) {
            var_dump(false);
        }
    }
}
--EXPECT--
-- message types
SEPAException 42: invalid/unknown message type
SEPAException 42: invalid/unknown message type
SEPAException 42: invalid/unknown message type
argument error
-- a second construction
SEPAException 42: invalid/unknown message type
1 x, 1.00 EUR
0 x, 0.00 EUR
-- without a handle
10 x Invalid sepa_t handle (NULL)
SEPAException 0: Invalid sepa_t handle (NULL)
-- subclasses keep their properties and the handle
bool(true)
string(4) "kept"
int(3)
bool(true)
-- no copies of either class, nor of a subclass
Error 0: Trying to clone an uncloneable object of class SEPA
Exception 0: Serialization of 'SEPA' is not allowed
bool(false)
bool(false)
Error 0: Trying to clone an uncloneable object of class Mine
Exception 0: Serialization of 'Mine' is not allowed
bool(false)
bool(false)
Error 0: Trying to clone an uncloneable object of class SEPAStatementParser
Exception 0: Serialization of 'SEPAStatementParser' is not allowed
bool(false)
bool(false)
Error 0: Trying to clone an uncloneable object of class Statements
Exception 0: Serialization of 'Statements' is not allowed
bool(false)
bool(false)
