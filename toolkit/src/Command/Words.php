<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Texts;

/** What the commands say, in the language of whoever called: translations/command. */
final class Words
{
    /** @var string of Language::ALL */
    public string $locale;

    public function __construct(string $locale)
    {
        $this->locale = $locale;
    }

    /** @param array<string, mixed> $values */
    public function of(string $id, array $values = []): string
    {
        return Texts::of('command', $id, $values, $this->locale);
    }

    /** A word of a group; what the group does not have stays as it is. */
    public function word(string $group, string $word): string
    {
        $text = $this->of("$group.$word");

        return $text === "$group.$word" ? $word : $text;
    }
}
