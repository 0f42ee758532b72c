<?php
/*
 * Runs every row of bench/rows.php in fresh processes and prints the table:
 *
 *     php -n bench/run.php INPUTS ROUNDS ROWS MODULE...
 *
 * ROWS is "all", "growth" or names parted by commas. Several modules take turns, process
 * by process, so that what else the machine does meets all of them alike.
 */

// name => [what it is, unit of its figure]
const TABLE = [
    'check' => ['IBAN_check, 10,000 German IBANs', 'ns'],
    'check-wrong' => ['the same with wrong check digits', 'ns'],
    'check-others' => ['IBAN_check, five other countries', 'ns'],
    'convert' => ['IBAN_convert', 'ns'],
    'bic' => ['IBAN_getBIC', 'ns'],
    'bank-name' => ['BIC_getBankName', 'ns'],
    'transfers-1000' => ['1,000 transfers, add and toXML', 'ns'],
    'transfers-10000' => ['10,000 transfers', 'ns'],
    'transfers-100000' => ['100,000 transfers', 'ns'],
    'debits-10000' => ['10,000 debits', 'ns'],
    'statements-20000' => ['20,000 bookings, load and arrays', 'ns'],
    'library' => ['account and method check, from C++', 'ns'],
    'first-call' => ['first IBAN_check of a process', 'ns'],
    'statements-memory' => ['peak memory of that statement', 'kB'],
    'transfers-memory' => ['peak memory of 100,000 transfers', 'kB'],
];

require __DIR__ . '/measure.php';

const GROWTH = ['transfers-10', 'transfers-100', 'transfers-1000', 'transfers-10000', 'transfers-100000',
                'transfers-1000000', 'debits-10', 'debits-1000', 'debits-100000', 'statements-4000',
                'statements-40000', 'statements-400000', 'statements-1000000'];

/** Best and median figure, and both as multiples of md5() where it is a time. */
function cells(array $runs, string $unit): string
{
    $figures = array_column($runs, 0);
    $text = sprintf('%9s %9s %s', number_format(min($figures)), number_format(median($figures)), $unit);
    if ($unit !== 'ns' || !$runs[0][1]) {
        return $text . str_repeat(' ', 16);
    }
    $ratios = array_map(function (array $run) { return $run[0] / $run[1]; }, $runs);
    return $text . sprintf(' %7.2f %7.2f', min($ratios), median($ratios));
}

[, $inputs, $rounds, $wanted] = $argv;
$modules = array_slice($argv, 4);
$rows = $wanted === 'all' ? array_keys(TABLE) : ($wanted === 'growth' ? GROWTH : explode(',', $wanted));

printf("%-36s%s\n", '', str_repeat(sprintf('  %9s %9s %2s %7s %7s', 'best', 'median', '', 'x md5', 'median'), count($modules)));
$md5 = [];
foreach ($rows as $row) {
    [$what, $unit] = TABLE[$row] ?? [$row, 'ns'];
    $runs = [];
    for ($round = 0; $round < (int) $rounds; $round++) {
        foreach ($row === 'library' ? array_slice($modules, 0, 1) : $modules as $i => $module) {
            $runs[$i][] = $run = run_row($module, $row, $inputs);
            $md5[] = $run[1];
        }
    }
    printf("%-36s", $what);
    foreach ($runs as $of_module) {
        echo '  ', cells($of_module, $unit);
    }
    echo "\n";
}
$md5 = array_filter($md5);
if ($md5) {
    printf("md5() of an IBAN: %.0f ns best, %.0f ns median\n", min($md5), median($md5));
}
