--TEST--
Array shapes of the signatures: the keys that add() knows and that getStatements() gives
--FILE--
<?php
require __DIR__ . '/support.inc';

/** The keys of the first array shape after $tag, those of an inner one after its own. */
function shape_keys(string $tag): array
{
    $text = strstr(file_get_contents(signatures_file()), $tag);
    preg_match_all('/^ *\* +(\w+)\??: /m', substr($text, 0, strpos($text, '*/')), $keys);
    return $keys[1];
}

/** Whether a direct debit or a credit transfer takes offence at the value of $key: only then it knows the key. */
function is_known(string $key): bool
{
    $messages = [];
    foreach ([SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI] as $kind) {
        try {
            (new SEPA($kind))->add(['iban' => 'DE89370400440532013000', 'amount' => 1, $key => str_repeat('x', 200)]);
        } catch (SEPAException $e) {
            $messages[] = $e->getMessage();
        }
    }
    return (bool) array_diff($messages, ["Invalid transaction property '$key'", 'Sequence type missing']);
}

$file = __DIR__ . '/signatures.sta';
file_put_contents($file, str_replace("\n", "\r\n", <<<'END'

:20:FULL
:25:37040044/0532013000
:28C:4/7
:60F:D231228EUR0,00
:61:2312290102RDR12,34NTRFREF//BANKREF
:86:177?00TEXT?109249?20PLAIN?22EREF+E?23KREF+K?24MREF+M?25CRED+C?26DEBT+D?27PURP+P?28COAM+1,5?29OAMT+2,5?30BANK?31ACCOUNT?32NAME?34997?60SVWZ+S?61ABWA+A?62ABWE+B
:62M:C241345USD1234567,89
-
END
));
$parser = new SEPAStatementParser();
$parser->load(SEPA_STMT_FORMAT_MT940, $file);
[$statement] = $parser->getStatements();

SEPA::init(SEPA_INIT_RULEBOOK, 'DE-3.7');
$keys = shape_keys('@phpstan-param array{');
echo count($keys), ' keys, unknown: ', implode(', ', array_filter($keys, function ($key) { return !is_known($key); })), "\n";
var_dump(shape_keys('@phpstan-return') === array_merge(array_keys($statement), array_keys($statement['tx'][0])));
var_dump(is_known('addrTwn'));
?>
--CLEAN--
<?php
unlink(__DIR__ . '/signatures.sta');
?>
--EXPECT--
30 keys, unknown: 
bool(true)
bool(false)
