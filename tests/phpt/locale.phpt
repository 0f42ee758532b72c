--TEST--
No setlocale() changes what the extension does
--SKIPIF--
<?php
foreach (['de_DE.UTF-8', 'de_DE.ISO-8859-1', 'tr_TR.UTF-8'] as $locale) {
    if (!setlocale(LC_ALL, $locale)) echo "skip the system has no locale $locale";
}
?>
--FILE--
<?php
require __DIR__ . '/support.inc';

/** Everything that could ask the locale: case, classes, decimal points, dates. */
function results(): array
{
    $results = [];
    $try = function (callable $call) use (&$results) {
        try {
            $results[] = $call();
        } catch (SEPAException $e) {
            $results[] = $e->getMessage();
        }
    };
    foreach (['DE89370400440532013000', 'fi2112345600000785', 'FI2112345600000785', 'LI21088100002324013AA', 'lI21088100002324013AA',
              "DE8937040044053201300\xE4"] as $iban) {
        $try(function () use ($iban) { return SEPA::IBAN_check($iban); });
    }
    $try(function () { return SEPA::BIC_getBankName('ingddeff'); });
    $try(function () { return SEPA::IBAN_convert('DE', '135', '10050000', $status) . $status; });
    $message = credit_transfer();
    foreach (["\xC4pfel", "a\xA0b", 'Äpfel', 'İ', 'ı'] as $name) {
        $try(function () use ($message, $name) { return $message->setName($name); });
    }
    $try(function () use ($message) { return $message->setBIC('ingddeffxxx'); });
    $try(function () use ($message) { return $message->setBIC("ingddef\xE4"); });
    $try(function () use ($message) { return $message->setDate("\xA026-12-01"); });
    foreach (['12.5', '12,5', "\xA01", '1e2'] as $amount) {
        $try(function () use ($message, $amount) { return $message->add(payment(['AMOUNT' => $amount, 'ID' => 'I', 'IBAN' => 'DE89370400440532013000'])); });
    }
    $try(function () use ($message) { return without_time($message->toXML()); });
    return $results;
}

$expected = results();
foreach (['de_DE.UTF-8', 'de_DE.ISO-8859-1', 'tr_TR.UTF-8'] as $locale) {
    var_dump(setlocale(LC_ALL, $locale), results() === $expected);
}
// The one exception is the engine's own: before 8.0 it wrote floats by the locale.
setlocale(LC_ALL, 'de_DE.UTF-8');
$message = credit_transfer();
try {
    $message->add(payment(['amount' => 12.5]));
    var_dump(PHP_VERSION_ID >= 80000);
} catch (SEPAException $e) {
    var_dump(PHP_VERSION_ID < 80000 && $e->getMessage() === 'Invalid amount');
}
--EXPECT--
string(11) "de_DE.UTF-8"
bool(true)
string(16) "de_DE.ISO-8859-1"
bool(true)
string(11) "tr_TR.UTF-8"
bool(true)
bool(true)
