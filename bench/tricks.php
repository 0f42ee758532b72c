<?php
/*
 * What each trick is worth: the rows that it names, with today's module and with the one
 * that was built without it, process by process in turn. Prints a table in Markdown:
 *
 *     php -n bench/tricks.php INPUTS ROUNDS MODULE FOLDER
 *
 * FOLDER has NAME.so for bench/tricks/NAME.patch; patches without one are passed over.
 */

require __DIR__ . '/measure.php';

const WORK = [
    'check' => '`IBAN_check`',
    'check-others' => '`IBAN_check`, other countries',
    'convert' => '`IBAN_convert`',
    'bank-name' => '`BIC_getBankName`',
    'first-call' => 'first `IBAN_check` of a process',
    'transfers-10000' => '10,000 transfers',
    'transfers-100000' => '100,000 transfers',
    'debits-10000' => '10,000 debits',
    'statements-20000' => '20,000 bookings',
];

/** The value of a line "$key: ..." before the changes of a patch. */
function head(string $patch, string $key): string
{
    preg_match("/^$key: (.*)$/m", $patch, $match);
    return $match[1];
}

[, $inputs, $rounds, $with, $folder] = $argv;

/** How long a row of work takes with a trick and without it: the best of so many processes each. */
function with_and_without(string $with, string $without, string $row, string $inputs, int $rounds): array
{
    $times = [[], []];
    $rounds *= $row === 'first-call' ? 7 : 1;  // a single call says little
    for ($round = 0; $round < $rounds; $round++) {
        $times[0][] = run_row($with, $row, $inputs)[0];
        $times[1][] = run_row($without, $row, $inputs)[0];
    }
    return array_map('min', $times);
}

$rows = [];
foreach (glob(__DIR__ . '/tricks/*.patch') as $file) {
    $without = "$folder/" . basename($file, '.patch') . '.so';
    $patch = file_get_contents($file);
    foreach (is_file($without) ? explode(' ', head($patch, 'Rows')) : [] as $row) {
        $rows[] = [array_search($row, array_keys(WORK)), head($patch, 'Trick'), $row, $without];
    }
}
sort($rows);

echo "| Work | Trick | With it | Without | It saves |\n|---|---|---|---|---|\n";
foreach ($rows as [, $trick, $row, $without]) {
    [$best, $plain] = with_and_without($with, $without, $row, $inputs, (int) $rounds);
    printf("| %s | %s | %s ns | %s ns | %.0f %% |\n", WORK[$row], $trick, number_format($best), number_format($plain),
        100 * (1 - $best / $plain));
}
