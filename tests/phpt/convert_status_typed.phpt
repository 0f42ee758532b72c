--TEST--
IBAN_convert: a status bound to a typed property follows the property's type
--SKIPIF--
<?php if (PHP_VERSION_ID < 70400) echo 'skip properties have types from 7.4 on'; ?>
--FILE--
<?php
class Box
{
    public int $number = 7;
    public string $text = 'old';
    public ?array $list = null;
}

$box = new Box();
var_dump(SEPA::IBAN_convert('DE', '1234567', '37040044', $box->number), $box->number);
var_dump(SEPA::IBAN_convert('DE', '1234567', '37040044', $box->text), $box->text);
try {
    SEPA::IBAN_convert('DE', '532013000', '37040044', $box->list);
} catch (TypeError $e) {
    echo "TypeError\n";
}
var_dump($box->list);
--EXPECT--
NULL
int(11)
NULL
string(2) "11"
TypeError
NULL
