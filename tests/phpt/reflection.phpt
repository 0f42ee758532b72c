--TEST--
Names, arguments and constants that a script sees
--FILE--
<?php
function show_class(ReflectionClass $class): void
{
    $parent = $class->getParentClass();
    echo 'class ', $class->getShortName(), $parent ? ' extends ' . $parent->getShortName() : '', "\n";
    foreach ($class->getMethods() as $method) {
        if ($method->getDeclaringClass()->getName() !== $class->getName()) {
            continue;
        }
        $arguments = [];
        foreach ($method->getParameters() as $argument) {
            $type = $argument->getType();
            $arguments[] = ($type ? ($type->allowsNull() ? '?' : '') . $type->getName() . ' ' : '')
                . ($argument->isPassedByReference() ? '&' : '') . '$' . $argument->getName()
                . ($argument->isOptional() ? ' optional' : '');
        }
        echo '  ', implode(' ', Reflection::getModifierNames($method->getModifiers())), ' ', $method->getName(),
            '(', implode(', ', $arguments), ')', $method->isConstructor() ? ' constructor' : '', "\n";
    }
    echo count($class->getConstants()), ' constants, ', count($class->getProperties()) - ($parent ? 4 : 0), " properties\n";
}

/** The classes of a namespace. */
function show_classes(string $in = ''): void
{
    foreach (['SEPA', 'SEPAException', 'SEPAStatementParser'] as $name) {
        show_class(new ReflectionClass($in . $name));
    }
}

show_classes();
foreach ((new ReflectionExtension('SEPA'))->getConstants() as $name => $value) {
    echo "$name = $value\n";
}
$extension = new ReflectionExtension('SEPA');
echo $extension->getName(), ' ', $extension->getVersion(), ', ', count($extension->getFunctions()), ' functions, ',
    count($extension->getINIEntries()), ' entries, ', count($extension->getDependencies()), " dependencies\n";
$extension->info();

// The signatures for readers, in a namespace of their own, say the same but for
// the status, which the module declares as required and does not ask for.
require __DIR__ . '/support.inc';
$signatures = file_get_contents(signatures_file());
eval('namespace Signatures; class Exception extends \Exception {}' . substr($signatures, strlen('<?php')));
ob_start();
show_classes();
$module = str_replace('&$status', '&$status optional', ob_get_clean());
ob_start();
show_classes('Signatures\\');
var_dump(ob_get_clean() === $module);
$constants = [];
foreach (get_defined_constants(true)['user'] as $name => $value) {
    $constants[str_ireplace('signatures\\', '', $name)] = $value;
}
var_dump($constants == $extension->getConstants());
--EXPECT--
class SEPA
  public __construct($msgtype) constructor
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
0 constants, 0 properties
class SEPAException extends Exception
0 constants, 0 properties
class SEPAStatementParser
  public __construct() constructor
  public load($format, $filename)
  public getStatements()
0 constants, 0 properties
SEPA_DDTYPE_CORE = 0
SEPA_DDTYPE_COR1 = 1
SEPA_DDTYPE_B2B = 2
SEPA_MSGTYPE_CTI = 2
SEPA_MSGTYPE_DDI = 1
SEPA_INIT_RULEBOOK = 3
SEPA_SCL_SCT = 1
SEPA_SCL_SDD = 2
SEPA_SCL_COR1 = 4
SEPA_SCL_B2B = 8
SEPA_STMT_FORMAT_MT940 = 1
SEPA 2.28, 0 functions, 0 entries, 0 dependencies

SEPA

zalvora => enabled
Version => 2.28
bool(true)
bool(true)
