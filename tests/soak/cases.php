<?php
/*
 * What a request of the soak test does: case N gives the same text in every
 * process, so that the command line knows the answer of the web server. The
 * thread test runs the cases too.
 */

const RULEBOOKS = ['DE-2.6', 'DE-2.7', 'AT-6', 'NL-6', 'DE-2.8', 'DE-2.9', 'DE-3.0', 'DE-3.1', 'DE-3.5', 'DE-3.7'];
const IBANS = ['DE89370400440532013000', 'DE62701500000020228888', 'DE12500105170648489890', 'DE86100500000990021440',
               'AT483200000012345864', 'CH9300762011623852957', 'FR1420041010050500013M02606', 'NL91ABNA0417164300'];

function run_case(int $case): string
{
    SEPA::init(SEPA_INIT_RULEBOOK, RULEBOOKS[$case % count(RULEBOOKS)]);
    $cases = ['transfer_case', 'debit_case', 'iban_case', 'error_case', 'statement_case'];
    return $cases[intdiv($case, count(RULEBOOKS)) % count($cases)]($case);
}

function kept_rulebook(): string
{
    preg_match('~xsd:([^"]*)"~', (new SEPA(SEPA_MSGTYPE_CTI))->toXML(), $schema);
    return $schema[1];
}

/** The message id has local time, the time of creation is UTC. */
function hours_ahead(): float
{
    preg_match('~<MsgId>SEPA-(\d{14})-.*<CreDtTm>([^<]*)<~s', (new SEPA(SEPA_MSGTYPE_CTI))->toXML(), $times);
    return (strtotime("$times[1] UTC") - strtotime($times[2])) / 3600;
}

/** The document of $message with as many payments as $case wants. */
function document(SEPA $message, int $case): string
{
    $message->setName('Soak');
    $message->setIBAN(IBANS[$case % 4]);
    $message->setMessageId("SOAK-$case");
    for ($i = 0; $i <= $case % 40; $i++) {
        $message->add([
            'iban' => IBANS[($case + $i) % count(IBANS)], 'bic' => 'COBADEFF', 'name' => "Payee $i",
            'amount' => ($case * 7 + $i) % 99991 / 100 + 0.01, 'date' => sprintf('2026-12-%02d', 1 + ($case + $i) % 28),
            'ref' => str_repeat("Rechnung $i ", 1 + $i % 8),
            'seq' => ['FRST', 'RCUR', 'OOFF', 'FNAL'][$i % 4], 'mref' => "M$i", 'mdate' => '2020-01-31',
        ] + ($i % 5 ? [] : ['old_mref' => 'OLD', 'smnda' => '1']));
    }
    return preg_replace('~<CreDtTm>[^<]*~', '<CreDtTm>', $message->toXML());
}

function transfer_case(int $case): string
{
    $message = new SEPA(SEPA_MSGTYPE_CTI);
    $message->setBIC('COBADEFFXXX');
    return document($message, $case);
}

function debit_case(int $case): string
{
    $message = new SEPA(SEPA_MSGTYPE_DDI);
    $message->setBIC('COBADEFFXXX');
    $message->setCreditorIdentifier('DE98ZZZ09999999999');
    return document($message, $case);
}

function iban_case(int $case): string
{
    $text = '';
    for ($i = 0; $i < 50; $i++) {
        $account = (string) (($case * 7919 + $i * 104729) % 1000000000);
        foreach (['37040044', '10050000', '50050201', '70020270', '20041133', '99999999'] as $bank) {
            $iban = SEPA::IBAN_convert('DE', $account, $bank, $status);
            $text .= "$account $bank $iban $status " . ($iban ? SEPA::IBAN_getBIC($iban) . SEPA::IBAN_check($iban) : '') . "\n";
        }
    }
    foreach (['MARKDEFF', 'COBADEFF', 'XXXXXXXX'] as $bic) {
        $text .= SEPA::BIC_getBankName($bic) . ' ' . SEPA::BIC_getBankFlags($bic) . "\n";
    }
    return $text;
}

function error_case(int $case): string
{
    $message = new SEPA(SEPA_MSGTYPE_CTI);
    $calls = [
        function () use ($message) { $message->add([]); },
        function () use ($message, $case) { $message->add(['name' => str_repeat('x', 60 + $case % 20), 'amount' => 'x']); },
        function () use ($message) { $message->add(array_fill_keys(range(1, 200), 'x')); },
        function () use ($message) { $message->setIBAN('DE98370400440532013000'); },
        function () use ($message) { $message->setDDType(SEPA_DDTYPE_CORE); },
        function () { (new SEPA(SEPA_MSGTYPE_DDI))->toXML(); },
        function () use ($case) { new SEPA($case % 7); },
        function () { (new SEPAStatementParser())->load(SEPA_STMT_FORMAT_MT940, '/no/such/file'); },
    ];
    $text = '';
    foreach ($calls as $call) {
        try {
            $call();
        } catch (SEPAException $e) {
            $text .= $e->getCode() . ' ' . $e->getMessage() . "\n";
        }
    }
    return $text;
}

function statement_case(int $case): string
{
    $parser = new SEPAStatementParser();
    $parser->load(SEPA_STMT_FORMAT_MT940, __DIR__ . '/../../examples/statement.sta');
    return print_r($parser->getStatements(), true) . $case;
}
