--TEST--
Statement files that cannot be read, objects without a handle, no copies
--FILE--
<?php
require __DIR__ . '/support.inc';

$file = __DIR__ . '/statement_errors.sta';
$content = "\r\n:20:A\r\n:25:B\r\n-\r\n";
file_put_contents($file, $content);
$load = function ($parser, $file, $format = SEPA_STMT_FORMAT_MT940) {
    show(function () use ($parser, $file, $format) { return $parser->load($format, $file); });
};

echo "-- files\n";
$load(new SEPAStatementParser(), '/no/such/file');
$load(new SEPAStatementParser(), '');
$load(new SEPAStatementParser(), __DIR__);
$load(new SEPAStatementParser(), '/dev/null');
foreach (["\0$content", "\n:20:A\n-\n", "\r\n:20:A"] as $other) {
    file_put_contents("$file.other", $other);
    $parser = new SEPAStatementParser();
    $load($parser, "$file.other");
    var_dump($parser->getStatements());
}
unlink("$file.other");

echo "-- one load for each object\n";
$parser = new SEPAStatementParser();
$load($parser, $file, 2);
$load($parser, $file, 0);
$load($parser, $file, 2 ** 32 + 1);
$load($parser, $file);
$load($parser, $file);
$load($parser, $file, 2);
echo $parser->getStatements()[0]['account'], "\n";
$parser = new SEPAStatementParser();
$load($parser, '/no/such/file');
$load($parser, $file);
$parser->__construct();
var_dump($parser->getStatements());
$load($parser, $file);
echo $parser->getStatements()[0]['account'], "\n";

echo "-- arguments\n";
foreach ([[], [1], ['x', $file], [1, []]] as $arguments) {
    show_argument_error(function () use ($arguments) { return (new SEPAStatementParser())->load(...$arguments); });
}

echo "-- a name that constructs the object anew\n";
class Name
{
    public $parser;
    public $file;
    public function __toString() { $this->parser->__construct(); return $this->file; }
}
$name = new Name();
$name->parser = new SEPAStatementParser();
$name->file = $file;
$load($name->parser, $name);

echo "-- without a handle\n";
class Lazy extends SEPAStatementParser
{
    public $a = 1;
    protected $b = [2];
    public function __construct() {}
}
$lazy = new Lazy();
$load($lazy, $file);
$load($lazy, $file, 2);
show(function () use ($lazy) { return $lazy->getStatements(); });

echo "-- subclasses keep their properties and the handle\n";
class Mine extends SEPAStatementParser
{
    public $note = 'kept';
    private $list = [1, 2, 3];
    public function list() { return count($this->list); }
}
$mine = new Mine();
var_dump($mine->load(SEPA_STMT_FORMAT_MT940, $file), $mine->note, $mine->list(), count($mine->getStatements()));

echo "-- copies\n";
show(function () { return clone new SEPAStatementParser(); });
$copy = @unserialize('O:19:"SEPAStatementParser":0:{}');
show(function () use ($copy) { return $copy->getStatements(); });
--CLEAN--
<?php unlink(__DIR__ . '/statement_errors.sta');
--EXPECT--
-- files
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Error while reading from file: Is a directory
SEPAException 0: Input file is empty
SEPAException 0: 
NULL
bool(true)
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
SEPAException 0: Can't open input file: No such file or directory
SEPAException 0: Parser already used
NULL
bool(true)
B
-- arguments
argument error
argument error
argument error
argument error
-- a name that constructs the object anew
bool(true)
-- without a handle
SEPAException 0: invalid sepa_stmt_parser_t handle
SEPAException 42: invalid/unknown statement format
SEPAException 0: invalid sepa_stmt_parser_t handle
-- subclasses keep their properties and the handle
bool(true)
string(4) "kept"
int(3)
int(1)
-- copies
Error 0: Trying to clone an uncloneable object of class SEPAStatementParser
SEPAException 0: invalid sepa_stmt_parser_t handle
