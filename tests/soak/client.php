<?php
/*
 * Sends requests one after the other over one connection and compares each
 * answer with its own.
 *
 *     client.php load PORT FIRST COUNT    cases FIRST, FIRST + 1, …
 *     client.php rulebooks PORT COUNT     does each process keep the rulebook selected last?
 *
 * Prints "COUNT requests, N wrong" and the process ids that answered.
 */
require __DIR__ . '/cases.php';

$processes = [];

/** Body and process id of one answer. */
function fetch($connection, string $query): array
{
    fwrite($connection, "GET /request.php?$query HTTP/1.1\r\nHost: localhost\r\n\r\n");
    $status = fgets($connection);
    $length = null;
    $process = 0;
    while (($line = rtrim((string) fgets($connection))) !== '') {
        [$name, $value] = explode(': ', $line, 2);
        if (!strcasecmp($name, 'Content-Length')) $length = (int) $value;
        if (!strcasecmp($name, 'X-Process')) $process = (int) $value;
    }
    if ($length !== null) {
        $body = $length ? stream_get_contents($connection, $length) : '';
    } else {
        for ($body = ''; $size = hexdec(trim((string) fgets($connection))); fgets($connection)) {
            $body .= stream_get_contents($connection, $size);
        }
        fgets($connection);
    }
    return [strpos((string) $status, ' 200 ') ? $body : "status: $status $body", $process];
}

[, $mode, $port] = $argv;
$connection = stream_socket_client("tcp://127.0.0.1:$port", $code, $text, 30) ?: exit("$text\n");
$wrong = 0;
if ($mode === 'load') {
    [, , , $first, $count] = $argv;
    for ($case = (int) $first; $case < $first + $count; $case++) {
        [$body, $process] = fetch($connection, "case=$case");
        $processes[$process] = true;
        if ($body !== run_case($case)) {
            $wrong++;
            fwrite(STDERR, "case $case: " . substr($body, 0, 300) . "\n");
        }
    }
} else {
    $count = (int) $argv[3];
    $kept = [];
    for ($i = 0; $i < $count; $i++) {
        if ($i % 3) {
            $case = $i * 37 % 50;
            [, $process] = fetch($connection, "case=$case");
            SEPA::init(SEPA_INIT_RULEBOOK, RULEBOOKS[$case % count(RULEBOOKS)]);
            preg_match('~xsd:([^"]*)"~', (new SEPA(SEPA_MSGTYPE_CTI))->toXML(), $schema);
            $kept[$process] = $schema[1];
        } else {
            [$body, $process] = fetch($connection, 'peek');
            if ($body !== ($kept[$process] ?? $body)) {
                $wrong++;
                fwrite(STDERR, "process $process: $body instead of {$kept[$process]}\n");
            }
            $kept[$process] = $body;
        }
        $processes[$process] = true;
    }
}
echo "$count requests, $wrong wrong\n", implode(' ', array_keys($processes)), "\n";
exit($wrong ? 1 : 0);
