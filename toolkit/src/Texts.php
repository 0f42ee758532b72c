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
     * @param array<string, mixed> $values parameters; whole numbers stand without thousands marks, lists with blanks
     */
    public static function of(string $domain, string $id, array $values = [], string $locale = 'en'): string
    {
        return self::translator()->trans($id, array_map([self::class, 'plain'], $values), $domain, $locale);
    }

    /** @param mixed $value */
    private static function plain($value): string
    {
        return mb_scrub(is_array($value) ? implode(' ', $value) : (string) $value, 'UTF-8');
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
