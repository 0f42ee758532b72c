<?php
/*
 * What the requests of the soak test and of the thread test do: case N gives
 * the same text in every process. Asked for ?case=N, or for all of them on the
 * command line, this prints a line for each: the process, the rulebook that it
 * has kept, the digest of the text, the rulebook that it keeps now, the case.
 */
require __DIR__ . '/../phpt/support.inc';

const RULEBOOKS = ['DE-2.6', 'DE-2.7', 'AT-6', 'NL-6', 'DE-2.8', 'DE-2.9', 'DE-3.0', 'DE-3.1', 'DE-3.5', 'DE-3.7'];
const IBANS = ['DE89370400440532013000', 'DE62701500000020228888', 'DE12500105170648489890', 'DE86100500000990021440',
               'AT483200000012345864', 'CH9300762011623852957', 'FR1420041010050500013M02606', 'NL91ABNA0417164300'];

function run_case(int $case): string
{
    $message = message($case % 20 < 10 ? SEPA_MSGTYPE_CTI : SEPA_MSGTYPE_DDI, RULEBOOKS[$case % 10]);
    $kinds = ['document_case', 'document_case', 'iban_case', 'error_case', 'statement_case'];
    return $kinds[intdiv($case, 10)]($case, $message);
}

/** A document of as many payments as $case wants. */
function document_case(int $case, SEPA $message): string
{
    for ($i = 0; $i <= $case; $i++) {
        $message->add([
            'iban' => IBANS[($case + $i) % count(IBANS)], 'bic' => 'COBADEFF', 'name' => "Payee $i",
            'amount' => ($case * 7 + $i) / 100 + 0.01, 'date' => sprintf('2026-12-%02d', 1 + ($case + $i) % 28),
            'ref' => str_repeat("Rechnung $i ", 1 + $i % 8),
            'seq' => ['FRST', 'RCUR', 'OOFF', 'FNAL'][$i % 4], 'mref' => "M$i", 'mdate' => '2020-01-31',
        ] + ($i % 5 ? [] : ['old_mref' => 'OLD', 'smnda' => '1']));
    }
    return without_time($message->toXML());
}

function iban_case(int $case): string
{
    $text = SEPA::BIC_getBankName('MARKDEFF') . SEPA::BIC_getBankFlags('COBADEFF');
    for ($account = $case; $account < 1000000000; $account = $account * 3 + 104729) {
        foreach (['37040044', '10050000', '50050201', '70020270', '20041133', '99999999'] as $bank) {
            $iban = SEPA::IBAN_convert('DE', (string) $account, $bank, $status);
            $text .= "$iban $status " . ($iban ? SEPA::IBAN_getBIC($iban) . SEPA::IBAN_check($iban) : '') . "\n";
        }
    }
    return $text;
}

function error_case(int $case, SEPA $message): string
{
    return implode("\n", array_map('outcome', [
        function () use ($message) { $message->add([]); },
        function () use ($message, $case) { $message->add(['name' => str_repeat('x', 60 + $case % 20), 'amount' => 'x']); },
        function () use ($message) { $message->add(array_fill_keys(range(1, 200), 'x')); },
        function () use ($message) { $message->setIBAN('DE98370400440532013000'); },
        function () use ($message) { $message->setDDType(SEPA_DDTYPE_COR1); },
        function () use ($case) { new SEPA($case % 7); },
        function () { (new SEPAStatementParser())->load(SEPA_STMT_FORMAT_MT940, '/no/such/file'); },
    ]));
}

function statement_case(): string
{
    $parser = new SEPAStatementParser();
    $parser->load(SEPA_STMT_FORMAT_MT940, __DIR__ . '/../../examples/statement.sta');
    return print_r($parser->getStatements(), true);
}

function kept_rulebook(): string
{
    preg_match('~xsd:([^"]*)"~', (new SEPA(SEPA_MSGTYPE_CTI))->toXML(), $schema);
    return $schema[1];
}

if (get_included_files()[0] === __FILE__) {
    foreach (isset($_GET['case']) ? [(int) $_GET['case']] : range(0, 49) as $case) {
        echo getmypid(), ' ', kept_rulebook(), ' ', md5(run_case($case)), ' ', kept_rulebook(), " $case\n";
    }
}
