<?php
/*
 * Prints the statements of an MT940 file as a table, or all that was read as
 * JSON.
 *
 *     php examples/statement.php [--json] [statement.sta]
 */

require __DIR__ . '/support.php';

/** Banks write UTF-8 or ISO 8859-1, and do not say which. */
function utf8(string $text): string
{
    return preg_match('//u', $text) ? $text : preg_replace_callback('/[\x80-\xFF]/', function ($byte) {
        return chr(0xC0 | ord($byte[0]) >> 6) . chr(0x80 | ord($byte[0]) & 0x3F);
    }, $text);
}

/** The text without control characters, cut or filled up to $width characters. */
function column(string $text, int $width): string
{
    $text = preg_replace('/[\x00-\x1F\x7F]+/', ' ', utf8($text));
    preg_match("/^.{0,$width}/us", $text, $match);
    return $match[0] . str_repeat(' ', $width - preg_match_all('/./us', $match[0]));
}

function money(float $amount): string
{
    return str_pad(number_format($amount, 2, ',', '.'), 14, ' ', STR_PAD_LEFT);
}

/** What the booking is for: the bank's own fields first, free text otherwise. */
function purpose(array $tx): string
{
    return $tx['svwz'] ?? $tx['purpose'] ?? $tx['txtext'] ?? '';
}

function print_balance(string $which, string $date, float $saldo, string $currency): void
{
    echo "  $date  ", column("$which balance", 24), ' ', money($saldo), ' ', column($currency, 3), "\n";
}

function print_statement(array $statement): void
{
    echo 'Account ', column($statement['account'] ?? '(none)', 30), ' No. ', $statement['number'] ?? '-',
        isset($statement['page']) ? "/{$statement['page']}" : '', "\n";
    print_balance('opening', $statement['openDate'], $statement['openSaldo'], $statement['openCurrency']);
    $sum = $statement['openSaldo'];
    foreach ($statement['tx'] as $tx) {
        $sum += $tx['amount'];
        $who = $tx['name'] !== '' ? $tx['name'] : $tx['txtext'] ?? '';
        echo '  ', $tx['booked'] ?? $tx['valuta'], '  ', column($who, 24), ' ', money($tx['amount']), '  ',
            rtrim(column(purpose($tx), 48)), "\n";
    }
    print_balance('closing', $statement['closeDate'], $statement['closeSaldo'], $statement['closeCurrency']);
    if (abs($sum - $statement['closeSaldo']) >= 0.005) {
        echo "  The bookings do not lead from the opening to the closing balance.\n";
    }
    echo "\n";
}

$arguments = array_slice($argv, 1);
$as_json = in_array('--json', $arguments, true);
$file = array_values(array_diff($arguments, ['--json']))[0] ?? __DIR__ . '/statement.sta';

$parser = new SEPAStatementParser();
try {
    $parser->load(SEPA_STMT_FORMAT_MT940, $file);
} catch (SEPAException $e) {
    stop("$file: {$e->getMessage()}");
}
$statements = $parser->getStatements() ?? [];

if ($as_json) {
    if (!function_exists('json_encode')) {
        stop('this PHP has no JSON');
    }
    array_walk_recursive($statements, function (&$value) {
        if (is_string($value)) {
            $value = utf8($value);
        }
    });
    $json = json_encode($statements, JSON_PRETTY_PRINT | JSON_UNESCAPED_UNICODE | JSON_UNESCAPED_SLASHES
        | JSON_PRESERVE_ZERO_FRACTION);
    if ($json === false) {  // an amount beyond all numbers
        stop("$file: " . json_last_error_msg());
    }
    echo $json, "\n";
    exit;
}
if (!$statements) {
    stop("$file: no statement; the lines of an MT940 file end in CR LF");
}
array_map('print_statement', $statements);
