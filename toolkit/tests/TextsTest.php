<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Tests;

use PHPUnit\Framework\TestCase;
use Sepa\Toolkit\Language;
use Sepa\Toolkit\Texts;

final class TextsTest extends TestCase
{
    /** What one language says with which values, the other says with the same. */
    public function testLanguagesHaveTheSameTexts(): void
    {
        $files = glob(__DIR__ . '/../translations/*.en.php');
        self::assertNotEmpty($files);
        foreach ($files as $file) {
            $english = self::leaves(require $file);
            $german = self::leaves(require str_replace('.en.', '.de.', $file));
            self::assertSame(array_keys($english), array_keys($german), basename($file));
            foreach ([['en', $english], ['de', $german]] as [$locale, $texts]) {
                foreach ($texts as $id => $text) {
                    self::assertInstanceOf(\MessageFormatter::class, $text === '' ? new \MessageFormatter('en', 'x') : \MessageFormatter::create($locale, $text), "$locale $id");
                }
            }
        }
    }

    /** @dataProvider environments */
    public function testTheLanguageOfACommand(string $expected, ?string $told, array $environment): void
    {
        self::assertSame($expected, Language::ofCommand($told, $environment));
    }

    public function environments(): array
    {
        return [
            ['en', null, []],
            ['de', null, ['LANG' => 'de_AT.UTF-8']],
            ['en', null, ['LC_ALL' => 'C', 'LANG' => 'de_DE']],
            ['de', null, ['LC_ALL' => '', 'LC_MESSAGES' => 'de@euro', 'LANG' => 'en_US']],
            ['en', null, ['LANG' => 'dede', 'LC_CTYPE' => 'de_DE']],
            ['de', 'DE', ['LC_ALL' => 'C']],
        ];
    }

    public function testDaysAndAmountsStandInTheWayOfTheLanguage(): void
    {
        self::assertSame('Der 31.12.2026 ist vergangen', Texts::of('faults', 'date_past.reason', ['date' => '2026-12-31'], 'de'));
        self::assertSame('Der Betrag liegt über 999.999.999,99', Texts::of('faults', 'amount_limit.reason', ['limit' => '999999999.99'], 'de'));
        self::assertSame('2026-12-31 is in the past', Texts::of('faults', 'date_past.reason', ['date' => '2026-12-31']));
    }

    /** @return array<string, string> by their ids in order */
    private static function leaves(array $texts, string $prefix = ''): array
    {
        $leaves = [];
        foreach ($texts as $id => $text) {
            $leaves += is_array($text) ? self::leaves($text, "$prefix$id.") : ["$prefix$id" => $text];
        }
        ksort($leaves);

        return $leaves;
    }
}
