<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Command;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Command\Application;
use Symfony\Component\Console\Tester\ApplicationTester;
use Symfony\Component\Console\Tester\CommandCompletionTester;

final class SepaTest extends TestCase
{
    private const PARTY = ['--name' => 'Zimmerei', '--iban' => 'DE89370400440532013000', '--bic' => 'COBADEFFXXX', '--date' => '2026-12-01'];

    private const GOOD = "name,iban,amount,ref\nA,NL91ABNA0417164300,1.00,x\n";

    private ApplicationTester $tester;

    private string $folder;

    protected function setUp(): void
    {
        $this->tester = new ApplicationTester(new Application());
        $this->folder = sys_get_temp_dir() . '/sepa-test-' . bin2hex(random_bytes(6));
        mkdir($this->folder);
    }

    protected function tearDown(): void
    {
        array_map('unlink', glob("$this->folder/{,.}[!.]*", GLOB_BRACE));
        rmdir($this->folder);
    }

    /**
     * @dataProvider lookups
     * @param array<string, mixed> $arguments
     */
    public function testLookups(array $arguments, ?string $input, int $status, string $output, string $errors = ''): void
    {
        self::assertSame([$status, $output, $errors], $this->ask($arguments, $input));
    }

    public function lookups(): iterable
    {
        $json = '{"iban":"DE89370400440532013000","valid":true,"code":null,"reason":null,"bic":"COBADEFFXXX","bank":"COMMERZBANK AG"}' . "\n";
        $bad = '{"iban":"DE1","valid":false,"code":"iban_length","reason":"Wrong IBAN length","bic":null,"bank":null}' . "\n";
        $check = ['command' => 'check', '--json' => true];
        yield [$check + ['values' => ['DE89 3704 0044 0532 0130 00']], null, 0, $json];
        yield [$check + ['values' => ['DE1', 'de89370400440532013000']], null, 1, $bad . $json];
        yield 'a list without a heading' => [$check, "DE89 3704 0044 0532 0130 00\n\nDE1", 1, $json . $bad];
        yield 'a heading that is known' => [$check, "Kunde;Konto-IBAN\nDE89;DE89370400440532013000\nx;DE1\n", 1, $json . $bad];
        yield 'a heading that is not' => [$check, "Kunde,Konto\nx,DE89370400440532013000\n", 0, $json];
        yield 'a column that is named' => [$check + ['--column' => ['B']], "A,B\nNL91ABNA0417164300,DE89370400440532013000\n", 0, $json];
        yield 'a cut row' => [$check, "name,iban\nx,DE89370400440532013000\ny", 1, $json . '{"iban":"","valid":false,"code":"empty","reason":"IBAN missing","bic":null,"bank":null}' . "\n"];
        yield 'two columns' => [$check, "NL91ABNA0417164300,DE89370400440532013000\n", 2, '', "sepa: no column for iban: name it with --column. The first row has: 'NL91ABNA0417164300', 'DE89370400440532013000'\n"];
        yield 'an open quote' => [$check, "iban\nDE1\n\"DE89", 2, $bad, "sepa: standard input, row 3: a quote is not closed, or the file was cut\n"];
        yield 'nothing' => [$check, '', 0, ''];
        yield 'a file as an argument' => [['command' => 'check', 'values' => ['customers.csv']], null, 2, '', "sepa: customers.csv is the name of a file. A file is read like this: sepa check <customers.csv\n"];
        yield 'two formats' => [$check + ['--csv' => true], '', 2, '', "sepa: either --csv or --json\n"];
        yield [['command' => 'check', '--csv' => true], "DE1\nDE\"1", 1, "iban,valid,code,reason,bic,bank\nDE1,false,iban_length,Wrong IBAN length,,\n\"DE\"\"1\",false,iban_length,Wrong IBAN length,,\n"];
        yield 'for a terminal' => [['command' => 'bank'], "<info>A</info>\e[2J\n", 1, <<<'TABLE'
            +--------------------+-----+-------------------------------------------+---------+
            | asked for          | BIC | bank or reason                            | schemes |
            +--------------------+-----+-------------------------------------------+---------+
            | <info>A</info>?[2J |     | neither a BIC nor an IBAN nor a bank code |         |
            +--------------------+-----+-------------------------------------------+---------+

            TABLE, "rows: 1, refused: 1\n"];

        $convert = ['command' => 'convert', '--csv' => true, '--no-headings' => true];
        yield [$convert + ['values' => ['532013000', '37040044', '1234567', '37040044']], null, 1, "532013000,37040044,DE89370400440532013000,0,\n1234567,37040044,,11,the account number fails its check\n"];
        yield [$convert, "Name;BLZ;Konto\nx;37040044;532013000\n", 0, "532013000,37040044,DE89370400440532013000,0,\n"];
        yield [$convert, "532013000;37040044\n", 0, "532013000,37040044,DE89370400440532013000,0,\n"];
        yield 'accounts that could be bank codes' => [$convert, "12345678;37040044\n", 2, '', "sepa: no column for account and bank_code: name it with --column. The first row has: '12345678', '37040044'\n"];
        yield [$convert + ['values' => ['1']], null, 2, '', "sepa: these belong together: account and bank_code\n"];
        yield [['command' => 'bank', '--json' => true, 'values' => ['COBADEFF', 'x']], null, 1, '{"query":"COBADEFF","bic":"COBADEFF","bank":"COMMERZBANK AG","schemes":["SCT","SDD","B2B"],"reason":null}' . "\n"
            . '{"query":"x","bic":null,"bank":null,"schemes":null,"reason":"the directory finds banks by IBANs of DE, AT, CH and LI only"}' . "\n"];
        yield 'what a spreadsheet or a terminal would obey' => [['command' => 'check', '--csv' => true], "iban\n=A1\e[2J\n", 1, "iban,valid,code,reason,bic,bank\n'=A1?[2J,false,iban_country,No country has these letters,,\n"];
        yield 'a misspelled command' => [['command' => 'chek'], null, 2, '', "sepa: There is no command 'chek'. Is this meant: check?\n"];
        yield 'a heading of a stranger' => [$check, "A\e[2J,B\n1,2\n", 2, '', "sepa: no column for iban: name it with --column. The first row has: 'A?[2J', 'B'\n"];
        yield 'no such command' => [['command' => 'nonsense'], null, 2, '', "sepa: There is no command 'nonsense'. sepa list shows all.\n"];
        yield 'no such option' => [['command' => 'check', '--nonsense' => true], null, 2, '', "sepa: There is no option '--nonsense'. Each command tells its own: sepa help COMMAND\n"];
    }

    /** @dataProvider statements */
    public function testStatements(array $options, string $file, int $status, string $part, string $errors = ''): void
    {
        [$found, $output, $told] = $this->ask(['command' => 'statement', 'file' => ['-']] + $options, $file);
        self::assertSame([$status, $errors], [$found, $told]);
        self::assertStringContainsString($part, $output);
    }

    public function statements(): iterable
    {
        $good = "\r\n:20:A\r\n:25:37040044/0532013000\r\n:28C:7/1\r\n:60F:C261126EUR10,00\r\n:61:2611271127C4760,00N166NONREF\r\n"
            . ":86:166?00GUTSCHRIFT?20SVWZ+Rechnung 1?32M\xFCller\r\n:62F:C261127EUR4770,00\r\n-\r\n";
        $bad = str_replace('4770,00', '4771,00', $good);
        yield [[], $good, 0, '| 2026-11-27 | Müller | Rechnung 1 | 4.760,00 | 4.770,00 |'];
        yield [[], $bad, 1, '  NOT BALANCED by 1,00'];
        yield [['--json' => true], "$good$bad", 1, '"balanced":false,"difference":1,'];
        yield [['--json' => true], $good, 0, '"account":"37040044/0532013000","reference":"A","number":7,"page":1,"opening":10,'];
        yield [['--csv' => true], $good, 0, "\n37040044/0532013000,7,true,2026-11-27,2026-11-27,4760.00,EUR,false,Müller,,,Rechnung 1,,,166,,\n"];
        yield [['--german' => true], $good, 0, "\n37040044/0532013000;7;true;27.11.2026;27.11.2026;4760,00;EUR;false;Müller;;;Rechnung 1;;;166;;\n"];
        yield [[], substr($good, 0, 90), 1, 'fault, line'];
        yield [[], 'nothing', 2, '', "sepa: -, line 1: There is no statement in the file: no line begins with :20:.\n"];
    }

    public function testADocumentIsWrittenAsAWhole(): void
    {
        $out = "$this->folder/out.xml";
        [$status, $output, $errors] = $this->pay(self::GOOD, ['-o' => $out]);
        self::assertSame([0, ''], [$status, $output]);
        self::assertStringContainsString('payments: 1, 1.00 EUR, rulebook DE-3.7, message ', $errors);
        self::assertStringEndsWith("</Document>\n", file_get_contents($out));

        [$status, $output] = $this->pay(self::GOOD);
        self::assertSame(0, $status);
        self::assertStringStartsWith('<?xml', $output);

        // A document takes the place of an earlier one at once, and faults leave that alone.
        $first = fileinode($out);
        $this->pay(self::GOOD, ['-o' => $out]);
        self::assertNotSame($first, fileinode($out));
        file_put_contents($out, 'earlier');
        self::assertSame(1, $this->pay(str_replace('1.00', '1.190,00', self::GOOD), ['-o' => $out])[0]);
        self::assertStringEqualsFile($out, 'earlier');
        self::assertStringContainsString('none/out.xml: No such file or directory', $this->pay(self::GOOD, ['-o' => "$this->folder/none/out.xml"])[2]);
        self::assertSame(['in.csv', 'out.xml'], array_values(array_diff(scandir($this->folder), ['.', '..'])));
    }

    public function testADocumentIsForItsOwnerAlone(): void
    {
        $out = "$this->folder/out.xml";
        symlink('end.xml', $out);
        $this->pay(self::GOOD, ['-o' => $out]);
        self::assertSame([true, 0100600], [is_link($out), fileperms("$this->folder/end.xml")]);
        chmod($out, 0640);
        $errors = $this->pay(self::GOOD, ['-o' => $out])[2];
        self::assertStringContainsString('The message id is new', $errors);
        clearstatcache();
        self::assertSame([true, 0100640], [is_link($out), fileperms($out)]);
        link("$this->folder/in.csv", "$this->folder/same.csv");
        [$status, , $errors] = $this->pay(self::GOOD, ['-o' => "$this->folder/same.csv"]);
        self::assertSame(2, $status);
        self::assertStringContainsString('same.csv is the file that is read', $errors);
        [$status, , $errors] = $this->pay(self::GOOD, ['-o' => '/dev/full']);
        self::assertSame([2, "sepa: cannot write /dev/full: No space left on device\n"], [$status, $errors]);
    }

    public function testFaultsAreToldWithRowColumnReasonAndHint(): void
    {
        $csv = "Empfänger;IBAN;Betrag\nJosé;NL91ABNA0417164300;1.190,00\nB;NL91;\n";
        [$status, $output, $errors] = $this->pay($csv, ['--json' => true]);
        $faults = array_map(static function (string $line): array {
            $fault = json_decode($line, true, 4, JSON_THROW_ON_ERROR);

            return [$fault['row'], $fault['column'], $fault['code']];
        }, explode("\n", trim($output)));
        self::assertSame(1, $status);
        self::assertSame([[2, 'Empfänger', 'characters'], [2, 'Betrag', 'amount'], [3, 'IBAN', 'iban_length'], [3, 'Betrag', 'missing']], $faults);
        self::assertStringContainsString('--german', $errors);
        self::assertStringContainsString('--transliterate', $errors);

        [$status, $output, $errors] = $this->pay($csv);
        self::assertSame([1, ''], [$status, $output]);
        self::assertMatchesRegularExpression('/^\| fault +\| +2 \| Betrag +\| Invalid amount +\| Write 1190\.00/m', $errors);

        [$status, $output] = $this->pay("Empfänger;IBAN;Betrag\nJosé;NL91ABNA0417164300;1.190,00\n", ['--german' => true, '--transliterate' => true, '--json' => true, '-o' => "$this->folder/out.xml"]);
        self::assertSame(0, $status);
        self::assertSame(['change', 2, 'Empfänger', '“José” becomes “Jose”'], array_values(array_intersect_key(json_decode($output, true), ['severity' => 0, 'row' => 0, 'column' => 0, 'reason' => 0])));
    }

    public function testPeopleSeeTheFirstOfAKindAndProgramsAll(): void
    {
        $csv = "name,iban,amount\n" . str_repeat("A,NL91ABNA0417164300,\"1,00\"\n", 1500);
        [$status, $output, $errors] = $this->pay($csv);
        self::assertSame([1, ''], [$status, $output]);
        self::assertSame(20, substr_count($errors, '| Invalid amount'));
        self::assertStringContainsString('| fault    |     | amount | and 1,480 more; --json has all |', $errors);
        self::assertSame(1500, substr_count($this->pay($csv, ['--json' => true])[1], '"code":"amount"'));
        // A heading that is missing is told once.
        [, , $errors] = $this->pay(str_replace('amount', 'total due', $csv));
        self::assertStringContainsString('payments: 1500, faults: 2, no document', $errors);
        self::assertStringContainsString('--map "Heading=key"', $errors);
    }

    /** @dataProvider templates */
    public function testATemplateIsTakenAsItIs(string $command, array $options): void
    {
        $table = $this->ask(['command' => $command, '--template' => true] + $options, null)[1];
        self::assertSame(isset($options['--german']), strpos($table, ';1.190,00;') !== false);
        [$status, , $errors] = $this->pay($table, ['--json' => true, '-o' => "$this->folder/out.xml", '--creditor-id' => $command === 'debit' ? 'DE98ZZZ09999999999' : null] + $options, $command);
        self::assertStringStartsWith('payments: 2, 1238.50 EUR', $errors);
        self::assertSame(0, $status);
    }

    public function templates(): array
    {
        return [['transfer', []], ['transfer', ['--german' => true]], ['debit', []], ['debit', ['--german' => true]]];
    }

    public function testGermanIsSpokenToPeopleAndNotToPrograms(): void
    {
        $this->tester = new ApplicationTester(new Application('de'));
        $csv = "Empfänger;IBAN;Betrag;Mandat;Mandatsdatum\nMüller;NL91;1190.00;M;31.12.2025\n";
        $debit = ['--creditor-id' => 'DE98ZZZ09999999999', '--german' => true];
        [, , $errors] = $this->pay($csv, $debit, 'debit');
        self::assertStringContainsString('| Fehler |     2 | IBAN ', $errors);
        self::assertStringContainsString('| Keine Spalte für Sequenz ', $errors);
        self::assertStringContainsString("\n--seq FRST (oder RCUR, FNAL, OOFF) gilt für alle Zeilen ohne Sequenz.\n", $errors);
        $json = $this->pay($csv, $debit + ['--json' => true, '--seq' => 'RCUR'], 'debit')[1];
        self::assertSame(1, substr_count($json, "\n"));
        self::assertStringContainsString('"code":"iban_length","reason":"Wrong IBAN length"', $json);
        self::assertSame("sepa: --seq kann nicht „X“ sein. Möglich sind FRST, RCUR, FNAL, OOFF\n", $this->pay($csv, $debit + ['--seq' => 'X'], 'debit')[2]);
        self::assertStringContainsString('none/x kann nicht gelesen werden: Es gibt sie nicht', $this->pay('', ['file' => "$this->folder/none/x"])[2]);
        self::assertSame("sepa: Den Befehl „chek“ gibt es nicht. Ist das gemeint: check?\n", $this->ask(['command' => 'chek'], null)[2]);
        self::assertStringContainsString("\nAufruf:\n  sepa check [Optionen]", $this->ask(['command' => 'help', 'command_name' => 'check'], null)[1]);
        self::assertStringContainsString('| nein   |     | Die Länge der IBAN ist falsch: ', $this->ask(['command' => 'check', 'values' => ['DE1']], null)[1]);
    }

    /** @param array<string, mixed> $options */
    private function pay(string $csv, array $options = [], string $command = 'transfer'): array
    {
        file_put_contents("$this->folder/in.csv", $csv);

        $arguments = ['command' => $command] + $options + ['file' => "$this->folder/in.csv"] + self::PARTY;

        return $this->ask(array_filter($arguments, static function ($value): bool {
            return $value !== null;
        }), null);
    }

    public function testSeveralDocumentsHaveNumberedNames(): void
    {
        $csv = "name,iban,amount,category\nA,NL91ABNA0417164300,1.00,SALA\nB,NL91ABNA0417164300,2.00,\nC,NL91ABNA0417164300,3.00,SALA\n";
        $options = ['--message-id' => 'X', '--at' => '2026-12-01T10:00:00Z', '--address' => ['addrTown=Bern', 'addrCC=CH'], '--no-bic' => true];
        [$status, , $errors] = $this->pay($csv, $options + ['--date' => null, '--bic' => null, '-o' => "$this->folder/end.xml"]);
        self::assertSame(0, $status, $errors);
        self::assertStringContainsString('end-1.xml: payments: 2, 4.00 EUR, rulebook DE-3.7, message X-1', $errors);
        $xml = (string) file_get_contents("$this->folder/end-2.xml");
        foreach (['<MsgId>X-2<', '<Cd>INST<', '<DtTm>2026-12-01T10:00:00Z<', '<TwnNm>Bern<', '<Id>NOTPROVIDED<', '>2.00<'] as $part) {
            self::assertStringContainsString($part, $xml);
        }
        self::assertFileDoesNotExist("$this->folder/end.xml");
        // None is written if one cannot be.
        mkdir("$this->folder/new-2.xml");
        self::assertSame(2, $this->pay($csv, ['-o' => "$this->folder/new.xml"])[0]);
        self::assertFileDoesNotExist("$this->folder/new-1.xml");
        rmdir("$this->folder/new-2.xml");
    }

    /** @dataProvider wrongUse */
    public function testWrongUse(array $options, string $command, string $csv, string $reason): void
    {
        [$status, $output, $errors] = $this->pay($csv, $options, $command);
        self::assertSame([2, ''], [$status, $output]);
        self::assertStringContainsString($reason, $errors);
    }

    public function wrongUse(): array
    {
        return [
            [['--name' => null, '--iban' => null], 'transfer', self::GOOD, 'missing: --name, --iban'],
            [[], 'transfer', "name,iban,amount,category\nA,NL91ABNA0417164300,1.00,SALA\nB,NL91ABNA0417164300,2.00,\n", '2 documents: --output'],
            [['--address' => ['addrTown=Bern']], 'transfer', self::GOOD, '| --address addrCC | Country missing'],
            [['--address' => ['addrTwn=Bern']], 'transfer', self::GOOD, "not 'addrTwn=Bern'"],
            [[], 'debit', self::GOOD, 'missing: --creditor-id'],
            [['--map' => ['Betrag=money']], 'transfer', self::GOOD, "--map takes \"Heading=key\", and not 'Betrag=money'"],
            [['--map' => ['Betrag=amount']], 'transfer', self::GOOD, "no column has the heading 'Betrag'"],
            [['--creditor-id' => 'DE98ZZZ09999999999', '--type' => 'X'], 'debit', self::GOOD, "--type cannot be 'X'"],
            [['--creditor-id' => 'DE98ZZZ09999999999', '--type' => 'COR1'], 'debit', self::GOOD, '| --type '],
            [['--rulebook' => 'DE-9'], 'transfer', self::GOOD, "--rulebook cannot be 'DE-9'"],
            [['--date' => '2026-02-30'], 'transfer', self::GOOD, 'No such date: 2026-02-30'],
            [[], 'transfer', '', 'the file is empty'],
            [['file' => '/nonexistent'], 'transfer', '', 'cannot read /nonexistent'],
            [['file' => '/'], 'transfer', '', 'cannot read /'],
        ];
    }

    public function testTheVersionIsThatOfTheTree(): void
    {
        self::assertMatchesRegularExpression('/^sepa \d+\.\d+\.\d+(\+dev)?$/', trim($this->ask(['--version' => true], null)[1]));
    }

    public function testBashCompletesValues(): void
    {
        $tester = new CommandCompletionTester((new Application())->find('debit'));
        self::assertContains('DE-3.7', $tester->complete(['--rulebook', '']));
        self::assertSame(['CORE', 'COR1', 'B2B'], $tester->complete(['--type', '']));
        touch("$this->folder/x.csv");
        self::assertSame(["$this->folder/x.csv"], $tester->complete(["$this->folder/x"]));
    }

    /** @return array{int, string, string} exit code, output, errors */
    private function ask(array $arguments, ?string $input): array
    {
        if ($input !== null) {
            $this->tester->setInputs([$input]);
        }
        $status = $this->tester->run($arguments, ['capture_stderr_separately' => true, 'decorated' => false]);

        return [$status, $this->tester->getDisplay(), $this->tester->getErrorOutput()];
    }
}
