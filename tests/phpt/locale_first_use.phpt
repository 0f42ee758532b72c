--TEST--
Patterns that are compiled under another locale are the same
--FILE--
<?php
setlocale(LC_ALL, 'tr_TR.UTF-8', 'de_DE.ISO-8859-1');
require __DIR__ . '/support.inc';
var_dump(SEPA::IBAN_check('DE89370400440532013000'), SEPA::IBAN_check('LI21088100002324013AA'));
show(function () { return credit_transfer()->setBIC('ingddeff'); });
show(function () { return credit_transfer()->setBIC("INGDDEF\xC4"); });
--EXPECT--
bool(true)
bool(true)
bool(true)
SEPAException 0: sepa_setBIC: invalid BIC format
