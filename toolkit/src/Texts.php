<?php

declare(strict_types=1);

namespace Sepa\Toolkit;

use Symfony\Component\Translation\Loader\PhpFileLoader;
use Symfony\Component\Translation\Translator;

/**
 * What is said to people: ICU messages in translations/, a file for a domain
 * and a language. What a language lacks is said in English.
 */
final class Texts
{
    public const LOCALES = ['en', 'de'];

    private const FOLDER = __DIR__ . '/../translations';

    private static ?Translator $translator = null;

    /**
     * @param string $id in the domain's file, levels divided by dots
     * @param array<string, mixed> $values parameters; whole numbers stand without
     *     thousands marks, lists with blanks, days (2026-12-31) and amounts (1190.00) as the language has them
     */
    public static function of(string $domain, string $id, array $values = [], string $locale = 'en'): string
    {
        return self::translator()->trans($id, array_map(static fn ($value): string => self::plain($value, $locale), $values), $domain, $locale);
    }

    /** A day (2026-12-31) or an amount (1190.00) as the language has it; all else as it is. */
    public static function shown(string $text, string $locale): string
    {
        if (strncmp($locale, 'de', 2) !== 0) {
            return $text;
        }
        $text = (string) preg_replace('/^(\d{4})-(\d\d)-(\d\d)$/D', '$3.$2.$1', $text);
        if (!preg_match('/^(\d{1,15})(\.\d\d)$/D', $text, $part)) {
            return $text;
        }

        return number_format((float) $part[1], 0, ',', '.') . strtr($part[2], '.', ',');
    }

    /** @param mixed $value */
    private static function plain($value, string $locale): string
    {
        return self::shown(mb_scrub(is_array($value) ? implode(' ', $value) : (string) $value, 'UTF-8'), $locale);
    }

    private static function translator(): Translator
    {
        if (self::$translator === null) {
            self::$translator = new Translator('en');
            self::$translator->setFallbackLocales(['en']);
            self::$translator->addLoader('php', new PhpFileLoader());
            foreach (glob(self::FOLDER . '/*+intl-icu.*.php') ?: [] as $file) {
                [$domain, $locale] = explode('.', basename($file));
                self::$translator->addResource('php', $file, $locale, $domain);
            }
        }

        return self::$translator;
    }
}
