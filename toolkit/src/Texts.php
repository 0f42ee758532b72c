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

    /** Texts that are kept. */
    private const MADE = 1000;

    private static ?Translator $translator = null;

    /** @var array<string, list<string>> by domain, language and id */
    private static array $parameters = [];

    /** @var array<string, string> by domain, language, id and parameters */
    private static array $made = [];

    /**
     * @param string $id in the domain's file, levels divided by dots
     * @param array<string, mixed> $values parameters; whole numbers stand without
     *     thousands marks, lists with blanks, days (2026-12-31) and amounts (1190.00) as the language has them
     */
    public static function of(string $domain, string $id, array $values = [], string $locale = 'en'): string
    {
        $place = "$domain.$locale.$id";
        $parameters = self::$parameters[$place]
            ?? self::$parameters[$place] = self::parametersOf($domain, $id, $locale);
        $plain = [];
        foreach ($parameters as $name) {
            if (isset($values[$name])) {
                $plain[$name] = is_array($values[$name]) ? implode(' ', $values[$name]) : (string) $values[$name];
            }
        }
        // Many faults say the same.
        $text = "$place\0" . implode("\0", $plain);
        if (!isset(self::$made[$text])) {
            self::$made = count(self::$made) < self::MADE ? self::$made : [];
            $shown = array_map(
                static fn (string $value): string => self::shown(mb_scrub($value, 'UTF-8'), $locale),
                $plain
            );
            self::$made[$text] = self::translator()->trans($id, $shown, $domain, $locale);
        }

        return self::$made[$text];
    }

    /** @return list<string> what a message takes; what it does not take makes no other text */
    private static function parametersOf(string $domain, string $id, string $locale): array
    {
        $message = self::translator()->getCatalogue($locale)->get($id, $domain);
        if ($message === $id) {
            $message = self::translator()->getCatalogue('en')->get($id, $domain);
        }
        preg_match_all('/\{(\w+)[,}]/', $message, $found);

        return array_values(array_unique($found[1]));
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
