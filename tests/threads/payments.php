<?php
/* What every thread does, in each of its requests. Prints the digest of all
   answers, which must be the same everywhere, and the generated message ids,
   which must not. */
error_reporting(E_ALL & ~E_DEPRECATED);
$answers = [];

// The first uses of what is made once in a process: no rulebook, no patterns.
// Half the threads race for it, half find it made without having met the maker.
function meet_half()
{
    if (meet() % 2) {
        usleep(5000);
    }
}

meet_half();
$answers[] = SEPA::IBAN_check('DE89370400440532013000');
meet_half();
$message = new SEPA(SEPA_MSGTYPE_CTI);
meet_half();
$answers[] = $message->setBIC('cobadeff');
meet();

function attempt(callable $call)
{
    try {
        return $call();
    } catch (Throwable $e) {
        return get_class($e) . ' ' . $e->getCode() . ' ' . $e->getMessage();
    }
}

foreach (['AT168064680654652158', 'DE88370400440532013000', 'LI21088100002324013AA', 'US00', ''] as $iban) {
    $answers[] = [SEPA::IBAN_check($iban), SEPA::IBAN_getBIC($iban)];
}
foreach (['37040044', '50010517', '72020700', '76026000', '99999999'] as $bank) {
    foreach (['532013000', '1', '5407324931'] as $account) {
        $iban = SEPA::IBAN_convert('DE', $account, $bank, $status);
        $answers[] = [$iban, $status];
    }
}
foreach (['COBADEFFXXX', 'MARKDEFF', 'XXXXDEFF'] as $bic) {
    $answers[] = [SEPA::BIC_getBankName($bic), SEPA::BIC_getBankFlags($bic)];
}

class Amount
{
    public function __toString() { return '3.21'; }
}

class Message extends SEPA
{
    public $note = 'kept';
    public function __construct(int $type) { parent::__construct($type); }
}

foreach ([SEPA_MSGTYPE_CTI, SEPA_MSGTYPE_DDI] as $type) {
    $message = new Message($type);
    $message->setIBAN('DE89370400440532013000');
    $message->setBIC('COBADEFFXXX');
    $message->setName('Müller & Söhne');
    $message->setCreditorIdentifier('DE98ZZZ09999999999');
    $message->setDate('2026-12-01');
    for ($i = 0; $i < 30; $i++) {
        $payment = [
            'iban' => 'AT168064680654652158', 'name' => "Payee $i", 'amount' => $i % 7 ? $i + 0.5 : new Amount(),
            'seq' => 'RCUR', 'mref' => "M$i", 'mdate' => '2026-01-01', 'addrCC' => 'AT', 'addrTown' => 'Wien',
        ];
        if ($i % 5 === 4) {
            $payment += array_fill(0, 40, 'more than a small list');
        }
        $answers[] = attempt(function () use ($message, $payment) { return $message->add($payment); });
    }
    $answers[] = attempt(function () use ($message) { return $message->setDate('yesterday'); });
    $answers[] = attempt(function () use ($message) { return $message->setDDType(SEPA_DDTYPE_B2B); });
    $document = $message->toXML();
    preg_match('~<MsgId>([^<]*)</MsgId>~', $document, $id);
    echo "id $id[1]\n";
    $answers[] = preg_replace('~<CreDtTm>[^<]*<~', '<', str_replace($id[1], '', $document));
    $message = null;
}
$answers[] = attempt(function () { return new SEPA(7); });
$answers[] = attempt(function () { return clone new SEPA(1); });

foreach (['transaction_texts', 'two_accounts', 'no such file'] as $name) {
    $parser = new SEPAStatementParser();
    $answers[] = attempt(function () use ($parser, $name) {
        $parser->load(SEPA_STMT_FORMAT_MT940, __DIR__ . "/../data/statements/$name.sta");
        return $parser->getStatements();
    });
    $answers[] = attempt(function () use ($parser) { return $parser->load(SEPA_STMT_FORMAT_MT940, __FILE__); });
}
echo 'answers ', md5(serialize($answers)), "\n";
