--TEST--
Static methods: rulebook, IBAN check, conversion, BIC and bank
--FILE--
<?php
require __DIR__ . '/support.inc';

echo "-- init\n";
foreach ([[3, 'DE-3.7'], [3, 'de-3.7'], [3, 'DE-3.7 '], [3, ''], [3, "DE-3.7\0"], [2, 'DE-3.7'], [2 ** 32 + 3, 'DE-3.7']] as [$option, $value]) {
    var_dump(SEPA::init($option, $value));
}

echo "-- IBAN_check\n";
foreach (['DE89370400440532013000', 'AT483200000012345864', "DE89370400440532013000\0", 'DE98370400440532013000', 'DE89 3704 0044 0532 0130 00',
          'DE36370400440532013001', 'DE20100000010532013000', '', str_repeat('9', 1000000)] as $iban) {
    var_dump(SEPA::IBAN_check($iban));
}

echo "-- IBAN_convert\n";
$accounts = [
    ['532013000', '37040044'], ['1234567', '37040044'], ['135', '10050000'], ['2000', '50050201'], ['36', '30060010'],
    ['35000', '55050000'], ['123', '50810900'], ['0800000000', '10020890'], ['1234567', '10000000'],
    ['532013000', '37040045'], ['532013000', '3704004'], ['', '37040044'], ['12345678901', '37040044'],
    ['53201300a', '37040044'], ["532013000\0", '37040044'], ['532013000', '3704004x'], ['1', '50040033'],
];
foreach ($accounts as [$account, $bank]) {
    $status = 'before';
    $iban = SEPA::IBAN_convert('DE', $account, $bank, $status);
    echo addcslashes($account, "\0"), ' ', $bank, ': ', var_export($iban, true), ' ', var_export($status, true), "\n";
}
foreach (['AT', 'de', 'DE ', ''] as $country) {
    var_dump(SEPA::IBAN_convert($country, '532013000', '37040044', $status), $status);
}

echo "-- IBAN_getBIC\n";
foreach (['DE89370400440532013000', 'DE00100400000000000000', 'DE00200411330000000000', 'DE00250502990000000000',
          'AT001100000000000000', 'CH0000110000000000000', 'LI0000110000000000000', 'de89370400440532013000',
          'DE8937040044053201300', 'DE00999999990000000000', 'FR00', '', 'D'] as $iban) {
    var_dump(SEPA::IBAN_getBIC($iban));
}

echo "-- BIC_getBankName, BIC_getBankFlags\n";
foreach (['MARKDEFF', 'markdeffxxx', 'AABAFI22', 'XXXXFI22', 'MARKDEFFX', '', 'MARKDEFF XX'] as $bic) {
    var_dump(SEPA::BIC_getBankName($bic), SEPA::BIC_getBankFlags($bic));
}

echo "-- arguments\n";
foreach (['init' => [3], 'IBAN_check' => [], 'IBAN_getBIC' => [[]], 'BIC_getBankName' => [], 'BIC_getBankFlags' => [[]], 'IBAN_convert' => ['DE', '1']] as $method => $arguments) {
    show_argument_error(function () use ($method, $arguments) { return SEPA::$method(...$arguments); });
}
--EXPECT--
-- init
bool(true)
bool(false)
bool(false)
bool(false)
bool(true)
bool(false)
bool(false)
-- IBAN_check
bool(true)
bool(true)
bool(true)
bool(false)
bool(false)
bool(false)
bool(false)
bool(false)
bool(false)
-- IBAN_convert
532013000 37040044: 'DE89370400440532013000' 0
1234567 37040044: NULL 11
135 10050000: 'DE86100500000990021440' 1
2000 50050201: 'DE42500502010000222000' 1
36 30060010: 'DE57300600100002310113' 1
35000 55050000: 'DE94600501017401555913' 1
123 50810900: 'DE52660102000000000123' 13
0800000000 10020890: NULL 50
1234567 10000000: NULL 0
532013000 37040045: NULL 10
532013000 3704004: NULL 0
 37040044: NULL 0
12345678901 37040044: NULL 0
53201300a 37040044: NULL 11
532013000\000 37040044: 'DE89370400440532013000' 0
532013000 3704004x: NULL 10
1 50040033: NULL 12
NULL
int(0)
NULL
int(0)
NULL
int(0)
NULL
int(0)
-- IBAN_getBIC
string(11) "COBADEFFXXX"
string(11) "COBADEFFXXX"
string(11) "COBADEHD001"
string(0) ""
string(11) "BKAUATWWXXX"
string(11) "SNBZCHZZXXX"
string(11) "SNBZCHZZXXX"
NULL
NULL
NULL
NULL
NULL
NULL
-- BIC_getBankName, BIC_getBankFlags
string(29) "DEUTSCHE BUNDESBANK, ZENTRALE"
int(11)
string(29) "DEUTSCHE BUNDESBANK, ZENTRALE"
int(11)
string(17) "BANK OF ALAND PLC"
int(3)
NULL
NULL
NULL
NULL
NULL
NULL
NULL
NULL
-- arguments
argument error
argument error
argument error
argument error
argument error
argument error
