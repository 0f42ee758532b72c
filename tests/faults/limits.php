<?php
/* Sizes that no sane script uses: nothing crashes, nothing is slow, and the
 * answers are the ordinary ones. The last line counts. */
require __DIR__ . '/../phpt/support.inc';
require __DIR__ . '/statement_shapes.php';
ini_set('memory_limit', '-1');
error_reporting(E_ALL & ~E_WARNING & ~E_NOTICE);

$passed = $failed = 0;

/** Runs $call and compares its result, or the exception's text, within a minute. */
function expect(string $what, $expected, callable $call): void
{
    global $passed, $failed;
    $start = microtime(true);
    try {
        $seen = $call();
    } catch (SEPAException $e) {
        $seen = $e->getMessage();
    }
    $seconds = microtime(true) - $start;
    if ($seen === $expected && $seconds < 60) {
        $passed++;
        return;
    }
    $failed++;
    fprintf(STDERR, "%s: %s, %.1f s\n", $what, substr(var_export($seen, true), 0, 300), $seconds);
}

/** Expects a failure whose reason is no longer than others are. */
function refused(string $what, callable $call): void
{
    expect($what, 'refused', function () use ($call) {
        try {
            return var_export($call(), true);
        } catch (SEPAException $e) {
            return strlen($e->getMessage()) < 256 ? 'refused' : 'a reason of ' . strlen($e->getMessage()) . ' bytes';
        }
    });
}

// Texts of 100 MB.
$huge = str_repeat('x', 100 << 20);
$transfer = credit_transfer('DE-3.7');
$debit = direct_debit('DE-3.7');
foreach (['setIBAN', 'setBIC', 'setName', 'setCreditorIdentifier', 'setDate', 'setMessageId'] as $setter) {
    refused($setter, function () use ($transfer, $setter, $huge) { return $transfer->$setter($huge); });
}
$keys = ['name', 'iban', 'bic', 'addrCC', 'addrTown', 'ref', 'amount', 'date', 'id', 'mref', 'seq', 'smnda', $huge];
foreach ($keys as $key) {
    refused('add of ' . substr($key, 0, 20), function () use ($debit, $key, $huge) {
        return $debit->add(collection([$key => $huge]));
    });
}
expect('a key that is ignored', true, function () use ($transfer, $huge) { return $transfer->add(payment([$huge => $huge])); });
refused('an amount of digits', function () use ($debit) {
    return $debit->add(collection(['amount' => str_repeat('1', 100 << 20)]));
});
expect('an amount of zeros', true, function () use ($debit) {
    return $debit->add(collection(['amount' => str_repeat('0', 17) . '.5' . str_repeat('0', 100 << 20)]));
});
expect('IBAN_check', false, function () use ($huge) { return SEPA::IBAN_check("DE$huge"); });
expect('IBAN_getBIC', null, function () use ($huge) { return SEPA::IBAN_getBIC("DE$huge"); });
expect('IBAN_convert', null, function () use ($huge) { return SEPA::IBAN_convert('DE', $huge, $huge, $status); });
expect('BIC_getBankName', null, function () use ($huge) { return SEPA::BIC_getBankName($huge); });
expect('init', false, function () use ($huge) { return SEPA::init(SEPA_INIT_RULEBOOK, $huge); });

// Arrays of a million elements, deep ones and such as hold themselves.
$million = array_fill(0, 1000000, 'x');
$deep = [];
for ($i = 0; $i < 100000; $i++) {
    $deep = [$deep];
}
$itself = payment(['date' => '2026-12-02']);
$itself['other'] = &$itself;
expect('a million number keys', true, function () use ($transfer, $million) { return $transfer->add(payment() + $million); });
expect('a million text keys', true, function () use ($transfer) {
    $list = [];
    for ($i = 0; $i < 1000000; $i++) {
        $list["key $i"] = $i;
    }
    return $transfer->add($list + payment());
});
expect('a million unknown keys', "Invalid transaction property '4'", function () use ($debit, $million) {
    return $debit->add(collection(array_slice($million, 4, null, true)));
});
expect('a deep value', true, function () use ($transfer, $deep) { return $transfer->add(payment(['name' => 'x', 'more' => $deep])); });
expect('an array in itself', true, function () use ($transfer, $itself) { return $transfer->add($itself); });
unset($million, $deep, $itself);

/** Adds to a message while it is turned into text for an add to that message. */
class Nested
{
    public $depth = 1000;
    private $message;
    public function __construct(SEPA $message) { $this->message = $message; }
    public function __toString(): string
    {
        if (--$this->depth > 0) {
            $this->message->add(payment(['ref' => $this]));
        }
        return 'nested';
    }
}
expect('adds in adds', true, function () {
    $message = credit_transfer();
    return $message->add(payment(['ref' => new Nested($message)])) && totals($message) === '1000 x, 1000.00 EUR';
});

// A million transactions, in a thousand blocks.
foreach (['credit_transfer' => 'payment', 'direct_debit' => 'collection'] as $kind => $one) {
    $message = $kind();
    expect("$kind, a million adds", 1000000, function () use ($message, $one) {
        $added = 0;
        $transactions = [];
        for ($i = 0; $i < 1000; $i++) {
            $date = sprintf('2%03d-01-01', $i * 7 % 1000);
            $transactions[] = $one(['amount' => '0.01', 'date' => $date, 'name' => "Müller & Söhne $i", 'ref' => 'Rechnung']);
        }
        for ($i = 0; $i < 1000000; $i++) {
            $added += (int) $message->add($transactions[$i % 1000]);
        }
        return $added;
    });
    expect("$kind of a million", ['1000000', '10000.00', 1000, 1000000], function () use ($message) {
        $document = $message->toXML();
        preg_match('~<NbOfTxs>(.*)</NbOfTxs>\s*<CtrlSum>(.*)</CtrlSum>~', $document, $match);
        return [$match[1], $match[2], substr_count($document, '<PmtInf>'), substr_count($document, '<EndToEndId>')];
    });
    unset($message);
}

// Statement files of shapes that invite a square, and an ordinary one of 100 MB; and a name that long.
$file = tempnam(sys_get_temp_dir(), 'sepa');
$read = function (string $content) use ($file): bool {
    ini_set('memory_limit', '4G');  // before the machine runs out
    file_put_contents($file, $content);
    $parser = new SEPAStatementParser();
    $before = memory_get_usage();
    $loaded = $parser->load(SEPA_STMT_FORMAT_MT940, $file);
    $statements = $parser->getStatements();
    return $loaded && memory_get_usage() - $before < 120 * strlen($content);
};
foreach (array_keys(STATEMENT_SHAPES) as $shape) {
    expect("a file: $shape", true, function () use ($read, $shape) { return $read(statement_file($shape, 13000000)); });
}
$statement = "\r\n:20:A\r\n:25:1/2\r\n:60F:C231229EUR1,00\r\n:61:2312290102DR12,30NTRFREF//BANK\r\n"
    . ":86:166?00SEPA?20EREF+E-1?21SVWZ+Rechnung?32Max\r\n-";
expect('a large file', true, function () use ($read, $statement) {
    return $read(str_repeat($statement, intdiv(100 << 20, strlen($statement))));
});
unlink($file);
expect('a long file name', "Can't open input file: File name too long", function () use ($huge) {
    return (new SEPAStatementParser())->load(SEPA_STMT_FORMAT_MT940, $huge);
});

echo "$passed passed, $failed failed\n";
exit($failed === 0 ? 0 : 1);
