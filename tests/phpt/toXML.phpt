--TEST--
Documents of both kinds under every rulebook, from the setters to the last tag
--FILE--
<?php
require __DIR__ . '/support.inc';

$rulebooks = ['DE-2.6', 'DE-2.7', 'AT-6', 'NL-6', 'DE-2.8', 'DE-2.9', 'DE-3.0', 'DE-3.1', 'DE-3.5', 'DE-3.7'];

foreach ($rulebooks as $rulebook) {
    $transfer = credit_transfer($rulebook);
    $transfer->add(payment(['name' => 'Test']));
    $debit = direct_debit($rulebook);
    $debit->add(collection(['smnda' => 1]));
    foreach ([$transfer, $debit] as $message) {
        $document = without_time($message->toXML());
        preg_match('~<Document.*?>~', $document, $head);
        preg_match_all('~<(BIC|BICFI|OrgnlDbtrAcct|OrgnlDbtrAgt)>~', $document, $elements);
        echo $rulebook, ' ', $head[0], ' ', implode(' ', array_unique($elements[1])), "\n";
    }
}

$message = credit_transfer();
$message->setName('Müller & Söhne');
$message->setBatchBooking(false);
$message->add(payment(['name' => 'Jörg & Änne', 'amount' => 12.345, 'id' => 'A-1', 'purp' => 'SALA', 'ref' => 'Lohn']));
echo without_time($message->toXML());
$again = without_time($message->toXML());
var_dump($again === without_time($message->toXML('surplus', 'arguments')));

echo "-- failures\n";
show(function () { return direct_debit()->toXML(); });
$debit = direct_debit();
$debit->add(collection(['mref' => 'M-1']));
SEPA::init(SEPA_INIT_RULEBOOK, 'DE-2.9');
$debit->setDDType(SEPA_DDTYPE_COR1);
SEPA::init(SEPA_INIT_RULEBOOK, 'DE-3.0');
show(function () use ($debit) { return $debit->toXML(); });
$debit = direct_debit();
$debit->add(payment(['seq' => 'FRST', 'mref' => 'M-1']));
show(function () use ($debit) { return $debit->toXML(); });

echo "-- generated values\n";
$message = new SEPA(SEPA_MSGTYPE_CTI);
$message->add(payment());
preg_match('~<MsgId>(.*)</MsgId>~', $message->toXML(), $first);
preg_match('~<MsgId>(.*)</MsgId>~', $message->toXML(), $second);
preg_match('~<ReqdExctnDt>(.*)</ReqdExctnDt>~', $message->toXML(), $date);
preg_match('~<CreDtTm>(.*)</CreDtTm>~', $message->toXML(), $created);
var_dump(preg_match('~^SEPA-\d{14}-\d{7}$~', $first[1]), $first === $second,
    abs(strtotime($date[1]) - time()) < 2 * 86400, abs(strtotime($created[1]) - time()) < 5);
--EXPECT--
DE-2.6 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.002.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.002.03 pain.001.002.03.xsd"> BIC
DE-2.6 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.002.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.002.02 pain.008.002.02.xsd"> BIC OrgnlDbtrAgt
DE-2.7 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.003.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.003.03 pain.001.003.03.xsd"> BIC
DE-2.7 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.003.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.003.02 pain.008.003.02.xsd"> BIC OrgnlDbtrAgt
AT-6 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"> BIC
AT-6 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"> BIC OrgnlDbtrAgt
NL-6 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"> BIC
NL-6 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"> BIC OrgnlDbtrAgt
DE-2.8 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.003.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.003.03 pain.001.003.03.xsd"> BIC
DE-2.8 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.003.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.003.02 pain.008.003.02.xsd"> BIC OrgnlDbtrAgt
DE-2.9 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.003.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.003.03 pain.001.003.03.xsd"> BIC
DE-2.9 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.003.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.003.02 pain.008.003.02.xsd"> BIC OrgnlDbtrAgt
DE-3.0 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03 pain.001.001.03.xsd"> BIC
DE-3.0 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02 pain.008.001.02.xsd"> BIC OrgnlDbtrAcct
DE-3.1 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03 pain.001.001.03.xsd"> BIC
DE-3.1 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02 pain.008.001.02.xsd"> BIC OrgnlDbtrAcct
DE-3.5 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03 pain.001.001.03.xsd"> BIC
DE-3.5 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.001.02 pain.008.001.02.xsd"> BIC OrgnlDbtrAcct
DE-3.7 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.09" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.001.09 pain.001.001.09.xsd"> BICFI
DE-3.7 <Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.08" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.008.001.08 pain.008.001.08.xsd"> BICFI OrgnlDbtrAcct
<?xml version="1.0" encoding="UTF-8"?>
<Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.09" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="urn:iso:std:iso:20022:tech:xsd:pain.001.001.09 pain.001.001.09.xsd">
	<CstmrCdtTrfInitn>
		<GrpHdr>
			<MsgId>TEST-1</MsgId>
			<CreDtTm>TIME</CreDtTm>
			<NbOfTxs>1</NbOfTxs>
			<CtrlSum>12.35</CtrlSum>
			<InitgPty>
				<Nm>Müller &amp; Söhne</Nm>
			</InitgPty>
		</GrpHdr>
		<PmtInf>
			<PmtInfId>TEST-1-P1</PmtInfId>
			<PmtMtd>TRF</PmtMtd>
			<BtchBookg>false</BtchBookg>
			<NbOfTxs>1</NbOfTxs>
			<CtrlSum>12.35</CtrlSum>
			<PmtTpInf>
				<SvcLvl>
					<Cd>SEPA</Cd>
				</SvcLvl>
			</PmtTpInf>
			<ReqdExctnDt>2026-12-01</ReqdExctnDt>
			<Dbtr>
				<Nm>Müller &amp; Söhne</Nm>
			</Dbtr>
			<DbtrAcct>
				<Id>
					<IBAN>DE89370400440532013000</IBAN>
				</Id>
			</DbtrAcct>
			<DbtrAgt>
				<FinInstnId>
					<BICFI>COBADEFFXXX</BICFI>
				</FinInstnId>
			</DbtrAgt>
			<ChrgBr>SLEV</ChrgBr>
			<CdtTrfTxInf>
				<PmtId>
					<EndToEndId>A-1</EndToEndId>
				</PmtId>
				<Amt>
					<InstdAmt Ccy="EUR">12.35</InstdAmt>
				</Amt>
				<CdtrAgt>
				<FinInstnId>
					<BICFI>COBADEFF</BICFI>
				</FinInstnId>
				</CdtrAgt>
				<Cdtr>
					<Nm>Jörg &amp; Änne</Nm>
				</Cdtr>
				<CdtrAcct>
				<Id>
					<IBAN>DE89370400440532013000</IBAN>
				</Id>
				</CdtrAcct>
				<Purp>
					<Cd>SALA</Cd>
				</Purp>
				<RmtInf>
					<Ustrd>Lohn</Ustrd>
				</RmtInf>
			</CdtTrfTxInf>
		</PmtInf>
	</CstmrCdtTrfInitn>
</Document>
bool(true)
-- failures
SEPAException 0: No transactions available
SEPAException 0: Unknown/unsupported LocalInstrumentCode (setDDType)
SEPAException 0: Mandate signature date missing
-- generated values
int(1)
bool(true)
bool(true)
bool(true)
