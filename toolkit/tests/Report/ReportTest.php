<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Report;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Command\Application;
use Sepa\Toolkit\Report\Payment;
use Sepa\Toolkit\Report\Reader;
use Sepa\Toolkit\Report\Report;
use Sepa\Toolkit\File\Source;
use Sepa\Toolkit\Report\PaymentFile;
use Sepa\Toolkit\Report\Result;
use Symfony\Component\Console\Tester\ApplicationTester;

final class ReportTest extends TestCase
{
    private const IBANS = ['DE89370400440532013000', 'DE62701500000020228888'];

    private static function report(string $payments, string $group = '', string $block = ''): string
    {
        return '<Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.002.001.10"><CstmrPmtStsRpt><GrpHdr><MsgId>R1</MsgId></GrpHdr>'
            . "<OrgnlGrpInfAndSts><OrgnlMsgId>M1</OrgnlMsgId><OrgnlMsgNmId>pain.001</OrgnlMsgNmId>$group</OrgnlGrpInfAndSts>"
            . "<OrgnlPmtInfAndSts><OrgnlPmtInfId>P1</OrgnlPmtInfId>$block$payments</OrgnlPmtInfAndSts></CstmrPmtStsRpt></Document>";
    }

    private static function payment(string $id, string $status, string $more = '', string $amount = '10', int $account = 0): string
    {
        return "<TxInfAndSts><OrgnlEndToEndId>$id</OrgnlEndToEndId>" . ($status === '' ? '' : "<TxSts>$status</TxSts>") . "$more<OrgnlTxRef><Amt><InstdAmt Ccy=\"EUR\">$amount</InstdAmt></Amt>"
            . '<Dbtr><Pty><Nm>Ich</Nm></Pty></Dbtr><Cdtr><Pty><Nm>Meier</Nm></Pty></Cdtr><CdtrAcct><Id><IBAN>' . self::IBANS[$account] . '</IBAN></Id></CdtrAcct></OrgnlTxRef></TxInfAndSts>';
    }

    private static function read(string $text): Report
    {
        return iterator_to_array(Reader::string($text))[0];
    }

    /** @dataProvider statuses */
    public function testTheStatusOfAPayment(string $expected, string $own, string $block, string $group, bool $wanting): void
    {
        $element = static fn (string $name, string $status): string => $status === '' ? '' : "<$name>$status</$name>";
        $report = self::read(self::report(self::payment('E', $own), $element('GrpSts', $group), $element('PmtInfSts', $block)));
        [$payment] = iterator_to_array($report->payments(), false);
        self::assertSame([$expected, $wanting], [$payment->status, $report->isWanting()]);
    }

    public function statuses(): array
    {
        return [
            ['RJCT', 'RJCT', '', '', true],
            ['ACSC', 'ACSC', 'PART', 'PART', true],
            ['RJCT', '', 'RJCT', 'PART', true],
            ['RJCT', '', '', 'RJCT', true],
            ['', '', 'PART', 'RJCT', true],
            ['ACCP', '', '', 'ACCP', false],
            ['', '', '', 'RVCM', false],
            ['RVNM', 'RVNM', '', 'RVMC', true],
            ['RCVC', '', 'RCVC', 'RVMC', false],
            ['RVNA', 'RVNA', '', '', false],
            ['XYZW', 'XYZW', '', '', false],
        ];
    }

    public function testReasonsAndNames(): void
    {
        $legend = '<StsRsnInf><AddtlInf>RVNM Der Name stimmt nicht über-</AddtlInf><AddtlInf>RVNM ein.</AddtlInf><AddtlInf>RVMC Fast.</AddtlInf></StsRsnInf>';
        $reason = '<StsRsnInf><Orgtr><Id><OrgId><AnyBIC>COBADEFFXXX</AnyBIC></OrgId></Id></Orgtr><Rsn><Cd>AC04</Cd></Rsn></StsRsnInf>';
        $report = self::read(self::report(
            self::payment('A', 'RVNM') . self::payment('B', 'RVMC', '<StsRsnInf><AddtlInf>Maier, Eva</AddtlInf></StsRsnInf>') . self::payment('C', 'RJCT', $reason),
            $legend . '<NbOfTxsPerSts><DtldNbOfTxs>2</DtldNbOfTxs><DtldSts>RVNM</DtldSts></NbOfTxsPerSts>'
        ));
        [$none, $close, $refused] = iterator_to_array($report->payments(), false);
        self::assertSame(['Der Name stimmt nicht überein.', ''], [$none->said, $none->nameAtBank]);
        self::assertSame(['Meier', 'Maier, Eva', '10.00'], [$close->name, $close->nameAtBank, $close->amount->text()]);
        self::assertSame(['AC04', 'COBADEFFXXX', 'Das Konto ist aufgelöst'], [$refused->reasons[0]->code, $refused->reasons[0]->by, $refused->reasons[0]->meaning('de')]);
        self::assertSame(['RVNM' => 2], $report->counts);
    }

    /** @dataProvider forms */
    public function testOlderAndGermanForms(string $text, array $expected): void
    {
        $report = self::read($text);
        $payments = array_map(static fn (Payment $payment): string => "$payment->block $payment->eref $payment->status $payment->name $payment->mref", iterator_to_array($report->payments(), false));
        self::assertSame($expected, [$report->form, $report->bank, $payments]);
    }

    public function forms(): array
    {
        $debit = '<CstmrPmtStsRpt><GrpHdr><MsgId>R</MsgId><CdtrAgt><FinInstnId><BIC>COBADEFF</BIC></FinInstnId></CdtrAgt></GrpHdr><OrgnlGrpInfAndSts><OrgnlMsgId>M</OrgnlMsgId><OrgnlMsgNmId>pain.008</OrgnlMsgNmId></OrgnlGrpInfAndSts>'
            . '<OrgnlPmtInfAndSts><OrgnlPmtInfId>P</OrgnlPmtInfId><TxInfAndSts><OrgnlEndToEndId>E</OrgnlEndToEndId><TxSts>RJCT</TxSts><OrgnlTxRef><MndtRltdInf><MndtId>MD</MndtId></MndtRltdInf><Dbtr><Nm>Zahler</Nm></Dbtr><Cdtr><Nm>Ich</Nm></Cdtr></OrgnlTxRef></TxInfAndSts></OrgnlPmtInfAndSts></CstmrPmtStsRpt>';
        $oldest = '<d:Document xmlns:d="urn:swift:xsd:$pain.002.002.02"><d:pain.002.001.02><d:TxInfAndSts><d:OrgnlPmtInfId>P</d:OrgnlPmtInfId><d:OrgnlEndToEndId>E</d:OrgnlEndToEndId><d:TxSts>RJCT</d:TxSts></d:TxInfAndSts></d:pain.002.001.02></d:Document>';

        return [
            ["<Document xmlns=\"urn:iso:std:iso:20022:tech:xsd:pain.002.003.03\">$debit</Document>", ['pain.002.003.03', 'COBADEFF', ['P E RJCT Zahler MD']]],
            [$debit, ['', 'COBADEFF', ['P E RJCT Zahler MD']]],
            [$oldest, ['pain.002.002.02', '', ['P E RJCT  ']]],
        ];
    }

    public function testTheCommandFindsThePaymentThatAReportSpeaksOf(): void
    {
        $sent = static fn (string $id, string $name, string $amount, int $account): string => "<CdtTrfTxInf><PmtId><EndToEndId>$id</EndToEndId></PmtId><Amt><InstdAmt Ccy=\"EUR\">$amount</InstdAmt></Amt>"
            . "<Cdtr><Nm>$name</Nm></Cdtr><CdtrAcct><Id><IBAN>" . self::IBANS[$account] . '</IBAN></Id></CdtrAcct></CdtTrfTxInf>';
        $payments = tempnam(sys_get_temp_dir(), 'sepa-test');
        file_put_contents($payments, '<Document><CstmrCdtTrfInitn><GrpHdr><MsgId>M1</MsgId></GrpHdr><PmtInf><PmtInfId>P1</PmtInfId>'
            . $sent('E1', 'Adam', '10', 0) . $sent('NOTPROVIDED', 'Berta', '10', 0) . $sent('NOTPROVIDED', 'Carl', '10', 1) . $sent('NOTPROVIDED', 'Dora', '20', 1)
            . $sent('E2', 'Emil', '5', 0) . $sent('E2', 'Emil', '5', 0) . '</PmtInf></CstmrCdtTrfInitn></Document>');
        $report = self::report(self::payment('NOTPROVIDED', 'RJCT', '', '10.00', 1) . self::payment('E1', 'ACSC') . self::payment('E2', 'RJCT', '', '5'));
        $ask = static function (array $options, string $text): array {
            $tester = new ApplicationTester(new Application());
            $tester->setInputs([$text]);
            $status = $tester->run(['command' => 'status', 'file' => ['-'], '--csv' => true, '--no-headings' => true] + $options, ['capture_stderr_separately' => true]);

            return [$status, array_map('str_getcsv', explode("\n", trim($tester->getDisplay()))), $tester->getErrorOutput()];
        };
        [$status, $rows, $told] = $ask(['--payments' => $payments], $report);
        unlink($payments);
        self::assertSame(1, $status);
        self::assertSame(
            ['Adam ACSC', 'Berta ', 'Carl RJCT', 'Dora ', 'Emil ', 'Emil ', 'Meier RJCT'],
            array_map(static fn (array $row): string => "$row[3] $row[7]", $rows)
        );
        self::assertStringContainsString('without doubt: 1', $told);
        self::assertSame([0, 2, 1], [$ask([], self::report(self::payment('A', 'ACSC')))[0], $ask([], '<Document/>')[0], $ask([], substr($report, 0, -20))[0]]);
    }

    /** @testWith ["R2", ""]
     *            ["", "<GrpSts>RJCT</GrpSts>"]
     */
    public function testARefusalIsNotHiddenByALaterReport(string $named, string $group): void
    {
        $file = '<Document><CstmrCdtTrfInitn><GrpHdr><MsgId>M1</MsgId></GrpHdr><PmtInf><PmtInfId>P1</PmtInfId><CdtTrfTxInf><PmtId>'
            . '<EndToEndId>E1</EndToEndId></PmtId></CdtTrfTxInf></PmtInf></CstmrCdtTrfInitn></Document>';
        [$sent] = iterator_to_array(PaymentFile::in(Source::string($file)), false);
        $refusal = self::read(self::report($named === '' ? '' : self::payment('E1', 'RJCT'), $group));
        foreach ([self::read(self::report(self::payment('E1', 'RCVC'))), self::read(self::report('', '<GrpSts>ACTC</GrpSts>'))] as $other) {
            self::assertSame('RJCT', Result::beside($sent, [$refusal, $other])[0]->status);
            self::assertSame('RJCT', Result::beside($sent, [$other, $refusal])[0]->status);
        }
        $accepted = self::read(self::report(self::payment('E1', 'ACSC')));
        self::assertSame('ACSC', Result::beside($sent, [self::read(self::report(self::payment('E1', 'PDNG'))), $accepted])[0]->status);
    }
}
