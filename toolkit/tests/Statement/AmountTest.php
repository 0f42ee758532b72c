<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Statement;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Statement\Amount;

final class AmountTest extends TestCase
{
    /** @dataProvider amounts */
    public function testAmountsAreWholeNumbersOfTheSmallestUnit(string $text, string $currency, ?int $units, ?string $shown = null, ?string $json = null): void
    {
        $amount = Amount::read($text, $currency);
        self::assertSame($units, $amount ? $amount->units : null);
        if ($amount) {
            self::assertSame($shown, $amount->text());
            self::assertSame($json ?? $shown, json_encode($amount));
        }
    }

    public function amounts(): array
    {
        return [
            ['1234,56', 'EUR', 123456, '1234.56'],
            ['5,', 'EUR', 500, '5.00', '5'],
            ['0,1', 'EUR', 10, '0.10', '0.1'],
            [',07', 'EUR', 7, '0.07'],
            ['0,070', 'EUR', 7, '0.07'],
            ['0,071', 'EUR', null],
            ['1000', 'JPY', 1000, '1000'],
            ['1000,00', 'JPY', 1000, '1000'],
            ['1000,5', 'JPY', null],
            ['0,125', 'KWD', 125, '0.125'],
            ['1.234', 'KWD', null],
            ['1.234,5', 'KWD', 1234500, '1234.500', '1234.5'],
            ['9007199254740,99', 'EUR', 900719925474099, '9007199254740.99'],
            ['90071992547409,93', 'EUR', 9007199254740993, '90071992547409.93', '"90071992547409.93"'],
            ['9999999999999999,99', 'EUR', 999999999999999999, '9999999999999999.99', '"9999999999999999.99"'],
            ['10000000000000000,00', 'EUR', null],
            ['000000000000000000001,00', 'EUR', 100, '1.00', '1'],
            ['1,2,3', 'EUR', null],
            ['1.23.4', 'EUR', null],
            [',', 'EUR', null],
            ['', 'EUR', null],
        ];
    }

    public function testAmountsOfXmlAreRoundedToTheCurrency(): void
    {
        foreach (
            [
            ['100.0000000000005', 'EUR', '100.00', true], ['1.005', 'EUR', '1.01', true], [' 000149.87 ', 'EUR', '149.87', false], ['1000.5', 'JPY', '1001', true],
            ['1.2345', 'BHD', '1.235', true], ['12.34', 'BHD', '12.340', false], ['.5', 'EUR', '0.50', false], ['7.', 'EUR', '7.00', false],
            ['-1', 'EUR', null, false], ['1,00', 'EUR', null, false], ['.', 'EUR', null, false], [str_repeat('9', 30), 'EUR', null, false],
            ] as [$text, $currency, $expected, $isRounded]
        ) {
            $rounded = false;
            $amount = Amount::decimal($text, $currency, $rounded);
            self::assertSame([$expected, $isRounded], [$amount ? $amount->text() : null, $rounded], $text);
        }
    }

    public function testSumsAreExactOrNone(): void
    {
        $largest = new Amount(PHP_INT_MAX, 'EUR');
        $smallest = new Amount(PHP_INT_MIN, 'EUR');
        $cent = new Amount(1, 'EUR');
        self::assertNull($largest->plus($cent));
        self::assertNull($smallest->minus($cent));
        self::assertSame(-1, $largest->plus($smallest)->units);
        self::assertSame('-92.233.720.368.547.758,08', $smallest->text(',', '.'));
        self::assertSame('-0,01', $cent->negative()->text(',', '.'));
    }
}
