--TEST--
IBAN_convert: the status goes into whatever variable is given
--FILE--
<?php
class Loud
{
    public function __destruct() { echo "destroyed\n"; }
}
class Box
{
    public $untyped;
}

function convert(&$status) { return SEPA::IBAN_convert('DE', '1234567', '37040044', $status); }

// The status may be left out, but a debug engine of 8.x stops at such a call.
$left_out = PHP_DEBUG && PHP_VERSION_ID >= 80000 ? [null] : [];
var_dump(SEPA::IBAN_convert('DE', '532013000', '37040044', ...$left_out));
var_dump(SEPA::IBAN_convert('DE', '532013000', '37040044', $unknown), $unknown);
$status = new Loud();
var_dump(convert($status), $status);
$status = [1, [2]];
var_dump(convert($status), $status);
$status = str_repeat('x', 100);
$same = &$status;
var_dump(convert($status), $same);
$box = new Box();
SEPA::IBAN_convert('DE', '1234567', '37040044', $box->untyped);
SEPA::IBAN_convert('DE', '1234567', '37040044', $list['a']['b']);
SEPA::IBAN_convert('DE', '1234567', '37040044', $GLOBALS['new']);
var_dump($box->untyped, $list, $new);
--EXPECT--
string(22) "DE89370400440532013000"
string(22) "DE89370400440532013000"
int(0)
destroyed
NULL
int(11)
NULL
int(11)
NULL
int(11)
int(11)
array(1) {
  ["a"]=>
  array(1) {
    ["b"]=>
    int(11)
  }
}
int(11)
