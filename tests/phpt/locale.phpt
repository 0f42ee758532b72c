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
    $message = credit_transfer();
    $calls = [
        [$message, 'IBAN_check', ['DE89370400440532013000', 'fi2112345600000785', 'FI2112345600000785', 'lI21088100002324013AA',
                                  'LI21088100002324013AA', "DE8937040044053201300\xE4"]],
        [$message, 'BIC_getBankName', ['ingddeff']],
        [$message, 'setName', ["\xC4pfel", "a\xA0b", 'Äpfel', 'İ', 'ı']],
        [$message, 'setBIC', ['ingddeffxxx', "ingddef\xE4", "INGDDEF\xC4"]],
        [$message, 'setDate', ["\xA026-12-01"]],
        [new SEPAStatementParser(), 'load', ['/no/such/file']],
    ];
    foreach (['12.5', '12,5', "\xA01", '1e2'] as $amount) {
        $calls[] = [$message, 'add', [['IBAN' => 'DE89370400440532013000', 'BIC' => 'cobadeff', 'AMOUNT' => $amount]]];
    }
    foreach ($calls as [$object, $method, $values]) {
        foreach ($values as $value) {
            $results[] = outcome(function () use ($object, $method, $value) {
                return $method === 'load' ? $object->load(SEPA_STMT_FORMAT_MT940, $value) : $object->$method($value);
            });
        }
    }
    preg_match_all('~<(?:\w+Amt|Ustrd|Nm|BIC\w*) ?[^<]+~', $message->toXML(), $parts);
    return addcslashes(implode('|', array_merge($results, $parts[0])), "\x80..\xFF");
}

echo $expected = results(), "\n";
foreach (['C', 'de_DE.UTF-8', 'de_DE.ISO-8859-1'] as $locale) {
    var_dump(setlocale(LC_ALL, $locale) === $locale && results() === $expected);
}
--EXPECT--
true|false|true|false|true|false|"ING-DIBA AG (RETAIL BANKING)"|SEPAException 0: sepa_setName: invalid character '\304' in name|SEPAException 0: sepa_setName: invalid character '\240' in name|true|SEPAException 0: sepa_setName: invalid character '\304' in name|SEPAException 0: sepa_setName: invalid character '\304' in name|true|SEPAException 0: sepa_setBIC: invalid BIC format|SEPAException 0: sepa_setBIC: invalid BIC format|SEPAException 0: Invalid date|SEPAException 0: Can't open input file: No such file or directory|true|SEPAException 0: Invalid amount|SEPAException 0: Invalid amount|true|<Nm>\303\204pfel|<Nm>\303\204pfel|<BICFI>INGDDEFFXXX|<InstdAmt Ccy="EUR">12.50|<BICFI>COBADEFF|<InstdAmt Ccy="EUR">100.00|<BICFI>COBADEFF
bool(true)
bool(true)
bool(true)
