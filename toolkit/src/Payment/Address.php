<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Addresses as the banks' schemas have them. */
final class Address
{
    /** Elements by key, in the order of the schemas. */
    public const ELEMENTS = [
        'addrDept' => 'Dept', 'addrSubDept' => 'SubDept', 'addrStreet' => 'StrtNm', 'addrNum' => 'BldgNb',
        'addrBldg' => 'BldgNm', 'addrFloor' => 'Flr', 'addrPoBox' => 'PstBx', 'addrRoom' => 'Room',
        'addrCode' => 'PstCd', 'addrTown' => 'TwnNm', 'addrLoc' => 'TwnLctnNm', 'addrDstrct' => 'DstrctNm',
        'addrCtrySub' => 'CtrySubDvsn', 'addrCC' => 'Ctry', 'addrLine1' => 'AdrLine', 'addrLine2' => 'AdrLine',
    ];

    /** What an address by fields cannot do without. */
    private const NEEDED = ['addrTown', 'addrCC'];

    /** What may stand beside lines. */
    private const BESIDE_LINES = ['addrTown' => 0, 'addrCC' => 0, 'addrCode' => 0, 'addrLine1' => 0, 'addrLine2' => 0];

    private const LINES = ['addrLine1' => 0, 'addrLine2' => 0];

    /**
     * What is wrong between the parts of an address.
     *
     * @param array<string, mixed> $given something by keys of an address, none of which its rulebook refuses
     * @return array<string, array{string, array<string, string>}> code and values of faults by key
     */
    public static function faults(array $given, Rulebook $rulebook): array
    {
        $faults = [];
        $lines = array_intersect_key($given, self::LINES);
        foreach ($rulebook->structured && $given ? array_diff(self::NEEDED, array_keys($given)) : [] as $key) {
            $faults[$key] = ['address', []];
        }
        foreach ($rulebook->structured && $lines ? array_diff_key($given, self::BESIDE_LINES) : [] as $key => $part) {
            $faults[$key] = ['address_hybrid', []];
        }
        if ($rulebook->country === 'AT' && array_keys($given) === ['addrCC']) {
            $faults['addrCC'] = ['address_country_alone', []];
        }

        return $faults;
    }

    /**
     * The element of the submitting party.
     *
     * @param array<string, string> $values
     */
    public static function element(array $values, int $tabs): string
    {
        $indent = str_repeat("\t", $tabs);
        $parts = '';
        foreach (array_intersect_key(self::ELEMENTS, $values) as $key => $element) {
            $text = htmlspecialchars($values[$key], ENT_NOQUOTES);
            $parts .= "$indent\t<$element>$text</$element>\n";
        }

        return "$indent<PstlAdr>\n$parts$indent</PstlAdr>\n";
    }
}
