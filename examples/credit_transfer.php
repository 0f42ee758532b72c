<?php
/*
 * Turns a list of payments into a SEPA credit transfer for the bank.
 *
 *     php examples/credit_transfer.php [payments.csv [rulebook]] > payments.xml
 *
 * The document goes to standard output, a short summary to standard error.
 * If one row is bad, it is reported and no document is written.
 */

require __DIR__ . '/support.php';

$file = $argv[1] ?? __DIR__ . '/payments.csv';
$rulebook = $argv[2] ?? 'DE-3.7';
select_rulebook($rulebook);

$message = new SEPA(SEPA_MSGTYPE_CTI);
$message->setName('Zimmerei Sander GmbH');
$message->setIBAN('DE89370400440532013000');
$message->setBIC('COBADEFFXXX');

$total = 0.0;
$dates = [];
$columns = ['name', 'iban', 'bic', 'amount', 'date', 'purpose', 'reference', 'id'];
foreach (read_csv($file, $columns) as $line => $row) {
    check_dates($file, $line, [$row['date']]);
    $payment = [
        'name'   => in_charset_of($rulebook, $row['name']),
        'iban'   => $row['iban'],
        'amount' => $row['amount'],
        'date'   => $row['date'],
    ];
    $optional = ['bic' => bic_of($rulebook, $row), 'purp' => $row['purpose'], 'id' => $row['id'],
                 'ref' => in_charset_of($rulebook, $row['reference'])];
    foreach ($optional as $key => $value) {
        if ($value !== '') {
            $payment[$key] = $value;
        }
    }
    try {
        $message->add($payment);
    } catch (SEPAException $e) {
        stop("$file, line $line: {$e->getMessage()}");
    }
    $total += $row['amount'];
    $dates[$row['date']] = ($dates[$row['date']] ?? 0) + 1;
}

if (!$dates) {
    stop("$file: no payments");
}
try {
    echo with_date_element($rulebook, $message->toXML());
} catch (SEPAException $e) {
    stop($e->getMessage());
}

ksort($dates);
tell(sprintf('%d payments, %.2f EUR, rulebook %s', array_sum($dates), $total, $rulebook));
foreach ($dates as $date => $count) {
    tell("  $date: $count");
}
