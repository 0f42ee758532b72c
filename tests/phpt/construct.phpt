--TEST--
Objects of both classes: made, made again, subclassed, without a handle, not copied
--FILE--
<?php
require __DIR__ . '/support.inc';

$file = __DIR__ . '/construct.sta';
file_put_contents($file, "\r\n:20:A\r\n-\r\n");

/** A subclass that may leave its parent's construction out. */
trait Own
{
    public $note = 'kept';
    private $list = [1, 2, 3];
    public function __construct(...$arguments)
    {
        $arguments === ['without'] || parent::__construct(...$arguments);
    }
    public function own(): string { return "$this->note " . count($this->list); }
}
class Message extends SEPA { use Own; }
class Statements extends SEPAStatementParser { use Own; }

echo "-- message types\n";
foreach ([0, 3, beyond_int32() + 1, 'two'] as $type) {
    echo outcome(function () use ($type) { return credit_transfer()->__construct($type); }), "\n";
}

echo "-- made again\n";
$message = new Message(SEPA_MSGTYPE_CTI);
$statements = new Statements();
$message->add(payment());
$statements->load(SEPA_STMT_FORMAT_MT940, $file);
echo outcome(function () use ($message) { $message->__construct(7); }), ', ', totals($message), "\n";
$message->__construct(SEPA_MSGTYPE_CTI);
$statements->__construct();
var_dump(totals($message), $statements->getStatements(), $statements->load(SEPA_STMT_FORMAT_MT940, $file));
echo $message->own(), ', ', $statements->own(), "\n";

echo "-- without a handle\n";
$calls = [
    'setIBAN' => ['x'], 'setBIC' => ['x'], 'setName' => ['x'], 'setCreditorIdentifier' => ['x'], 'setDate' => ['x'],
    'setDDType' => [0], 'setBatchBooking' => [true], 'setMessageId' => ['x'], 'add' => [[]], 'toXML' => [],
    'load' => [SEPA_STMT_FORMAT_MT940, $file], 'getStatements' => [],
];
foreach ($calls as $method => $arguments) {
    $object = method_exists('SEPA', $method) ? new Message('without') : new Statements('without');
    $outcomes[] = outcome(function () use ($object, $method, $arguments) { return $object->$method(...$arguments); });
}
foreach (array_count_values($outcomes) as $outcome => $count) {
    echo "$count x $outcome\n";
}

echo "-- copies refused\n";
foreach ([$message, credit_transfer(), $statements, new SEPAStatementParser()] as $object) {
    $name = sprintf('%d:"%s"', strlen(get_class($object)), get_class($object));
    $copies = [
        function () use ($object) { return clone $object; },
        function () use ($object) { return serialize([$object]); },
        function () use ($name) { return @unserialize("O:$name:0:{}"); },
        function () use ($name) { return @unserialize("C:$name:0:{}"); },
    ];
    foreach ($copies as $copy) {  // some engines throw, others warn and give false
        $refused[] = preg_match('/^(false|Error|Exception)/', outcome($copy));
    }
}
echo array_sum($refused), ' of ', count($refused), "\n";
--CLEAN--
<?php unlink(__DIR__ . '/construct.sta');
--EXPECT--
-- message types
SEPAException 42: invalid/unknown message type
SEPAException 42: invalid/unknown message type
SEPAException 42: invalid/unknown message type
argument error
-- made again
SEPAException 42: invalid/unknown message type, 1 x, 1.00 EUR
string(13) "0 x, 0.00 EUR"
NULL
bool(true)
kept 3, kept 3
-- without a handle
10 x SEPAException 0: Invalid sepa_t handle (NULL)
2 x SEPAException 0: invalid sepa_stmt_parser_t handle
-- copies refused
16 of 16
