--TEST--
add() with an object whose text form throws: the exception stands and nothing is added
--SKIPIF--
<?php if (PHP_VERSION_ID < 70400) echo 'skip __toString may throw from 7.4 on'; ?>
--FILE--
<?php
require __DIR__ . '/support.inc';

class Thrower
{
    public function __toString(): string { throw new LogicException('thrown in mid-walk'); }
}

$message = credit_transfer();
foreach ([['name' => new Thrower()], array_fill_keys(range(1, 100), new Thrower()), ['name' => new class {}]] as $tx) {
    show(function () use ($message, $tx) { return $message->add(payment($tx)); });
}
echo totals($message), "\n";
--EXPECT--
LogicException 0: thrown in mid-walk
LogicException 0: thrown in mid-walk
Error 0: Object of class class@anonymous could not be converted to string
0 x, 0.00 EUR
