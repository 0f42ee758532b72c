<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use function Symfony\Component\String\u;

/** Replaces the characters of a text that the extension does not take. */
final class Transliterator
{
    /** What has a usual stand-in that transliteration does not know. */
    private const STAND_INS = [
        'Ä' => 'Ae', 'Ö' => 'Oe', 'Ü' => 'Ue', '&' => '+', '_' => '-', '@' => '(at)', '%' => 'v.H.', '€' => 'EUR',
        '§' => 'Par.', '°' => '.',
    ];

    private Extension $extension;

    public function __construct(Extension $extension)
    {
        $this->extension = $extension;
    }

    /** @param string $text UTF-8 */
    public function apply(string $key, string $text): string
    {
        // A letter and its accent as one character: NFC.
        $text = u($text)->normalize()->toString();
        $replaced = [];
        foreach ($this->extension->refusedCharacters($key, $text) as $character) {
            $ascii = self::STAND_INS[$character] ?? u($character)->ascii(['de-ASCII'])->toString();
            foreach ($this->extension->refusedCharacters($key, $ascii) as $still) {
                $ascii = str_replace($still, self::STAND_INS[$still] ?? '.', $ascii);
            }
            $replaced[$character] = preg_match('/^[\s\p{Z}\p{Cc}]$/u', $character) ? ' ' : $ascii;
        }

        return strtr($text, $replaced);
    }
}
