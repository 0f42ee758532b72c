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

/**
 * A copy of the file as the parser reads it whole: CR LF at each line's end, one
 * before the first line, and a line of its own between a :86: and the closing
 * "-". It is gone when the program lets go of it.
 */
function readable_copy(string $file)
{
    $text = @file_get_contents($file);
    if ($text === false) {
        stop("can't read $file");
    }
    $text = "\r\n" . preg_replace('/\r\n?|\n/', "\r\n", $text) . "\r\n";
    if (preg_match('/\n:61:\d{6}(\d{4})?R?[CD][A-Z]?\d+(,\d*)?[^\d,\rN].*/', $text, $line)) {
        stop("$file: only transaction types that begin with N are understood, not this: " . trim($line[0]));
    }
    $copy = tmpfile();
    fwrite($copy, str_replace("\r\n-\r\n", "\r\n:\r\n-\r\n", $text));
    return $copy;
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

$copy = readable_copy($file);
$parser = new SEPAStatementParser();
try {
    $parser->load(SEPA_STMT_FORMAT_MT940, stream_get_meta_data($copy)['uri']);
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
    stop("$file: no line begins with :20:, so this is no MT940 file");
}
array_map('print_statement', $statements);
