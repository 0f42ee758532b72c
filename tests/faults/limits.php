<?php
/* Sizes that no sane script uses: nothing crashes, nothing is slow, and the
 * answers are the ordinary ones. The last line counts. */
require __DIR__ . '/../phpt/support.inc';
require __DIR__ . '/statement_shapes.php';
ini_set('memory_limit', '4G');  // before the machine runs out

$passed = $failed = 0;

/** Whether $call has this outcome within a minute. */
function expect(string $what, string $expected, callable $call): void
{
    global $passed, $failed;
    $start = microtime(true);
    $seen = outcome($call);
    $seconds = microtime(true) - $start;
    if ($seen === $expected && $seconds < 60) {
        $passed++;
        return;
    }
    $failed++;
    fprintf(STDERR, "%s: %s, %.1f s\n", $what, substr($seen, 0, 300), $seconds);
}

// Texts of 100 MB.
$huge = str_repeat('x', 100 << 20);
$transfer = credit_transfer();
$debit = direct_debit();
expect('a name', 'SEPAException 0: sepa_setAccount: Name too long', function () use ($transfer, $huge) {
    return $transfer->setName($huge);
});
expect('an amount', 'SEPAException 0: Invalid amount', function () use ($debit, $huge) {
    return $debit->add(collection(['amount' => strtr($huge, 'x', '1')]));
});
expect('a file name', "SEPAException 0: Can't open input file: File name too long", function () use ($huge) {
    return (new SEPAStatementParser())->load(SEPA_STMT_FORMAT_MT940, $huge);
});
expect('a key that is ignored', 'true', function () use ($transfer, $huge) { return $transfer->add(payment([$huge => $huge])); });
unset($huge);

// Millions of keys, and of transactions in a thousand blocks.
$million = array_fill(0, 1000000, 'x');
expect('a million keys', 'true', function () use ($transfer, $million) { return $transfer->add(payment() + $million); });
expect('a million unknown keys', "SEPAException 0: Invalid transaction property '4'", function () use ($debit, $million) {
    return $debit->add(collection(array_slice($million, 4, null, true)));
});
unset($million);
foreach (['credit_transfer' => 'payment', 'direct_debit' => 'collection'] as $kind => $one) {
    expect("$kind of a million", '"1000000 x, 10000.00 EUR, 1000, 1000000"', function () use ($kind, $one) {
        $message = $kind();
        for ($i = 0; $i < 1000000; $i++) {
            $date = sprintf('2%03d-01-01', $i * 7 % 1000);
            $message->add($one(['amount' => '0.01', 'date' => $date, 'name' => "Müller & Söhne $i", 'ref' => 'Rechnung']));
        }
        $document = $message->toXML();
        return totals($message) . ', ' . substr_count($document, '<PmtInf>') . ', ' . substr_count($document, '<EndToEndId>');
    });
}

// Statement files of shapes that invite a square, and an ordinary one of 100 MB.
$file = tempnam(sys_get_temp_dir(), 'sepa');
function read(string $content): bool
{
    file_put_contents($GLOBALS['file'], $content);
    $parser = new SEPAStatementParser();
    $before = memory_get_usage();
    $loaded = $parser->load(SEPA_STMT_FORMAT_MT940, $GLOBALS['file']);
    $statements = $parser->getStatements();
    return $loaded && memory_get_usage() - $before < 120 * strlen($content);
}
foreach (array_keys(STATEMENT_SHAPES) as $shape) {
    expect("a file: $shape", 'true', function () use ($shape) { return read(statement_file($shape, 13000000)); });
}
$statement = "\r\n:20:A\r\n:25:1/2\r\n:60F:C231229EUR1,00\r\n:61:2312290102DR12,30NTRFREF//BANK\r\n"
    . ":86:166?00SEPA?20EREF+E-1?21SVWZ+Rechnung?32Max\r\n-";
expect('a large file', 'true', function () use ($statement) {
    return read(str_repeat($statement, intdiv(100 << 20, strlen($statement))));
});
unlink($file);

echo "$passed passed, $failed failed\n";
exit($failed === 0 ? 0 : 1);
