<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Csv\Headings;
use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Payment\Collections;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Unreadable;

final class SheetTest extends TestCase
{
    private const TABLE = "Empfänger;IBAN;Betrag;Verwendungszweck;Kundennr.\n"
        . "\"Müller \"\"Holz\"\"; Söhne\";DE62 7015 0000 0020 2288 88;1190.00;Rechnung 1;7\n"
        . "\n"
        . "Weiß;NL91ABNA0417164300;5.00;;8\n";

    /** @dataProvider writings */
    public function testAnySpreadsheetsWritingGivesTheSamePayments(string $csv): void
    {
        $payments = $this->read($csv, 'AT-6', false, ['Kundennr.']);
        self::assertSame([], array_map('strval', $payments->faults()));
        self::assertSame('1195.00', $payments->sum());
        $xml = $payments->document();
        self::assertStringContainsString('<Nm>Müller "Holz"; Söhne</Nm>', $xml);
        self::assertStringContainsString('<IBAN>DE62701500000020228888</IBAN>', $xml);
        self::assertSame(1, substr_count($xml, '<Ustrd>'));
    }

    public function writings(): array
    {
        $quoted = '"Empfänger","IBAN","Betrag","Verwendungszweck","Kundennr."' . "\n"
            . '"Müller ""Holz""; Söhne","DE62701500000020228888","1190.00","Rechnung 1","7"' . "\n" . '"Weiß","NL91ABNA0417164300","5.00","","8"' . "\n";

        return [
            'semicolons' => [self::TABLE],
            'a mark, CR LF, empty columns' => ["\u{FEFF}" . str_replace("\n", ";;\r\n", self::TABLE)],
            'Windows-1252, CR' => [mb_convert_encoding(str_replace("\n", "\r", self::TABLE), 'Windows-1252', 'UTF-8')],
            'commas and quotes' => [$quoted],
            'tabs' => [str_replace(['","', '"Weiß', '"8"'], ["\"\t\"", '"Weiß', '8'], $quoted)],
            'the delimiter named' => ["sep=;\r\n" . self::TABLE],
            'no-break spaces' => [str_replace(['1190.00', 'DE62 '], ["\u{A0}1190.00\u{A0}", "DE62\u{A0}"], self::TABLE)],
            'another order of columns' => ["amount,Kundennr.,ref,iban,name\n1190.00,7,Rechnung 1,DE62701500000020228888,\"Müller \"\"Holz\"\"; Söhne\"\n5.00,8,,NL91ABNA0417164300,Weiß\n"],
        ];
    }

    public function testGermanNumbersAndDatesAreReadWhereAskedFor(): void
    {
        $csv = "name;iban;betrag;fällig am\n"
            . "A;NL91ABNA0417164300;1.190,00;1.12.2026\nB;NL91ABNA0417164300;1190,5 €;2026-12-01\n"
            . "C;NL91ABNA0417164300;7;31.12.2026\nD;NL91ABNA0417164300;1234567,89 EUR;01.12.2026\nE;NL91ABNA0417164300;2.50;\n";
        $payments = $this->read($csv, 'DE-3.7', true);
        self::assertSame([], array_map('strval', $payments->faults()));
        self::assertSame('1236957.89', $payments->sum());
        self::assertSame(2, substr_count($payments->document(), '<Dt>2026-12-'));

        $faults = "name;iban;betrag;datum\n1;NL91ABNA0417164300;1.190;30.2.2026\n2;NL91ABNA0417164300;1,190;\n3;NL91ABNA0417164300;-5,00;\n4;NL91ABNA0417164300;1.19,00;\n";
        self::assertSame(['2 amount', '2 date', '3 amount', '4 amount', '5 amount'], self::codes($this->read($faults, 'DE-3.7', true)->faults()));
        self::assertSame(['2 amount', '2 date', '3 amount', '4 date', '5 amount', '5 date'], self::codes($this->read($csv, 'DE-3.7')->faults()));
    }

    /** @dataProvider broken */
    public function testWhatTheSheetHasWrongIsTold(string $csv, array $expected): void
    {
        self::assertSame($expected, self::codes($this->read($csv, 'DE-3.7')->faults()));
    }

    public function broken(): array
    {
        $good = "name,iban,amount\nA,NL91ABNA0417164300,1.00\n";

        return [
            [$good, []],
            [str_replace('name', 'naem', $good), ['1 unknown_heading', '1 missing_column']],
            'errors and formulas of a spreadsheet' => ["name,iban,amount,ref\n#NAME?,NL91ABNA0417164300,#WERT!,###\nA,\"=\"\"NL91\"\"\",1,#1\n",
                ['2 spreadsheet_error', '2 spreadsheet_error', '2 spreadsheet_error', '3 characters', '3 spreadsheet_error']],
            'accounts that make no IBAN, and another currency' => ["name,konto,blz,amount,whg\nA,1234567,37040044,1,\nB,,37040044,1,\nC,1,,1,usd\n",
                ['2 conversion', '3 conversion', '4 currency', '4 conversion']],

            'a cell without a heading' => [str_replace('1.00', '1.00,7', $good), ['2 cells']],
            'a row that was cut' => [$good . "\"B\",\"NL91ABNA0417164300\"\n", ['3 cells', '3 missing']],
            'rows are counted as the spreadsheet does' => ["\n$good\n\"B\n\"\"C\"\" D\nE\",NL91ABNA0417164300,1.00\nD,,1\n", ['5 control_characters', '6 missing']],
            'CR LF across two pieces of the file' => [str_repeat("\n", 65536 - 17) . str_replace("\n", "\r\n", $good) . "D\r\n", ['65522 cells', '65522 missing', '65522 missing']],
            'a NUL' => [str_replace('A,', "A\0,", $good), ['2 control_characters']],
            'headings alone' => ["name,iban,amount\n", [' no_payments']],
        ];
    }

    public function testATableOfThisWorldIsRead(): void
    {
        $csv = "Zahlungen, November;;;;\n\nStand: 23.11.;;;;\n"
            . "Name des Empfängers;Kontonummer/IBAN;BLZ/BIC;Betrag in €;Verwendungszweck 2;Verwendungszweck 1;Rechnungsnr.;Währung;Nummer\n"
            . "A;532 013 000;37040044;1.190,00;zwei;eins;RE 1;EUR;7\nB;135;10050000;€ 7,00;;;RE 2;€;\nC;NL91 ABNA 0417 1643 00;ABNANL2A;5;;;;;E2E\n";
        $payments = $this->read($csv, 'DE-3.7', true, [], ['Nummer' => 'id']);
        self::assertSame([], array_map('strval', $payments->faults()));
        $xml = $payments->document();
        self::assertMatchesRegularExpression('~>7</.*>DE89370400440532013000<.*>RE 1 eins zwei<.*>DE86100500000990021440<.*>E2E<.*ABNANL2A~s', $xml);
        self::assertSame('1202.00', $payments->sum());
        self::assertSame(['4 title_lines'], self::codes(array_slice($payments->warnings(), 0, 1)));
        self::assertSame(['5 converted', '6 converted'], self::codes($payments->changes()));
        self::assertStringContainsString('2 lines before the headings', $payments->warnings()[0]->text());
        self::assertStringContainsString('mit anderer Kontonummer', $payments->changes()[1]->text('de'));
    }

    /** @dataProvider headings */
    public function testHeadingsOfRealFiles(string $key, string ...$headings): void
    {
        $keys = array_merge(Collections::transactionKeys(), ['account', 'bank_code', 'currency']);
        foreach ($headings as $heading) {
            self::assertSame($key, Headings::key($heading, $keys) ?? '', $heading);
        }
    }

    public function headings(): array
    {
        return [
            ['name', 'Name des Empfängers', 'Zahlungsempfängername', 'Name Zahlungspflichtiger', 'Beneficiary name', 'Begünstigter/Zahlungspflichtiger'],
            ['iban', 'IBAN/Kontonummer', 'IBAN Zahlungspflichtiger', 'IBAN des Begünstigten', 'Payee-IBAN'],
            ['amount', 'Betrag in €', 'Betrag (EUR)', 'Rechnungsbetrag'],
            ['bic', 'BIC (SWIFT-Code)', 'BIC des Empfängers'],
            ['id', 'End-to-End-Referenz'],
            ['mref', 'Mandats-ID', 'Mandatsreferenznummer'],
            ['mdate', 'Datum der Unterschrift'],
            ['account', 'Kto.-Nr.', 'Konto des Empfängers'],
            ['', 'Kundennr.', 'Gläubiger-ID', 'Creditor identifier', 'Membership', 'Nettobetrag'],
        ];
    }

    public function testTextsAreShortenedAtAWholeCharacterAndIdsNever(): void
    {
        $csv = "name,iban,amount,ref,id\n" . str_repeat('ü', 34) . "e\u{301}x,NL91ABNA0417164300,1," . str_repeat('ab ', 48) . ',' . str_repeat('7', 36) . "\n";
        $payments = $this->read($csv, 'AT-6', false, [], [], ['shortens' => true]);
        self::assertSame(['2 length'], self::codes($payments->faults()));
        self::assertSame('id', $payments->faults()[0]->key);
        self::assertStringNotContainsString('would fit', $payments->faults()[0]->hint());
        self::assertSame([str_repeat('ü', 34), rtrim(str_repeat('ab ', 47))], array_map(static fn (Fault $change): string => $change->values['to'], $payments->changes()));
        self::assertStringContainsString('3 bytes too many; an umlaut counts as two. This would fit: “üü', $this->read("name,iban,amount\n" . str_repeat('ü', 36) . "x,NL91ABNA0417164300,1\n", 'DE-3.7')->faults()[0]->hint());
    }

    /** @dataProvider unreadable */
    public function testWhatIsNoTableIsTold(string $csv, string $reason): void
    {
        $this->expectException(Unreadable::class);
        $this->expectExceptionMessage($reason);
        $this->read($csv, 'DE-3.7');
    }

    public function unreadable(): array
    {
        return [
            ['', 'the file is empty'],
            ["\r\n\r\n;;\r\n", 'the file is empty'],
            ["PK\x03\x04\x14", 'a workbook'],
            ["\xFF\xFEi\0b\0", 'UTF-16'],
            ["a,b\n1,2\n", "no headings iban and amount in the first row: 'a', 'b'"],
            ["iban,Konto-IBAN\n", "two columns are 'iban': 'iban' and 'Konto-IBAN'"],
            ["name,iban,amount\n\"A,NL91ABNA0417164300,1.00\nB,NL91ABNA0417164300,1.00\n", 'row 2: a quote is not closed'],
            ["name,iban,amount\n\"" . str_repeat("A,1,2\n", 200000), 'row 2: too long'],
            [str_repeat('x', 2000000), 'a line of more than a megabyte'],
        ];
    }

    public function testAMissingLastLineEndIsOdd(): void
    {
        $payments = $this->read("name,iban,amount,date\nA,NL91ABNA0417164300,11,2026-12-01\nB,NL91ABNA0417164300,1,", 'DE-3.7');
        self::assertSame(['3 no_line_end'], self::codes($payments->warnings()));
    }

    /**
     * @param list<string> $ignored
     * @param array<string, string> $map
     * @param array<string, mixed> $party
     */
    private function read(string $csv, string $rulebook, bool $german = false, array $ignored = [], array $map = [], array $party = []): Payments
    {
        $payments = Samples::transfers($rulebook, $party);
        $stream = fopen('php://memory', 'w+b');
        fwrite($stream, $csv);
        rewind($stream);
        (new Sheet(new Reader($stream, 'test'), $german, $ignored, $map))->fill($payments);

        return $payments;
    }

    /** @param list<Fault> $faults */
    private static function codes(array $faults): array
    {
        return array_map(static function (Fault $fault): string {
            return "$fault->row $fault->code";
        }, $faults);
    }
}
