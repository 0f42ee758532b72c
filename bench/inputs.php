<?php
/*
 * Makes the inputs of bench/rows.php, the same ones each time:
 *
 *     php -n -d extension=/path/to/sepa.so bench/inputs.php DIRECTORY [growth]
 *
 * German banks are drawn by bank code, so that a bank with a hundred codes
 * counts a hundred times, as it does in a real file.
 */

const ROWS = 10000;

function draw_account(): string
{
    return substr(str_pad((string) mt_rand(0, 999999999), 9, '0', STR_PAD_LEFT) . mt_rand(0, 9), 0, 10);
}

/** The IBAN of a country and its national part, with the check digits of ISO 7064. */
function iban_of(string $country, string $national): string
{
    $digits = '';
    foreach (str_split($national . $country . '00') as $character) {
        $digits .= is_numeric($character) ? $character : (string) (ord($character) - 55);
    }
    $remainder = 0;
    foreach (str_split($digits) as $digit) {
        $remainder = ($remainder * 10 + (int) $digit) % 97;
    }
    return $country . sprintf('%02d', 98 - $remainder) . $national;
}

/** The last data column wins where a bank code has several periods. */
function read_column(string $file, int $key, int $value): array
{
    $column = [];
    $rows = fopen($file, 'r');
    fgetcsv($rows);
    while (($row = fgetcsv($rows)) !== false) {
        $column[$row[$key]] = $row[$value];
    }
    return $column;
}

$to = $argv[1];
$lists = __DIR__ . '/../data/2025-03';
mt_srand(4711);

$codes = array_map('strval', array_keys(read_column("$lists/de.csv", 1, 3)));
$german = $wrong = $accounts = [];
while (count($german) < ROWS) {
    $code = $codes[mt_rand(0, count($codes) - 1)];
    $account = draw_account();
    $iban = iban_of('DE', $code . $account);
    if (!isset($german[$iban]) && SEPA::IBAN_check($iban)) {
        $german[$iban] = $iban;
        $wrong[] = substr($iban, 0, 2) . sprintf('%02d', ((int) substr($iban, 2, 2) + 5) % 97 + 2) . substr($iban, 4);
        $accounts[] = ltrim($account, '0') . " $code";
    }
}

$others = [];
while (count($others) < ROWS) {
    $number = draw_account() . draw_account() . draw_account();
    $forms = ['AT' => substr($number, 0, 16), 'FR' => substr($number, 0, 10) . 'A' . substr($number, 10, 12),
              'NL' => 'ABNA' . substr($number, 0, 10), 'BE' => substr($number, 0, 12), 'ES' => substr($number, 0, 20)];
    foreach ($forms as $country => $national) {
        if (SEPA::IBAN_check(iban_of($country, $national))) {
            $others[] = iban_of($country, $national);
        }
    }
}

$named = array_keys(array_filter(read_column("$lists/bic.csv", 0, 5)));
$bics = [];
for ($i = 0; $i < ROWS; $i++) {
    $bics[] = $named[mt_rand(0, count($named) - 1)];
}

foreach (['german' => $german, 'wrong' => $wrong, 'others' => array_slice($others, 0, ROWS), 'accounts' => $accounts,
          'bics' => $bics] as $name => $lines) {
    file_put_contents("$to/$name.txt", implode("\n", $lines));
}

// Statements of 100 bookings each, for files of 1 to 250 MB.
function write_statements(string $file, int $bookings): void
{
    $out = fopen($file, 'w');
    for ($i = 0; $i < $bookings; $i++) {
        if ($i % 100 === 0) {
            fwrite($out, "\r\n:20:STARTUMSE\r\n:25:37040044/0532013000\r\n:28C:00001/001\r\n:60F:C240101EUR1234,56\r\n");
        }
        fprintf($out, ":61:2401020102%sR%d,%02dNTRFNONREF//B%07d\r\n"
            . ":86:166?00GUTSCHRIFT?109249?20EREF+RG-%07d?21SVWZ+Rechnung %07d?22vom 2.1.2024 Danke?23Kundennummer 4711-0815"
            . "?24Lieferschein 2024/%07d"
            . "?30COBADEFFXXX?31DE89370400440532013000?32MUELLER UND SOEHNE GMBH?33MUENCHEN?34997\r\n",
            $i % 3 ? 'C' : 'D', $i % 9000, $i % 100, $i, $i, $i, $i);
        if ($i % 100 === 99) {
            fwrite($out, ":62F:C240102EUR1,00\r\n-");
        }
    }
}

$bookings = ($argv[2] ?? '') === 'growth' ? [4000, 40000, 400000, 1000000] : [20000];
foreach ($bookings as $count) {
    write_statements("$to/statements-$count.sta", $count);
}
