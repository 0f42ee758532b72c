--TEST--
No setlocale() changes what the extension does, not even one before the first use
--SKIPIF--
<?php
foreach (['tr_TR.UTF-8', 'de_DE.UTF-8', 'de_DE.ISO-8859-1'] as $locale) {
    if (!setlocale(LC_ALL, $locale)) die("skip the system has no locale $locale");
}
?>
--FILE--
<?php
setlocale(LC_ALL, 'tr_TR.UTF-8');
require __DIR__ . '/support.inc';

/** Everything that could ask the locale: case, classes, decimal points, dates, texts of the system. */
function results(): string
{
    $ibans = ['DE89370400440532013000', 'fi2112345600000785', 'FI2112345600000785', 'LI21088100002324013AA',
              'lI21088100002324013AA', "DE8937040044053201300\xE4"];
    $results = array_map('SEPA::IBAN_check', $ibans);
    $results[] = SEPA::BIC_getBankName('ingddeff');
    $results[] = SEPA::IBAN_convert('DE', '135', '10050000', $status) . $status;
    $message = credit_transfer();
    $calls = [['setName', "\xC4pfel"], ['setName', "a\xA0b"], ['setName', 'Äpfel'], ['setName', 'İ'], ['setName', 'ı'],
              ['setBIC', 'ingddeffxxx'], ['setBIC', "ingddef\xE4"], ['setBIC', "INGDDEF\xC4"], ['setDate', "\xA026-12-01"]];
    foreach (['12.5', '12,5', "\xA01", '1e2'] as $amount) {
        $calls[] = ['add', ['IBAN' => 'DE89370400440532013000', 'BIC' => 'cobadeff', 'AMOUNT' => $amount]];
    }
    foreach ($calls as [$method, $argument]) {
        try {
            $results[] = $message->$method($argument);
        } catch (SEPAException $e) {
            $results[] = $e->getMessage();
        }
    }
    try {
        (new SEPAStatementParser())->load(SEPA_STMT_FORMAT_MT940, '/no/such/file');
    } catch (SEPAException $e) {
        $results[] = $e->getMessage();
    }
    preg_match_all('~<(?:\w+Amt|Ustrd|Nm|BIC\w*) ?[^<]+~', $message->toXML(), $parts);
    return addcslashes(implode('|', array_merge($results, $parts[0])), "\x80..\xFF");
}

echo $expected = results(), "\n";
foreach (['C', 'de_DE.UTF-8', 'de_DE.ISO-8859-1'] as $locale) {
    var_dump(setlocale(LC_ALL, $locale) === $locale && results() === $expected);
}
// The one exception is the engine's own: before 8.0 it wrote floats by the locale.
setlocale(LC_ALL, 'de_DE.UTF-8');
try {
    credit_transfer()->add(payment(['amount' => 12.5]));
    var_dump(PHP_VERSION_ID >= 80000);
} catch (SEPAException $e) {
    var_dump(PHP_VERSION_ID < 80000 && $e->getMessage() === 'Invalid amount');
}
--EXPECT--
1||1|1|||ING-DIBA AG (RETAIL BANKING)|DE861005000009900214401|sepa_setName: invalid character '\304' in name|sepa_setName: invalid character '\240' in name|1|sepa_setName: invalid character '\304' in name|sepa_setName: invalid character '\304' in name|1|sepa_setBIC: invalid BIC format|sepa_setBIC: invalid BIC format|Invalid date|1|Invalid amount|Invalid amount|1|Can't open input file: No such file or directory|<Nm>\303\204pfel|<Nm>\303\204pfel|<BICFI>INGDDEFFXXX|<InstdAmt Ccy="EUR">12.50|<BICFI>COBADEFF|<InstdAmt Ccy="EUR">100.00|<BICFI>COBADEFF
bool(true)
bool(true)
bool(true)
bool(true)
