<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Payment\FaultyPayments;
use Sepa\Toolkit\Payment\Payments;

/** Each rule has a payment or a party that breaks it, and nothing else. */
final class FaultsTest extends TestCase
{
    private const SWISS = ['bic' => 'KBAGCH22', 'iban' => 'CH9300762011623852957'];

    private const OUTSIDE_EEA = ['CH9300762011623852957', 'GB29NWBK60161331926819', 'GI75NWBK000000007099453', 'MC5811222000010123456789030', 'SM86U0322509800000000270100'];

    /**
     * @dataProvider payments
     * @param array<string, mixed> $change of a good payment; TAKEN AWAY takes the key away
     * @param array<string, string> $faults code by key
     */
    public function testABadPayment(string $where, array $change, array $faults): void
    {
        [$kind, $rulebook] = explode(' ', $where);
        $payments = $kind === 'debit' ? Samples::collections($rulebook) : Samples::transfers($rulebook);
        $good = $kind === 'debit' ? Samples::COLLECTION : Samples::TRANSFER;
        self::assertTrue($payments->add($good, 'good'));
        $bad = array_diff_key($change + $good, array_filter($change, static function ($value): bool {
            return $value === 'TAKEN AWAY';
        }));
        self::assertFalse($payments->add($bad, 'bad'));
        self::assertFaults(2, 'bad', $faults, $payments);
    }

    public function payments(): iterable
    {
        $no = 'TAKEN AWAY';
        yield ['transfer DE-3.7', ['iban' => $no], ['iban' => 'missing']];
        yield ['transfer DE-3.7', ['amount' => $no, 'name' => $no], ['amount' => 'missing', 'name' => 'missing']];
        yield ['transfer DE-2.6', ['bic' => $no], ['bic' => 'missing']];
        yield ['debit DE-3.0', ['seq' => $no, 'mref' => $no, 'mdate' => $no], ['seq' => 'missing', 'mref' => 'missing', 'mdate' => 'missing']];
        yield ['debit AT-6', ['name' => $no], ['name' => 'missing']];
        foreach (['name', 'iban', 'bic', 'amount', 'ref', 'date', 'id', 'purp', 'addrTown', 'addrCC'] as $key) {
            yield "null $key" => ['transfer DE-3.7', [$key => null] + ['addrTown' => 'Bern', 'addrCC' => 'CH'], [$key => 'type']];
        }
        yield ['transfer DE-3.7', ['amount' => true], ['amount' => 'type']];
        yield ['transfer DE-3.7', ['amount' => ['1.00'], 'ref' => 1.5], ['amount' => 'type', 'ref' => 'type']];
        yield ['debit DE-3.7', ['smnda' => false], ['smnda' => 'type']];
        foreach (['1.190,00', '1190,00', '1,190.00', '1e2', '+5', ' 5', '5 EUR', '12.345', '.5', 'INF', "5\n", 0.1 + 0.2, 1e25] as $amount) {
            yield "amount $amount" => ['transfer DE-3.7', ['amount' => $amount], ['amount' => $amount === "5\n" ? 'control_characters' : 'amount']];
        }
        foreach (['' => 'amount_zero', '0' => 'amount_zero', '0.00' => 'amount_zero', '-5' => 'amount_zero', '1000000000' => 'amount_limit'] as $amount => $code) {
            yield "amount $amount as text" => ['debit DE-2.9', ['amount' => (string) $amount], ['amount' => $code]];
        }
        foreach (['2026-02-29', '2026-13-01', '31.12.2026', '2026-12-1', '0000-01-01', '          ', ''] as $date) {
            $code = trim($date) === '' && $date !== '' ? 'empty' : 'date';
            yield "date $date" => ['debit NL-6', ['date' => $date, 'mdate' => $date], ['date' => $code, 'mdate' => $code]];
        }
        foreach (['/a', 'a/', 'a//b', '/'] as $id) {
            yield "id $id" => ['debit DE-3.7', ['id' => $id, 'mref' => $id, 'old_mref' => $id], ['id' => 'id', 'mref' => 'id', 'old_mref' => 'id']];
        }
        yield ['debit AT-6', ['id' => 'a_b', 'mref' => 'a#b', 'old_mref' => '€'], ['id' => 'characters', 'mref' => 'characters', 'old_mref' => 'characters']];
        yield ['debit DE-2.9', ['mref' => 'a b'], ['mref' => 'characters']];
        yield ['debit DE-3.7', ['id' => str_repeat('x', 36), 'mref' => '', 'old_mref' => 'a b'], ['id' => 'length', 'mref' => 'length', 'old_mref' => 'characters']];
        foreach (["a\0b", "a\tb", "a\nb", "a\u{85}b", "a\u{FFFE}b"] as $number => $text) {
            $all = ['name' => $text, 'ref' => $text, 'addrTown' => $text, 'addrStreet' => $text, 'addrCC' => 'CH', 'id' => $text, 'purp' => $text];
            yield "control character $number" => ['transfer DE-3.7', $all, array_fill_keys(array_keys(array_diff_key($all, ['addrCC' => 0])), 'control_characters')];
        }
        yield ['transfer DE-3.7', ['name' => "M\xFCller", 'addrTown' => "K\xF6ln", 'addrCC' => 'DE'], ['name' => 'utf8', 'addrTown' => 'utf8']];
        yield ['transfer DE-3.7', ['name' => ' ', 'ref' => ''], ['name' => 'empty', 'ref' => 'empty']];
        yield ['transfer DE-2.6', ['name' => 'Müller & Söhne'], ['name' => 'characters']];
        yield ['transfer DE-3.7', ['name' => str_repeat('ä', 36), 'ref' => str_repeat('x', 141)], ['name' => 'length', 'ref' => 'length']];
        yield ['transfer DE-3.7', ['purp' => 'sala'], ['purp' => 'purpose']];
        yield ['transfer DE-3.7', ['purp' => 'SALAR', 'bic' => 'COBADEF'], ['purp' => 'purpose', 'bic' => 'bic']];
        yield ['transfer DE-3.7', ['iban' => 'DE98370400440532013000'], ['iban' => 'iban_checksum']];
        yield ['transfer DE-3.7', ['Iban' => 'DE62701500000020228888'], ['iban' => 'duplicate_key']];
        yield ['transfer DE-3.7', ['purpose' => 'SALA', 'seq' => 'RCUR', 7 => ''], ['purpose' => 'unknown_key', 'seq' => 'unknown_key', '7' => 'unknown_key']];
        yield ['transfer DE-3.7', ['addrStreet' => 'Gasse'], ['addrTown' => 'address', 'addrCC' => 'address']];
        yield ['transfer DE-3.7', ['addrCC' => 'DE'], ['addrTown' => 'address']];
        yield ['transfer DE-3.7', ['addrTown' => str_repeat('x', 36), 'addrCC' => 'de', 'addrNum' => str_repeat('1', 17)], ['addrTown' => 'length', 'addrCC' => 'country', 'addrNum' => 'length']];
        yield ['transfer DE-3.7', ['addrLine1' => 'Gasse 1', 'addrTown' => 'Bern', 'addrCC' => 'CH'], ['addrLine1' => 'rulebook']];
        yield ['transfer DE-3.5', ['addrTown' => 'Bern'], ['addrTown' => 'rulebook']];
        yield ['debit DE-3.5', ['addrTown' => 'Bern', 'purp' => 'SALA'], ['addrTown' => 'rulebook']];
        yield ['debit DE-3.5', self::SWISS, ['addrLine1' => 'address_line']];
        yield ['debit DE-3.7', self::SWISS, ['addrTown' => 'address']];
        yield ['debit DE-3.7', self::SWISS + ['addrTown' => 'Bern'], ['addrCC' => 'address']];
        foreach (self::OUTSIDE_EEA as $iban) {
            yield ["debit DE-3.1", ['bic' => $no, 'iban' => $iban, 'addrCC' => 'CH'], ['addrLine1' => 'address_line']];
            yield ["debit DE-3.7", ['bic' => $no, 'iban' => $iban], ['addrTown' => 'address']];
        }
        yield ['debit DE-3.7', ['seq' => 'FIRST', 'smnda' => '2', 'old_iban' => 'DE1'], ['seq' => 'sequence', 'smnda' => 'smnda', 'old_iban' => 'iban_length']];
        yield ['transfer DE-3.7', [
            'name' => 'é', 'iban' => '', 'amount' => '1.190,00', 'date' => '2026-02-30', 'id' => '/', 'bic' => 'X', 'typo' => 1,
        ], [
            'name' => 'characters', 'iban' => 'iban_country', 'amount' => 'amount', 'date' => 'date', 'id' => 'id', 'bic' => 'bic', 'typo' => 'unknown_key',
        ]];
    }

    /**
     * @dataProvider parties
     * @param array<string, string> $change of a good party
     * @param array<string, string> $faults code by key
     */
    public function testABadParty(string $rulebook, array $change, array $faults): void
    {
        $payments = Samples::collections($rulebook, $change);
        $payments->add(Samples::COLLECTION);
        self::assertFaults(null, null, $faults, $payments);
    }

    public function parties(): iterable
    {
        yield ['DE-3.7', ['name' => '', 'iban' => 'DE1', 'bic' => '', 'creditorId' => ''], ['name' => 'missing', 'iban' => 'iban_length', 'bic' => 'missing', 'creditorId' => 'missing']];
        yield ['DE-2.6', ['name' => 'Müller'], ['name' => 'characters']];
        yield ['DE-3.7', ['name' => "a\0", 'date' => '2026-02-30'], ['name' => 'control_characters', 'date' => 'date']];
        yield ['DE-3.7', ['name' => "\xE4", 'date' => 'soon'], ['name' => 'utf8', 'date' => 'date']];
        // Their check digits are right, but for the last one's.
        foreach (
            [
            'DE98?ZZ09999999999', 'DE98zzz09999999999', 'DE18ZZZ0999999999', 'DE25ZZZ099999999999', 'DE03ZZZ0999999999A',
            'AT32ZZZ0123456789', 'NL17ZZZ12345678000', 'DE99ZZZ09999999999',
            ] as $id
        ) {
            yield ['DE-3.7', ['creditorId' => $id], ['creditorId' => 'creditor_id']];
        }
        yield ['DE-3.7', ['messageId' => str_repeat('x', 31)], ['messageId' => 'message_id']];
        yield ['DE-3.7', ['messageId' => 'a_b'], ['messageId' => 'message_id']];
        yield ['DE-3.7', ['messageId' => 'a//b'], ['messageId' => 'id']];
        yield ['DE-3.7', ['type' => 'COR1'], ['type' => 'local_instrument']];
    }

    public function testCreditorIdentifiersOfOtherCountriesAreGood(): void
    {
        foreach (['AT61ZZZ01234567890', 'NL42ZZZ123456780001', 'FR72ZZZ123456', 'DE98 ZZZ 0999 9999 999'] as $id) {
            $payments = Samples::collections('DE-3.7', ['creditorId' => $id]);
            $payments->add(Samples::COLLECTION);
            self::assertSame([], $payments->faults());
        }
    }

    public function testFaultsOfTheWholeMessage(): void
    {
        self::assertFaults(null, null, ['' => 'no_payments'], Samples::transfers('DE-3.7'));

        $payments = Samples::transfers('DE-3.7', ['messageId' => str_repeat('x', 30)]);
        for ($day = 0; $day < 1000; ++$day) {
            $payments->add(['date' => date('Y-m-d', 86400 * $day)] + Samples::TRANSFER);
            self::assertSame($day === 999, $payments->faults() !== []);
        }
        self::assertFaults(null, null, ['messageId' => 'too_many_blocks'], $payments);

        // As a number this sum is a cent off.
        $payments = Samples::transfers('DE-3.7');
        for ($i = 0; $i < 1100; ++$i) {
            $payments->add(['amount' => '999999999.99'] + Samples::TRANSFER);
        }
        self::assertStringContainsString('<CtrlSum>1099999999989.00</CtrlSum>', $payments->document());
    }

    public function testATextThatQuotesHalfACharacterIsMadeWhole(): void
    {
        $payments = Samples::transfers('DE-3.7');
        $payments->add(['name' => 'Łódź'] + Samples::TRANSFER);
        $fault = $payments->faults()[0];
        self::assertSame("Invalid character 'Ł' in creditor name", $fault->text());
        self::assertStringContainsString('Ł ó ź', $fault->hint());
    }

    /** @param array<string, string> $expected code by key */
    private static function assertFaults(?int $row, ?string $label, array $expected, Payments $payments): void
    {
        $faults = $payments->faults();
        $found = [];
        foreach ($faults as $fault) {
            self::assertSame([$row, $label], [$fault->row, $fault->label]);
            foreach ([$fault->text(), $fault->hint(), $fault->text('fr'), $fault->hint('fr')] as $text) {
                self::assertMatchesRegularExpression('/^[^{}]{5,}$/uD', $text, 'a text without a hole');
                self::assertDoesNotMatchRegularExpression('/\.(reason|hint)$/', $text);
            }
            self::assertNotSame('other', $fault->code);
            self::assertNotFalse(json_encode($fault));
            $found[(string) $fault->key] = $fault->code;
        }
        ksort($expected);
        ksort($found);
        self::assertSame($expected, $found);
        self::assertCount(count($expected), $faults);
        try {
            $payments->document();
            self::fail('a document in spite of faults');
        } catch (FaultyPayments $e) {
            self::assertSame(array_map('strval', $faults), array_map('strval', $e->faults()));
        }
    }
}
