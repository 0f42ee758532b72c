--TEST--
Statement files: what cannot be read, what is empty, and one load for each object
--FILE--
<?php
require __DIR__ . '/support.inc';

$file = __DIR__ . '/statement_errors.sta';
$content = "\r\n:20:A\r\n:25:B\r\n-\r\n";
function load($parser, $file, $format = SEPA_STMT_FORMAT_MT940): void
{
    echo outcome(function () use ($parser, $file, $format) { return $parser->load($format, $file); }), "\n";
}

exec("mkfifo $file.fifo");  // without a writer, which must not hang
foreach (['/no/such/file', '', __DIR__, '/dev/null', "$file.fifo"] as $other) {
    load(new SEPAStatementParser(), $other);
}
$shorter = '/sys/kernel/mm/transparent_hugepage/enabled';  // tells the size of a page
if (is_readable($shorter)) {
    load(new SEPAStatementParser(), $shorter);
} else {
    echo "SEPAException 0: Error while reading from file: unexpected end of file\n";
}
foreach (["\0$content", "\n:20:A\n-\n", $content] as $written) {
    file_put_contents($file, $written);
    load($parser = new SEPAStatementParser(), $file);
    echo $parser->getStatements()[0]['account'] ?? 'none', "\n";
}

echo "-- one load for each object\n";
$parser = new SEPAStatementParser();
foreach ([2, 0, beyond_int32() + 1, 'x', 1, 1, 2] as $format) {
    load($parser, $file, $format);
}
load((new ReflectionClass('SEPAStatementParser'))->newInstanceWithoutConstructor(), $file, 2);

echo "-- a name that constructs the object anew\n";
load($parser, new class {
    public function __toString() { $GLOBALS['parser']->__construct(); return $GLOBALS['file']; }
});
--CLEAN--
<?php array_map('unlink', glob(__DIR__ . '/statement_errors.sta*'));
--EXPECT--
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Error while reading from file: Is a directory
SEPAException 0: Input file is empty
SEPAException 0: Input file is empty
SEPAException 0: Error while reading from file: unexpected end of file
SEPAException 0: 
none
true
none
true
B
-- one load for each object
SEPAException 42: invalid/unknown statement format
SEPAException 42: invalid/unknown statement format
SEPAException 42: invalid/unknown statement format
argument error
true
SEPAException 0: Parser already used
SEPAException 42: invalid/unknown statement format
SEPAException 42: invalid/unknown statement format
-- a name that constructs the object anew
true
