<?php
/*
 * What a payment costs through the toolkit's classes, in this process:
 *
 *     php -d extension=/path/to/sepa.so -d memory_limit=-1 bench/toolkit.php NUMBER [FURTHER]
 *
 * NUMBER payments with their arrays made in the loop, tested, added and written;
 * with FURTHER each has four fields that the toolkit adds to the document. Prints
 * microseconds of the processor for one payment and the process's peak of memory.
 */

use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Transfers;

require __DIR__ . '/../toolkit/autoload.php';

function now(): float
{
    $usage = getrusage();

    return ($usage['ru_utime.tv_sec'] + $usage['ru_stime.tv_sec']) * 1e6 + $usage['ru_utime.tv_usec'] + $usage['ru_stime.tv_usec'];
}

$number = (int) ($argv[1] ?? 10000);
$start = now();
$payments = new Transfers(Party::payer('Zimmerei Sander GmbH', 'DE89370400440532013000'), Options::latest());
for ($i = 0; $i < $number; ++$i) {
    $amount = ($i % 90000 + 1) . '.17';
    $payments->add(isset($argv[2]) ? [
        'name' => 'Stadtwerke GmbH', 'iban' => 'DE62701500000020228888', 'amount' => $amount, 'ref' => "Vertrag 77301-$i", 'id' => "E-$i",
        'instr_id' => "I-$i", 'ultm_dbtr' => 'Holding AG', 'ultm_cdtr' => "Kunde $i", 'ultm_cdtr_id' => "K$i",
    ] : [
        'name' => 'Stadtwerke GmbH', 'iban' => 'DE62701500000020228888', 'amount' => $amount, 'ref' => "Vertrag 77301-$i", 'id' => "E-$i",
    ]);
}
$added = now();
$length = strlen($payments->document());
printf(
    "add %.2f us, document %.2f us, together %.2f us; %.1f MB of XML, peak %.0f MB\n",
    ($added - $start) / $number,
    (now() - $added) / $number,
    (now() - $start) / $number,
    $length / 1e6,
    getrusage()['ru_maxrss'] / 1e3
);
