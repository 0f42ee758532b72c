<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Payment\Calendar;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;

/** Documents of random good payments keep what the schemas of the banks ask for. */
final class DocumentsTest extends TestCase
{
    private const MESSAGES = 12;

    private const PAYMENTS = 30;

    /** What the elements of all schemas have in common; the strictest of them counts. */
    private const FORMS = [
        'MsgId' => "~^(?!/)(?!.*//)[A-Za-z0-9+?/:().,' -]{1,35}(?<!/)$~D",
        'PmtInfId' => "~^(?!/)(?!.*//)[A-Za-z0-9+?/:().,' -]{1,35}(?<!/)$~D",
        'EndToEndId' => "~^(?!/)(?!.*//)[A-Za-z0-9+?/:().,' -]{1,35}(?<!/)$~D",
        'MndtId' => "~^(?!/)(?!.*//)[A-Za-z0-9+?/:().,' -]{1,35}(?<!/)$~D",
        'OrgnlMndtId' => "~^(?!/)(?!.*//)[A-Za-z0-9+?/:().,'-]{1,35}(?<!/)$~D",
        'CreDtTm' => '/^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$/D',
        'NbOfTxs' => '/^[1-9]\d{0,14}$/D',
        'CtrlSum' => '/^\d{1,15}\.\d\d$/D',
        'InstdAmt' => '/^(?!0\.00)\d{1,9}\.\d\d$/D',
        'BtchBookg' => '/^(true|false)$/D',
        'IBAN' => '/^[A-Z]{2}\d{2}[A-Z0-9]{1,30}$/D',
        'BIC' => '/^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$/D',
        'BICFI' => '/^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$/D',
        'Nm' => '/^.{1,70}$/uD',
        'Ustrd' => '/^.{1,140}$/uD',
        'AdrLine' => '/^.{1,70}$/uD',
        'TwnNm' => '/^.{1,35}$/uD',
        'Ctry' => '/^[A-Z]{2}$/D',
        'SeqTp' => '/^(FRST|RCUR|OOFF|FNAL)$/D',
    ];

    private const NAMESPACES = [
        'DE-2.6' => ['001.002.03', '008.002.02'], 'DE-2.7' => ['001.003.03', '008.003.02'], 'DE-2.8' => ['001.003.03', '008.003.02'],
        'DE-2.9' => ['001.003.03', '008.003.02'], 'DE-3.7' => ['001.001.09', '008.001.08'],
    ];

    /** @dataProvider kinds */
    public function testGoodPaymentsBecomeGoodDocuments(string $rulebook, bool $isDebit): void
    {
        mt_srand(crc32($rulebook) + (int) $isDebit);
        for ($message = 0; $message < self::MESSAGES; ++$message) {
            $payments = $isDebit ? Samples::collections($rulebook) : Samples::transfers($rulebook);
            for ($number = 0; $number < self::PAYMENTS; ++$number) {
                $payments->add(Samples::random($payments));
            }
            self::assertSame([], array_map('strval', $payments->faults()));
            $document = new \DOMDocument();
            self::assertTrue($document->loadXML($payments->document()));
            $this->check($document, $rulebook, $isDebit, $payments);
        }
    }

    public function kinds(): iterable
    {
        foreach (Rulebook::names() as $rulebook) {
            yield "transfers under $rulebook" => [$rulebook, false];
            yield "collections under $rulebook" => [$rulebook, true];
        }
    }

    private function check(\DOMDocument $document, string $rulebook, bool $isDebit, Payments $payments): void
    {
        $namespace = self::NAMESPACES[$rulebook] ?? ['001.001.03', '008.001.02'];
        $uri = 'urn:iso:std:iso:20022:tech:xsd:pain.' . $namespace[(int) $isDebit];
        self::assertSame($uri, $document->documentElement->namespaceURI);
        $path = new \DOMXPath($document);
        $path->registerNamespace('p', $uri);

        foreach ($path->query('//*[not(*)]') as $leaf) {
            self::assertNotSame('', trim($leaf->textContent), $leaf->getNodePath());
            self::assertMatchesRegularExpression(self::FORMS[$leaf->localName] ?? '/^.+$/D', $leaf->textContent, $leaf->localName);
        }
        $dates = '//p:ReqdColltnDt | //p:DtOfSgntr | //p:ReqdExctnDt' . ($rulebook === 'DE-3.7' ? '/p:Dt' : '[not(*)]');
        self::assertSame((int) $path->evaluate('count(//p:ReqdExctnDt | //p:ReqdColltnDt | //p:DtOfSgntr)'), $path->query($dates)->length);
        foreach ($path->query($dates) as $date) {
            self::assertTrue(Calendar::exists($date->textContent), $date->textContent);
        }
        self::assertGreaterThan(0, $path->query('//p:PmtInf')->length);
        foreach ($path->query('//p:PmtInf | /p:Document/*') as $part) {
            self::assertSums($path, $part);
        }
        foreach (self::faultyPaths($rulebook) as $fault) {
            self::assertSame(0, $path->query($fault)->length, $fault);
        }
        self::assertSame(count($payments), $path->query('//p:EndToEndId')->length);
        self::assertSame($payments->messageId(), $path->evaluate('string(//p:MsgId)'));
    }

    /** The sums of a message or a block against its payments. */
    private static function assertSums(\DOMXPath $path, \DOMNode $part): void
    {
        $count = 0;
        $cents = 0;
        foreach ($path->query('.//p:InstdAmt', $part) as $amount) {
            ++$count;
            $cents += (int) str_replace('.', '', $amount->textContent);
        }
        $told = $part->localName === 'PmtInf' ? '.' : 'p:GrpHdr';
        self::assertSame((string) $count, $path->evaluate("string($told/p:NbOfTxs)", $part));
        self::assertSame($cents, (int) str_replace('.', '', $path->evaluate("string($told/p:CtrlSum)", $part)));
    }

    /** @return list<string> paths that no document has */
    private static function faultyPaths(string $rulebook): array
    {
        $paths = [
            '//p:Dbtr[not(p:Nm)] | //p:Cdtr[not(p:Nm)] | //p:InitgPty[not(p:Nm)]',
            '//p:PmtInf[not(p:DbtrAgt//p:BIC or p:DbtrAgt//p:BICFI or p:CdtrAgt//p:BIC or p:CdtrAgt//p:BICFI)]',
            '//p:DrctDbtTx[not(p:MndtRltdInf/p:MndtId and p:MndtRltdInf/p:DtOfSgntr)]',
            '//p:AmdmntInfDtls[p:OrgnlDbtrAcct and p:OrgnlDbtrAgt]',
            '//p:AdrLine[position() > 2]',
        ];
        $structured = '//p:PstlAdr[not(p:TwnNm and p:Ctry)] | //p:AdrLine | //p:BIC';
        $paths[] = $rulebook === 'DE-3.7' ? $structured : '//p:TwnNm | //p:StrtNm | //p:BICFI';
        if (strncmp($rulebook, 'DE-2.', 5) === 0) {
            $paths[] = '//p:MndtId[contains(., " ")]';
        }
        if ($rulebook === 'DE-2.6') {
            $paths[] = '//p:CdtTrfTxInf[not(p:CdtrAgt//p:BIC)] | //p:DrctDbtTxInf[not(p:DbtrAgt//p:BIC)]';
        }

        return $paths;
    }
}
