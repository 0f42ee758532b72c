<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Web;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\File\Source;
use Sepa\Toolkit\Web\App;
use Sepa\Toolkit\Web\BalanceChart;
use Sepa\Toolkit\Web\Gate;
use Sepa\Toolkit\Web\Input;
use Symfony\Component\HttpFoundation\File\UploadedFile;
use Symfony\Component\HttpFoundation\Request;
use Symfony\Component\HttpFoundation\Response;

/** What a browser shows is tested in one, by browser.mjs. */
final class AppTest extends TestCase
{
    private const TOKEN = '0123456789abcdef0123456789abcdef';

    private const HOSTILE = '"><script>\'&\0';

    private const PARTY = ['name' => 'A', 'iban' => 'DE89370400440532013000'];

    /** @param array<mixed> $post null takes a field away */
    private static function post(string $page, array $post, array $files = [], array $server = [], $cookie = self::TOKEN): Response
    {
        $post += ['page' => $page, Gate::TOKEN => self::TOKEN, Gate::LAST_FIELD => '1'];
        if (isset($post['row'][0])) {
            $post['row'] = array_combine(range(1, count($post['row'])), $post['row']);
        }
        $server += ['REQUEST_METHOD' => 'POST', 'HTTP_HOST' => 'localhost:8080', 'HTTP_ORIGIN' => 'http://localhost:8080', 'HTTP_ACCEPT_LANGUAGE' => 'en'];
        $post = array_filter($post, static fn ($value): bool => $value !== null);

        return (new App())->respond(new Request(['page' => $page], $post, [], [Gate::TOKEN => $cookie], $files, $server));
    }

    /** @return array<string, UploadedFile> */
    private static function upload(string $text, int $error = UPLOAD_ERR_OK): array
    {
        $path = tempnam(sys_get_temp_dir(), 'sepa-test');
        file_put_contents($path, $text);

        return ['file' => new UploadedFile($path, 'file', null, $error, true)];
    }

    /** @return array<string, mixed> what the form of an answer has */
    private static function fields(Response $answer): array
    {
        $page = new \DOMDocument();
        @$page->loadHTML('<?xml encoding="UTF-8">' . $answer->getContent());
        $pairs = [];
        foreach ((new \DOMXPath($page))->query('//input[@name]|//textarea[@name]|//select[@name]') as $field) {
            $chosen = $field->nodeName === 'select' ? (new \DOMXPath($page))->query('option[@selected or not(../option[@selected])]', $field)->item(0) : null;
            $value = $field->nodeName === 'textarea' ? $field->textContent : ($chosen ? $chosen->getAttribute('value') : $field->getAttribute('value'));
            $pairs[] = urlencode($field->getAttribute('name')) . '=' . urlencode($field->nodeName === 'textarea' ? preg_replace('/^\n/', '', $value) : $value);
        }
        parse_str(implode('&', $pairs), $fields);

        return array_diff_key($fields, [Gate::TOKEN => 1, 'rulebook' => 1, 'transliterate' => 1]);
    }

    private static function isDownload(Response $answer): bool
    {
        return $answer->headers->get('Content-Type') === 'application/xml';
    }

    public function testOnlyAWholeFormOfThisSiteIsTaken(): void
    {
        $form = ['do' => 'check', 'lines' => 'DE89370400440532013000'];
        $answers = [
            [200, self::post('iban', $form)],
            [200, self::post('iban', $form, [], ['HTTP_ORIGIN' => ''])],
            [403, self::post('iban', [Gate::TOKEN => str_repeat('0', 32)] + $form)],
            [403, self::post('iban', [Gate::TOKEN => ''] + $form)],
            [403, self::post('iban', [Gate::TOKEN => ['x']] + $form)],
            [403, self::post('iban', $form, [], [], null)],
            [403, self::post('iban', [Gate::TOKEN => 'x'] + $form, [], [], 'x')],
            [403, self::post('iban', $form, [], ['HTTP_ORIGIN' => 'http://localhost:8081'])],
            [403, self::post('iban', $form, [], ['HTTP_ORIGIN' => 'null'])],
            [200, self::post('iban', $form, [], ['HTTP_HOST' => '[fd00::1]:80', 'HTTP_ORIGIN' => 'http://[fd00::1]:80', 'SERVER_ADDR' => 'fd00::1'])],
            [200, self::post('iban', $form, [], ['HTTP_HOST' => 'Pay.example', 'HTTP_ORIGIN' => '', 'SEPA_HOSTS' => 'a.example, pay.example'])],
            [421, self::post('iban', $form, [], ['HTTP_HOST' => 'evil.example', 'HTTP_ORIGIN' => '', 'SERVER_NAME' => 'pay.example'])],
            [421, self::post('iban', $form, [], ['HTTP_HOST' => ''])],
            [405, self::post('iban', $form, [], ['REQUEST_METHOD' => 'TRACE'])],
            [413, self::post('iban', [Gate::LAST_FIELD => null] + $form)],
        ];
        foreach ($answers as $i => [$status, $answer]) {
            self::assertSame($status, $answer->getStatusCode(), "request $i");
            self::assertSame($status === 200, strpos($answer->getContent(), 'The IBAN is good') !== false, "request $i");
        }
    }

    public function testNoInputBecomesHtml(): void
    {
        $row = ['name' => self::HOSTILE, 'iban' => self::HOSTILE, 'amount' => self::HOSTILE, 'ref' => [self::HOSTILE]];
        $statement = ":20:x\n:25:x\n:60F:C261126EUR1,\n:61:261127C1,NTRF\n:86:166?00x?20x?32x\n:62F:C261126EUR2,\n:86:x\n-\n";
        $answers = [
            self::post('iban', ['do' => 'check', 'lines' => self::HOSTILE]),
            self::post('iban', ['do' => 'check', 'lines' => self::HOSTILE . "\n" . self::HOSTILE]),
            self::post('iban', ['do' => 'bank', 'query' => self::HOSTILE]),
            self::post('statement', ['do' => 'read'], self::upload(str_replace('x', self::HOSTILE, $statement))),
            self::post('statement', ['do' => 'read'], self::upload(":20:\xFF\n:61:261127C1,NTRF\xFF\n")),
            self::post('transfer', ['do' => 'check', 'columns' => 'id,' . self::HOSTILE, 'row' => [$row, 'x', []], 'date' => self::HOSTILE] + array_fill_keys(['name', 'iban', 'bic', 'messageId', 'rulebook'], self::HOSTILE)),
            self::post('transfer', ['do' => 'check'] + self::PARTY, self::upload("iban,amount," . self::HOSTILE . "\n1,2," . self::HOSTILE)),
            self::post(self::HOSTILE, ['do' => self::HOSTILE]),
        ];
        foreach ($answers as $i => $answer) {
            self::assertStringNotContainsString('<script>', $answer->getContent(), "request $i");
            self::assertNotFalse(preg_match('//u', $answer->getContent()));
            self::assertNotSame(500, $answer->getStatusCode(), "request $i");
        }
    }

    public function testUploadsAreRemovedAndWhatWasTypedStays(): void
    {
        $tried = [
            422 => [self::upload(':20:x')],
            413 => [self::upload(str_repeat('x', Input::MAX_UPLOAD + 1)), self::upload('', UPLOAD_ERR_INI_SIZE)],
            400 => [self::upload('', UPLOAD_ERR_PARTIAL), ['file' => [[self::upload('')['file']]]]],
        ];
        foreach ($tried as $status => $uploads) {
            foreach ($uploads as $files) {
                $path = (is_array($files['file']) ? $files['file'][0][0] : $files['file'])->getPathname();
                $answer = self::post('transfer', ['do' => 'check', 'name' => 'Zimmerei', 'row' => [['name' => 'Typed']]], $files);
                self::assertSame($status, $answer->getStatusCode());
                self::assertStringContainsString('value="Zimmerei"', $answer->getContent());
                self::assertStringContainsString('value="Typed"', $answer->getContent());
                self::assertFileDoesNotExist($path);
            }
        }
    }

    public function testStatementsTravelPackedAndAreSearched(): void
    {
        $booking = ":61:2611271127%s%d,40NTRFNONREF\n:86:166?00X?20EREF+E-%1\$d?21SVWZ+Rechnung %1\$d?32Kunde =%1\$d\n";
        $text = ":20:1\n:25:37040044/532013000\n:28C:%d/1\n:60F:C261126EUR1,\n%s:62F:C261127EUR%s\n-\n";
        $bookings = implode('', array_map(static fn (int $i): string => strtr($booking, ['%s' => 'C', '%d' => $i, '%1$d' => $i]), range(1, 450)));
        $good = sprintf($text, 1, $bookings, '101656,');
        $files = ['file' => [self::upload((string) gzencode($good))['file'], self::upload(sprintf($text, 2, '', '5,'))['file']]];
        $read = self::post('statement', ['do' => 'read'], $files);
        self::assertStringContainsString('2 statements, 450 bookings: 1 statement needs a look', $read->getContent());
        self::assertStringContainsString('DE89 3704 0044 0532 0130 00', $read->getContent());
        self::assertSame(200, substr_count($read->getContent(), '<td><strong'));
        $carried = array_diff_key(self::fields($read), ['file' => 1, 'wanting' => 1]);
        foreach ([[['p' => '3'], 50, 'Rechnung 450'], [['q' => 'e-441 KUNDE'], 1, 'Rechnung 441'], [['q' => '44,40'], 1, 'Rechnung 44'], [['q' => 'E-44'], 11, 'Rechnung 449'], [['from' => '28.11.2026', 'do' => 'read'], 0, 'No booking found']] as [$asked, $rows, $part]) {
            $page = self::post('statement', $asked + $carried)->getContent();
            self::assertSame($rows, substr_count($page, '<td><strong'), $part);
            self::assertStringContainsString($part, $page);
        }
        $csv = explode("\n", self::post('statement', ['do' => 'csv', 'q' => 'E-44'] + $carried)->getContent());
        self::assertCount(13, $csv);
        self::assertStringContainsString(';27.11.2026;44,40;EUR;false;Kunde =44;', $csv[1]);
        foreach (['x', base64_encode('x'), base64_encode((string) gzencode("\xFF\xFF\xFF\xFF\0\0\0\1ab"))] as $odd) {
            self::assertSame(200, self::post('statement', ['did' => 'again', 'packed' => $odd])->getStatusCode());
        }
    }

    public function testFormsOfAllPagesTravelAlong(): void
    {
        $form = ['row' => [['name' => self::HOSTILE, 'iban' => 'DE88370400440532013000', 'amount' => '1']], 'did' => 'check'] + self::PARTY;
        $kept = static function (Response $answer): string {
            preg_match('/name="kept" value="([^"]*)"/', $answer->getContent(), $kept);

            return htmlspecialchars_decode($kept[1], ENT_QUOTES);
        };
        $iban = self::post('iban', ['page' => 'transfer'] + $form);
        $statement = self::post('statement', ['kept' => $kept($iban), 'page' => 'iban', 'lines' => 'DE12', 'did' => 'check']);
        $back = self::post('transfer', ['kept' => $kept($statement), 'page' => 'statement']);
        self::assertStringContainsString('value="' . htmlspecialchars(self::HOSTILE, ENT_QUOTES) . '"', $back->getContent());
        self::assertStringContainsString('1 payment, 2 faults', $back->getContent());
        self::assertStringContainsString('Wrong IBAN length', self::post('iban', ['kept' => $kept($back), 'page' => 'transfer'])->getContent());
        foreach (['', 'x', '[]', '{"iban":1,"x":[]}', '{"iban":{"iban":["x"]}}'] as $odd) {
            self::assertSame(200, self::post('iban', ['kept' => $odd, 'page' => 'x'])->getStatusCode(), $odd);
        }
        $lost = self::post('transfer', ['do' => 'document'] + $form, [], [], null);
        self::assertSame(403, $lost->getStatusCode());
        self::assertStringContainsString('value="DE88370400440532013000"', $lost->getContent());
    }

    public function testTheLanguageIsTheBrowsersUnlessChosen(): void
    {
        $language = static function (array $sent, string $wanted, string $before = ''): string {
            $request = new Request($sent, [], [], ['sepa_lang' => $before], [], ['HTTP_HOST' => 'localhost', 'HTTP_ACCEPT_LANGUAGE' => $wanted]);
            preg_match('/<html lang="(..)">/', (new App())->respond($request)->getContent(), $found);

            return $found[1];
        };
        self::assertSame(['de', 'de', 'de', 'en'], array_map([$language, '__invoke'], [[], [], [], []], ['', 'fr', 'de-AT,en;q=0.5', 'fr,en-US;q=0.5']));
        self::assertSame(['en', 'de', 'de'], [$language(['lang' => 'en'], 'de'), $language(['lang' => ['x']], 'de', 'x'), $language([], 'en', 'de')]);
        $german = self::post('transfer', ['do' => 'check', 'row' => [['amount' => '1190', 'iban' => 'DE1']]] + self::PARTY, [], ['HTTP_ACCEPT_LANGUAGE' => 'de'])->getContent();
        self::assertStringContainsString('<title>2 Fehler – Überweisungen – SEPA</title>', $german);
        self::assertStringContainsString('Zeile 1, IBAN: Die Länge der IBAN ist falsch', $german);
    }

    public function testADocumentLeavesOnlyWithoutFaultsAndAfterOddThingsWereSeen(): void
    {
        $row = ['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1,00'];
        $form = ['do' => 'document', 'german' => '1', 'messageId' => 'M/1', 'row' => [$row, ['amount' => '2,00'] + $row]] + self::PARTY;
        $answer = self::post('transfer', $form);
        self::assertSame([200, 'attachment; filename=transfer-M-1.xml'], [$answer->getStatusCode(), $answer->headers->get('Content-Disposition')]);
        self::assertStringContainsString('<CtrlSum>3.00</CtrlSum>', $answer->getContent());

        self::assertFalse(self::isDownload(self::post('transfer', ['row' => [$row, ['amount' => 'x'] + $row]] + $form)));
        self::assertFalse(self::isDownload(self::post('transfer', ['row' => []] + $form)));
        $empty = self::post('transfer', ['do' => 'document']);
        self::assertStringContainsString('0 payments, 2 faults', $empty->getContent());
        $strange = self::post('transfer', ['page' => 'iban', 'payee' => 'DE1', 'kept' => '{"transfer":{"table":"\\"x"}}']);
        self::assertStringContainsString('value="DE1"', $strange->getContent());
        foreach (["name,iban,amount\nB,{$row['iban']}", "name,iban,iban,amount\nB,{$row['iban']},{$row['iban']},1", "name,iban,amount,colour\nB,{$row['iban']},1,red"] as $sheet) {
            $answer = self::post('transfer', $form, self::upload($sheet));
            self::assertSame(422, $answer->getStatusCode(), $sheet);
        }

        $twice = ['row' => [$row, $row]] + $form;
        $answer = self::post('transfer', $twice);
        self::assertFalse(self::isDownload($answer));
        preg_match('/name="seen"[^>]* value="(\w+)"/', $answer->getContent(), $seen);
        self::assertTrue(self::isDownload(self::post('transfer', $twice + ['seen' => $seen[1]])));
        self::assertFalse(self::isDownload(self::post('transfer', ['row' => [$row, $row, $row]] + $twice + ['seen' => $seen[1]])));
    }

    public function testEachBatchOfATabHasAMessageIdOfItsOwn(): void
    {
        $row = ['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1,00'];
        $form = ['do' => 'document', 'german' => '1', 'seed' => '20261123-101500-0123456789ab'] + self::PARTY;
        $id = static function (array $form, array $files = []): string {
            $pattern = '/<MsgId>([\w-]+)<|id="f-messageId"[^>]* placeholder="([\w-]+)"/';
            preg_match($pattern, self::post('transfer', $form, $files)->getContent(), $id);

            return end($id);
        };
        $csv = "amount;iban;name\n1,00;{$row['iban']};B\n";
        $first = $id(['row' => [$row]] + $form);
        self::assertStringStartsWith('20261123-101500-', $first);
        self::assertSame($first, $id(['row' => [[], $row + ['ref' => '']], 'columns' => 'ref'] + $form));
        self::assertSame($first, $id($form, self::upload($csv)));
        self::assertSame($first, $id(['row' => [['amount' => '1.00'] + $row]] + $form));
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
        preg_match('/name="bic" value="(\w*)"/', self::post('transfer', ['do' => 'check'] + $form + self::PARTY)->getContent(), $bic);
        foreach ([[$bic[1], 'INGDDEFFXXX'], ['INGDDEFF', 'INGDDEFF']] as [$typed, $sent]) {
            $answer = self::post('transfer', ['iban' => 'DE12500105170648489890', 'bic' => $typed] + $form + self::PARTY);
            self::assertMatchesRegularExpression("/<DbtrAgt>\s*<FinInstnId>\s*<BIC(FI)?>$sent</", $answer->getContent());
        }
        $example = self::post('transfer', ['do' => 'example'])->getContent();
        self::assertMatchesRegularExpression('/name="bic" value=""[^>]* placeholder="COBADEFFXXX"/', $example);
        self::assertStringContainsString('value="Typed"', self::post('transfer', ['do' => 'example', 'name' => 'Typed'])->getContent());
    }

    public function testATableTravelsAndItsFaultyRowsAreMended(): void
    {
        $form = ['do' => 'document'] + self::PARTY;
        $head = "name;iban;amount;\n";
        $row = 'B;DE12500105170648489890;11';
        self::assertTrue(self::isDownload(self::post('transfer', $form, self::upload("$head$row;\n"))));

        $cut = self::post('transfer', $form, self::upload("$head$row;\n$row;"));
        self::assertFalse(self::isDownload($cut));
        self::assertStringContainsString('Row 3: The last line has no end', $cut->getContent());
        self::assertTrue(self::isDownload(self::post('transfer', self::fields($cut) + $form)));

        $many = str_replace("$row;\n", "$row;x\n", self::post('transfer', $form, self::upload("$head$row;x\n"))->getContent());
        self::assertStringContainsString('4 cells under 4 headings', $many);

        $sheet = "Name;Konto-IBAN;Betrag\n" . str_repeat("\xE4;DE12500105170648489890;1\n", 5000);
        $bad = substr_replace(substr_replace($sheet, 'DE99', 27, 4), "x\n", -2);
        $faulty = self::post('transfer', $form, self::upload($bad));
        self::assertStringContainsString('5,000 payments, 2 faults', $faulty->getContent());
        self::assertSame([2, 5001], array_keys(self::fields($faulty)['row']));
        $mended = [2 => ['iban' => 'DE12500105170648489890', 'amount' => '3'], 5001 => ['amount' => '2,50', 'name' => 'C']];
        $checked = self::post('transfer', ['do' => 'check', 'row' => array_replace_recursive(self::fields($faulty)['row'], $mended)] + self::fields($faulty) + $form);
        self::assertArrayNotHasKey('row', self::fields($checked));
        $made = self::post('transfer', ['do' => 'document'] + self::fields($checked) + $form)->getContent();
        foreach (['<NbOfTxs>5000</NbOfTxs>', '<CtrlSum>5003.50</CtrlSum>', '<Nm>C</Nm>', '<Nm>ä</Nm>'] as $part) {
            self::assertStringContainsString($part, $made);
        }
        $other = self::post('transfer', ['do' => 'check'] + self::fields($checked) + $form, self::upload("$head$row\n"));
        self::assertStringContainsString('The table has replaced the # payments', str_replace('the 2 ', 'the # ', $other->getContent()));
    }

    public function testAListOfAccountsComesBackInItsOrder(): void
    {
        $lines = "DE89 3704 0044 0532 0130 00\n\n532013000;37040044\r\n532 013 000 370 400 44\n1\tx\n" . str_repeat('9', 70) . "\n=1+1";
        $page = self::post('iban', ['do' => 'check', 'lines' => $lines])->getContent();
        self::assertStringContainsString('6 lines: 3 wrong, 0 with a remark, 3 good', $page);
        self::assertMatchesRegularExpression('~<tbody>\s*<tr><td>4</td>~', $page);
        $csv = explode("\n", self::post('iban', ['do' => 'csv', 'lines' => $lines])->getContent());
        self::assertStringContainsString('DE89 3704 0044 0532 0130 00;DE89370400440532013000;COMMERZBANK AG;COBADEFFXXX;', $csv[1]);
        self::assertStringStartsWith('532 013 000 370 400 44;DE89370400440532013000;', $csv[3]);
        self::assertStringStartsWith(str_repeat('9', 70) . ';', $csv[5]);
        self::assertStringStartsWith("'=1+1;", $csv[6]);
        $many = self::post('iban', ['do' => 'check', 'lines' => str_repeat("DE1\n", 5001)])->getContent();
        self::assertStringContainsString('5001 lines are too many', $many);
        $payee = self::post('transfer', ['page' => 'iban', 'payee' => 'DE89 3704', 'kept' => '{"transfer":{"row":{"1":{"name":"A"},"2":{"name":""}}}}'])->getContent();
        self::assertStringContainsString('name="row[2][iban]" value="DE89 3704"', $payee);
    }

    public function testColumnsAreAssigned(): void
    {
        $form = ['do' => 'check', 'pasted' => "Wer\tIBAN\tWieviel\tFarbe\nB\tDE12500105170648489890\t1,50\trot"] + self::PARTY;
        $asked = self::post('transfer', $form);
        self::assertStringContainsString('<td class="text">1,50</td>', $asked->getContent());
        $columns = array_column(self::fields($asked)['column'], 'key', 'heading');
        self::assertSame(['Wer' => '-', 'IBAN' => 'iban', 'Wieviel' => '-', 'Farbe' => '-'], $columns);
        $told = [1 => ['heading' => 'Wer', 'key' => 'name'], 3 => ['heading' => 'Wieviel', 'key' => 'amount'], 4 => ['heading' => 'Farbe', 'key' => '-']];
        $answer = self::post('transfer', ['column' => $told, 'pasted' => ''] + self::fields($asked) + $form);
        self::assertStringContainsString('1 payment, 1.50 EUR', $answer->getContent());
        foreach (["A;B\n1;2\n", "name;iban;iban;amount\nB;1;2;3\n"] as $strange) {
            self::assertNotEmpty(self::fields(self::post('transfer', ['pasted' => $strange] + $form))['column'], $strange);
        }
    }

    public function testSeveralDocumentsComeAsOneArchive(): void
    {
        $rows = "Name;IBAN;Betrag;Eigene IBAN\nA;DE12500105170648489890;1;DE89370400440532013000\nB;DE12500105170648489890;2;DE62701500000020228888\n";
        $answer = self::post('transfer', ['do' => 'document', 'pasted' => $rows, 'instant' => '1', 'category' => 'SALA'] + self::PARTY);
        self::assertSame('application/zip', $answer->headers->get('Content-Type'));
        $sums = [];
        foreach (Source::string($answer->getContent(), 'x.zip')->parts() as $part) {
            $text = implode('', iterator_to_array($part->chunks(), false));
            preg_match_all('~<MsgId>[\w-]+(-\d)<|<CtrlSum>([^<]*)</CtrlSum>\s*<Init|<(INST)>|<Cd>(INST|SALA)<~', $text, $found);
            $sums[] = implode(' ', array_filter(array_merge($found[1], $found[2], $found[4])));
        }
        self::assertSame(['-1 1.00 INST SALA', '-2 2.00 INST SALA'], $sums);
    }

    public function testDebitsHaveTheirSequenceAndKind(): void
    {
        $row = ['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1', 'mref' => 'M1', 'mdate' => '31.12.2025'];
        $form = ['do' => 'document', 'creditorId' => 'DE98ZZZ09999999999', 'type' => 'B2B', 'seq' => 'FRST', 'row' => [$row]] + self::PARTY;
        $made = self::post('debit', $form)->getContent();
        foreach (['<Cd>B2B</Cd>', '<SeqTp>FRST</SeqTp>', '<DtOfSgntr>2025-12-31</DtOfSgntr>'] as $part) {
            self::assertStringContainsString($part, $made);
        }
        self::assertStringContainsString('<SeqTp>RCUR</SeqTp>', self::post('debit', ['seq' => 'x', 'type' => ['x']] + $form)->getContent());
    }

    public function testOwnAccountsAreChosenOrBookmarked(): void
    {
        $ini = tempnam(sys_get_temp_dir(), 'sepa-test');
        file_put_contents($ini, "hosts = pay.example\n[Giro]\nname = Zimmerei\niban = DE89370400440532013000\n[Zweit]\nname = B\niban=DE12500105170648489890\n");
        $row = ['name' => 'B', 'iban' => 'DE12500105170648489890', 'amount' => '1'];
        $server = ['SEPA_ACCOUNTS' => $ini, 'HTTP_HOST' => 'pay.example', 'HTTP_ORIGIN' => 'https://pay.example'];
        foreach (['Giro' => 'DE89370400440532013000', 'Zweit' => 'DE12500105170648489890', '' => 'DE62701500000020228888'] as $own => $iban) {
            $form = ['do' => 'document', 'own' => $own, 'name' => 'C', 'iban' => 'DE62701500000020228888', 'row' => [$row]];
            $made = self::post('transfer', $form, [], $server)->getContent();
            self::assertMatchesRegularExpression("/<DbtrAcct>\s*<Id>\s*<IBAN>$iban</", $made);
        }
        unlink($ini);
        $opened = new Request(['page' => 'debit', 'iban' => 'DE12', 'creditorId' => ['x'], 'do' => 'check'], [], [], [], [], ['HTTP_HOST' => 'localhost']);
        $page = (new App())->respond($opened)->getContent();
        self::assertStringContainsString('value="DE12"', $page);
        self::assertStringNotContainsString('class="notice', $page);
        $linked = self::post('transfer', ['do' => 'check', 'row' => [$row]] + self::PARTY)->getContent();
        self::assertStringContainsString('href="?page=transfer&amp;name=A&amp;iban=DE89370400440532013000"', $linked);
    }

    public function testALargeFileIsToldUnderItsHeadingsAndChosenAgain(): void
    {
        $sheet = "Empfänger;Konto-IBAN;Betrag;Zweck\n" . str_repeat('Š;DE12500105170648489890;1;' . str_repeat('x', 130) . "\n", 8000);
        $form = ['do' => 'check', 'transliterate' => '1'];
        $odd = self::post('transfer', $form + self::PARTY, self::upload($sheet))->getContent();
        $bad = self::post('transfer', ['iban' => 'DE88370400440532013000'] + $form + self::PARTY, self::upload($sheet))->getContent();
        self::assertStringContainsString('Row 3, Betrag: Account and amount of row 2 again <small>', $odd);
        self::assertStringContainsString('Choose the file again', $odd);
        self::assertLessThan(100000, strlen($odd));
        self::assertStringContainsString('>Your IBAN: Invalid IBAN checksum (DE88370400440532013000)</a>', $bad);
        self::assertMatchesRegularExpression('/id="f-iban"[^>]* aria-invalid/', $bad);
        self::assertStringNotContainsString('aria-invalid', $odd);
    }

    public function testThePolicyLetsNothingInFromElsewhere(): void
    {
        $answer = (new App())->respond(new Request([], [], [], [], [], ['HTTPS' => 'on', 'HTTP_HOST' => 'localhost']));
        $policy = (string) $answer->headers->get('Content-Security-Policy');
        self::assertStringStartsWith("default-src 'none'; style-src 'self';", $policy);
        self::assertStringNotContainsString('unsafe', $policy);
        self::assertStringNotContainsString('no-store', (string) $answer->headers->get('Cache-Control'));
        $cookie = (string) $answer->headers->getCookies()[0];
        self::assertMatchesRegularExpression('/^sepa_token=[0-9a-f]{32}; path=\/; secure; httponly; samesite=lax$/', $cookie);
        self::assertStringNotContainsString('style=', $answer->getContent());
    }

    /** @dataProvider balances */
    public function testChartsStayInTheirFrame(int $opening, array $balances): void
    {
        $chart = new BalanceChart('EUR', $opening);
        array_map([$chart, 'add'], $balances);
        $line = $chart->picture()['line'];
        preg_match_all('/([MHV])([\d.]+)(?: ([\d.]+))?/', $line, $parts, PREG_SET_ORDER);
        self::assertSame($line, implode('', array_column($parts, 0)));
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
