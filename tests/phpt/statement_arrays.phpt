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
:20:ALIKE
:61:2312291229C1,NTRFREF1
:61:231230C1,NTRFREF1
:61:231130C1,NTRFREF2
:61:221130C1,NTRFREF
-
END
));

$parser = new SEPAStatementParser();
var_dump($parser->getStatements());
var_dump($parser->load(SEPA_STMT_FORMAT_MT940, $file));
$first = $parser->getStatements();
var_dump($first === $parser->getStatements());
unset($parser);

/** A record in one line; what a date that was never read looks like is the system library's affair. */
function line(array $record): string
{
    unset($record['tx']);
    $texts = [];
    foreach ($record as $key => $value) {
        $large = PHP_INT_SIZE === 4 && is_float($value) && $value > PHP_INT_MAX;  // an integer elsewhere
        $texts[] = "$key " . ($large ? sprintf('%.0f', $value) : ($value === '1900-01-00' ? 'NONE' : var_export($value, true)));
    }
    return implode(', ', $texts);
}

foreach ($first as $number => $statement) {
    echo "$number: ", line($statement), ', ', key(array_slice($statement, -1)), ' ', count($statement['tx']), "\n";
    foreach ($statement['tx'] as $index => $transaction) {
        echo "  $index: ", line($transaction), "\n";
    }
}

var_dump(shape_keys('@phpstan-return') === array_merge(array_keys($first[0]), array_keys($first[0]['tx'][0])));

// A far-away type gives all statements before it the same long reference.
file_put_contents($file, str_repeat("\r\n:20:\r\n:61:240102C1,\r\n-", 2500) . 'NTRF' . str_repeat('x', 65000));
$parser = new SEPAStatementParser();
$parser->load(SEPA_STMT_FORMAT_MT940, $file);
$before = memory_get_usage();
$statements = $parser->getStatements();
echo count($statements), ' ', strlen($statements[0]['tx'][0]['ref']), ' ', strlen($statements[2499]['tx'][0]['ref']), "\n";
var_dump(memory_get_usage() - $before < 10 << 20);
--CLEAN--
<?php unlink(__DIR__ . '/statement_arrays.sta');
--EXPECT--
NULL
bool(true)
bool(true)
0: ref 'FULL', account '37040044/0532013000', number 4294967295, page 7, openSaldo -0.0, openCurrency 'EUR', openDate '2023-12-28', closeSaldo 1234567.89, closeCurrency 'USD', closeDate '2024-13-45', tx 2
  0: valuta '2023-12-29', booked '2024-01-02', amount -12.34, code 'TRF', ref 'REF', bankref 'BANKREF', gvc 177, extcode 997, txtext 'TEXT', primanota '9249', bank 'BANK', account 'ACCOUNT', name 'NAME', purpose 'PLAIN
SECOND', eref 'E', kref 'K', mref 'M', cred 'C', debt 'D', purp 'P', coam '1.5', oamt '2.5', svwz 'S', abwa 'A', abwe 'B'
  1: valuta '2023-12-29', amount 0.1, code 'ABC', ref '', gvc 0, bank '', account '', name ''
1: ref '', openSaldo 0.0, openCurrency '', openDate NONE, closeSaldo 0.0, closeCurrency '', closeDate NONE, tx 0
2: ref 'POOR', openSaldo 0.0, openCurrency '', openDate NONE, closeSaldo 1.0, closeCurrency 'EUR', closeDate '2024-01-02', tx 2
  0: valuta '2024-01-02', amount 1.0, code 'TRF', ref '', gvc 4294967295, extcode 4294967295, txtext '', bank '', account '', name '', purpose ''
  1: valuta NONE, amount 0.0, code '', gvc 0, bank '', account '', name ''
3: ref 'ALIKE', openSaldo 0.0, openCurrency '', openDate NONE, closeSaldo 0.0, closeCurrency '', closeDate NONE, tx 4
  0: valuta '2023-12-29', booked '2023-12-29', amount 1.0, code 'TRF', ref 'REF1', gvc 0, bank '', account '', name ''
  1: valuta '2023-12-30', amount 1.0, code 'TRF', ref 'REF1', gvc 0, bank '', account '', name ''
  2: valuta '2023-11-30', amount 1.0, code 'TRF', ref 'REF2', gvc 0, bank '', account '', name ''
  3: valuta '2022-11-30', amount 1.0, code 'TRF', ref 'REF', gvc 0, bank '', account '', name ''
bool(true)
2500 65000 65000
bool(true)
