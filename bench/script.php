<?php
/*
 * What a script pays for each call, beside PHP's own md5() in the same run:
 * absolute times mean little on a shared machine, ratios do.
 *
 *     php -n -d extension=/path/to/sepa.so bench/script.php
 */

/** Nanoseconds of one $call: the best of several rounds. */
function measure(callable $round, int $calls): float
{
    $best = INF;
    for ($i = 0; $i < 7; $i++) {
        $start = microtime(true);
        $round($calls);
        $best = min($best, (microtime(true) - $start) / $calls * 1e9);
    }
    return $best;
}

function report(string $what, float $ns, float $base): void
{
    printf("%-44s %10.0f ns  %6.2f x md5\n", $what, $ns, $ns / $base);
}

$iban = 'DE89370400440532013000';
$base = measure(function ($n) use ($iban) { for ($i = 0; $i < $n; $i++) md5($iban); }, 300000);
report('md5() of an IBAN', $base, $base);

$calls = [
    'IBAN_check, German' => function ($n) { for ($i = 0; $i < $n; $i++) SEPA::IBAN_check('DE89370400440532013000'); },
    'IBAN_check, French' => function ($n) { for ($i = 0; $i < $n; $i++) SEPA::IBAN_check('FR1420041010050500013M02606'); },
    'IBAN_check, wrong checksum' => function ($n) { for ($i = 0; $i < $n; $i++) SEPA::IBAN_check('DE98370400440532013000'); },
    'IBAN_getBIC' => function ($n) { for ($i = 0; $i < $n; $i++) SEPA::IBAN_getBIC('DE89370400440532013000'); },
    'IBAN_convert, rule 5' => function ($n) { for ($i = 0; $i < $n; $i++) SEPA::IBAN_convert('DE', '532013000', '37040044'); },
    'BIC_getBankName' => function ($n) { for ($i = 0; $i < $n; $i++) SEPA::BIC_getBankName('MARKDEFF'); },
];
foreach ($calls as $what => $round) {
    report($what, measure($round, 300000), $base);
}

SEPA::init(SEPA_INIT_RULEBOOK, 'DE-3.7');
$payment = ['name' => 'Müller & Söhne GmbH', 'iban' => $iban, 'bic' => 'COBADEFFXXX', 'amount' => '1190.00',
            'ref' => 'Rechnung 2026-1187 vom 12.11.2026', 'id' => 'RE-2026-1187'];
foreach ([10, 1000, 100000] as $count) {
    foreach (['one date' => 1, 'a date each' => $count] as $how => $dates) {
        $add = $write = INF;
        for ($round = 0; $round < 3; $round++) {
            $message = new SEPA(SEPA_MSGTYPE_CTI);
            $start = microtime(true);
            for ($i = 0; $i < $count; $i++) {
                // Any ten bytes are a date; from last to first is the hard order.
                $message->add(['date' => sprintf('%010d', $dates > 1 ? $count - $i : 0)] + $payment);
            }
            $middle = microtime(true);
            $message->toXML();
            $end = microtime(true);
            $add = min($add, ($middle - $start) / $count * 1e9);
            $write = min($write, ($end - $middle) / $count * 1e9);
        }
        report("add, $count transactions, $how", $add, $base);
        report("toXML, $count transactions, $how", $write, $base);
    }
}
