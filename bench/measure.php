<?php
/*
 * What the programs that measure share: rows of bench/rows.php, each in a fresh process.
 */

/** The command that measures a row; the library's own row is of today's build alone. */
function command(string $module, string $row, string $inputs): string
{
    if ($row === 'library') {
        return escapeshellarg(dirname($inputs) . '/library_row') . ' ' . escapeshellarg("$inputs/accounts.txt");
    }
    return escapeshellarg(PHP_BINARY) . ' -n -d memory_limit=-1 -d extension=' . escapeshellarg($module) . ' '
        . escapeshellarg(__DIR__ . '/rows.php') . " $row " . escapeshellarg($inputs);
}

/** @return array{float, float} the figure and the md5() of one fresh process; 0 where it has no md5() */
function run_row(string $module, string $row, string $inputs): array
{
    $line = shell_exec(command($module, $row, $inputs));
    if (!preg_match('/^([\d.]+) ([\d.]+)\n$/', (string) $line, $match)) {
        fwrite(STDERR, "$row: $line");
        exit(1);
    }
    return [(float) $match[1], (float) $match[2]];
}

function median(array $values): float
{
    sort($values);
    return $values[intdiv(count($values), 2)];
}
