<?php
/*
 * Turns a list of collections into a SEPA direct debit for the bank.
 *
 *     php examples/direct_debit.php [collections.csv [rulebook]] > collections.xml
 *
 * The document goes to standard output, a short summary to standard error.
 * If one row is bad, it is reported and no document is written.
 */

require __DIR__ . '/support.php';

/** A bank outside the EEA wants the debtor's address; DE-3.7 wants it by fields. */
function address(string $rulebook, array $row): array
{
    if ($row['town'] === '') {
        return [];
    }
    if ($rulebook === 'DE-3.7') {
        return ['addrStreet' => $row['street'], 'addrCode' => $row['postal_code'],
                'addrTown' => $row['town'], 'addrCC' => $row['country']];
    }
    return ['addrLine1' => $row['street'], 'addrLine2' => "{$row['postal_code']} {$row['town']}", 'addrCC' => $row['country']];
}

$file = $argv[1] ?? __DIR__ . '/collections.csv';
$rulebook = $argv[2] ?? 'DE-3.7';
select_rulebook($rulebook);

$message = new SEPA(SEPA_MSGTYPE_DDI);
$message->setName('Turnverein Talheim e.V.');
$message->setIBAN('DE89370400440532013000');
$message->setBIC('COBADEFFXXX');
$message->setCreditorIdentifier('DE98ZZZ09999999999');
$message->setDDType(SEPA_DDTYPE_CORE);

$total = 0.0;
$sequences = [];
$columns = ['name', 'iban', 'bic', 'street', 'postal_code', 'town', 'country', 'amount', 'date', 'sequence', 'mandate', 'signed',
            'old_mandate', 'old_iban', 'reference', 'id'];
foreach (read_csv($file, $columns) as $line => $row) {
    check_dates($file, $line, [$row['date'], $row['signed']]);
    $collection = address($rulebook, $row) + [
        'name'   => in_charset_of($rulebook, $row['name']),
        'iban'   => $row['iban'],
        'amount' => $row['amount'],
        'date'   => $row['date'],
        'seq'    => $row['sequence'],
        'mref'   => $row['mandate'],
        'mdate'  => $row['signed'],
    ];
    $optional = ['bic' => bic_of($rulebook, $row), 'old_mref' => $row['old_mandate'], 'old_iban' => $row['old_iban'],
                 'ref' => in_charset_of($rulebook, $row['reference']), 'id' => $row['id']];
    foreach ($optional as $key => $value) {
        if ($value !== '') {
            $collection[$key] = $value;
        }
    }
    try {
        $message->add($collection);
    } catch (SEPAException $e) {
        stop("$file, line $line: {$e->getMessage()}");
    }
    $total += $row['amount'];
    $sequences[$row['sequence']] = ($sequences[$row['sequence']] ?? 0) + 1;
}

try {
    echo $message->toXML();
} catch (SEPAException $e) {
    stop($e->getMessage());
}

tell(sprintf('%d collections, %.2f EUR, rulebook %s', array_sum($sequences), $total, $rulebook));
foreach ($sequences as $sequence => $count) {
    tell("  $sequence: $count");
}
