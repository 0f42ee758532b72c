--TEST--
Names, arguments and constants that a script sees
--FILE--
<?php
require __DIR__ . '/support.inc';

function signature(ReflectionMethod $method): string
{
    $arguments = [];
    foreach ($method->getParameters() as $argument) {
        $arguments[] = ($argument->getType() ? $argument->getType()->getName() . ' ' : '')
            . ($argument->isPassedByReference() ? '&' : '') . '$' . $argument->getName()
            . ($argument->isOptional() ? ' optional' : '');
    }
    return implode(' ', Reflection::getModifierNames($method->getModifiers())) . ' ' . $method->getName()
        . '(' . implode(', ', $arguments) . ')';
}

/** The classes of a namespace, and what they have of their own. */
function classes(string $in = ''): string
{
    $lines = '';
    foreach (['SEPA', 'SEPAException', 'SEPAStatementParser'] as $name) {
        $class = new ReflectionClass($in . $name);
        $parent = $class->getParentClass();
        $lines .= $name . ($parent ? ' extends ' . $parent->getShortName() : '') . ', ' . count($class->getConstants())
            . ' constants, ' . (count($class->getProperties()) - ($parent ? 4 : 0)) . " properties\n";
        foreach ($parent ? [] : $class->getMethods() as $method) {
            $lines .= '  ' . signature($method) . "\n";
        }
    }
    return $lines;
}

$extension = new ReflectionExtension('SEPA');
echo classes(), str_replace('&', ' ', http_build_query($extension->getConstants())), "\n";
echo $extension->getName(), ' ', $extension->getVersion(), ', ', count($extension->getFunctions()), ' functions, ',
    count($extension->getINIEntries()), ' entries, ', count($extension->getDependencies()), " dependencies\n";
$extension->info();

// The signatures for readers, in a namespace of their own, say the same but for
// the status, which the module declares as required and does not ask for.
$signatures = file_get_contents(signatures_file());
eval('namespace Signatures; class Exception extends \Exception {}' . substr($signatures, strlen('<?php')));
var_dump(classes('Signatures\\') === str_replace('&$status', '&$status optional', classes()));
$constants = [];
foreach (get_defined_constants(true)['user'] as $name => $value) {
    $constants[str_ireplace('signatures\\', '', $name)] = $value;
}
var_dump($constants == $extension->getConstants());
$keys = shape_keys('@phpstan-param array{');
$unknown = array_filter($keys, function ($key) {
    $outcome = outcome(function () use ($key) { direct_debit()->add([$key => str_repeat('x', 200)]); });
    return $outcome === "SEPAException 0: Invalid transaction property '$key'";
});
echo count($keys), ' keys of transactions, of which direct debits do not know ', implode(', ', $unknown), "\n";
--EXPECT--
SEPA, 0 constants, 0 properties
  public __construct($msgtype)
  public setIBAN($iban)
  public setBIC($bic)
  public setName($name)
  public setCreditorIdentifier($identifier)
  public setDate($date)
  public setDDType($type)
  public setBatchBooking($batchbooking)
  public setMessageId($msgid)
  public add(array $tx)
  public toXML()
  public static init($option, $value)
  public static IBAN_convert($country, $account, $bank_id, &$status)
  public static IBAN_getBIC($iban)
  public static IBAN_check($iban)
  public static BIC_getBankName($bic)
  public static BIC_getBankFlags($bic)
SEPAException extends Exception, 0 constants, 0 properties
SEPAStatementParser, 0 constants, 0 properties
  public __construct()
  public load($format, $filename)
  public getStatements()
SEPA_DDTYPE_CORE=0 SEPA_DDTYPE_COR1=1 SEPA_DDTYPE_B2B=2 SEPA_MSGTYPE_CTI=2 SEPA_MSGTYPE_DDI=1 SEPA_INIT_RULEBOOK=3 SEPA_SCL_SCT=1 SEPA_SCL_SDD=2 SEPA_SCL_COR1=4 SEPA_SCL_B2B=8 SEPA_STMT_FORMAT_MT940=1
SEPA 2.28, 0 functions, 0 entries, 0 dependencies

SEPA

zalvora => enabled
Version => 2.28
bool(true)
bool(true)
30 keys of transactions, of which direct debits do not know purp
