<?php
/*
 * One row of the benchmark, measured once in this process:
 *
 *     php -n -d extension=/path/to/sepa.so bench/rows.php ROW DIRECTORY
 *
 * DIRECTORY is that of bench/inputs.php. Prints the figure (nanoseconds of one
 * piece of work, or kilobytes) and the nanoseconds of one md5() of an IBAN in
 * the same process, measured afterwards so that the row meets a cold process.
 */

[, $row, $inputs] = $argv;

function lines(string $name): array
{
    return explode("\n", file_get_contents($GLOBALS['inputs'] . "/$name.txt"));
}

/** Nanoseconds of the processor so far, which others on the machine do not count in. */
function now(): float
{
    $usage = getrusage();
    return ($usage['ru_utime.tv_sec'] + $usage['ru_stime.tv_sec']) * 1e9
        + ($usage['ru_utime.tv_usec'] + $usage['ru_stime.tv_usec']) * 1e3;
}

/** Nanoseconds of one call of md5(), the best of several rounds. */
function md5_ns(): float
{
    $best = INF;
    for ($round = 0; $round < 7; $round++) {
        $start = now();
        for ($i = 0; $i < 30000; $i++) {
            md5('DE89370400440532013000');
        }
        $best = min($best, (now() - $start) / 30000);
    }
    return $best;
}

/** Nanoseconds of $work for one of $items, over so many passes from a cold start. */
function pass(array $items, callable $work, int $passes = 10): float
{
    $start = now();
    for ($i = 0; $i < $passes; $i++) {
        $work($items);
    }
    return (now() - $start) / (count($items) * $passes);
}

function check(array $ibans): void
{
    foreach ($ibans as $iban) {
        SEPA::IBAN_check($iban);
    }
}

function convert(array $accounts): void
{
    foreach ($accounts as [$account, $bank]) {
        SEPA::IBAN_convert('DE', $account, $bank);
    }
}

function bic(array $ibans): void
{
    foreach ($ibans as $iban) {
        SEPA::IBAN_getBIC($iban);
    }
}

function bank_name(array $bics): void
{
    foreach ($bics as $bic) {
        SEPA::BIC_getBankName($bic);
    }
}

function message(int $type): SEPA
{
    SEPA::init(SEPA_INIT_RULEBOOK, 'DE-3.7');
    $message = new SEPA($type);
    $message->setName('Zimmerei Sander GmbH');
    $message->setIBAN('DE89370400440532013000');
    $message->setBIC('COBADEFFXXX');
    $message->setCreditorIdentifier('DE98ZZZ09999999999');
    return $message;
}

const DATES = ['2026-11-26', '2026-11-27', '2026-11-30', '2026-12-01', '2026-12-02'];

/** A payroll: seven keys, five dates in turn, every array built in the loop. */
function transfers(int $count): float
{
    $ibans = lines('german');
    $start = now();
    $message = message(SEPA_MSGTYPE_CTI);
    for ($i = 0; $i < $count; $i++) {
        $message->add(['name' => 'Müller & Söhne GmbH', 'iban' => $ibans[$i % 10000], 'bic' => 'COBADEFFXXX',
                       'amount' => ($i % 9000 + 1) . '.37', 'ref' => "Rechnung 2026-$i vom 12.11.2026",
                       'id' => "RE-2026-$i", 'date' => DATES[$i % 5]]);
    }
    $message->toXML();
    return (now() - $start) / $count;
}

function debits(int $count): float
{
    $ibans = lines('german');
    $start = now();
    $message = message(SEPA_MSGTYPE_DDI);
    for ($i = 0; $i < $count; $i++) {
        $message->add(['name' => 'Müller & Söhne GmbH', 'iban' => $ibans[$i % 10000], 'bic' => 'COBADEFFXXX',
                       'amount' => ($i % 9000 + 1) . '.37', 'ref' => "Rechnung 2026-$i vom 12.11.2026",
                       'id' => "RE-2026-$i", 'date' => DATES[$i % 5], 'seq' => 'RCUR', 'mref' => "M-$i",
                       'mdate' => '2024-01-02']);
    }
    $message->toXML();
    return (now() - $start) / $count;
}

/** Nanoseconds of one booking; the arrays stand in $statements. */
function statement(string $file, ?array &$statements): float
{
    $start = now();
    $parser = new SEPAStatementParser();
    $parser->load(SEPA_STMT_FORMAT_MT940, $file);
    $statements = $parser->getStatements();
    $time = now() - $start;
    return $time / (100 * count($statements));
}

function peak_kilobytes(): float
{
    preg_match('/VmHWM:\s*(\d+)/', file_get_contents('/proc/self/status'), $match);
    return (float) $match[1];
}

function measure(string $row, string $inputs): float
{
    switch ($row) {
        case 'check':
            return pass(lines('german'), 'check');
        case 'check-wrong':
            return pass(lines('wrong'), 'check');
        case 'check-others':
            return pass(lines('others'), 'check');
        case 'convert':
            return pass(array_map(function ($line) { return explode(' ', $line); }, lines('accounts')), 'convert');
        case 'bic':
            return pass(lines('german'), 'bic');
        case 'bank-name':
            return pass(lines('bics'), 'bank_name');
        case 'statements-memory':
            statement("$inputs/statements-20000.sta", $statements);
            return peak_kilobytes();
        case 'first-call':
            $start = hrtime(true);  // too short for the other clock
            SEPA::IBAN_check('DE89370400440532013000');
            return hrtime(true) - $start;
        case 'transfers-memory':
            transfers(100000);
            return peak_kilobytes();
    }
    [$kind, $count] = explode('-', $row);
    switch ($kind) {
        case 'statements':
            return statement("$inputs/statements-$count.sta", $statements);
        case 'debits':
            return debits((int) $count);
        default:
            return transfers((int) $count);
    }
}

$figure = measure($row, $inputs);
printf("%.2f %.2f\n", $figure, md5_ns());
