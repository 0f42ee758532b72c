--TEST--
Static methods: rulebook, IBAN check, conversion, BIC and bank
--FILE--
<?php
require __DIR__ . '/support.inc';

echo "-- init\n";
$options = [3, 3, 3, 2, 2 ** 32 + 3];
echo text(array_map('SEPA::init', $options, ['DE-3.7', 'de-3.7', "DE-3.7\0", 'DE-3.7', 'DE-3.7'])), "\n";

echo "-- IBAN_check\n";
$ibans = ['DE89370400440532013000', "DE89370400440532013000\0", 'DE98370400440532013000', '', str_repeat('9', 1000000)];
echo text(array_map('SEPA::IBAN_check', $ibans)), "\n";

echo "-- IBAN_convert\n";
$accounts = [
    ['DE', '532013000', '37040044'], ['DE', '1234567', '37040044'], ['DE', '135', '10050000'], ['DE', '123', '50810900'],
    ['DE', '0800000000', '10020890'], ['DE', '1234567', '10000000'], ['DE', '532013000', '37040045'], ['DE', '', '37040044'],
    ['DE', "532013000\0", '37040044'], ['DE', '1', '50040033'], ['AT', '532013000', '37040044'], ['', '532013000', '37040044'],
];
foreach ($accounts as [$country, $account, $bank]) {
    $status = 'before';
    echo $country, ' ', addcslashes($account, "\0"), ' ', $bank, ': ';
    echo text(SEPA::IBAN_convert($country, $account, $bank, $status)), ' ', text($status), "\n";
}

echo "-- IBAN_getBIC\n";
$ibans = ['DE89370400440532013000', 'DE00600500090000000000', 'AT001100000000000000', 'CH0000110000000000000', 'FR00', ''];
echo text(array_map('SEPA::IBAN_getBIC', $ibans)), "\n";

echo "-- BIC_getBankName, BIC_getBankFlags\n";
foreach (['MARKDEFF', 'markdeffxxx', 'AABAFI22', 'XXXXFI22', ''] as $bic) {
    echo text([SEPA::BIC_getBankName($bic), SEPA::BIC_getBankFlags($bic)]), "\n";
}

echo "-- arguments\n";
foreach (['init' => [3], 'IBAN_check' => [], 'IBAN_getBIC' => [[]], 'BIC_getBankName' => [], 'BIC_getBankFlags' => [[]], 'IBAN_convert' => ['DE', '1']] as $method => $arguments) {
    show_argument_error(function () use ($method, $arguments) { return SEPA::$method(...$arguments); });
}
--EXPECT--
-- init
[true,false,true,false,false]
-- IBAN_check
[true,true,false,false,false]
-- IBAN_convert
DE 532013000 37040044: "DE89370400440532013000" 0
DE 1234567 37040044: null 11
DE 135 10050000: "DE86100500000990021440" 1
DE 123 50810900: "DE52660102000000000123" 13
DE 0800000000 10020890: null 50
DE 1234567 10000000: null 0
DE 532013000 37040045: null 10
DE  37040044: null 0
DE 532013000\000 37040044: "DE89370400440532013000" 0
DE 1 50040033: null 12
AT 532013000 37040044: null 0
 532013000 37040044: null 0
-- IBAN_getBIC
["COBADEFFXXX","","BKAUATWWXXX","SNBZCHZZXXX",null,null]
-- BIC_getBankName, BIC_getBankFlags
["DEUTSCHE BUNDESBANK, ZENTRALE",11]
["DEUTSCHE BUNDESBANK, ZENTRALE",11]
["BANK OF ALAND PLC",3]
[null,null]
[null,null]
-- arguments
argument error
argument error
argument error
argument error
argument error
argument error
