--TEST--
Statements as arrays: keys, order, presence and types
--FILE--
<?php
require __DIR__ . '/support.inc';

$file = __DIR__ . '/statement_arrays.sta';
file_put_contents($file, str_replace("\n", "\r\n", <<<'END'

:20:FULL
:25:37040044/0532013000
:28C:4294967295/7
:60F:D231228EUR0,00
:61:2312290102RDR12,34NTRFREF//BANKREF
:86:177?00TEXT?109249?20PLAIN?21SECOND?22EREF+E?23KREF+K?24MREF+M?25CRED+C?26DEBT+D?27PURP+P?28COAM+1,5?29OAMT+2,5?30BANK?31ACCOUNT?32NAME?34997?60SVWZ+S?61ABWA+A?62ABWE+B
:61:231229C0,10NABC
:62M:C241345USD1234567,89
-
:20:
-
:20:POOR
:61:240102C1,00NTRF
:86:-1?00?20?30?34-1
:62F:C240102EUR1,00
:61:?
END
));

$parser = new SEPAStatementParser();
var_dump($parser->getStatements());
var_dump($parser->load(SEPA_STMT_FORMAT_MT940, $file));
$first = $parser->getStatements();
var_dump($first === $parser->getStatements());
unset($parser);

// What a date that was never read looks like is the system library's affair.
array_walk_recursive($first, function (&$value) {
    $value = $value === '1900-01-00' ? 'NONE' : $value;
});
var_dump($first);
--CLEAN--
<?php unlink(__DIR__ . '/statement_arrays.sta');
--EXPECT--
NULL
bool(true)
bool(true)
array(3) {
  [0]=>
  array(11) {
    ["ref"]=>
    string(4) "FULL"
    ["account"]=>
    string(19) "37040044/0532013000"
    ["number"]=>
    int(4294967295)
    ["page"]=>
    int(7)
    ["openSaldo"]=>
    float(-0)
    ["openCurrency"]=>
    string(3) "EUR"
    ["openDate"]=>
    string(10) "2023-12-28"
    ["closeSaldo"]=>
    float(1234567.89)
    ["closeCurrency"]=>
    string(3) "USD"
    ["closeDate"]=>
    string(10) "2024-13-45"
    ["tx"]=>
    array(2) {
      [0]=>
      array(25) {
        ["valuta"]=>
        string(10) "2023-12-29"
        ["booked"]=>
        string(10) "2024-01-02"
        ["amount"]=>
        float(-12.34)
        ["code"]=>
        string(3) "TRF"
        ["ref"]=>
        string(3) "REF"
        ["bankref"]=>
        string(7) "BANKREF"
        ["gvc"]=>
        int(177)
        ["extcode"]=>
        int(997)
        ["txtext"]=>
        string(4) "TEXT"
        ["primanota"]=>
        string(4) "9249"
        ["bank"]=>
        string(4) "BANK"
        ["account"]=>
        string(7) "ACCOUNT"
        ["name"]=>
        string(4) "NAME"
        ["purpose"]=>
        string(12) "PLAIN
SECOND"
        ["eref"]=>
        string(1) "E"
        ["kref"]=>
        string(1) "K"
        ["mref"]=>
        string(1) "M"
        ["cred"]=>
        string(1) "C"
        ["debt"]=>
        string(1) "D"
        ["purp"]=>
        string(1) "P"
        ["coam"]=>
        string(3) "1.5"
        ["oamt"]=>
        string(3) "2.5"
        ["svwz"]=>
        string(1) "S"
        ["abwa"]=>
        string(1) "A"
        ["abwe"]=>
        string(1) "B"
      }
      [1]=>
      array(8) {
        ["valuta"]=>
        string(10) "2023-12-29"
        ["amount"]=>
        float(0.1)
        ["code"]=>
        string(3) "ABC"
        ["ref"]=>
        string(0) ""
        ["gvc"]=>
        int(0)
        ["bank"]=>
        string(0) ""
        ["account"]=>
        string(0) ""
        ["name"]=>
        string(0) ""
      }
    }
  }
  [1]=>
  array(8) {
    ["ref"]=>
    string(0) ""
    ["openSaldo"]=>
    float(0)
    ["openCurrency"]=>
    string(0) ""
    ["openDate"]=>
    string(4) "NONE"
    ["closeSaldo"]=>
    float(0)
    ["closeCurrency"]=>
    string(0) ""
    ["closeDate"]=>
    string(4) "NONE"
    ["tx"]=>
    array(0) {
    }
  }
  [2]=>
  array(8) {
    ["ref"]=>
    string(4) "POOR"
    ["openSaldo"]=>
    float(0)
    ["openCurrency"]=>
    string(0) ""
    ["openDate"]=>
    string(4) "NONE"
    ["closeSaldo"]=>
    float(1)
    ["closeCurrency"]=>
    string(3) "EUR"
    ["closeDate"]=>
    string(10) "2024-01-02"
    ["tx"]=>
    array(2) {
      [0]=>
      array(11) {
        ["valuta"]=>
        string(10) "2024-01-02"
        ["amount"]=>
        float(1)
        ["code"]=>
        string(3) "TRF"
        ["ref"]=>
        string(0) ""
        ["gvc"]=>
        int(4294967295)
        ["extcode"]=>
        int(4294967295)
        ["txtext"]=>
        string(0) ""
        ["bank"]=>
        string(0) ""
        ["account"]=>
        string(0) ""
        ["name"]=>
        string(0) ""
        ["purpose"]=>
        string(0) ""
      }
      [1]=>
      array(7) {
        ["valuta"]=>
        string(4) "NONE"
        ["amount"]=>
        float(0)
        ["code"]=>
        string(0) ""
        ["gvc"]=>
        int(0)
        ["bank"]=>
        string(0) ""
        ["account"]=>
        string(0) ""
        ["name"]=>
        string(0) ""
      }
    }
  }
}
