--TEST--
Statement files that cannot be read, objects without a handle
--FILE--
<?php
require __DIR__ . '/support.inc';

$file = __DIR__ . '/statement_errors.sta';
$content = "\r\n:20:A\r\n:25:B\r\n-\r\n";
$load = function ($parser, $file, $format = SEPA_STMT_FORMAT_MT940) {
    show(function () use ($parser, $file, $format) { return $parser->load($format, $file); });
};

echo "-- files\n";
exec("mkfifo $file.fifo");  // without a writer, which must not hang
foreach (['/no/such/file', '', __DIR__, '/dev/null', "$file.fifo"] as $other) {
    $load(new SEPAStatementParser(), $other);
}
$shorter = '/sys/kernel/mm/transparent_hugepage/enabled';  // tells the size of a page
if (is_readable($shorter)) {
    $load(new SEPAStatementParser(), $shorter);
} else {
    echo "SEPAException 0: Error while reading from file: unexpected end of file\n";
}
foreach (["\0$content", "\n:20:A\n-\n"] as $other) {
    file_put_contents($file, $other);
    $parser = new SEPAStatementParser();
    $load($parser, $file);
    var_dump($parser->getStatements());
}
file_put_contents($file, $content);

echo "-- one load for each object\n";
$parser = new SEPAStatementParser();
foreach ([2, 0, 2 ** 32 + 1, 1, 1, 2] as $format) {
    $load($parser, $file, $format);
}
echo $parser->getStatements()[0]['account'], "\n";
$parser->__construct();
var_dump($parser->getStatements());
$load($parser, $file);

show_argument_error(function () { return (new SEPAStatementParser())->load('x', 'file'); });

echo "-- a name that constructs the object anew\n";
$parser = new SEPAStatementParser();
$load($parser, new class {
    public function __toString() { $GLOBALS['parser']->__construct(); return $GLOBALS['file']; }
});

echo "-- without a handle\n";
$lazy = new class extends SEPAStatementParser {
    public function __construct() {}
};
$load($lazy, $file);
$load($lazy, $file, 2);
show([$lazy, 'getStatements']);

echo "-- subclasses keep their properties and the handle\n";
$mine = new class extends SEPAStatementParser {
    public $note = 'kept';
    private $list = [1, 2, 3];
    public function all() { return "$this->note " . count($this->list) . ' ' . count($this->getStatements()); }
};
$load($mine, $file);
echo $mine->all(), "\n";
--CLEAN--
<?php array_map('unlink', glob(__DIR__ . '/statement_errors.sta*'));
--EXPECT--
-- files
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Error while reading from file: Is a directory
SEPAException 0: Input file is empty
SEPAException 0: Input file is empty
SEPAException 0: Error while reading from file: unexpected end of file
SEPAException 0: 
NULL
bool(true)
NULL
-- one load for each object
SEPAException 42: invalid/unknown statement format
SEPAException 42: invalid/unknown statement format
SEPAException 42: invalid/unknown statement format
bool(true)
SEPAException 0: Parser already used
SEPAException 42: invalid/unknown statement format
B
NULL
bool(true)
argument error
-- a name that constructs the object anew
bool(true)
-- without a handle
SEPAException 0: invalid sepa_stmt_parser_t handle
SEPAException 42: invalid/unknown statement format
SEPAException 0: invalid sepa_stmt_parser_t handle
-- subclasses keep their properties and the handle
bool(true)
kept 3 1
