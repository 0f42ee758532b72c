--TEST--
The keys of the signatures' array shape for add() are those that it knows
--FILE--
<?php
require __DIR__ . '/support.inc';

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

SEPA::init(SEPA_INIT_RULEBOOK, 'DE-3.7');
$keys = shape_keys('@phpstan-param array{');
echo count($keys), ' keys, unknown: ', implode(', ', array_filter($keys, function ($key) { return !is_known($key); })), "\n";
var_dump(is_known('addrTwn'));
?>
--EXPECT--
30 keys, unknown: 
bool(false)
