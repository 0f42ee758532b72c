<?php
/* What the examples share. */

if (!extension_loaded('SEPA')) {
    stop('The extension is not loaded: php -d extension=/path/to/sepa.so …');
}

/** Writes one line to standard error. */
function tell(string $line): void
{
    fwrite(STDERR, $line . "\n");
}

/** Ends the program with a reason. */
function stop(string $reason): void
{
    tell($reason);
    exit(1);
}

function select_rulebook(string $rulebook): void
{
    if (!SEPA::init(SEPA_INIT_RULEBOOK, $rulebook)) {
        stop("unknown rulebook: $rulebook");
    }
}

/**
 * The rows of a CSV file with a header line that has $columns, each an array
 * by column name under the number of its line.
 */
function read_csv(string $file, array $columns): iterable
{
    $handle = @fopen($file, 'r');
    if (!$handle) {
        stop("can't read $file");
    }
    $header = fgetcsv($handle, 0, ',', '"', '\\') ?: [];
    $header = preg_replace('/^\xEF\xBB\xBF/', '', $header);  // a byte order mark
    if (array_diff($columns, $header)) {
        stop("$file, line 1: these columns expected, with commas between: " . implode(',', $columns));
    }
    for ($line = 2; ($fields = fgetcsv($handle, 0, ',', '"', '\\')) !== false; $line++) {
        if ($fields === [null]) {  // an empty line
            continue;
        }
        if (count($fields) !== count($header)) {
            stop("$file, line $line: " . count($header) . ' columns expected');
        }
        if (!preg_match('//u', implode($fields))) {
            stop("$file, line $line: not in UTF-8; a spreadsheet asks for it when it saves");
        }
        yield $line => array_combine($header, $fields);
    }
    fclose($handle);
}

/** The extension counts the characters of a date and no more. */
function check_dates(string $file, int $line, array $dates): void
{
    foreach ($dates as $date) {
        if (!preg_match('/^\d{4}-\d\d-\d\d$/D', $date) || !checkdate((int) substr($date, 5, 2), (int) substr($date, 8), (int) $date)) {
            stop("$file, line $line: no date: $date");
        }
    }
}

/** DE-2.6 allowed neither umlauts nor the ampersand. */
function in_charset_of(string $rulebook, string $text): string
{
    if ($rulebook !== 'DE-2.6') {
        return $text;
    }
    return strtr($text, [
        'Ä' => 'Ae', 'Ö' => 'Oe', 'Ü' => 'Ue', 'ä' => 'ae', 'ö' => 'oe', 'ü' => 'ue', 'ß' => 'ss',
        '&' => '+', '%' => 'v.H.',
    ]);
}

/**
 * A credit transfer as the bank takes it: the schema of DE-3.7 wants <Dt> inside
 * the execution date, which the extension writes bare. No value can hold these
 * tags, since "<" is escaped in them.
 */
function with_date_element(string $rulebook, string $transfer): string
{
    if ($rulebook !== 'DE-3.7') {
        return $transfer;
    }
    return str_replace(['<ReqdExctnDt>', '</ReqdExctnDt>'], ['<ReqdExctnDt><Dt>', '</Dt></ReqdExctnDt>'], $transfer);
}

/** The row's BIC. DE-2.6 asks for one in every row; the directory knows most. */
function bic_of(string $rulebook, array $row): string
{
    if ($row['bic'] !== '' || $rulebook !== 'DE-2.6') {
        return $row['bic'];
    }
    return (string) SEPA::IBAN_getBIC($row['iban']);
}
