<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Payment\Additions;
use Sepa\Toolkit\Payment\Blocks;
use Sepa\Toolkit\Payment\Collections;
use Sepa\Toolkit\Payment\Document;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Head;
use Sepa\Toolkit\Payment\Misplaced;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Rules;
use Sepa\Toolkit\Payment\Transfers;

/** What the toolkit adds to the extension's document stands where the schemas want it, at the payment that has it. */
final class AdditionsTest extends TestCase
{
    /** Children in their order, by ISO 20022; elements that are not here have text. */
    private const ORDER = [
        'Document' => 'CstmrCdtTrfInitn CstmrDrctDbtInitn',
        'CstmrCdtTrfInitn' => 'GrpHdr PmtInf', 'CstmrDrctDbtInitn' => 'GrpHdr PmtInf',
        'GrpHdr' => 'MsgId CreDtTm NbOfTxs CtrlSum InitgPty', 'InitgPty' => 'Nm',
        'CstmrCdtTrfInitn/PmtInf' => 'PmtInfId PmtMtd BtchBookg NbOfTxs CtrlSum PmtTpInf ReqdExctnDt Dbtr DbtrAcct DbtrAgt ChrgBr CdtTrfTxInf',
        'CstmrDrctDbtInitn/PmtInf' => 'PmtInfId PmtMtd BtchBookg NbOfTxs CtrlSum PmtTpInf ReqdColltnDt Cdtr CdtrAcct CdtrAgt ChrgBr '
            . 'CdtrSchmeId DrctDbtTxInf',
        'PmtTpInf' => 'InstrPrty SvcLvl LclInstrm SeqTp CtgyPurp',
        'SvcLvl' => 'Cd', 'LclInstrm' => 'Cd', 'CtgyPurp' => 'Cd', 'Purp' => 'Cd',
        'Dbtr' => 'Nm PstlAdr', 'Cdtr' => 'Nm PstlAdr', 'UltmtDbtr' => 'Nm Id', 'UltmtCdtr' => 'Nm Id',
        'PstlAdr' => 'Dept SubDept StrtNm BldgNb BldgNm Flr PstBx Room PstCd TwnNm TwnLctnNm DstrctNm CtrySubDvsn Ctry AdrLine',
        'DbtrAcct' => 'Id Ccy', 'CdtrAcct' => 'Id Ccy', 'OrgnlDbtrAcct' => 'Id',
        'DbtrAgt' => 'FinInstnId', 'CdtrAgt' => 'FinInstnId', 'OrgnlDbtrAgt' => 'FinInstnId', 'FinInstnId' => 'BIC BICFI Othr',
        'CdtTrfTxInf' => 'PmtId Amt UltmtDbtr CdtrAgt Cdtr CdtrAcct UltmtCdtr Purp RmtInf',
        'DrctDbtTxInf' => 'PmtId InstdAmt DrctDbtTx UltmtCdtr DbtrAgt Dbtr DbtrAcct UltmtDbtr Purp RmtInf',
        'PmtId' => 'InstrId EndToEndId', 'Amt' => 'InstdAmt',
        'DrctDbtTx' => 'MndtRltdInf', 'MndtRltdInf' => 'MndtId DtOfSgntr AmdmntInd AmdmntInfDtls',
        'AmdmntInfDtls' => 'OrgnlMndtId OrgnlCdtrSchmeId OrgnlDbtrAcct OrgnlDbtrAgt',
        'CdtrSchmeId' => 'Id', 'OrgnlCdtrSchmeId' => 'Nm Id', 'SchmeNm' => 'Prtry',
        'DbtrAcct/Id' => 'IBAN', 'CdtrAcct/Id' => 'IBAN', 'OrgnlDbtrAcct/Id' => 'IBAN Othr',
        'UltmtDbtr/Id' => 'OrgId', 'UltmtCdtr/Id' => 'OrgId', 'CdtrSchmeId/Id' => 'PrvtId', 'OrgnlCdtrSchmeId/Id' => 'PrvtId',
        'OrgId' => 'Othr', 'PrvtId' => 'Othr', 'Othr' => 'Id SchmeNm', 'Othr/Id' => '', 'ReqdExctnDt' => 'Dt DtTm',
        'RmtInf' => 'Ustrd Strd', 'Strd' => 'CdtrRefInf', 'CdtrRefInf' => 'Tp Ref', 'Tp' => 'CdOrPrtry Issr', 'CdOrPrtry' => 'Cd',
    ];

    /** Path of an added value in its payment, for transfers and debits. */
    private const PATHS = [
        'instr_id' => 'p:PmtId/p:InstrId', 'ultm_dbtr' => 'p:UltmtDbtr/p:Nm', 'ultm_dbtr_id' => 'p:UltmtDbtr/p:Id/p:OrgId/p:Othr/p:Id',
        'ultm_cdtr' => 'p:UltmtCdtr/p:Nm', 'ultm_cdtr_id' => 'p:UltmtCdtr/p:Id/p:OrgId/p:Othr/p:Id', 'purp' => 'p:Purp/p:Cd',
        'rf' => 'p:RmtInf/p:Strd/p:CdtrRefInf/p:Ref', 'ref' => 'p:RmtInf/p:Ustrd',
        'old_name' => './/p:OrgnlCdtrSchmeId/p:Nm', 'old_creditor_id' => './/p:OrgnlCdtrSchmeId/p:Id/p:PrvtId/p:Othr/p:Id',
        'old_mref' => './/p:OrgnlMndtId', 'addrLine1' => './/p:PstlAdr/p:AdrLine[1]', 'addrLine2' => './/p:PstlAdr/p:AdrLine[2]',
    ];

    private const LINES = ['addrCC' => 'DE', 'addrLine1' => 'Gasse 5', 'addrLine2' => '26122 Oldenburg'];

    private const FIELDS = ['addrTown' => 'Oldenburg', 'addrCC' => 'DE', 'addrStreet' => 'Gasse', 'addrNum' => '5'];

    /** @dataProvider kinds */
    public function testADocumentWithAllThatARulebookCanSay(string $name, bool $isDebit, bool $isHybrid): void
    {
        mt_srand(crc32($name) + (int) $isDebit);
        $payments = self::message($name, $isDebit, self::everything(new Rulebook($name), $isDebit, $isHybrid));
        $rows = [];
        for ($number = 0; $number < 60; ++$number) {
            $id = $number % 7 === 0 ? [] : ['id' => "E-$number"];
            $rows[] = $row = self::row($number, new Rulebook($name), $isDebit, $isHybrid) + $id;
            self::assertTrue($payments->add($row), implode(', ', $payments->faults()));
        }
        $document = new \DOMDocument();
        self::assertTrue($document->loadXML($payments->document()), implode(', ', $payments->faults()));
        $this->assertOrder($document->documentElement);
        $path = new \DOMXPath($document);
        $path->registerNamespace('p', (string) $document->documentElement->namespaceURI);
        foreach ($path->query('//p:CdtTrfTxInf | //p:DrctDbtTxInf') as $payment) {
            // An amount is one payment's.
            $row = $rows[(int) $path->evaluate('number(.//p:InstdAmt)', $payment) - 1];
            foreach (self::PATHS as $key => $place) {
                self::assertSame($row[$key] ?? '', $path->evaluate("string($place)", $payment), $key);
            }
        }
        self::assertSame(60, $path->query('//p:CdtTrfTxInf | //p:DrctDbtTxInf')->length);
        self::assertHead($path, new Rulebook($name), $isDebit);
    }

    public function kinds(): iterable
    {
        foreach (Rulebook::names() as $name) {
            yield "transfers under $name" => [$name, false, false];
            yield "debits under $name" => [$name, true, false];
        }
        yield 'transfers with hybrid addresses' => ['DE-3.7', false, true];
        yield 'debits with hybrid addresses' => ['DE-3.7', true, true];
    }

    private static function assertHead(\DOMXPath $path, Rulebook $rulebook, bool $isDebit): void
    {
        $own = $isDebit ? 'Cdtr' : 'Dbtr';
        $expected = [
            'p:PmtTpInf/p:CtgyPurp/p:Cd' => 'SALA',
            'p:PmtTpInf/p:InstrPrty' => $isDebit ? '' : 'HIGH',
            'p:PmtTpInf/p:LclInstrm/p:Cd' => $isDebit ? 'CORE' : ($rulebook->instant ? 'INST' : ''),
            'p:ReqdExctnDt/p:DtTm' => $isDebit || !$rulebook->hasDt ? '' : '2026-12-01T10:00:00+01:00',
            "p:$own/p:PstlAdr/p:Ctry" => 'DE',
            "p:{$own}Acct/p:Ccy" => 'EUR',
            "p:{$own}Agt/p:FinInstnId/p:Othr/p:Id" => $rulebook->wantsBic ? '' : 'NOTPROVIDED',
        ];
        foreach ($path->query('//p:PmtInf') as $block) {
            foreach ($expected as $place => $value) {
                self::assertSame($value, $path->evaluate("string($place)", $block), $place);
            }
        }
    }

    private function assertOrder(\DOMElement $element): void
    {
        $children = array_values(array_filter(iterator_to_array($element->childNodes), static fn ($node): bool => $node instanceof \DOMElement));
        $parent = $element->parentNode instanceof \DOMElement ? $element->parentNode->localName : '';
        $known = self::ORDER["$parent/$element->localName"] ?? self::ORDER[$element->localName] ?? '';
        $order = array_flip(explode(' ', $known));
        $last = -1;
        foreach ($children as $child) {
            self::assertArrayHasKey($child->localName, $order, (string) $child->getNodePath());
            self::assertGreaterThanOrEqual($last, $order[$child->localName], (string) $child->getNodePath());
            $last = $order[$child->localName];
            $this->assertOrder($child);
        }
        self::assertNotSame('', trim($element->textContent), (string) $element->getNodePath());
    }

    private static function everything(Rulebook $rulebook, bool $isDebit, bool $isHybrid): Options
    {
        $options = Options::under($rulebook->name)->asOf(Samples::TODAY)->forCategory('SALA')->inAccountOf('EUR')
            ->withoutBic(!$rulebook->wantsBic)->withHybridAddresses($isHybrid)->on('2026-12-01');
        if ($isDebit) {
            return $options;
        }

        return $options->withPriority('HIGH')->instant($rulebook->instant)->at($rulebook->hasDt ? '2026-12-01T10:00:00+01:00' : null);
    }

    private static function message(string $name, bool $isDebit, Options $options): Payments
    {
        $address = (new Rulebook($name))->structured ? self::FIELDS : self::LINES;
        if ($isDebit) {
            return new Collections(Party::creditor('A + B', 'DE89370400440532013000', null, 'DE98ZZZ09999999999')->livingAt($address), $options);
        }

        return new Transfers(Party::payer('A + B', 'DE89370400440532013000')->livingAt($address), $options);
    }

    /** @return array<string, string> a payment with some of all that can be added, and the number after this one as amount */
    private static function row(int $number, Rulebook $rulebook, bool $isDebit, bool $isHybrid): array
    {
        $row = ['name' => "Payee $number", 'iban' => 'DE62701500000020228888', 'bic' => 'SSKMDEMMXXX', 'amount' => (string) ($number + 1)];
        $some = ['instr_id' => "I-$number", 'ultm_dbtr' => "Debtor $number", 'ultm_dbtr_id' => "D-$number", 'ultm_cdtr' => "Creditor $number",
            'ultm_cdtr_id' => "C-$number", 'purp' => 'SUPP'];
        $reference = mt_rand(0, 2);
        $row += $reference === 2 ? [] : ($reference ? ['rf' => 'RF18539007547034'] : ['ref' => "Invoice $number"]);
        if ($isDebit) {
            $row += ['seq' => ['frst', 'RCUR', 'OOFF', 'FNAL'][mt_rand(0, 3)], 'mref' => "M$number", 'mdate' => '2020-02-29'];
            $some += ['old_name' => "Old $number", 'old_creditor_id' => 'DE98ZZZ09999999999', 'old_mref' => "O$number", 'smnda' => '1'];
        }
        if ($isDebit || !$rulebook->hasDt) {
            $some += ['date' => sprintf('2026-12-%02d', mt_rand(1, 3))];
        }
        foreach ($some as $key => $value) {
            $row += mt_rand(0, 1) ? [$key => $value] : [];
        }
        $hybrid = ['addrLine1' => "Gasse $number", 'addrTown' => 'Köln', 'addrCC' => 'DE'];
        $address = $isHybrid ? $hybrid : ($rulebook->structured ? self::FIELDS : self::LINES);

        return $row + (mt_rand(0, 1) ? $address : []);
    }

    /**
     * @dataProvider impossible
     * @param array<string, string> $row
     * @param array<string, string> $faults code by key
     */
    public function testWhatARulebookCannotSayIsAFault(string $where, array $row, callable $change, array $faults, array $address = []): void
    {
        [$kind, $rulebook] = explode(' ', $where);
        $isDebit = $kind === 'debit';
        $options = $change(Options::under($rulebook)->asOf(Samples::TODAY)->on('2026-12-01'));
        $payments = $isDebit
            ? new Collections(Party::creditor('A', 'DE89370400440532013000', null, 'DE98ZZZ09999999999')->livingAt($address), $options)
            : new Transfers(Party::payer('A', 'DE89370400440532013000')->livingAt($address), $options);
        $payments->add($row + ($isDebit ? Samples::COLLECTION : Samples::TRANSFER));
        $found = array_column(array_map(static fn (Fault $fault): array => [(string) $fault->key, $fault->code], $payments->faults()), 1, 0);
        self::assertEquals($faults, $found);
        foreach ($payments->faults() as $fault) {
            self::assertMatchesRegularExpression('/^[^{}]{9,}$/uD', $fault->text() . $fault->hint());
        }
    }

    public function impossible(): iterable
    {
        $same = static fn (Options $options): Options => $options;
        $instant = static fn (Options $options): Options => $options->instant();
        $at = static fn (Options $options): Options => $options->instant()->at('2026-12-01T10:00:00Z');
        $high = static fn (Options $options): Options => $options->withPriority('HIGH');
        $hybrid = static fn (Options $options): Options => $options->withHybridAddresses();
        foreach (['DE-2.6', 'DE-2.7', 'DE-2.8', 'DE-2.9', 'DE-3.0', 'DE-3.1'] as $name) {
            yield "instant $name" => ["transfer $name", [], $instant, ['instant' => 'not_in_rulebook']];
        }
        foreach (['DE-3.5', 'AT-6', 'NL-6'] as $name) {
            yield "time $name" => ["transfer $name", [], $at, ['at' => 'not_in_rulebook']];
        }
        foreach (array_diff(Rulebook::names(), ['DE-3.7']) as $name) {
            yield "own fields $name" => ["transfer $name", [], $same, array_fill_keys(['addrTown', 'addrStreet', 'addrNum'], 'rulebook'), self::FIELDS];
            yield "hybrid $name" => ["debit $name", [], $hybrid, ['hybrid' => 'not_in_rulebook']];
        }
        yield ['transfer DE-3.7', [], $same, ['addrLine1' => 'rulebook', 'addrLine2' => 'rulebook', 'addrTown' => 'address'], self::LINES];
        yield ['debit DE-3.7', [], $instant, ['instant' => 'not_in_debits']];
        yield ['debit DE-3.7', [], $at, ['instant' => 'not_in_debits', 'at' => 'not_in_debits']];
        yield ['debit NL-6', [], $high, ['priority' => 'not_in_debits']];
        yield ['transfer DE-2.6', [], static fn (Options $options): Options => $options->withoutBic(), ['bic' => 'not_in_rulebook']];
        yield ['transfer DE-3.7', [], static fn (Options $options): Options => $options->at('2026-12-01T10:00:00Z'), ['at' => 'time_not_instant']];
        foreach (['2026-12-01T10:00:00', '2026-02-30T10:00:00Z', '2026-12-01 10:00:00Z', '2026-12-01T24:00:00Z', '2026-12-01T10:00:00+1:00'] as $time) {
            yield $time => ['transfer DE-3.7', [], static fn (Options $options): Options => $options->instant()->at($time), ['at' => 'time']];
        }
        yield ['transfer DE-3.7', ['date' => '2026-12-02'], $at, ['date' => 'time_other_day']];
        yield ['transfer DE-3.7', [], static fn (Options $options): Options => $options->forCategory('sala')->withPriority('URGENT')->inAccountOf('Euro'),
            ['category' => 'purpose', 'priority' => 'priority', 'currency' => 'account_currency']];
        yield ['transfer AT-6', ['purp' => 'GIFT'], static fn (Options $options): Options => $options->forCategory('SAVG'),
            ['category' => 'purpose_national', 'purp' => 'purpose_national']];
        yield ['debit AT-6', ['purp' => 'ABCD', 'addrCC' => 'AT'], $same, ['purp' => 'purpose_national', 'addrCC' => 'address_country_alone']];
        yield ['transfer DE-3.7', ['addrLine1' => 'Gasse 5'] + self::FIELDS, $hybrid, ['addrStreet' => 'address_hybrid', 'addrNum' => 'address_hybrid']];
        yield ['transfer DE-3.7', ['addrLine1' => str_repeat('ä', 71), 'addrTown' => 'Bern', 'addrCC' => 'CH'], $hybrid, ['addrLine1' => 'length_characters']];
        yield ['transfer DE-3.7', ['rf' => 'RF18 5390 0754 7034', 'instr_id' => 'a//b'], $same, ['rf' => 'reference_twice', 'instr_id' => 'id']];
        yield ['transfer DE-3.7', ['rf' => 'RF19539007547034', 'ultm_dbtr' => 'é', 'ultm_cdtr' => str_repeat('ü', 71), 'ultm_cdtr_id' => 'a_b'], $same,
            ['rf' => 'reference', 'ultm_dbtr' => 'characters', 'ultm_cdtr' => 'length_characters', 'ultm_cdtr_id' => 'characters']];
        yield ['debit DE-3.7', ['old_creditor_id' => 'DE99ZZZ09999999999', 'old_name' => ' '], $same, ['old_creditor_id' => 'creditor_id', 'old_name' => 'empty']];
        yield ['transfer DE-3.7', ['old_name' => 'A'], $same, ['old_name' => 'unknown_key']];
    }

    public function testABicIsLookedUpAndANonBicIsLeftOut(): void
    {
        $options = Options::latest()->asOf(Samples::TODAY)->on('2026-12-01');
        $payments = new Transfers(Party::payer('A', 'DE89370400440532013000', 'notprovided'), $options);
        $payments->add(['bic' => 'NOTPROVIDED'] + Samples::TRANSFER);
        self::assertStringContainsString('<BICFI>COBADEFFXXX</BICFI>', $payments->document());
        self::assertStringNotContainsString('NOTPROVIDED</BICFI>', $payments->document());
        self::assertSame(['bic_dropped', 'bic_dropped'], array_column($payments->changes(), 'code'));
        foreach ([['FR1420041010050500013M02606', null, 'missing'], ['DE89370400440532013000', 'INGDDEFFXXX', null]] as [$iban, $bic, $fault]) {
            $payments = new Transfers(Party::payer('A', $iban, $bic), $options);
            $payments->add(Samples::TRANSFER);
            self::assertSame($fault === null ? [] : [$fault], array_column($payments->faults(), 'code'));
            self::assertSame($fault === null ? ['bic_other_bank'] : [], array_column($payments->warnings(), 'code'));
        }
    }

    public function testNothingIsAddedToAnotherPayment(): void
    {
        foreach ([false, true] as $isDebit) {
            $payments = $isDebit ? Samples::collections('DE-3.7') : Samples::transfers('DE-3.7');
            $row = ['id' => 'A', 'name' => 'A & B'] + ($isDebit ? Samples::COLLECTION : Samples::TRANSFER);
            $payments->add($row);
            $element = $isDebit ? 'DrctDbtTxInf' : 'CdtTrfTxInf';
            preg_match("~\t\t\t<$element>.*?</$element>\n~s", $payments->document(), $xml);
            $add = $isDebit ? [Additions::class, 'toDebit'] : [Additions::class, 'toTransfer'];
            self::assertStringContainsString('<InstrId>I<', $add($xml[0], Additions::pack($row, ['instr_id' => 'I'], '842.17')));
            $others = ['id' => 'B', 'name' => 'A + B', 'iban' => 'DE12500105170648489890', 'ref' => 'Vertrag 77301-5'];
            foreach ($others + ['amount' => '842.18'] as $key => $value) {
                try {
                    $add($xml[0], Additions::pack([$key => $value] + $row, ['instr_id' => 'I'], $key === 'amount' ? $value : '842.17'));
                    self::fail("another $key");
                } catch (Misplaced $e) {
                    self::assertNotSame('', $e->getMessage());
                }
            }
        }
    }

    public function testABlockHasTheDayAndTheNumberOfPaymentsThatAreMeant(): void
    {
        $payments = Samples::transfers('DE-3.5');
        $payments->add(Samples::TRANSFER);
        $head = new Head(Party::payer('A', 'DE89370400440532013000', 'x'), Options::latest(), new Rulebook('DE-3.5'), SEPA_MSGTYPE_CTI);
        foreach ([['2026-12-01', 1, 84217], ['2026-12-02', 1, 84217], ['2026-12-01', 2, 84217], ['2026-12-01', 1, 84218]] as $case => [$date, $count, $cents]) {
            $blocks = new Blocks();
            for ($i = 0; $i < $count; ++$i) {
                $blocks->add($date, '', '');
            }
            try {
                (new Document($payments->document(), SEPA_MSGTYPE_CTI))->complete($blocks, $head, 1, $cents);
                self::assertSame(0, $case);
            } catch (Misplaced | \RangeException $e) {
                self::assertNotSame(0, $case, $e->getMessage());
            }
        }
    }

    public function testReferencesHaveTheRightCheckDigits(): void
    {
        foreach (['RF18539007547034' => true, 'RF714711' => true, 'RF45G72UUR' => true, 'RF18539007547043' => false, 'RF18' => false] as $text => $is) {
            self::assertSame($is, Rules::isReference($text), $text);
        }
    }
}
