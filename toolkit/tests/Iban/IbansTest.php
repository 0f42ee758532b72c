<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Iban;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Iban\Ibans;

final class IbansTest extends TestCase
{
    /** @dataProvider typed */
    public function testWhatPeopleTypeIsUnderstood(string $typed): void
    {
        $check = Ibans::check($typed);
        self::assertSame(
            ['iban' => 'DE89370400440532013000', 'valid' => true, 'code' => null, 'reason' => null, 'bic' => 'COBADEFFXXX', 'bank' => 'COMMERZBANK AG'],
            $check->jsonSerialize()
        );
        self::assertSame('DE89 3704 0044 0532 0130 00', Ibans::grouped($typed));
    }

    public function typed(): array
    {
        return [
            ['DE89370400440532013000'],
            ["  de89 3704 0044 0532 0130 00\n"],
            ['IBAN: DE89 3704 0044 0532 0130 00'],
            ["Iban\u{A0}DE89\u{A0}3704\u{A0}0044\u{2013}0532.0130-00\u{FEFF}"],
        ];
    }

    /** @dataProvider refused */
    public function testARefusalIsExplained(string $typed, string $code, string $reason): void
    {
        $check = Ibans::check($typed);
        self::assertFalse($check->valid);
        self::assertSame([$code, $reason, null, null], [$check->code, $check->reason, $check->bic, $check->bank]);
        self::assertNotSame('', (string) $check->hint);
    }

    public function refused(): array
    {
        return [
            ['', 'empty', 'IBAN missing'],
            ['ZZ12345', 'iban_country', 'No country has these letters'],
            ["\xFF\xFE", 'iban_country', 'No country has these letters'],
            ['AL35202111090000000001234567', 'iban_country_unsupported', 'Country of SEPA that is not known here'],
            ['BR15 0000 0000 0000 1093 2840 814P 2', 'iban_country_outside', 'Country outside of SEPA, or without IBANs'],
            ['BR16 0000 0000 0000 1093 2840 814P 2', 'iban_country_outside_checksum', 'Country outside of SEPA, or without IBANs'],
            ['US12345', 'iban_country_outside_checksum', 'Country outside of SEPA, or without IBANs'],
            ['DE8937040044053201300', 'iban_length', 'Wrong IBAN length'],
            ['DE8937040044053201300O', 'iban_format', 'Invalid IBAN format'],
            ['DE98370400440532013000', 'iban_checksum', 'Invalid IBAN checksum'],
            ['DE65123456780532013000', 'iban_bank', 'Invalid bank ID (BLZ) in IBAN'],
            ['DE33370400440001234567', 'iban_account', 'Invalid account number in IBAN'],
            ["DE89370400440532013000\0", 'control_characters', 'Control character in IBAN'],
        ];
    }

    /** @dataProvider banks */
    public function testBanksAreFoundByBicIbanAndBankCode(string $query, ?string $bic, ?string $name, ?string $reason): void
    {
        $bank = Ibans::bank($query);
        self::assertSame([$bic, $name, $reason], [$bank->bic, $bank->name, $bank->reason]);
        self::assertSame($bic === null, $bank->schemes === null);
    }

    public function banks(): array
    {
        return [
            ['cobadeff', 'COBADEFF', 'COMMERZBANK AG', null],
            ['37040044', 'COBADEFFXXX', 'COMMERZBANK AG', null],
            ['DE89 3704 0044 0532 0130 00', 'COBADEFFXXX', 'COMMERZBANK AG', null],
            'a branch without an entry has the name of its head office' => ['COBADEFF999', 'COBADEFF999', 'COMMERZBANK AG', null],
            ['NOTABANKXXX', null, null, 'unknown bank'],
            ['00000000', null, null, 'unknown bank'],
            ['NL91ABNA0417164300', null, null, 'the directory finds banks by IBANs of DE, AT, CH and LI only'],
            ['Volksbank?', null, null, 'neither a BIC nor an IBAN nor a bank code'],
        ];
    }

    /** @dataProvider conversions */
    public function testConversionsTellWhatHappened(string $account, string $bankCode, ?string $iban, int $status, ?string $reason): void
    {
        $conversion = Ibans::convert($account, $bankCode);
        self::assertSame([$iban, $status, $reason], [$conversion->iban, $conversion->status, $conversion->reason]);
    }

    public function conversions(): array
    {
        return [
            ['532 013 000', '370 400 44', 'DE89370400440532013000', 0, null],
            ['135', '10050000', 'DE86100500000990021440', 1, "the bank's rule changed the account number"],
            ['123', '50810900', 'DE52660102000000000123', 13, 'the bank code was replaced by its successor'],
            ['1', '99999999', null, 10, 'the bank code is unknown'],
            ['1234567', '37040044', null, 11, 'the account number fails its check'],
            ['1234567', '10000000', null, 0, 'the account is refused'],
            ["1\0", '37040044', null, 0, 'an account number has 1 to 10 digits'],
            ['1', 'COBADEFF', null, 0, 'a bank code has 8 digits'],
        ];
    }
}
