<?php
/*
 * Whether statement files are read in level time and memory, whatever their
 * shape: load and getStatements of each shape in two sizes, ten times apart.
 *
 *     php -n -d extension=/path/to/sepa.so bench/statements.php [MEGABYTES]
 *
 * MEGABYTES is the larger size, 10 if absent. Prints for it the seconds of the
 * processor, the bytes of the arrays for each byte of the file, and how many
 * times the smaller size both are: about ten.
 */
require __DIR__ . '/../tests/faults/statement_shapes.php';
ini_set('memory_limit', '-1');

/** Of the processor, so that others on the machine count little. */
function seconds_so_far(): float
{
    $usage = getrusage();
    return $usage['ru_utime.tv_sec'] + $usage['ru_stime.tv_sec']
        + ($usage['ru_utime.tv_usec'] + $usage['ru_stime.tv_usec']) / 1e6;
}

/** Seconds of the best of three readings, and bytes of the arrays. */
function read_file(string $file): array
{
    $best = INF;
    for ($round = 0; $round < 3; $round++) {
        $before = memory_get_usage();
        $start = seconds_so_far();
        $parser = new SEPAStatementParser();
        $parser->load(SEPA_STMT_FORMAT_MT940, $file);
        $statements = $parser->getStatements();
        $best = min($best, seconds_so_far() - $start);
        $bytes = memory_get_usage() - $before;
        unset($parser, $statements);
    }
    return [$best, $bytes];
}

$size = (int) (($argv[1] ?? 10) * 1000000);
$file = tempnam(sys_get_temp_dir(), 'sepa');
printf("%-42s %8s %12s %12s %12s\n", 'shape', 'seconds', 'times', 'bytes a byte', 'times');
foreach (array_keys(STATEMENT_SHAPES) as $shape) {
    file_put_contents($file, statement_file($shape, intdiv($size, 10)));
    [$less_time, $less_memory] = read_file($file);
    file_put_contents($file, statement_file($shape, $size));
    [$time, $memory] = read_file($file);
    printf("%-42s %8.3f %12.1f %12.1f %12.1f\n", $shape, $time, $time / max($less_time, 1e-4), $memory / $size, $memory / $less_memory);
}
unlink($file);
