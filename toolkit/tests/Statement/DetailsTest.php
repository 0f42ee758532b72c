<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Statement;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Statement\Details;

final class DetailsTest extends TestCase
{
    /** @dataProvider keywords */
    public function testKeywordsComeToTheFrontOfASubfield(string $text, ?string $mended): void
    {
        self::assertSame($mended, Details::withKeywordsInFront($text));
    }

    public function keywords(): array
    {
        return [
            'there already' => ['166?20EREF+A?21SVWZ+B?32N', null],
            'two in one' => ['166?00T?20EREF+A SVWZ+B?32N', '166?00T?20EREF+A?21SVWZ+B?32N'],
            'behind free text' => ['166?20Miete?21Mai MREF+7', "166?20Miete\nMai?21MREF+7"],
            'no blank between' => ['166?20EREF+1234567SVWZ+AB', '166?20EREF+1234567?21SVWZ+AB'],
            'torn by a marker' => ['166?20EREF+12345678901234567 SV?21WZ+Rechnung', '166?20EREF+12345678901234567?21SVWZ+Rechnung'],
            'torn in free text' => ['166?20Miete SV?21WZ+B', '166?20Miete?21SVWZ+B'],
            'full lines go on' => [
                '166?20EREF+1 SVWZ+Rechnung 4711 v?21om 3. Mai und von?22gestern MREF+M',
                '166?20EREF+1?21SVWZ+Rechnung 4711 vom 3. Mai und von gestern?22MREF+M',
            ],
            'full in characters' => ['166?20KREF+1  SVWZ+ÄÖÜäöü 4711 vo?21m', '166?20KREF+1?21SVWZ+ÄÖÜäöü 4711 vom'],
            'quoted' => ['166?20EREF+A?21SVWZ+Retoure EREF+B', null],
            'quoted, and another' => ['166?20EREF+A?21SVWZ+Retoure EREF+B PURP+C', '166?20EREF+A?21SVWZ+Retoure EREF+B?22PURP+C'],
            'first of two' => ['166?20x EREF+A EREF+B', '166?20x?21EREF+A EREF+B'],
            'beyond 29' => [
                '166?20a EREF+b KREF+c MREF+d CRED+e DEBT+f PURP+g COAM+h OAMT+i SVWZ+j ABWA+k ABWE+l?32N?60m?99x',
                '166?20a?21EREF+b?22KREF+c?23MREF+d?24CRED+e?25DEBT+f?26PURP+g?27COAM+h?28OAMT+i?29SVWZ+j?32N?60ABWA+k?61ABWE+lm?99x',
            ],
            'an empty part' => ['166?20EREF+A?21?22SVWZ+B KREF+', '166?20EREF+A ?21SVWZ+B?22KREF+'],
            'a marker in the text' => ['166?20A?10B SVWZ+C', null],
            'not in the purpose' => ['166?20A?32EREF+ GMBH SVWZ+', null],
            'no subfields' => ['EREF+A SVWZ+B', null],
        ];
    }

    public function testOtherMarkersAreKnownByTheirPlace(): void
    {
        self::assertSame('166?00A?20B~C', Details::withMarker('166~00A~20B~C'));
        self::assertNull(Details::withMarker('166~00A?20B'));
        self::assertNull(Details::withMarker('166/20 Miete'));
        self::assertTrue(Details::hasSubfields('166?00A'));
        self::assertFalse(Details::hasSubfields('166 wer? ?20A'));
    }
}
