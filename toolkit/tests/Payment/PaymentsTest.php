<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Payment\Calendar;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;

final class PaymentsTest extends TestCase
{
    public function testValuesReachTheDocument(): void
    {
        $payments = Samples::collections('DE-2.9', ['messageId' => 'REM 1', 'type' => 'COR1', 'batchBooking' => false]);
        $payments->addAll([
            'a' => ['IBAN' => 'de62 7015 0000 0020 2288 88', 'amount' => 49.9, 'smnda' => true, 'seq' => 'frst'] + array_diff_key(Samples::COLLECTION, ['iban' => 0]),
            'b' => ['amount' => 7] + Samples::COLLECTION,
        ]);
        self::assertSame(['56.90', 2], [$payments->sum(), count($payments)]);
        $xml = $payments->document();
        foreach (['<MsgId>REM 1<', '<PmtInfId>REM 1-P2<', '<Cd>COR1<', '<BtchBookg>false<', '>49.90<', '>7.00<', '<CtrlSum>56.90<', '<ReqdColltnDt>2026-12-01<'] as $part) {
            self::assertStringContainsString($part, $xml);
        }
        self::assertSame(2, substr_count($xml, '<IBAN>DE62701500000020228888<'));
    }

    public function testEachMessageHasTheRulebookItWasMadeWith(): void
    {
        $old = Samples::transfers('DE-2.9');
        $new = Samples::transfers('DE-3.7');
        $old->add(['addrLine1' => 'Bern'] + Samples::TRANSFER);
        $new->add(['addrTown' => 'Bern', 'addrCC' => 'CH'] + Samples::TRANSFER);
        self::assertStringContainsString('pain.001.003.03', $old->document());
        self::assertStringContainsString("<ReqdExctnDt>\n\t\t\t\t<Dt>2026-12-01</Dt>\n\t\t\t</ReqdExctnDt>\n", $new->document());
    }

    public function testAnUnknownRulebookIsAnError(): void
    {
        $this->expectExceptionMessage('unknown rulebook: DE-9');
        Samples::transfers('DE-9');
    }

    public function testTheExtensionHasNoOtherRulebooks(): void
    {
        $table = file_get_contents(__DIR__ . '/../../../src/sepa/message/rulebook.cpp');
        preg_match_all('/^ *\{RULEBOOK_\w+, +"([^"]+)"/m', $table, $names);
        self::assertEqualsCanonicalizing($names[1], Rulebook::names());
        self::assertTrue(\SEPA::init(SEPA_INIT_RULEBOOK, Rulebook::LATEST));
    }

    public function testMessageIdsDiffer(): void
    {
        $ids = [];
        for ($i = 0; $i < 100; ++$i) {
            $ids[Payments::newMessageId()] = true;
        }
        self::assertCount(100, $ids);
        self::assertMatchesRegularExpression('/^\d{8}-\d{6}-[0-9a-f]{12}$/D', (string) key($ids));
    }

    public function testTextsAreTransliteratedAndTold(): void
    {
        $payments = Samples::transfers('DE-2.6', ['transliterate' => true, 'name' => 'Łódź & Öl']);
        $payments->add(['name' => "Rene\u{301} Groß", 'ref' => "10 % von „X_Y“\n€ 5", 'id' => 'X'] + Samples::TRANSFER, 'first');
        self::assertSame([], $payments->faults());
        $told = array_map(static function (Fault $change): array {
            return [$change->row, $change->label, $change->key, $change->values['from'], $change->values['to']];
        }, $payments->changes());
        self::assertSame([
            [null, null, 'name', 'Łódź & Öl', 'Lodz + Oel'],
            [1, 'first', 'name', "Rene\u{301} Groß", 'Rene Gross'],
            [1, 'first', 'ref', "10 % von „X_Y“\n€ 5", '10 v.H. von ,,X-Y. EUR 5'],
        ], $told);

        $payments = Samples::transfers('DE-3.7', ['transliterate' => true]);
        $payments->add(['name' => "Mu\u{308}ller", 'addrTown' => 'Łódź', 'addrCC' => 'PL', 'id' => 'é'] + Samples::TRANSFER);
        self::assertSame(['Müller', 'Lodz'], array_column(array_column($payments->changes(), 'values'), 'to'));
        self::assertSame(['id'], array_column($payments->faults(), 'key'), 'ids are never changed');
    }

    /**
     * @dataProvider oddities
     * @param list<array<string, string>> $rows what is odd in otherwise different payments
     * @param list<string> $expected row and code
     */
    public function testOddPaymentsAreToldAndTaken(string $where, string $date, array $rows, array $expected): void
    {
        [$kind, $rulebook] = explode(' ', $where);
        $payments = $kind === 'debit' ? Samples::collections($rulebook, ['date' => $date]) : Samples::transfers($rulebook, ['date' => $date]);
        foreach ($rows as $number => $row) {
            $payments->add($row + ['amount' => (string) ($number + 1)] + ($kind === 'debit' ? Samples::COLLECTION : Samples::TRANSFER));
        }
        self::assertSame([], $payments->faults());
        $found = array_map(static function (Fault $fault): string {
            return "$fault->row $fault->code";
        }, $payments->warnings());
        self::assertSame($expected, $found);
        self::assertNotSame('', $payments->document());
        self::assertContains('cor1_national', array_column(Samples::collections('NL-6', ['type' => 'COR1'])->warnings(), 'code'));
    }

    public function oddities(): iterable
    {
        $bank = '2026-12-01';
        yield ['transfer DE-3.7', $bank, [[], ['id' => 'A'], ['id' => 'B'], ['id' => 'a'], ['id' => 'A']], ['5 duplicate_id']];
        yield ['transfer DE-3.7', $bank, [['amount' => '5.00'], ['amount' => '5.0'], ['amount' => '5.01']], ['2 duplicate_payment']];
        yield ['transfer DE-3.7', $bank, [['date' => '2026-11-22'], ['date' => '2026-11-22']], ['1 date_past', '1 no_bank_day', '2 date_past', '2 no_bank_day']];
        yield ['transfer DE-3.7', '2026-12-05', [[], []], [' no_bank_day']];
        yield ['transfer DE-3.7', $bank, [['date' => '2027-03-26'], ['date' => '2027-12-24']], ['1 no_bank_day', '2 date_far']];
        yield ['transfer DE-3.7', $bank, [['addrTown' => 'Łódź', 'addrCC' => 'PL']], ['1 characters']];
        yield ['debit DE-3.7', $bank, [['mdate' => '2026-12-02'], ['smnda' => '1']], ['1 date_order']];
        yield ['debit AT-6', $bank, [['smnda' => '1']], [' form_ends', '1 smnda_national']];
        yield ['debit NL-6', $bank, [['smnda' => '1']], [' form_ends', '1 smnda_national']];
        yield ['debit DE-2.9', $bank, [['smnda' => '1', 'seq' => 'FRST'], ['smnda' => '1']], [' form_ends', '2 smnda_sequence']];
        yield ['debit DE-3.7', '2026-11-23', [[], ['date' => '2026-11-24'], ['date' => '2026-11-22']], [' notice', '3 date_past', '3 no_bank_day']];
        yield ['transfer DE-3.5', $bank, [['addrLine2' => 'Bern']], [' form_ends', '1 address_lines']];
        yield ['transfer DE-3.7', $bank, [['purp' => 'ABCD'], ['bic' => 'COBAATWW'], ['iban' => 'GB29NWBK60161331926819', 'bic' => 'NWBKJESX']],
            ['1 purpose_unknown', '2 bic_other_country']];
    }

    public function testOfManyFaultsTheFirstAreKeptAndAllAreCounted(): void
    {
        $payments = Samples::transfers('DE-3.7', ['name' => '']);
        $told = [];
        $payments->tell(static function (string $severity, Fault $fault) use (&$told): void {
            $told[] = "$severity $fault->code";
        });
        for ($i = 0; $i < 1500; ++$i) {
            $payments->add(['amount' => 'x', "k$i" => ''] + Samples::TRANSFER);
            $payments->add(['id' => 'A'] + Samples::TRANSFER);
        }
        self::assertSame([2001, 3001], [count($payments->faults()), $payments->faultCount()]);
        $counts = $payments->findings()['fault']->counts();
        self::assertSame([['amount' => 1500], 1001, 500], [$counts['amount'], count($counts['unknown_key']), $counts['unknown_key']['']]);
        self::assertSame(['id' => 1499], $payments->findings()['warning']->counts()['duplicate_id']);
        self::assertSame('fault missing', $told[0]);
        self::assertSame(['fault amount' => 1500, 'warning duplicate_id' => 1499], array_intersect_key(
            array_count_values($told),
            ['fault amount' => 0, 'warning duplicate_id' => 0]
        ));
    }

    public function testAnOwnAccountOutsideTheEeaIsOdd(): void
    {
        $payments = Samples::collections('DE-3.5', ['iban' => 'CH9300762011623852957', 'bic' => 'KBAGCH22']);
        self::assertSame(['form_ends', 'own_outside_eea'], array_column($payments->warnings(), 'code'));
    }

    /** @dataProvider closedDays */
    public function testBanksAreClosed(string $date, ?string $why): void
    {
        self::assertSame($why, Calendar::closed($date));
    }

    public function closedDays(): array
    {
        return [
            ['2026-11-23', null], ['2026-11-28', 'saturday'], ['2026-11-29', 'sunday'],
            ['2027-01-01', 'new_year'], ['2025-12-26', 'december_26'],
            ['2024-03-29', 'good_friday'], ['2024-04-01', 'easter_monday'],
            // The latest Easter and the earliest of our days, and the exception in Gauss's rule.
            ['2038-04-26', 'easter_monday'], ['2285-03-23', 'easter_monday'],
            ['2049-04-19', 'easter_monday'], ['1981-04-20', 'easter_monday'],
        ];
    }
}
