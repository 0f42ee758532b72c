<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

/**
 * The text of a ":86:" field whose parts stand after tags between slashes, as banks of
 * the Netherlands and others write it: "/EREF/1//IBAN/NL…/BIC/…/NAME/…/REMI/…/".
 *
 * @internal
 */
final class Tagged
{
    private const TAG = '~/(EREF|IREF|KREF|PREF|MARF|CSID|TRTP|TRCD|IBAN|BIC|NAME|REMI|CNTP|ORDP'
        . '|BENM|PURP|RTRN|ULTD|ULTB|ULTC|ADDR|ISDT|SVCL|OCMT|CHGS|EXCH)/~';

    private const MEMBERS = [
        'EREF' => 'eref', 'KREF' => 'kref', 'PREF' => 'kref', 'MARF' => 'mref', 'CSID' => 'cred', 'TRTP' => 'txtext',
        'PURP' => 'purp',
        'IBAN' => 'account', 'BIC' => 'bank', 'NAME' => 'name', 'ORDP' => 'name', 'BENM' => 'name', 'REMI' => 'svwz',
        'RTRN' => 'reason',
        'ULTD' => 'abwa', 'ULTC' => 'abwe', 'ULTB' => 'abwe',
    ];

    /** Where a party is told in one tag: its parts in order. */
    private const PARTY = ['account', 'bank', 'name'];

    /** @return array<string, string> by the members of a booking; empty if the text is none such */
    public static function read(string $text): array
    {
        $pieces = preg_split(self::TAG, str_replace("\n", '', $text), -1, PREG_SPLIT_DELIM_CAPTURE);
        $values = [];
        for ($i = 1; count($pieces) > 3 && isset($pieces[$i]); $i += 2) {
            $value = trim($pieces[$i + 1], '/ ');
            if ($pieces[$i] === 'CNTP') {
                $values += array_filter(
                    array_combine(self::PARTY, array_slice(array_pad(explode('/', $pieces[$i + 1]), 3, ''), 0, 3)),
                    'strlen'
                );
            } elseif ($value !== '' && isset(self::MEMBERS[$pieces[$i]])) {
                $values += [self::MEMBERS[$pieces[$i]] => self::value($pieces[$i], $value)];
            }
        }

        return $values;
    }

    private static function value(string $tag, string $value): string
    {
        // What kind of text it is stands before it.
        return $tag === 'REMI' ? (string) preg_replace('~^(?:USTD|STRD)/+(?:CUR/)?~', '', $value) : $value;
    }
}
