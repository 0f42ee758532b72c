<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Sheet;

final class BatchesTest extends TestCase
{
    private const HEADINGS = "Name;IBAN;Betrag;Eigene IBAN;Echtzeit;Kategorie;Datum\n";

    public function testColumnsSortRowsIntoMessages(): void
    {
        $batches = $this->read(self::HEADINGS
            . "A;DE62701500000020228888;1.00;;;;\nB;DE62701500000020228888;2.00;DE12500105170648489890;ja;;\n"
            . "C;DE62701500000020228888;3.00;DE89 3704 0044 0532 0130 00;;;2026-12-02\nD;DE62701500000020228888;4.00;;;SALA;\n"
            . "E;DE62701500000020228888;5.00;;;;2026-12-03\n", 'Dez');
        self::assertSame([], array_map('strval', $batches->faults()));
        $documents = $batches->documents();
        self::assertSame(['Dez-1', 'Dez-2', 'Dez-3'], self::all('MsgId', $documents));
        self::assertSame(['9.00', '1.00', '3.00', '5.00', '2.00', '2.00', '4.00', '4.00'], self::all('CtrlSum', $documents));
        self::assertSame(['COBADEFFXXX', 'COBADEFFXXX', 'COBADEFFXXX', 'INGDDEFFXXX', 'COBADEFFXXX'], self::all('BICFI', $documents));
        self::assertSame([false, true, false], array_map(static fn (string $xml): bool => strpos($xml, 'INST') !== false, $documents));
        self::assertStringContainsString('<Cd>SALA</Cd>', $documents[2]);
        self::assertSame([5, '15.00'], [count($batches), $batches->sum()]);

        $one = $this->read("name;iban;betrag\nA;DE62701500000020228888;1.00\n", 'Dez');
        self::assertSame(['Dez'], self::all('MsgId', $one->documents()));
    }

    public function testWhatIsWrongIsToldAtTheRowOrOnce(): void
    {
        $batches = $this->read(self::HEADINGS
            . "A;DE62701500000020228888;1.00;DE99;vielleicht;;\nB;DE62701500000020228888;2.00;FR1420041010050500013M02606;;;\n"
            . "C;DE62701500000020228888;x;;;sal;\nD;DE62701500000020228888;4.00;DE12500105170648489890;;SALA;\n", str_repeat('x', 29), 'é');
        $found = array_map(static fn (Fault $fault): string => "$fault->row $fault->key $fault->code", $batches->faults());
        sort($found);
        self::assertSame([
            ' messageId message_id', ' messageId message_id', ' messageId message_id', ' name characters',
            '2 instant yes_or_no', '2 own_iban iban_length', '3 own_iban missing', '4 amount amount', '4 category purpose',
        ], $found);
        self::assertSame(['no_payments'], array_column($this->read(self::HEADINGS)->faults(), 'code'));
    }

    /**
     * @param list<string> $documents
     * @return list<string> texts of an element
     */
    private static function all(string $element, array $documents): array
    {
        preg_match_all("~<$element>([^<]*)<~", implode('', $documents), $found);

        return $found[1];
    }

    private function read(string $csv, ?string $id = null, string $name = 'A'): Batches
    {
        $stream = fopen('php://memory', 'w+b');
        fwrite($stream, $csv);
        rewind($stream);
        $options = Options::latest()->on('2026-12-01')->withMessageId($id)->asOf(Samples::TODAY);
        $batches = Batches::transfers(Party::payer($name, 'DE89370400440532013000'), $options);
        (new Sheet(new Reader($stream, 'test')))->fill($batches);

        return $batches;
    }
}
