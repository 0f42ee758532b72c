<?php
/* What every thread does, in each of its requests. Prints the digest of all
   answers, which must be the same everywhere, and the generated message ids,
   which must not. */
error_reporting(E_ALL & ~E_DEPRECATED);
require __DIR__ . '/../soak/requests.php';
$answers = [];

// No rulebook has been chosen yet. Half the threads race for it, half find it
// chosen without having met who did.
if (meet() % 2) {
    usleep(5000);
}
$message = new SEPA(SEPA_MSGTYPE_CTI);
$answers[] = SEPA::IBAN_check('DE89370400440532013000');
meet();

// All threads' rulebook is one; these cases want the one that was chosen first.
foreach ([9, 19, 29, 39, 49] as $case) {
    $answers[] = run_case($case);
}

class Amount
{
    public function __toString() { return '3.21'; }
}

class Message extends SEPA
{
    public $note = 'kept';
}

for ($i = 0; $i < 2; $i++) {
    $message = new Message(SEPA_MSGTYPE_CTI);
    $message->setIBAN('DE89370400440532013000');
    $message->setName('Müller & Söhne');
    $message->add(['iban' => 'AT168064680654652158', 'name' => 'Payee', 'amount' => new Amount()]);
    $document = $message->toXML();
    preg_match('~<MsgId>([^<]*)</MsgId>~', $document, $id);
    echo "id $id[1]\n";
    $answers[] = preg_replace('~<CreDtTm>[^<]*<~', '<', str_replace($id[1], '', $document));
}
try {
    clone $message;
} catch (Error $e) {
    $answers[] = $e->getMessage();
}
echo 'answers ', md5(serialize($answers)), "\n";
