<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\Texts;

/** What codes of statuses and reasons mean, of reports and of returns in statements. */
final class Words
{
    private const DOMAIN = 'reports';

    /**
     * @param string $kind status or reason
     * @return string '' for a code that is not known
     */
    public static function of(string $kind, string $code, string $locale = 'en'): string
    {
        if (!preg_match('/^[A-Z0-9]{4}$/D', $code)) {
            return '';
        }
        $text = Texts::of(self::DOMAIN, "$kind.$code", [], $locale);

        return $text === "$kind.$code" ? '' : $text;
    }

    /**
     * Lines of one text: a line that ends in a hyphen is a divided word.
     *
     * @param list<string> $lines
     */
    public static function joined(array $lines): string
    {
        $text = '';
        foreach ($lines as $line) {
            $line = trim($line);
            $isDivided = $text !== '' && preg_match('/\pL-$/Du', $text) && preg_match('/^\p{Ll}/u', $line);
            $text = $isDivided ? substr($text, 0, -1) . $line : ltrim("$text $line");
        }

        return $text;
    }
}
