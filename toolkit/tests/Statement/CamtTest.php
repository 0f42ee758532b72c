<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Statement;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Part;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;

final class CamtTest extends TestCase
{
    private const OWN = 'DE62701500000020228888';

    private const OTHER = 'DE89370400440532013000';

    /** One statement: 100.00, the entries, and the closing balance. */
    public static function message(string $entries, string $closing = '142.50', string $head = '', string $root = 'BkToCstmrStmt', string $name = 'Stmt'): string
    {
        $balance = static fn (string $code, string $amount): string => "<Bal><Tp><CdOrPrtry><Cd>$code</Cd></CdOrPrtry></Tp>"
            . "<CdtLine><Incl>true</Incl><Amt Ccy=\"EUR\">9</Amt></CdtLine><Amt Ccy=\"EUR\">$amount</Amt><CdtDbtInd>CRDT</CdtDbtInd><Dt><Dt>2026-11-27</Dt></Dt></Bal>";
        $balances = $closing === '' ? '' : $balance('PRCD', '100.00') . $balance('CLBD', $closing) . $balance('CLAV', '7');

        return '<?xml version="1.0" encoding="UTF-8"?><Document xmlns="urn:iso:std:iso:20022:tech:xsd:camt.053.001.08">'
            . "<$root><GrpHdr><MsgId>M</MsgId></GrpHdr><$name><Id>S1</Id><ElctrncSeqNb>7</ElctrncSeqNb>$head<Acct><Id><IBAN>" . self::OWN
            . "</IBAN></Id><Ccy>EUR</Ccy></Acct>$balances$entries</$name></$root></Document>";
    }

    public static function entry(string $inside = '', string $amount = '42.50', string $sign = 'CRDT', string $more = ''): string
    {
        return "<Ntry><Amt Ccy=\"EUR\">$amount</Amt><CdtDbtInd>$sign</CdtDbtInd>$more<Sts><Cd>BOOK</Cd></Sts><BookgDt><Dt>2026-11-27</Dt></BookgDt>"
            . ($inside === '' ? '' : "<NtryDtls><TxDtls>$inside</TxDtls></NtryDtls>") . '<AddtlNtryInf>GUTSCHRIFT </AddtlNtryInf></Ntry>';
    }

    /** @return list<Statement> */
    private static function read(string $text, ?Reader &$reader = null): array
    {
        $reader = Reader::string($text);

        return iterator_to_array($reader, false);
    }

    private static function booking(string $entry): Booking
    {
        [$booking] = iterator_to_array(self::read(self::message($entry))[0]->bookings, false);

        return $booking;
    }

    /** @return list<string> */
    private static function codes(array $notes): array
    {
        return array_column($notes, 'code');
    }

    /** @dataProvider forms */
    public function testEveryVersionSaysTheSame(callable $form): void
    {
        $parties = '<RltdPties><Dbtr><Pty><Nm>J&#xE4;ger</Nm></Pty></Dbtr><DbtrAcct><Id><IBAN>' . self::OTHER . '</IBAN></Id></DbtrAcct><Cdtr><Pty><Nm>Ich</Nm></Pty></Cdtr><CdtrAcct><Id><IBAN>'
            . self::OWN . '</IBAN></Id></CdtrAcct></RltdPties><RltdAgts><DbtrAgt><FinInstnId><BICFI>COBADEFFXXX</BICFI></FinInstnId></DbtrAgt></RltdAgts>';
        $text = self::message(self::entry("<Refs><EndToEndId>E<![CDATA[&]]>1</EndToEndId></Refs>$parties<RmtInf><Ustrd>Miete</Ustrd><Ustrd>Mai</Ustrd></RmtInf>"));
        [$statement] = self::read($form($text));
        self::assertSame([], array_merge($statement->faults, $statement->mended));
        self::assertTrue($statement->balanced);
        self::assertSame(self::OWN . ' 7 100.00 142.50 7.00', "$statement->account $statement->number {$statement->opening->amount->text()} {$statement->closing->amount->text()} {$statement->available[0]->amount->text()}");
        [$booking] = iterator_to_array($statement->bookings, false);
        self::assertSame(
            ['Jäger', self::OTHER, 'COBADEFFXXX', 'E&1', 'Miete Mai', 'GUTSCHRIFT', '42.50', '2026-11-27'],
            [$booking->name, $booking->account, $booking->bank, $booking->eref, $booking->remittance(), $booking->txtext, $booking->amount->text(), $booking->valuta->format('Y-m-d')]
        );
    }

    public function forms(): iterable
    {
        yield 'newer' => [static fn (string $text): string => $text];
        yield 'older' => [static fn (string $text): string => str_replace(['<Pty>', '</Pty>', '<Sts><Cd>BOOK</Cd></Sts>', 'BICFI'], ['', '', '<Sts>BOOK</Sts>', 'BIC'], $text)];
        yield 'prefixed' => [static fn (string $text): string => preg_replace('~(?<=<|</)(?=[A-Z])~', 'n:', str_replace('xmlns=', 'xmlns:n=', str_replace('<![CDATA[&]]>', '&amp;', $text)))];
        yield 'no namespace' => [static fn (string $text): string => preg_replace('/ xmlns="[^"]+"/', '', $text)];
        yield 'commented' => [static fn (string $text): string => str_replace(['J&#xE4;ger', '</RmtInf>', '<Refs>'], ['<!-- a -->J&#xE4;<!-- b -->ger', '<Ustrd/><!-- c --></RmtInf>', '<Refs><TxId/><!-- d -->'], $text)];
        yield 'indented' => [static fn (string $text): string => str_replace('><', ">\n  <", $text)];
        yield 'gzip' => [static fn (string $text): string => gzencode(substr($text, 0, 900)) . gzencode(substr($text, 900))];
        yield 'UTF-16' => [static fn (string $text): string => "\xFF\xFE" . mb_convert_encoding(str_replace('UTF-8', 'UTF-16', $text), 'UTF-16LE', 'UTF-8')];
        yield 'ISO-8859-1' => [static fn (string $text): string => str_replace(['UTF-8', '&#xE4;'], ['ISO-8859-1', "\xE4"], $text)];
        yield 'an interim closing' => [static fn (string $text): string => str_replace(['CLBD', 'camt.053'], ['ITBD', 'camt.052'], $text)];
    }

    public function testBytesThatAreNoUtf8AreReadAsWindows1252(): void
    {
        $text = self::message(self::entry('<RltdPties><Dbtr><Nm>J' . "\xE4" . 'ger – ' . str_repeat('ä', 70000) . '</Nm></Dbtr></RltdPties>'));
        [$statement] = self::read($text);
        self::assertSame(['encoding'], self::codes($statement->mended));
        self::assertSame('Jäger – ' . str_repeat('ä', 70000), iterator_to_array($statement->bookings)[0]->name);
    }

    /** @dataProvider parties */
    public function testTheOtherPartyIsFound(string $sign, string $debtor, string $creditor, string $more, ?string $name): void
    {
        $party = static fn (string $role, string $of): string => $of === '' ? '' : "<$role><Nm>" . strtok($of, ' ') . "</Nm></$role>" . (strpos($of, ' ') ? "<{$role}Acct><Id><IBAN>" . substr(strrchr($of, ' '), 1) . "</IBAN></Id></{$role}Acct>" : '');
        $inside = '<RltdPties>' . $party('Dbtr', $debtor) . $party('Cdtr', $creditor) . "</RltdPties>$more";
        self::assertSame($name, self::booking(self::entry($inside, '1', $sign))->name);
    }

    public function parties(): iterable
    {
        $return = '<RtrInf><Rsn><Cd>MD06</Cd></Rsn></RtrInf>';
        yield 'credit' => ['CRDT', 'A', 'B', '', 'A'];
        yield 'debit' => ['DBIT', 'A', 'B', '', 'B'];
        yield 'returned debit' => ['DBIT', 'A', 'B', $return, 'A'];
        yield 'by the account' => ['CRDT', 'I ' . self::OWN, 'B ' . self::OTHER, '', 'B'];
        yield 'own accounts' => ['DBIT', 'I ' . self::OWN, 'J ' . self::OWN, '', 'J'];
        yield 'only the other has an account' => ['DBIT', 'A ' . self::OTHER, '', $return, 'A'];
        yield 'not the own name' => ['CRDT', '', 'I ' . self::OWN, '', null];
    }

    /** @dataProvider members */
    public function testWhatCamtHasMore(string $entry, array $expected): void
    {
        $told = json_decode(json_encode(self::booking($entry)), true);
        foreach ($expected as $key => $value) {
            self::assertSame($value, $told[$key] ?? null, $key);
        }
    }

    public function members(): iterable
    {
        $code = static fn (string $code, string $issuer = 'DK'): string => "<BkTxCd><Domn><Cd>PMNT</Cd><Fmly><Cd>RDDT</Cd><SubFmlyCd>ESDD</SubFmlyCd></Fmly></Domn><Prtry><Cd>$code</Cd><Issr>$issuer</Issr></Prtry></BkTxCd>";
        yield 'codes' => [self::entry('', '1', 'DBIT', $code('NDDT+105+9200+992')), ['type' => 'N', 'code' => 'DDT', 'gvc' => 105, 'primanota' => '9200', 'extcode' => 992, 'domain' => 'PMNT/RDDT/ESDD']];
        yield 'codes in the transaction' => [self::entry($code('106'), '1', 'DBIT', '<BkTxCd/>'), ['gvc' => 106, 'code' => null]];
        yield 'codes of others' => [self::entry($code('544+1', 'X')), ['gvc' => null, 'ownCode' => '544+1']];
        yield 'return' => [
            self::entry(
                '<Refs><EndToEndId>NOTPROVIDED</EndToEndId><MndtId>M1</MndtId></Refs><AmtDtls><InstdAmt><Amt Ccy="EUR">50.00</Amt></InstdAmt></AmtDtls><Chrgs><Rcrd><Amt Ccy="EUR">3.00</Amt></Rcrd><Rcrd><Amt Ccy="EUR">0.00</Amt></Rcrd></Chrgs>'
                . '<RtrInf><Rsn><Cd>AC04</Cd></Rsn><AddtlInf>KONTO</AddtlInf><AddtlInf>ERLOSCHEN</AddtlInf></RtrInf>',
                '53.00',
                'DBIT'
            ),
            ['instructed' => 50, 'oamt' => '50.00', 'charges' => [-3], 'reason' => 'AC04', 'reasonText' => 'KONTO ERLOSCHEN', 'eref' => null, 'mref' => 'M1', 'purpose' => 'KONTO ERLOSCHEN'],
        ];
        yield 'exchange' => [self::entry('<AmtDtls><InstdAmt><Amt Ccy="CHF">46.48</Amt></InstdAmt><TxAmt><Amt Ccy="EUR"/><CcyXchg><SrcCcy>CHF</SrcCcy><XchgRate>1.09355</XchgRate></CcyXchg></TxAmt></AmtDtls>'), ['instructed' => 46.48, 'instructedCurrency' => 'CHF', 'rate' => '1.09355']];
        yield 'the amount itself is no instructed one' => [self::entry('<AmtDtls><InstdAmt><Amt Ccy="EUR">42.5</Amt></InstdAmt></AmtDtls>'), ['instructed' => null, 'oamt' => null]];
        yield 'structured' => [self::entry('<RltdPties><UltmtCdtr><Nm>keine Information vorhanden</Nm></UltmtCdtr><UltmtDbtr><Nm>U</Nm></UltmtDbtr></RltdPties><Purp><Cd>SALA</Cd></Purp><RmtInf><Strd><CdtrRefInf><Ref>RF18539007547034</Ref></CdtrRefInf></Strd></RmtInf>'), ['reference' => 'RF18539007547034', 'abwa' => 'U', 'abwe' => null, 'purp' => 'SALA', 'svwz' => null]];
        $full = str_repeat('ä', 140);
        yield 'full lines go on' => [self::entry("<RmtInf><Ustrd>$full</Ustrd><Ustrd>b</Ustrd><Ustrd>c </Ustrd><Ustrd>d</Ustrd></RmtInf>"), ['svwz' => "{$full}b c d"]];
        yield 'labels in the text' => [self::entry('<Refs><EndToEndId>E1</EndToEndId></Refs><RmtInf><Ustrd>Beitrag EREF: X MREF: M-7 CRED: DE98ZZZ09999999999</Ustrd><Ustrd>IBAN: ' . self::OTHER . ' BIC: COBADEFF</Ustrd></RmtInf>'), ['eref' => 'E1', 'mref' => 'M-7', 'cred' => 'DE98ZZZ09999999999', 'account' => self::OTHER, 'bank' => 'COBADEFF']];
        yield 'no entry text' => [self::entry(), ['txtext' => 'GUTSCHRIFT', 'svwz' => null, 'booked' => '2026-11-27']];
    }

    /** A day in both forms: bookings say the same but for what one form lacks. */
    public function testBothFormsSayTheSame(): void
    {
        $both = [];
        foreach ([true, false] as $isCamt) {
            $bookings = '';
            foreach ([['C', '42,50', '166', 'NTRF', 'Jäger', 'E-1', '', 'Miete Mai'], ['D', '7,00', '105', 'NDDT', 'Stadtwerke', 'E-2', 'M-2', 'Abschlag'], ['C', '0,01', '152', 'NSTO', 'Jäger', '', '', 'Probe']] as [$mark, $amount, $gvc, $code, $name, $eref, $mref, $text]) {
                $party = $mark === 'C' ? 'Dbtr' : 'Cdtr';
                $bookings .= $isCamt ? str_replace('GUTSCHRIFT ', 'TEXT', self::entry(
                    '<Refs>' . ($eref === '' ? '' : "<EndToEndId>$eref</EndToEndId>") . ($mref === '' ? '' : "<MndtId>$mref</MndtId>") . "</Refs><RltdPties><$party><Pty><Nm>$name</Nm></Pty></$party><{$party}Acct><Id><IBAN>" . self::OTHER
                    . "</IBAN></Id></{$party}Acct></RltdPties><RltdAgts><{$party}Agt><FinInstnId><BICFI>COBADEFF</BICFI></FinInstnId></{$party}Agt></RltdAgts><RmtInf><Ustrd>$text</Ustrd></RmtInf>",
                    str_replace(',', '.', $amount),
                    $mark === 'C' ? 'CRDT' : 'DBIT',
                    "<AcctSvcrRef>B1</AcctSvcrRef><BkTxCd><Prtry><Cd>$code+$gvc+9249</Cd><Issr>DK</Issr></Prtry></BkTxCd>"
                )) : ":61:2611271127$mark$amount$code//B1\r\n:86:$gvc?00TEXT?109249" . ($eref === '' ? '' : "?20EREF+$eref") . ($mref === '' ? '' : "?21MREF+$mref") . "?22SVWZ+$text?30COBADEFF?31" . self::OTHER . "?32$name\r\n";
            }
            [$statement] = self::read($isCamt ? self::message($bookings, '135.51')
                : "\r\n:20:S1\r\n:25:" . self::OWN . "\r\n:28C:7\r\n:60F:C261127EUR100,00\r\n$bookings:62F:C261127EUR135,51\r\n:64:C261127EUR7,\r\n-\r\n");
            self::assertTrue($statement->isGood());
            $both[] = array_map(static fn (Booking $booking): array => array_diff_key($booking->jsonSerialize(), ['line' => 1, 'entry' => 1, 'details' => 1]), iterator_to_array($statement->bookings));
            $head[] = array_diff_key($statement->head(), ['form' => 1, 'hints' => 1]);
        }
        self::assertEquals($both[1], $both[0]);
        self::assertSame(json_encode($head[1]), str_replace(['"PRCD"'], ['"OPBD"'], json_encode($head[0])));
    }

    public function testABatchIsOneBookingWithItsPayments(): void
    {
        $inside = '<Amt Ccy="EUR">40</Amt><Refs><EndToEndId>A</EndToEndId></Refs></TxDtls><TxDtls><AmtDtls><TxAmt><Amt Ccy="CHF">9</Amt></TxAmt><InstdAmt><Amt Ccy="EUR">2.50</Amt></InstdAmt></AmtDtls></TxDtls></NtryDtls><NtryDtls><Btch><PmtInfId>P</PmtInfId><NbOfTxs>3</NbOfTxs></Btch><TxDtls><AmtDtls><TxAmt><Amt Ccy="CHF">9</Amt></TxAmt></AmtDtls>';
        [$statement] = self::read(self::message(self::entry($inside) . self::entry('<Amt Ccy="EUR">1</Amt></TxDtls><TxDtls><Amt Ccy="EUR">1</Amt><CdtDbtInd>DBIT</CdtDbtInd>', '2', 'DBIT'), '140.5'));
        self::assertTrue($statement->balanced);
        [$batch, $other] = iterator_to_array($statement->bookings, false);
        self::assertSame(['40.00', '2.50', null], array_map(static fn (Part $part): ?string => $part->amount ? $part->amount->text() : null, iterator_to_array($batch->parts(), false)));
        self::assertSame([3, 3, 'P', null], [count($batch->parts()), $batch->payments, $batch->kref, $batch->eref]);
        self::assertSame('A', iterator_to_array($batch->parts())[0]->eref);
        self::assertSame([], self::codes($statement->hints));
        [$wrong] = self::read(self::message(self::entry('<Amt Ccy="EUR">40</Amt></TxDtls><TxDtls><Amt Ccy="EUR">1</Amt>')));
        self::assertSame(['parts'], self::codes($wrong->hints));
        self::assertTrue($wrong->isGood());
    }

    /** @dataProvider proofs */
    public function testProof(string $text, bool $balanced, ?string $difference, array $told): void
    {
        [$statement] = self::read($text);
        self::assertSame($told, self::codes(array_merge($statement->faults, $statement->mended, $statement->hints)));
        self::assertSame([$balanced, $difference], [$statement->balanced, $statement->difference ? $statement->difference->text() : null]);
        self::assertSame($balanced || in_array('interim', $told, true), $statement->isGood());
    }

    public function proofs(): iterable
    {
        $good = self::entry();
        $reversal = self::entry('', '10', 'DBIT', '<RvslInd>true</RvslInd>');
        yield 'off' => [self::message($good, '142.51'), false, '0.01', []];
        yield 'a reversal has its own sign' => [self::message($good . $reversal, '132.50'), true, '0.00', []];
        yield 'a reversal has the other sign' => [self::message($good . $reversal, '152.50'), true, '0.00', ['reversals_turned']];
        yield 'pending' => [self::message($good . str_replace('BOOK', 'PDNG', $good)), true, '0.00', ['pending']];
        yield 'no status' => [self::message(str_replace('<Sts><Cd>BOOK</Cd></Sts>', '', $good)), true, '0.00', []];
        yield 'no balances' => [self::message($good, '', '', 'BkToCstmrDbtCdtNtfctn', 'Ntfctn'), false, null, ['interim']];
        yield 'no closing' => [str_replace('CLBD', 'XPCD', self::message($good)), false, null, ['no_closing']];
        yield 'empty' => [self::message('', '100'), true, '0.00', []];
        yield 'rounded' => [self::message(self::entry('', '00042.4950')), true, '0.00', ['rounded']];
        yield 'too many digits' => [self::message(self::entry('', str_repeat('9', 30))), false, '42.50', ['amount']];
        yield 'no sign' => [self::message(self::entry('', '42.50', 'X')), false, '42.50', ['amount']];
        yield 'currency' => [self::message($good . str_replace('EUR', 'CHF', $good)), false, '0.00', ['currency']];
        yield 'summary' => [self::message($good, '142.50', '<TxsSummry><TtlNtries><NbOfNtries>2</NbOfNtries></TtlNtries></TxsSummry>'), true, '0.00', ['summary']];
        yield 'copy' => [self::message($good, '142.50', '<CpyDplctInd>DUPL</CpyDplctInd>'), true, '0.00', ['copy']];
        yield 'midnight' => [str_replace('<Dt>2026-11-27</Dt></BookgDt>', '<DtTm>2026-11-27T24:00:00.000+02:00</DtTm></BookgDt>', self::message($good)), true, '0.00', []];
    }

    public function testPagesAreJoined(): void
    {
        $page = static fn (int $number, bool $last, string $text): string => str_replace('<Acct>', "<StmtPgntn><PgNb>$number</PgNb><LastPgInd>" . ($last ? 'true' : 'false') . '</LastPgInd></StmtPgntn><Acct>', $text);
        $first = $page(1, false, preg_replace('~<Bal><Tp><CdOrPrtry><Cd>CL.*</Bal>~', '', self::message(self::entry())));
        $second = $page(2, true, preg_replace('~<Bal><Tp><CdOrPrtry><Cd>PR.*?</Bal>~', '', self::message(self::entry(), '185')));
        $zip = self::zip(['1.xml' => $first, '2.xml' => $second]);
        [$joined] = self::read($zip, $reader);
        self::assertSame([true, 2, []], [$joined->balanced, count($joined->bookings), $reader->faults()]);
        [$alone] = self::read($second);
        self::assertSame([['pages'], [], false], [self::codes($alone->hints), $alone->faults, $alone->balanced]);
    }

    public function testMissingAndDoubleStatementsAreTold(): void
    {
        $day = static fn (string $text, int $day): string => str_replace(['2026-11-27', '>S1<', '>7<'], ["2026-11-$day", ">S$day<", ">$day<"], $text);
        $entry = str_replace('<BookgDt>', '<AcctSvcrRef>R1</AcctSvcrRef><BookgDt>', self::entry());
        $first = self::message($entry);
        $next = str_replace('>100.00<', '>142.50<', $day(self::message(self::entry(), '185'), 28));
        $later = str_replace('>100.00<', '>300.00<', $day(self::message(self::entry(), '342.50'), 30));
        $report = str_replace(['camt.053', 'Stmt', '>S1<'], ['camt.052', 'Rpt', '>R<'], str_replace('BkToCstmrStmt', 'BkToCstmrAcctRpt', $first));
        $codes = [];
        foreach (self::read(self::zip(['1.xml' => $first, '2.xml' => $next, '3.xml' => $later, '4.xml' => $first, '5.xml' => $report])) as $statement) {
            $codes[] = implode(' ', self::codes($statement->hints));
        }
        self::assertSame(['', '', 'gap', 'double_statement', 'double'], $codes);
    }

    /** @dataProvider hostile */
    public function testWhatIsHostileOrElseIsNamed(string $text, array $told, int $statements = 0): void
    {
        if (function_exists('memory_reset_peak_usage')) {
            memory_reset_peak_usage();
        }
        $before = memory_get_peak_usage();
        $read = self::read($text, $reader);
        $faults = array_merge($reader->faults(), ...array_column($read, 'faults'));
        self::assertSame($told, self::codes(array_merge($faults, $reader->hints(), ...array_column($read, 'hints'))));
        self::assertCount($statements, $read);
        self::assertLessThan(4000000 + strlen($text), memory_get_peak_usage() - $before);
        foreach ($faults as $fault) {
            self::assertNotSame($fault->code, $fault->text('de'));
        }
    }

    public function hostile(): iterable
    {
        $whole = self::message(self::entry());
        yield 'cut in an entry' => [substr($whole, 0, -150), ['malformed'], 1];
        yield 'cut after it' => [substr($whole, 0, -12), ['malformed'], 1];
        yield 'two documents' => [$whole . $whole, ['malformed'], 1];
        yield 'doctype' => [str_replace('<Document', '<!-- x --><!DOCTYPE Document [<!ENTITY a "aa"><!ENTITY b "&a;&a;">]><Document', $whole), ['doctype']];
        yield 'unknown entity' => [str_replace('GUTSCHRIFT', '&x;', $whole), ['malformed'], 1];
        yield 'nested' => [str_replace('<Acct>', str_repeat('<a>', 100000), $whole), ['malformed'], 1];
        yield 'a field without end' => [str_replace('GUTSCHRIFT', str_repeat('x', 2000000), $whole), ['too_long'], 1];
        yield 'many fields' => [str_replace('<AddtlNtryInf>', str_repeat('<Chrgs><Amt Ccy="EUR">1</Amt></Chrgs>', 50000) . '<AddtlNtryInf>', $whole), ['too_long'], 1];
        yield 'comments' => [str_replace('<Acct>', str_repeat('<!-- -->', 20000) . '<Acct>', $whole), ['malformed'], 1];
        yield 'payments' => ['<?xml version="1.0"?><Document><CstmrCdtTrfInitn/></Document>', ['other_kind']];
        yield 'version 01' => ['<Document xmlns="urn:iso:std:iso:20022:tech:xsd:camt.052.001.01"><BkToCstmrAcctRptV01/></Document>', ['old_form']];
        yield 'shell' => ['<Document xmlns="urn:iso:std:iso:20022:tech:xsd:camt.052.001.08"></Document>', ['empty_document']];
        yield 'html' => ['<!DOCTYPE html><html><body>Anmelden</body></html>', ['other_kind']];
        yield 'pdf' => ['%PDF-1.4', ['other_kind']];
        yield 'table' => ["Buchung;Betrag;Text;Konto\n1;2;3;4\n", ['other_kind']];
        yield 'zip' => [self::zip(['a/../../x.xml' => $whole, 'b.pdf' => '%PDF', 'c.zip' => self::zip(['x' => 'y']), 'd.txt' => 'Hallo', '__MACOSX/x.xml' => 'x']), ['nested', 'skipped', 'skipped'], 1];
        yield 'zip that is cut' => [substr(self::zip(['a.xml' => $whole]), 0, -30), ['damaged']];
        yield 'zip of another size' => [str_replace(pack('V', strlen($whole)), pack('V', 10), self::zip(['a.xml' => $whole])), ['damaged'], 1];
        yield 'workbook' => [self::zip(['[Content_Types].xml' => '<Types/>', 'xl/workbook.xml' => '<w/>']), ['other_kind']];
        yield 'gzip that is cut' => [substr(gzencode($whole), 0, -20), ['damaged', 'malformed'], 1];
    }

    /** @param array<string, string> $members */
    public static function zip(array $members): string
    {
        $path = tempnam(sys_get_temp_dir(), 'sepa-test');
        $zip = new \ZipArchive();
        $zip->open($path, \ZipArchive::CREATE | \ZipArchive::OVERWRITE);
        foreach ($members as $name => $text) {
            $zip->addFromString($name, $text);
        }
        $zip->close();
        $bytes = file_get_contents($path);
        unlink($path);

        return $bytes;
    }
}
