<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Statement;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;
use Sepa\Toolkit\Unreadable;

final class ReaderTest extends TestCase
{
    private const EXAMPLE = __DIR__ . '/../../../examples/statement.sta';

    /** One statement: 100.00, what is given, and the closing balance. */
    private static function statement(string $bookings, string $closing = '142,50', string $end = "\n-\n"): string
    {
        return str_replace("\n", "\r\n", "\n:20:REF\n:25:10020030/1234567\n:28C:7/1\n:60F:C261126EUR100,00\n$bookings:62F:C261127EUR$closing$end");
    }

    /** @return list<Statement> */
    private static function read(string $text, ?Reader &$reader = null): array
    {
        $reader = Reader::string($text);

        return iterator_to_array($reader);
    }

    /** @return list<Booking> */
    private static function bookings(Statement $statement): array
    {
        return iterator_to_array($statement->bookings);
    }

    /**
     * @param list<Note> $notes
     * @return list<string>
     */
    private static function codes(array $notes): array
    {
        return array_column($notes, 'code');
    }

    /** @dataProvider mends */
    public function testWhatIsMendedIsToldAndNothingIsLost(array $told, string $text, array $expected = []): void
    {
        $statement = self::read($text)[0];
        self::assertSame($told, self::codes($statement->mended));
        self::assertSame([], $statement->faults);
        self::assertTrue($statement->balanced);
        $bookings = self::bookings($statement);
        foreach ($expected as $key => $value) {
            self::assertSame($value, json_decode(json_encode($bookings), true)[0][$key] ?? $statement->$key ?? null, $key);
        }
    }

    public function mends(): iterable
    {
        $one = ":61:2611271127CR42,50NTRFNONREF//POS 1\n:86:166?00GUTSCHRIFT?20Miete?32JÄGER\n";
        $with = static fn (string $search, string $replace): string => self::statement(str_replace($search, $replace, $one));
        $plain = self::statement($one);
        yield 'none' => [[], self::statement("$one:61:261127C0,NTRF\n:86:020?20X\n"), ['name' => 'JÄGER', 'amount' => 42.5, 'bankref' => 'POS 1', 'gvc' => 166, 'booked' => '2026-11-27', 'line' => 6]];
        yield 'LF' => [['line_ends'], str_replace("\r\n", "\n", $plain), ['name' => 'JÄGER']];
        yield 'CR' => [['line_ends'], str_replace("\r\n", "\r", $plain), ['name' => 'JÄGER']];
        yield 'no line end' => [['first_line_end', 'last_line_end'], trim($plain), ['name' => 'JÄGER']];
        yield 'byte order mark' => [['first_line_end', 'byte_order_mark'], "\u{FEFF}" . ltrim($plain), ['reference' => 'REF']];
        yield 'ISO-8859-1' => [['encoding'], mb_convert_encoding($plain, 'ISO-8859-1', 'UTF-8'), ['name' => 'JÄGER']];
        yield 'Windows-1252' => [['encoding'], str_replace('JÄGER', "\x80 \x96", $plain), ['name' => '€ –']];
        yield 'NUL' => [['nul_bytes'], str_replace('GUTS', "\0UTS", $plain), ['txtext' => ' UTSCHRIFT']];
        yield 'no end' => [['end_missing'], self::statement($one, '142,50', "\n"), ['cut' => false]];
        yield 'no end at all' => [['last_line_end', 'end_missing'], self::statement($one, '142,50', ''), ['cut' => false]];
        yield '@@' => [['line_ends', 'last_line_end'], str_replace("\r\n", '@@', rtrim($plain)), ['name' => 'JÄGER']];
        yield 'code page 850' => [['code_page'], str_replace(['JÄGER', 'Miete'], ["M\x9ALLER", "S\x81den \xE4"], $plain), ['name' => 'MÜLLER', 'purpose' => 'Süden õ']];
        yield 'point at the end' => [['amount_form'], self::statement(str_replace('42,50', '42.', $one), '142,'), ['amount' => 42]];
        yield '30 February' => [['last_day'], $with('2611271127', '2602300228'), ['valuta' => '2026-02-28', 'booked' => '2026-02-28']];
        yield 'between slashes' => [[], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', "/EREF/E-1//TRTP/SEPA OVERBOEKING/IBAN/NL91ABNA0417\n164300/BIC/ABNANL2A/NAME/J. JANSEN/REMI/USTD//Factuur 12/3/"), [
            'eref' => 'E-1', 'account' => 'NL91ABNA0417164300', 'bank' => 'ABNANL2A', 'name' => 'J. JANSEN', 'svwz' => 'Factuur 12/3', 'txtext' => 'SEPA OVERBOEKING',
        ]];
        yield 'a party between slashes' => [[], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', '/CNTP/NL91ABNA0417164300/ABNANL2A/J. JANSEN///REMI/USTD//x/EREF/E/'), ['account' => 'NL91ABNA0417164300', 'bank' => 'ABNANL2A', 'name' => 'J. JANSEN', 'svwz' => 'x', 'eref' => 'E']];
        yield 'the own account in its place' => [['details_separator'], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', '000>100390123456>20Betaling>3001>3101234567>32JANSEN'), ['account' => '0390123456', 'primanota' => null, 'purpose' => 'Betaling', 'name' => 'JANSEN']];
        yield 'numbers are no code' => [['details_plain'], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', '0111111111 J JANSEN'), ['gvc' => null]];
        yield 'nor a year' => [['details_plain'], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', '202 Rechnungen'), ['gvc' => null]];
        yield '999' => [['details_plain'], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', '999PN 12'), ['gvc' => 999]];
        yield 'more subfields' => [[], $with('?32JÄGER', '?32JÄGER?38DE89 3704 0044 0532 0130 00'), ['account' => 'DE89370400440532013000']];
        yield 'more keywords' => [[], $with('Miete', 'IBAN+DE89370400440532013000?21BIC+COBADEFF?22SVWZ+ Mai'), ['account' => 'DE89370400440532013000', 'bank' => 'COBADEFF', 'svwz' => 'Mai']];
        yield 'in any order' => [[], $with('?20Miete?32JÄGER', '?32JÄGER?21Mai?20Miete?31123?31 km'), ['name' => 'JÄGER', 'purpose' => "Miete\nMai", 'account' => '123?31 km']];
        yield 'foreign' => [[], $with('//POS 1', "//POS 1\n/OCMT/USD50,//CHGS/EUR1,50/"), ['instructed' => 50, 'instructedCurrency' => 'USD', 'charges' => [-1.5]]];
        yield 'envelope' => [[], "{1:F01BANKDEFFXXXX0000000000}{2:O9400000}{3:{108:X}}{4:" . str_replace("-\r", "-}{5:{CHK:0}}\r", $plain)];
        yield 'envelope in line' => [['envelope'], "{1:F01X}{4:" . ltrim(str_replace("50\r\n-", '50-}{5:{CHK:0}}', $plain)), ['reference' => 'REF']];
        yield 'number' => [['number'], str_replace(':28C:7/1', ':28C:', $plain), ['account' => '10020030/1234567']];
        yield 'type S' => [['transaction_type'], $with('NTRF', 'S103'), ['type' => 'S', 'code' => '103', 'ref' => 'NONREF', 'name' => 'JÄGER']];
        yield 'type F' => [['transaction_type'], $with('NTRFNONREF', 'FTRFNONREF'), ['type' => 'F', 'code' => 'TRF']];
        yield 'no type' => [['no_transaction_type'], $with('NTRFNONREF', '//X'), ['bankref' => 'X//POS 1', 'name' => 'JÄGER']];
        yield 'point' => [['amount_form'], $with('42,50', '42.50'), ['amount' => 42.5]];
        yield 'thousands' => [['amount_form'], self::statement(str_replace('42,50', '1.042,50', $one), '1142,50'), ['amount' => 1042.5]];
        yield 'booked last year' => [['booking_year'], $with('2611271127', '2611270102'), ['booked' => '2027-01-02']];
        yield 'booked the year before' => [['booking_year'], $with('2611271127', '2602011130'), ['booked' => '2025-11-30']];
        yield 'details of the statement' => [['details_of_statement'], self::statement($one, "142,50\n:86:020?20Kontoabschluss"), ['purpose' => 'Miete', 'information' => '020?20Kontoabschluss']];
        yield 'details before the bookings' => [['details_of_statement'], self::statement(":86:Hinweis\n$one"), ['purpose' => 'Miete', 'information' => 'Hinweis']];
        yield 'details last' => [['details_last'], str_replace("-\r\n", str_replace("\n", "\r\n", "$one-\n"), self::statement('')), ['name' => 'JÄGER']];
        yield 'time at a line start' => [['details_line'], $with('Miete', "Miete 12\n:30 Uhr"), ['purpose' => 'Miete 12:30 Uhr', 'name' => 'JÄGER']];
        yield 'dash at a line start' => [[], $with("JÄGER", "\n-JÄGER\n-"), ['name' => '-JÄGER-']];
        yield 'other marker' => [['details_separator'], $with(':86:166?00GUTSCHRIFT?20Miete?32', ':86:166~00GUTSCHRIFT~20Miete~32'), ['purpose' => 'Miete', 'name' => 'JÄGER']];
        yield 'plain' => [['details_plain'], $with('166?00GUTSCHRIFT?20Miete?32JÄGER', "/ORDP/ACME\nRechnung? 12"), ['purpose' => "/ORDP/ACME\nRechnung? 12"]];
        yield 'details twice' => [['details_twice'], $with("JÄGER\n", "JÄGER\n:86:020?32WEISS\n"), ['name' => 'WEISS', 'purpose' => 'Miete']];
        yield 'keyword' => [['keyword_inside'], $with('Miete', 'EREF+A-1 SVWZ+Miete'), ['eref' => 'A-1', 'svwz' => 'Miete', 'name' => 'JÄGER']];
    }

    /** @dataProvider faults */
    public function testWhatCannotBeMendedIsAFault(array $told, string $text, ?string $difference, array $amounts): void
    {
        $statement = self::read($text)[0];
        self::assertSame($told, self::codes($statement->faults));
        self::assertFalse($statement->balanced);
        self::assertSame('', $statement->information);
        self::assertSame($difference, $statement->difference ? $statement->difference->text() : null);
        self::assertSame($amounts, array_map(static fn (Booking $booking): string => $booking->amount->text(), self::bookings($statement)));
    }

    public function faults(): iterable
    {
        $good = ":61:261127C42,50NTRF\n";
        $plain = self::statement($good);
        yield 'a booking before the opening balance' => [[], preg_replace('/(:60F:.*?\r\n)(:61:.*?\r\n)/', '$2$1:61:261127C1,NTRF' . "\r\n", self::statement($good, '143,51')), '0.01', ['42.50', '1.00']];
        yield 'off' => [[], self::statement($good, '142,51'), '0.01', ['42.50']];
        yield 'no closing' => [['no_closing'], preg_replace('/:62F:.*\s+/', '', $plain), null, ['42.50']];
        yield 'no opening' => [['no_opening'], preg_replace('/:60F:.*\s+/', '', $plain), null, ['42.50']];
        yield 'balance' => [['balance', 'no_closing'], self::statement($good, '1,142,50'), null, ['42.50']];
        yield 'no such mark' => [['balance', 'no_closing'], str_replace(':62F:C', ':62F:X', $plain), null, ['42.50']];
        yield 'booking' => [['booking'], self::statement($good . ":61:261127X1,00NTRF\n:86:166?00LOST\n:61:261127C0,NTRF\n"), '0.00', ['42.50', '0.00']];
        yield 'amount' => [['amount'], self::statement($good . ":61:261127C0,001NTRF\n"), '0.00', ['42.50']];
        yield 'too large' => [['too_large'], self::statement(str_repeat(":61:261127D9999999999999999,99NTRF\n", 10)), null, array_fill(0, 10, '-9999999999999999.99')];
        yield 'two accounts' => [['account'], self::statement(":25:OTHER\n$good"), '0.00', ['42.50']];
        yield 'two currencies' => [['balances'], str_replace(':62F:C261127EUR', ':62F:C261127CHF', $plain), null, ['42.50']];
        yield 'two openings' => [['balances'], self::statement(":60M:C261126EUR1,\n$good"), '0.00', ['42.50']];
        yield 'two closings' => [['balances'], self::statement("$good:62M:C261126EUR142,50\n"), '0.00', ['42.50']];
        yield 'balance of a page' => [['balance'], self::statement("$good:62M:C261126EURO\n"), '0.00', ['42.50']];
        yield 'cut in the closing balance' => [['cut'], self::statement($good, '142,5', ''), null, ['42.50']];
        yield 'cut in an amount' => [['cut'], trim(preg_replace('/50NTRF.*/s', '', $plain)), null, []];
        yield 'cut in a text' => [['cut'], preg_replace('/:62F.*/s', ":86:166?20Miete\n-", $plain), null, ['42.50']];
        yield 'a page is missing' => [['balances'], self::statement("$good:62M:C261126EUR142,50\n:60M:C261126EUR150,\n"), '0.00', ['42.50']];
        yield 'interim' => [[], "\n:20:A\n:25:B\n:34F:KWDD0,\n:13D:2611271200+0100\n:61:261127ED1,5NTRF\n:61:261127EC1,NTRF\n:86:020?00X\n:90D:1KWD1,5\n-\n", null, ['-1.500', '1.000']];
    }

    public function testDatesThatTheCalendarDoesNotHaveAreFaultsAndNothingElseIsLost(): void
    {
        $statement = self::read(self::statement(":61:2604310230C42,50NTRF\n:61:2402290102C0,NTRF\n:61:9912310101C0,NTRF\n"))[0];
        self::assertSame([['date', 6, 1]], array_map(static fn (Note $note): array => [$note->code, $note->line, $note->count], $statement->faults));
        self::assertTrue($statement->balanced);
        [$impossible, $leap, $century] = self::bookings($statement);
        self::assertNull($impossible->valuta);
        self::assertNull($impossible->booked);
        self::assertSame('2024-02-29 2024-01-02', $leap->valuta->format('Y-m-d') . $leap->booked->format(' Y-m-d'));
        self::assertSame('1999-12-31 2000-01-01', $century->valuta->format('Y-m-d') . $century->booked->format(' Y-m-d'));
    }

    public function testReversalsCountByTheirEffect(): void
    {
        $statement = self::read(self::statement(
            ":61:261127C100,NTRF\n:61:261127RC100,NTRF\n:61:261127D7,50NTRF\n:61:261127RDR7,50NTRF\n:61:261127RC42,50NTRF\n",
            '57,50'
        ))[0];
        self::assertTrue($statement->balanced);
        $told = array_map(static fn (Booking $booking): array => [$booking->amount->units, $booking->reversal], self::bookings($statement));
        self::assertSame([[10000, false], [-10000, true], [-750, false], [750, true], [-4250, true]], $told);
    }

    /** What is well formed reads as the extension reads it, but for what it loses. */
    public function testWellFormedFilesReadAsTheExtensionReadsThem(): void
    {
        mt_srand(7);
        $bookings = '';
        for ($i = 0; $i < 500; ++$i) {
            $word = static fn (int $most): string => substr(str_repeat('Rechnung 4711 vom 3.5. ', 3), mt_rand(0, 20), mt_rand(1, $most));
            $lines = [];
            foreach (mt_rand(0, 3) ? ['EREF', 'MREF', 'CRED', 'OAMT', 'SVWZ', 'ABWA'] : [''] as $keyword) {
                $value = $keyword === 'OAMT' ? '1,5' : ltrim($word(60));
                foreach (mt_rand(0, 2) ? str_split($keyword === '' ? $value : "$keyword+$value", 27) : [] as $line) {
                    $lines[] = $line;
                }
            }
            $fields = '';
            foreach (array_slice($lines, 0, 14) as $number => $line) {
                $fields .= '?' . ($number < 10 ? 20 + $number : 50 + $number) . $line;
                $fields .= $number === 9 ? '?30COBADEFF?32' . $word(27) . '?33' . $word(27) . '?34992' : '';
            }
            $bookings .= sprintf(":61:26112711%02d%s%d,%02dN%s%s\n:86:%03d?00%s?10%d%s\n", mt_rand(1, 30), ['C', 'DR', 'CR', 'D'][$i % 4], mt_rand(0, 999), mt_rand(0, 99), 'TRF', ['REF//BANK', 'REF', '//B', ''][$i % 4 ^ 1], mt_rand(1, 998), $word(20), $i, $fields);
        }
        $file = tempnam(sys_get_temp_dir(), 'sepa-test');
        file_put_contents($file, self::statement($bookings));
        $parser = new \SEPAStatementParser();
        $parser->load(SEPA_STMT_FORMAT_MT940, $file);
        unlink($file);
        $expected = $parser->getStatements()[0]['tx'];
        foreach (self::bookings(self::read(self::statement($bookings))[0]) as $i => $booking) {
            foreach ($expected[$i] as $key => $value) {
                $got = in_array($key, ['valuta', 'booked'], true) ? $booking->$key->format('Y-m-d') : ($key === 'amount' ? (float) $booking->amount->text() : $booking->$key);
                self::assertSame($value === '' ? null : $value, $got, "$key of $i: $booking->details");
            }
        }
        self::assertSame(499, $i);
    }

    /** @dataProvider exports */
    public function testAnyExportOfTheSameStatementsReadsTheSame(callable $export): void
    {
        $text = file_get_contents(self::EXAMPLE);
        $expected = self::read($text);
        self::assertCount(5, $expected);
        foreach (self::read($export($text), $reader) as $i => $statement) {
            self::assertTrue($statement->balanced);
            $same = array_diff_key($expected[$i]->jsonSerialize(), ['mended' => 1, 'cut' => 1]);
            $got = array_diff_key($statement->jsonSerialize(), ['mended' => 1, 'cut' => 1]);
            self::assertSame(self::withoutLines($same), self::withoutLines($got));
        }
        self::assertSame(4, $i);
        self::assertFalse($statement->cut);
        self::assertSame([], $reader->faults());
    }

    public function exports(): array
    {
        return [
            'LF' => [static fn (string $text): string => str_replace("\r\n", "\n", $text)],
            'CR, no first line end' => [static fn (string $text): string => str_replace("\r\n", "\r", ltrim($text))],
            'double line ends' => [static fn (string $text): string => str_replace("\r\n", "\r\r\n", $text)],
            'ISO-8859-1' => [static fn (string $text): string => mb_convert_encoding($text, 'ISO-8859-1', 'UTF-8')],
            'no dashes' => [static fn (string $text): string => str_replace("\r\n-\r\n", "\r\n", $text)],
            'no last line end' => [static fn (string $text): string => rtrim($text)],
            'with a head line' => [static fn (string $text): string => str_replace(':20:', "ABCDEF2A\r\n940\r\n:20:", $text)],
            'enveloped without ends' => [static fn (string $text): string => str_replace("-\r\n", '', str_replace(':20:', "{1:F01X}{2:I940X}{4:\r\n:20:", $text)) . '-}'],
            'enveloped' => [static fn (string $text): string => preg_replace('/:20:.*?\r\n(?=-\r)/s', "{1:F01X}{2:I940X}{4:\r\n$0", str_replace("\r\n-\r", "\r\n-}\r", $text)) . '}'],
        ];
    }

    public function testAFileThatIsCutIsToldAndNeverCalledBalancedInError(): void
    {
        $text = file_get_contents(self::EXAMPLE);
        $whole = self::read($text);
        $told = 0;
        for ($length = 0; $length < strlen($text); $length += 10) {
            $statements = self::read(substr($text, 0, $length), $reader);
            foreach ($statements as $i => $statement) {
                $same = $statement->opening == $whole[$i]->opening && $statement->closing == $whole[$i]->closing
                    && count($statement->bookings) === count($whole[$i]->bookings);
                self::assertSame($statement->balanced, $same, "$length bytes, statement $i");
                self::assertNotFalse(json_encode($statement));
            }
            $told += $reader->faults() || end($statements)->cut;
        }
        // Where nothing tells, the last statement is whole.
        self::assertGreaterThan(0.95 * strlen($text) / 10, $told);
    }

    public function testWhatAFileLacksIsTold(): void
    {
        foreach (['' => 'empty', "\r\n" => 'no_statement', 'PK' => 'no_statement', ":20" => 'cut', ":61:261127C1,NTRF\n:20:" => 'outside', '{1:F01X}{4:' => 'cut'] as $text => $code) {
            self::read($text, $reader);
            self::assertSame($code, $reader->faults()[0]->code, $text);
        }
    }

    public function testLineEndsMayStandAnywhereInAFile(): void
    {
        $text = self::statement(":61:261127C42,50NTRF\n");
        for ($length = 65525; $length < 65536; ++$length) {
            $statement = self::read(str_repeat('x', $length) . $text)[0];
            self::assertSame([], $statement->mended);
            self::assertTrue($statement->balanced);
        }
    }

    public function testFilesStreamsAndTextsReadTheSame(): void
    {
        $expected = json_encode(iterator_to_array(Reader::string(file_get_contents(self::EXAMPLE), self::EXAMPLE)));
        $stream = fopen(self::EXAMPLE, 'rb');
        $file = Reader::file(self::EXAMPLE);
        self::assertSame($expected, json_encode(iterator_to_array(Reader::stream($stream, self::EXAMPLE))));
        self::assertSame($expected, json_encode(iterator_to_array($file)));
        self::assertSame($expected, json_encode(iterator_to_array($file)));
        foreach ([__DIR__ . '/missing.sta' => 'cannot be opened', __DIR__ => 'is a folder'] as $path => $reason) {
            try {
                iterator_to_array(Reader::file($path));
                self::fail('no exception');
            } catch (Unreadable $e) {
                self::assertStringContainsString($reason, $e->getMessage());
            }
        }
    }

    /** @dataProvider large */
    public function testMemoryIsBoundedByTheStatementNotTheFile(string $head, string $repeated, string $tail, int $most): void
    {
        $file = tempnam(sys_get_temp_dir(), 'sepa-test');
        file_put_contents($file, $head);
        for ($block = str_repeat($repeated, (int) (300000 / strlen($repeated))), $i = 0; $i < 10; ++$i) {
            file_put_contents($file, $block, FILE_APPEND);
        }
        file_put_contents($file, $tail, FILE_APPEND);
        unset($block);
        if (function_exists('memory_reset_peak_usage')) {
            memory_reset_peak_usage();
        }
        $before = memory_get_peak_usage();
        foreach (Reader::file($file) as $statement) {
            iterator_apply($statement->bookings->getIterator(), static fn (): bool => true);
            self::assertLessThan(100000, strlen($statement->information));
            unset($statement);
        }
        self::assertLessThan($most * 1000000, memory_get_peak_usage() - $before);
        unlink($file);
    }

    public function large(): array
    {
        $booking = "\n:61:261127C1,NTRF";

        return [
            'many statements' => ['', "\n:20:A\n:60F:C261127EUR0," . str_repeat($booking, 50) . "\n:62F:C261127EUR50,\n-", '', 6],
            'one statement' => ["\n:20:A\n:60F:C261127EUR0,", $booking, "\n:62F:C261127EUR1,\n-\n", 30],
            'one line' => [":20:A$booking\n:86:", 'x', '', 2],
            'one field' => [":20:A$booking\n:86:", "x\n", '', 6],
            'all information' => [":20:A\n", ":86:x\n", '', 6],
            'no statement' => ['', ":61:x\n", '', 6],
        ];
    }

    /** The same without the numbers of lines, which blank lines and envelopes move. */
    private static function withoutLines(array $statement): string
    {
        return preg_replace('/,"line":\d+/', '', json_encode($statement, JSON_THROW_ON_ERROR));
    }
}
