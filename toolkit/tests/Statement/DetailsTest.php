<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests\Statement;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Statement\Mt940\Details;

final class DetailsTest extends TestCase
{
    /** @dataProvider keywords */
    public function testKeywordsAreFoundWhereverTheyStand(bool $isInside, string $text, array $expected): void
    {
        $values = array_filter(Details::read($text), static fn ($value): bool => $value !== null && $value !== '');
        self::assertEquals($expected + ['gvc' => 166], $values);
        self::assertSame($isInside, Details::hasKeywordInside($text));
    }

    public function keywords(): array
    {
        return [
            'at the front' => [false, '166?20EREF+A?21SVWZ+B?32N', ['eref' => 'A', 'svwz' => 'B', 'name' => 'N']],
            'two in one' => [true, '166?00T?20EREF+A SVWZ+B', ['txtext' => 'T', 'eref' => 'A', 'svwz' => 'B']],
            'behind free text' => [true, '166?20Miete?21Mai MREF+7', ['purpose' => "Miete\nMai", 'mref' => '7']],
            'no blank between' => [true, '166?20EREF+1234567SVWZ+AB', ['eref' => '1234567', 'svwz' => 'AB']],
            'torn by a marker' => [true, '166?20EREF+12345678901234567 SV?21WZ+Rechnung', ['eref' => '12345678901234567', 'svwz' => 'Rechnung']],
            'full lines go on' => [true, '166?20EREF+1 SVWZ+Rechnung 4711 v?21om 3. Mai und von?22gestern MREF+M', ['eref' => '1', 'svwz' => 'Rechnung 4711 vom 3. Mai und von gestern', 'mref' => 'M']],
            'full in characters' => [true, '166?20KREF+1  SVWZ+ÄÖÜäöü 4711 vo?21m', ['kref' => '1', 'svwz' => 'ÄÖÜäöü 4711 vom']],
            'quoted' => [false, '166?20EREF+A?21SVWZ+Retoure EREF+B', ['eref' => 'A', 'svwz' => 'Retoure EREF+B']],
            'quoted, and another' => [true, '166?20EREF+A?21SVWZ+Retoure EREF+B PURP+C', ['eref' => 'A', 'svwz' => 'Retoure EREF+B', 'purp' => 'C']],
            'beyond 29' => [true, '166?29a EREF+b?32N?60m', ['purpose' => 'a', 'eref' => 'b m', 'name' => 'N']],
            'not in the purpose' => [false, '166?20A?32EREF+ GMBH SVWZ+', ['purpose' => 'A', 'name' => 'EREF+ GMBH SVWZ+']],
            'a question' => [false, '166?20wer?45 Euro??21wo?', ['purpose' => "wer?45 Euro?\nwo?"]],
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
