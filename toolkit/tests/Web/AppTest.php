<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Web;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Web\App;
use Sepa\Toolkit\Web\BalanceChart;
use Sepa\Toolkit\Web\Request;
use Sepa\Toolkit\Web\Response;

/** What a browser shows is tested in one, by browser.mjs. */
final class AppTest extends TestCase
{
    private const TOKEN = '0123456789abcdef0123456789abcdef';

    private const HOSTILE = '"><script>\'&\0';

    private const PARTY = ['name' => 'A', 'iban' => 'DE89370400440532013000'];

    /** @param array<mixed> $post */
    private static function post(string $page, array $post, array $files = [], array $server = [], ?string $cookie = self::TOKEN): Response
    {
        $post += [Request::TOKEN => self::TOKEN, Request::LAST_FIELD => '1'];
        $server += ['REQUEST_METHOD' => 'POST', 'HTTP_HOST' => 'localhost:8080', 'HTTP_ORIGIN' => 'http://localhost:8080', 'CONTENT_LENGTH' => '1'];

        return (new App())->respond(new Request(['page' => $page], array_filter($post), $files, [Request::TOKEN => $cookie], $server));
    }

    /** @return array<string, array<string, mixed>> */
    private static function upload(string $text): array
    {
        $path = tempnam(sys_get_temp_dir(), 'sepa-test');
        file_put_contents($path, $text);

        return ['file' => ['error' => UPLOAD_ERR_OK, 'size' => strlen($text), 'tmp_name' => $path]];
    }

    public function testOnlyAWholeFormOfThisSiteIsTaken(): void
    {
        $form = ['do' => 'check', 'iban' => 'DE89370400440532013000'];
        $answers = [
            [200, self::post('iban', $form)],
            [200, self::post('iban', $form, [], ['HTTP_ORIGIN' => ''])],
            [403, self::post('iban', [Request::TOKEN => str_repeat('0', 32)] + $form)],
            [403, self::post('iban', [Request::TOKEN => ''] + $form)],
            [403, self::post('iban', [Request::TOKEN => ['x']] + $form)],
            [403, self::post('iban', $form, [], [], null)],
            [403, self::post('iban', [Request::TOKEN => 'x'] + $form, [], [], 'x')],
            [403, self::post('iban', $form, [], ['HTTP_ORIGIN' => 'http://localhost:8081'])],
            [403, self::post('iban', $form, [], ['HTTP_ORIGIN' => 'null'])],
            [200, self::post('iban', $form, [], ['HTTP_HOST' => '[fd00::1]:80', 'HTTP_ORIGIN' => 'http://[fd00::1]:80', 'SERVER_ADDR' => 'fd00::1'])],
            [200, self::post('iban', $form, [], ['HTTP_HOST' => 'Pay.example', 'HTTP_ORIGIN' => '', 'SEPA_HOSTS' => 'a.example, pay.example'])],
            [421, self::post('iban', $form, [], ['HTTP_HOST' => 'evil.example', 'HTTP_ORIGIN' => '', 'SERVER_NAME' => 'pay.example'])],
            [421, self::post('iban', $form, [], ['HTTP_HOST' => ''])],
            [405, self::post('iban', $form, [], ['REQUEST_METHOD' => 'TRACE'])],
            [413, self::post('iban', [Request::LAST_FIELD => ''] + $form)],
            [413, self::post('iban', [Request::LAST_FIELD => '', Request::TOKEN => ''], [], ['CONTENT_LENGTH' => '99999999'])],
        ];
        foreach ($answers as $i => [$status, $answer]) {
            self::assertSame($status, $answer->status, "request $i");
            self::assertSame($status === 200, strpos($answer->body, 'The IBAN is good') !== false, "request $i");
        }
    }

    public function testNoInputBecomesHtml(): void
    {
        $row = ['name' => self::HOSTILE, 'iban' => self::HOSTILE, 'amount' => self::HOSTILE, 'ref' => [self::HOSTILE]];
        $statement = ":20:x\n:25:x\n:60F:C261126EUR1,\n:61:261127C1,NTRF\n:86:166?00x?20x?32x\n:62F:C261126EUR2,\n:86:x\n-\n";
        $answers = [
            self::post('iban', ['do' => 'check', 'iban' => self::HOSTILE]),
            self::post('iban', ['do' => 'convert', 'account' => self::HOSTILE, 'bank_code' => self::HOSTILE]),
            self::post('iban', ['do' => 'bank', 'query' => self::HOSTILE]),
            self::post('statement', ['do' => 'read'], self::upload(str_replace('x', self::HOSTILE, $statement))),
            self::post('statement', ['do' => 'read'], self::upload(":20:\xFF\n:61:261127C1,NTRF\xFF\n")),
            self::post('transfer', ['do' => 'check', 'columns' => 'id,' . self::HOSTILE, 'row' => [$row, 'x', []], 'date' => self::HOSTILE] + array_fill_keys(['name', 'iban', 'bic', 'messageId', 'rulebook'], self::HOSTILE)),
            self::post('transfer', ['do' => 'check'] + self::PARTY, self::upload("iban,amount," . self::HOSTILE . "\n1,2," . self::HOSTILE)),
            self::post(self::HOSTILE, ['do' => self::HOSTILE]),
        ];
        foreach ($answers as $i => $answer) {
            self::assertStringNotContainsString('<script>', $answer->body, "request $i");
            self::assertNotFalse(preg_match('//u', $answer->body));
            self::assertNotSame(500, $answer->status, "request $i");
        }
    }

    public function testUploadsAreRemovedAndBounded(): void
    {
        foreach ([':20:x', str_repeat('x', Request::MAX_UPLOAD + 1)] as $text) {
            $files = self::upload($text);
            $answer = self::post('statement', ['do' => 'read'], $files);
            self::assertSame($text === ':20:x' ? 200 : 413, $answer->status);
            self::assertFileDoesNotExist($files['file']['tmp_name']);
        }
        foreach ([['error' => UPLOAD_ERR_INI_SIZE], ['error' => UPLOAD_ERR_PARTIAL], ['error' => [0], 'tmp_name' => ['x']]] as $file) {
            self::assertGreaterThanOrEqual(400, self::post('statement', ['do' => 'read'], ['file' => $file])->status);
        }
    }

    public function testADocumentLeavesOnlyWithoutFaultsAndAfterOddThingsWereSeen(): void
    {
        $row = ['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1,00'];
        $form = ['do' => 'document', 'german' => '1', 'messageId' => 'M/1', 'row' => [$row, ['amount' => '2,00'] + $row]] + self::PARTY;
        $answer = self::post('transfer', $form);
        self::assertSame([200, 'transfer-M-1.xml'], [$answer->status, $answer->filename]);
        self::assertStringContainsString('<CtrlSum>3.00</CtrlSum>', $answer->body);

        self::assertNull(self::post('transfer', ['row' => [$row, ['amount' => 'x'] + $row]] + $form)->filename);
        self::assertNull(self::post('transfer', ['row' => []] + $form)->filename);
        foreach (["name,iban,amount\nB,{$row['iban']}", "name,iban,iban,amount\nB,{$row['iban']},{$row['iban']},1", "name,iban,amount,colour\nB,{$row['iban']},1,red"] as $sheet) {
            $answer = self::post('transfer', $form, self::upload($sheet));
            self::assertSame([null, 422], [$answer->filename, $answer->status], $sheet);
        }

        $twice = ['row' => [$row, $row]] + $form;
        $answer = self::post('transfer', $twice);
        self::assertNull($answer->filename);
        preg_match('/name="seen"[^>]* value="(\w+)"/', $answer->body, $seen);
        self::assertNotNull(self::post('transfer', $twice + ['seen' => $seen[1]])->filename);
        self::assertNull(self::post('transfer', ['row' => [$row, $row, $row]] + $twice + ['seen' => $seen[1]])->filename);
    }

    public function testEachBatchOfATabHasAMessageIdOfItsOwn(): void
    {
        $row = ['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1,00'];
        $form = ['do' => 'document', 'german' => '1', 'seed' => '20261123-101500-0123456789ab'] + self::PARTY;
        $id = static function (array $form, array $files = []): string {
            $pattern = '/<MsgId>([\w-]+)<|id="f-messageId"[^>]* placeholder="([\w-]+)"/';
            preg_match($pattern, self::post('transfer', $form, $files)->body, $id);

            return end($id);
        };
        $csv = "amount;iban;name\n1,00;{$row['iban']};B\n";
        $first = $id(['row' => [$row]] + $form);
        self::assertStringStartsWith('20261123-101500-', $first);
        self::assertSame($first, $id(['row' => [[], $row + ['ref' => '']], 'columns' => 'ref'] + $form));
        self::assertSame($first, $id($form, self::upload($csv)));
        $others = [
            $id(['row' => [['amount' => '2,00'] + $row]] + $form),
            $id(['row' => [$row], 'date' => '2030-01-02'] + $form),
            $id(['row' => [$row], 'rulebook' => 'DE-3.5'] + $form),
            $id(['row' => [$row], 'name' => 'C'] + $form),
            $id(['row' => [$row], 'seed' => ''] + $form),
        ];
        self::assertCount(6, array_unique(array_merge([$first], $others)));
        self::assertSame('M1', $id(['row' => [$row], 'messageId' => 'M1'] + $form));
    }

    public function testTheBicFollowsTheIbanUnlessItWasTyped(): void
    {
        $form = ['do' => 'document', 'row' => [['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1.00']]];
        preg_match('/name="bic" value="(\w*)"/', self::post('transfer', ['do' => 'check'] + $form + self::PARTY)->body, $bic);
        foreach ([[$bic[1], 'INGDDEFFXXX'], ['COBADEFFXXX', 'COBADEFFXXX']] as [$typed, $sent]) {
            $answer = self::post('transfer', ['iban' => 'DE12500105170648489890', 'bic' => $typed] + $form + self::PARTY);
            self::assertMatchesRegularExpression("/<DbtrAgt>\s*<FinInstnId>\s*<BIC(FI)?>$sent</", $answer->body);
        }
        $example = self::post('transfer', ['do' => 'example', 'bic' => 'INGDDEFFXXX'])->body;
        self::assertMatchesRegularExpression('/name="bic" value=""[^>]* placeholder="COBADEFFXXX"/', $example);
    }

    public function testAFileIsTakenIntoTheFormWithAllThatItTells(): void
    {
        $form = ['do' => 'document', 'german' => '1'] + self::PARTY;
        $head = "name;iban;amount;\n";
        $row = 'B;DE12500105170648489890;11';
        self::assertNotNull(self::post('transfer', $form, self::upload("$head$row;\n"))->filename);

        $cut = self::post('transfer', $form, self::upload("$head$row;\n$row;"));
        self::assertNull($cut->filename);
        self::assertStringContainsString('Payment 2: The last line has no end', $cut->body);
        self::assertMatchesRegularExpression('/name="row\[1\]\[amount\]" value="11"/', $cut->body);
        preg_match('/name="seen"[^>]* value="(\w+)"/', $cut->body, $seen);
        $rows = array_fill(0, 2, array_combine(['name', 'iban', 'amount'], explode(';', $row)));
        self::assertNotNull(self::post('transfer', $form + ['row' => $rows, 'seen' => $seen[1]])->filename);

        foreach (["$head$row;x\n" => '4 cells under 4 headings', "$row\n" => 'No headings iban and amount in the first row'] as $sheet => $reason) {
            $answer = self::post('transfer', ['ignore' => $sheet === "$row\n"] + $form, self::upload($sheet));
            self::assertStringContainsString($reason, $answer->body);
        }
    }

    public function testWhatIsTrueOfALargeFileStandsUnderItsHeadings(): void
    {
        $sheet = "Empfänger;Konto-IBAN;Betrag\n" . str_repeat("Š;DE12500105170648489890;1\n", 150);
        $form = ['do' => 'check', 'transliterate' => '1', 'row' => array_fill(0, 3, ['amount' => ''])];
        $odd = self::post('transfer', $form + self::PARTY, self::upload($sheet))->body;
        $bad = self::post('transfer', ['iban' => 'DE88370400440532013000'] + $form + self::PARTY, self::upload($sheet))->body;
        self::assertStringContainsString('<td>3</td><td>Betrag</td><td>Account and amount of row 2 again<br>', $odd);
        self::assertStringContainsString('<td>2</td><td>Empfänger</td><td>“Š” becomes “S”</td>', $odd);
        self::assertStringContainsString('<p>And 99 more.</p>', $odd);
        self::assertStringContainsString('<td></td><td>Your IBAN</td><td>Invalid IBAN checksum (DE88370400440532013000)<br>', $bad);
        self::assertMatchesRegularExpression('/id="f-iban"[^>]* aria-invalid/', $bad);
        self::assertStringNotContainsString('aria-invalid', $odd);
    }

    public function testThePolicyLetsNothingInFromElsewhere(): void
    {
        $request = new Request([], [], [], [], ['HTTPS' => 'on', 'HTTP_HOST' => 'localhost']);
        $headers = (new App())->headers($request, new Response(''));
        self::assertStringStartsWith("default-src 'none'; style-src 'self';", $headers['Content-Security-Policy']);
        self::assertStringNotContainsString('unsafe', $headers['Content-Security-Policy']);
        self::assertMatchesRegularExpression('/^sepa_token=[0-9a-f]{32}; Path=\/; HttpOnly; SameSite=Lax; Secure$/', $headers['Set-Cookie']);
        self::assertStringNotContainsString('style=', (new App())->respond($request)->body);
    }

    /** @dataProvider balances */
    public function testChartsStayInTheirFrame(int $opening, array $balances): void
    {
        $chart = new BalanceChart('EUR', $opening);
        array_map([$chart, 'add'], $balances);
        preg_match('/<path class="line" d="([^"]+)"/', $chart->html('', ''), $path);
        preg_match_all('/([MHV])([\d.]+)(?: ([\d.]+))?/', $path[1], $parts, PREG_SET_ORDER);
        self::assertSame($path[1], implode('', array_column($parts, 0)));
        self::assertLessThan(2000, count($parts));
        foreach ($parts as $part) {
            self::assertLessThanOrEqual($part[1] === 'H' ? 1000 : 300, (float) ($part[3] ?? $part[2]));
        }
    }

    public function balances(): array
    {
        return [
            'flat' => [0, [0, 0]],
            'flat in debit' => [-5, [-5, -5]],
            'huge' => [PHP_INT_MIN, [PHP_INT_MAX, 0]],
            'many' => [100, range(-5000, 100000)],
            'close' => [1000000001, [1000000002, 1000000000]],
        ];
    }
}
