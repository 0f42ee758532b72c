<?php

declare(strict_types=1);

namespace Sepa\Toolkit;

/** The languages that texts are there in, and which of them somebody wants. */
final class Language
{
    public const GERMAN = 'de';

    public const ENGLISH = 'en';

    /** The first where nothing tells. */
    public const ALL = [self::GERMAN, self::ENGLISH];

    /** What POSIX lets decide, in this order. */
    private const VARIABLES = ['LC_ALL', 'LC_MESSAGES', 'LANG'];

    /**
     * Of a command: what it is told, else what the environment wants. "de_AT.UTF-8"
     * is German; C, and what is neither, English.
     *
     * @param string|null $told such as the value of --lang; null or empty if there is none
     * @param array<string, string> $environment as of getenv()
     * @throws \InvalidArgumentException if it is told a language that is not there
     */
    public static function ofCommand(?string $told, array $environment): string
    {
        if ($told !== null && $told !== '') {
            $language = self::of($told);
            if ($language === null) {
                throw new \InvalidArgumentException("no texts in '$told': take " . implode(' or ', self::ALL));
            }

            return $language;
        }
        foreach (self::VARIABLES as $variable) {
            if (($environment[$variable] ?? '') !== '') {
                return self::of($environment[$variable]) ?? self::ENGLISH;
            }
        }

        return self::ENGLISH;
    }

    private static function of(string $locale): ?string
    {
        $language = strtolower((string) preg_replace('/[_.@-].*$/Ds', '', $locale));

        return in_array($language, self::ALL, true) ? $language : null;
    }
}
