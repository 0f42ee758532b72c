--TEST--
IBAN_convert: the status goes into whatever variable is given
--FILE--
<?php
class Loud
{
    public function __destruct() { echo "destroyed\n"; }
}

class Writer
{
    public function __destruct() { $GLOBALS['status'] = 'written by a destructor'; }
}

function convert(&$status) { return SEPA::IBAN_convert('DE', '1234567', '37040044', $status); }
function line(...$values) { echo implode(' ', array_map('serialize', $values)), "\n"; }

// The status may be left out, but a debug engine of 8.x stops at such a call.
$left_out = PHP_DEBUG && PHP_VERSION_ID >= 80000 ? [null] : [];
line(SEPA::IBAN_convert('DE', '532013000', '37040044', ...$left_out));
line(SEPA::IBAN_convert('DE', '532013000', '37040044', $unknown), $unknown);
$status = new Loud();
line(convert($status), $status);
for ($i = 0; $i < 100; $i++) {
    $status = new Writer();
    convert($status);
}
line($status);
$status = [1, [2]];
line(convert($status), $status);
$status = str_repeat('x', 100);
$same = &$status;
line(convert($status), $same);
$box = new stdClass();
$box->untyped = null;
SEPA::IBAN_convert('DE', '1234567', '37040044', $box->untyped);
SEPA::IBAN_convert('DE', '1234567', '37040044', $list['a']['b']);
SEPA::IBAN_convert('DE', '1234567', '37040044', $GLOBALS['new']);
line($box->untyped, $list, $new);

// A typed property's type is followed.
if (PHP_VERSION_ID < 70400) {
    exit("N; i:11;\nN; s:2:\"11\";\nTypeError N;");
}
eval('class Box { public int $number = 7; public string $text = "old"; public ?array $list = null; }');
$box = new Box();
foreach (['number', 'text'] as $name) {
    line(SEPA::IBAN_convert('DE', '1234567', '37040044', $box->$name), $box->$name);
}
try {
    SEPA::IBAN_convert('DE', '532013000', '37040044', $box->list);
} catch (TypeError $e) {
    echo 'TypeError ';
}
line($box->list);
--EXPECT--
s:22:"DE89370400440532013000";
s:22:"DE89370400440532013000"; i:0;
destroyed
N; i:11;
s:23:"written by a destructor";
N; i:11;
N; i:11;
i:11; a:1:{s:1:"a";a:1:{s:1:"b";i:11;}} i:11;
N; i:11;
N; s:2:"11";
TypeError N;
