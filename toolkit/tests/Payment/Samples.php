<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Payment;

use Sepa\Toolkit\Payment\Collections;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Transfers;

/** Good payments to begin with. */
final class Samples
{
    public const TODAY = '2026-11-23';

    public const PARTY = [
        'name' => 'Zimmerei Sander GmbH',
        'iban' => 'DE89370400440532013000',
        'bic' => 'COBADEFFXXX',
        'creditorId' => 'DE98ZZZ09999999999',
        'type' => 'CORE',
        'date' => '2026-12-01',
        'messageId' => null,
        'batchBooking' => true,
        'transliterate' => false,
        'shortens' => false,
    ];

    public const TRANSFER = [
        'name' => 'Stadtwerke GmbH', 'iban' => 'DE62701500000020228888', 'bic' => 'SSKMDEMMXXX', 'amount' => '842.17', 'ref' => 'Vertrag 77301-4',
    ];

    public const COLLECTION = self::TRANSFER + ['seq' => 'RCUR', 'mref' => 'M-2019-0044', 'mdate' => '2019-03-11'];

    private const IBANS = [
        'DE12500105170648489890' => 'INGDDEFF', 'DE86100500000990021440' => 'BELADEBEXXX', 'DE57300600100002310113' => 'GENODEDD',
        'AT483200000012345864' => 'RLNWATWW', 'NL91ABNA0417164300' => 'ABNANL2A', 'FR1420041010050500013M02606' => 'PSSTFRPPPAR',
        'CH9300762011623852957' => 'KBAGCH22',
    ];

    private const LETTERS = "ABCXYZabcxyz0123456789'()+,-./:?";

    /** @param array<string, mixed> $party values that differ from PARTY */
    public static function transfers(string $rulebook, array $party = []): Transfers
    {
        $p = $party + self::PARTY;

        return new Transfers(Party::payer($p['name'], $p['iban'], $p['bic']), self::options($rulebook, $p));
    }

    /** @param array<string, mixed> $party values that differ from PARTY */
    public static function collections(string $rulebook, array $party = []): Collections
    {
        $p = $party + self::PARTY;
        $creditor = Party::creditor($p['name'], $p['iban'], $p['bic'], $p['creditorId']);

        return new Collections($creditor, self::options($rulebook, $p)->ofType($p['type']));
    }

    /** @param array<string, mixed> $p */
    private static function options(string $rulebook, array $p): Options
    {
        return Options::under($rulebook)->on($p['date'])->withMessageId($p['messageId'])
            ->bookedSingly(!$p['batchBooking'])->transliterating($p['transliterate'])->shortening($p['shortens'])->asOf(self::TODAY);
    }

    /**
     * A random good payment, most keys of which come and go.
     *
     * @return array<string, string|int>
     */
    public static function random(Payments $payments): array
    {
        $rulebook = $payments->rulebook();
        $isDebit = $payments instanceof Collections;
        $iban = array_rand(self::IBANS);
        $all = ['name' => self::text($rulebook, 70), 'iban' => $iban, 'amount' => self::amount()];
        $some = [
            'bic' => self::IBANS[$iban],
            'ref' => self::text($rulebook, 140),
            'date' => sprintf('20%02d-%02d-%02d', mt_rand(26, 27), mt_rand(1, 12), mt_rand(1, 28)),
            'id' => self::id(' '),
        ];
        if ($isDebit) {
            $all += ['seq' => ['FRST', 'rcur', 'OOFF', 'FNAL'][mt_rand(0, 3)], 'mdate' => '2020-02-29'];
            $all += ['mref' => self::id(strncmp($rulebook, 'DE-3.', 5) === 0 ? ' ' : '')];
            $some += ['old_mref' => self::id(''), 'old_iban' => 'DE12500105170648489890', 'smnda' => '1'];
        } else {
            $some += ['purp' => 'SALA'];
        }
        foreach ($some as $key => $value) {
            if (mt_rand(0, 1) || ($key === 'bic' && $rulebook === 'DE-2.6')) {
                $all[$key] = $value;
            }
        }
        if (mt_rand(0, 1) || substr($iban, 0, 2) === 'CH') {
            $all += self::address($rulebook);
        }

        return $all;
    }

    /** @return array<string, string> */
    private static function address(string $rulebook): array
    {
        if ($rulebook !== 'DE-3.7') {
            return ['addrCC' => 'CH', 'addrLine1' => self::text($rulebook, 70)] + (mt_rand(0, 1) ? ['addrLine2' => self::text($rulebook, 70)] : []);
        }
        $fields = ['addrStreet' => self::text($rulebook, 70), 'addrNum' => '16 a', 'addrCode' => '5001', 'addrFloor' => '3', 'addrPoBox' => '7', 'addrLoc' => 'Altstadt'];

        return ['addrCC' => 'CH', 'addrTown' => self::text($rulebook, 35)] + array_slice($fields, mt_rand(0, 6));
    }

    private static function amount(): string
    {
        return [(string) mt_rand(1, 999), sprintf('%d.%02d', mt_rand(0, 99999), mt_rand(1, 99)), '0.01', '999999999.99', '7.5'][mt_rand(0, 4)];
    }

    private static function id(string $more): string
    {
        $inner = self::of(str_split(str_replace('/', '', self::LETTERS) . $more), mt_rand(0, 33));

        return 'a' . $inner . (mt_rand(0, 1) ? '' : 'Z');
    }

    /** Up to so many bytes, with all characters that the rulebook has. */
    private static function text(string $rulebook, int $bytes): string
    {
        $characters = array_merge(str_split(self::LETTERS), [' '], $rulebook === 'DE-2.6' ? [] : preg_split('//u', '$%&*ÄÖÜäöüß', -1, PREG_SPLIT_NO_EMPTY));
        if ($rulebook === 'AT-6') {
            $characters = array_merge($characters, preg_split('//u', '!"#;<=>@[]^_{|}~€', -1, PREG_SPLIT_NO_EMPTY));
        }

        return 'x' . mb_strcut(self::of($characters, mt_rand(1, 140)), 0, $bytes - 1, 'UTF-8');
    }

    /** @param list<string> $characters */
    private static function of(array $characters, int $length): string
    {
        $text = '';
        for ($i = 0; $i < $length; ++$i) {
            $text .= $characters[mt_rand(0, count($characters) - 1)];
        }

        return $text;
    }
}
