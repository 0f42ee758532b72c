<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Web;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Tests\Statement\CamtTest;
use Sepa\Toolkit\Web\App;
use Sepa\Toolkit\Web\Gate;
use Symfony\Component\HttpFoundation\File\UploadedFile;
use Symfony\Component\HttpFoundation\Request;

final class StatementPageTest extends TestCase
{
    private const TOKEN = '0123456789abcdef0123456789abcdef';

    /** @param array<string, string> $files contents by name */
    private static function post(array $fields, array $files = [], ?int &$status = null): string
    {
        $uploads = [];
        foreach ($files as $name => $text) {
            file_put_contents($path = tempnam(sys_get_temp_dir(), 'sepa-test'), $text);
            $uploads[] = new UploadedFile($path, $name, null, UPLOAD_ERR_OK, true);
        }
        $fields += ['page' => 'statement', 'do' => 'read', Gate::TOKEN => self::TOKEN, Gate::LAST_FIELD => '1'];
        $server = ['REQUEST_METHOD' => 'POST', 'HTTP_HOST' => 'localhost', 'HTTP_ACCEPT_LANGUAGE' => 'de'];
        $answer = (new App())->respond(new Request(['page' => 'statement'], $fields, [], [Gate::TOKEN => self::TOKEN], ['file' => $uploads], $server));
        $status = $answer->getStatusCode();

        return (string) $answer->getContent();
    }

    /** @return array<string, string> the hidden fields of a form, as a browser sends them again */
    private static function form(string $html): array
    {
        preg_match('~<textarea name="packed" hidden>(.*?)</textarea>~s', $html, $packed);
        preg_match_all('~<input type="hidden" name="(did|searched|p|batch|batch_at)" value="([^"]*)"~', $html, $hidden);

        return ['packed' => str_replace("\n", "\r\n", htmlspecialchars_decode($packed[1]))] + array_combine($hidden[1], $hidden[2]);
    }

    /** So many bookings of 1.00 and their batch of so many payments of 0.01, off by one cent. */
    private static function month(int $bookings, int $payments): string
    {
        $part = static fn (int $i): string => "<TxDtls><Refs><EndToEndId>TEIL-$i.</EndToEndId></Refs><Amt Ccy=\"EUR\">0.01</Amt></TxDtls>";
        $entries = '';
        for ($i = 1; $i <= $bookings; ++$i) {
            $entries .= CamtTest::entry("<Refs><EndToEndId>RE-$i.</EndToEndId></Refs><RltdPties><Dbtr><Nm>=Müller $i.</Nm></Dbtr></RltdPties>", '1.00');
        }
        $sum = sprintf('%.2f', $payments / 100);
        $entries .= str_replace('<AddtlNtryInf>', '<NtryDtls>' . implode('', array_map($part, range(1, $payments))) . '</NtryDtls><AddtlNtryInf>', CamtTest::entry('', $sum, 'DBIT'));

        return CamtTest::message($entries, sprintf('%.2f', 100.01 + $bookings - $payments / 100));
    }

    public function testEveryBookingAndPaymentIsReached(): void
    {
        $html = self::post([], ['a.xml' => self::month(401, 250), 'b.sta' => (string) file_get_contents(__DIR__ . '/../../../examples/statement.sta')]);
        self::assertMatchesRegularExpression('~\d Auszüge, 4\d\d Buchungen: 1 Auszug ist zu prüfen~', $html);
        self::assertStringContainsString('href="#statement-1">', $html);
        self::assertMatchesRegularExpression('~<h2>\w.* <span translate="no">DE62 7015 0000 0020 2288 88</span>~', $html);
        $form = self::form($html);
        $seen = [];
        foreach ([1, 2, 3] as $at) {
            $page = self::post(['p' => (string) $at] + $form);
            preg_match_all('~>RE-(\d+)\.<~', $page, $ids);
            $seen = array_merge($seen, $ids[1]);
            self::assertSame($at > 1 ? 1 : 0, substr_count($page, 'Fortsetzung'));
        }
        self::assertSame(range(1, 401), array_map('intval', $seen));
        $second = self::post(['statement' => '2'] + $form);
        self::assertStringContainsString('id="statement-2"', $second);
        self::assertSame(20, preg_match_all('~>TEIL-\d+\.<~', $second));
        $parts = [];
        foreach ([1, 2] as $at) {
            preg_match_all('~>TEIL-(\d+)\.<~', self::post(['batch' => '402', 'batch_at' => (string) $at] + $form), $ids);
            $parts = array_merge($parts, $ids[1]);
        }
        self::assertSame(range(1, 250), array_map('intval', $parts));
    }

    /** @dataProvider searches */
    public function testBookingsAreFound(int $expected, array $search): void
    {
        static $form = null;
        $form = $form ?? self::form(self::post([], ['a.xml' => self::month(30, 22)]));
        self::assertStringContainsString(['Keine Buchung', '1 Buchung'][$expected] ?? "$expected Buchungen", self::post($search + $form));
    }

    public function searches(): array
    {
        return [
            [1, ['q' => 're-7.']],
            [1, ['q' => 'MUELLER 7. 1,00']],
            [30, ['q' => 'müller']],
            [30, ['q' => '1,00']],
            [0, ['q' => '-1,00']],
            [1, ['q' => '-0,22']],
            [1, ['q' => 'gutschrift TEIL-22.']],
            [0, ['q' => 'teil-21. teil-22.']],
            [31, ['from' => '27.11.26', 'to' => '2026-11-27']],
            [0, ['from' => '28.11.2026']],
            [31, ['wanting' => '1']],
        ];
    }

    public function testWhatWasFoundLeavesAsTheCommandWritesIt(): void
    {
        $form = self::form(self::post([], ['a.xml' => self::month(3, 2)]));
        $row = static fn (int $i): string => "DE62701500000020228888;7;false;27.11.2026;27.11.2026;1,00;EUR;false;'=Müller $i.;;;GUTSCHRIFT;RE-$i.;;;;a.xml\n";
        $csv = self::post(['do' => 'csv', 'q' => 'müller'] + $form);
        self::assertSame($row(1) . $row(2) . $row(3), substr($csv, strpos($csv, "\n") + 1));
        self::assertStringStartsWith("\u{FEFF}account;number;balanced;", $csv);
        self::assertSame(5, substr_count(self::post(['do' => 'csv_all', 'q' => 'müller'] + $form), "\n"));
    }

    public function testReportsStandBesideTheirPayments(): void
    {
        $payment = static fn (string $id): string => "<CdtTrfTxInf><PmtId><EndToEndId>$id</EndToEndId></PmtId><Amt><InstdAmt Ccy=\"EUR\">5.00</InstdAmt></Amt><Cdtr><Nm><![CDATA[<b>]]> An $id</Nm></Cdtr></CdtTrfTxInf>";
        $files = [
            'report.xml' => '<Document><CstmrPmtStsRpt><OrgnlGrpInfAndSts><OrgnlMsgId>M1</OrgnlMsgId></OrgnlGrpInfAndSts><OrgnlPmtInfAndSts><TxInfAndSts><OrgnlEndToEndId>E2</OrgnlEndToEndId>'
                . '<TxSts>RJCT</TxSts><StsRsnInf><Rsn><Cd>AC04</Cd></Rsn></StsRsnInf></TxInfAndSts></OrgnlPmtInfAndSts></CstmrPmtStsRpt></Document>',
            'sent.xml' => "<Document><CstmrCdtTrfInitn><GrpHdr><MsgId>M1</MsgId></GrpHdr><PmtInf>{$payment('E1')}{$payment('E2')}</PmtInf></CstmrCdtTrfInitn></Document>",
        ];
        $html = self::post([], $files);
        self::assertStringContainsString('Statusbericht zu M1: 1 abgelehnt', $html);
        self::assertMatchesRegularExpression('~&lt;b&gt; An E2.*abgelehnt \(RJCT\).*Das Konto ist aufgelöst \(AC04\).*An E1.*nichts gemeldet~s', $html);
        self::assertStringNotContainsString('kein Kontoauszug', $html);
        $alone = self::post([], ['report.xml' => $files['report.xml'], 'a.xml' => self::month(1, 1)]);
        self::assertMatchesRegularExpression('~1 Auszug, 2 Buchungen: .*1 abgelehnt.*E2.*AC04~s', $alone);
    }

    public function testAFormThatIsNotOursHarmsNothing(): void
    {
        $packed = static fn (string $bytes): string => base64_encode((string) gzencode($bytes));
        $file = static fn (string $name, string $text): string => pack('NN', strlen($name), strlen($text)) . $name . $text;
        $bomb = gzencode(str_repeat("\n", 40 << 20));
        $odd = ['p' => '-9', 'batch' => ['x'], 'statement' => '99999999999999999999', 'q' => ['x'], 'from' => ['x'], 'searched' => 'x'];
        $tried = [
            [413, ['packed' => $packed($file('a', $bomb) . $file('b', $bomb))]],
            [200, ['packed' => $packed(str_repeat("\0", 40 << 20))]],
            [200, ['packed' => 'x']],
            [200, ['packed' => $packed('plain')]],
            [200, ['packed' => $packed("\xFF\xFF\xFF\xFF\0\0\0\1ab")]],
            [200, ['packed' => ['x']]],
            [200, ['packed' => $packed($file('../../etc/passwd', 'x'))]],
            [200, ['packed' => $packed($file('a', ":20:x\n"))] + $odd],
        ];
        foreach ($tried as $i => [$expected, $fields]) {
            $html = self::post($fields, [], $status);
            self::assertSame([$expected, 'notice bad'], [$status, preg_match('/notice bad/', $html, $found) ? $found[0] : ''], "request $i");
        }
        self::assertSame('', self::form(self::post([], ['a' => random_bytes(4 << 20)]))['packed']);
        self::assertStringContainsString('noch einmal', self::post(['do' => 'again']));
    }
}
