<?php
/*
 * Sends requests one after the other and compares each answer with its own.
 *
 *     client.php load PORT FIRST COUNT    cases FIRST, FIRST + 1, …
 *     client.php rulebooks PORT COUNT     does each process keep the rulebook selected last?
 *     client.php zone PORT                prints hours ahead of UTC, no more
 *
 * Prints "COUNT requests, N wrong" and the process ids that answered.
 */
require __DIR__ . '/cases.php';

[, $mode, $port, $first] = $argv + [3 => 0];
if ($mode === 'zone') {
    echo explode("\n", (string) file_get_contents("http://127.0.0.1:$port/request.php?zone"))[1] ?? '', "\n";
    exit;
}
$count = (int) ($argv[4] ?? $first);
$kept = [];
$wrong = 0;
for ($i = 0; $i < $count; $i++) {
    $peek = $mode === 'rulebooks' && $i % 3 === 0;
    $case = $mode === 'load' ? $first + $i : $i * 37 % 50;
    $answer = (string) @file_get_contents("http://127.0.0.1:$port/request.php?" . ($peek ? 'peek' : "case=$case"));
    [$process, $body] = explode("\n", $answer, 2) + ['none', ''];
    $expected = $peek ? $kept[$process] ?? $body : run_case($case);
    $kept[$process] = $peek ? $body : kept_rulebook();
    if ($answer === '' || $body !== $expected) {
        $wrong++;
        fwrite(STDERR, "case $case of process $process: " . substr($body, 0, 300) . "\n");
    }
}
echo "$count requests, $wrong wrong\n", implode(' ', array_keys($kept)), "\n";
exit($wrong ? 1 : 0);
