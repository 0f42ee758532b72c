<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

/**
 * References and accounts that some banks write into the remittance text, as in MT940,
 * in place of the elements for them: "EREF: 4711 MREF: M1 CRED: DE98… Rechnung".
 *
 * @internal
 */
final class Labels
{
    private const MEMBERS = [
        'EREF' => 'eref', 'KREF' => 'kref', 'MREF' => 'mref', 'CRED' => 'cred', 'IBAN' => 'account', 'BIC' => 'bank',
        'Kundenreferenz' => 'eref', 'Mandat' => 'mref', 'Gläubiger-ID' => 'cred',
    ];

    private const LABEL = '/(?:^|\s)(EREF|KREF|MREF|CRED|IBAN|BIC|Kundenreferenz|Mandat|Gläubiger-ID)\s?[:+]\s*/u';

    /** @return array<string, string> by the members of a booking: the first word after each label */
    public static function read(string $text): array
    {
        if (strpos($text, ':') === false && strpos($text, '+') === false) {
            return [];
        }
        $pieces = preg_split(self::LABEL, $text, -1, PREG_SPLIT_DELIM_CAPTURE) ?: [];
        $values = [];
        for ($i = 1; isset($pieces[$i]); $i += 2) {
            $value = (string) strtok($pieces[$i + 1], " \n");
            if ($value !== '' && $value !== 'NOTPROVIDED') {
                $values += [self::MEMBERS[$pieces[$i]] => $value];
            }
        }

        return $values;
    }
}
