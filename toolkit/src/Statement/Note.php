<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\Texts;

/**
 * What was mended in a statement, what could not be, or what is good to know of it.
 */
final class Note implements \JsonSerializable
{
    public const DOMAIN = 'statements';

    /** @var array<string, string> English texts of codes that have no values */
    private static array $texts = [];

    /** @var string the kind, for programs: a key of translations/statements */
    public string $code;

    /** @var string what it says, in English */
    public string $text;

    /** @var array<string, string|int> what the text is made from */
    public array $values;

    /** @var int line of the file where it was first seen; 0 where a form has no lines */
    public int $line;

    /** @var int|null number of the entry in its statement where it was first seen, in CAMT */
    public ?int $entry;

    /** @var string the file it is about; '' if it was given without a name */
    public string $file = '';

    /** @var int how often it was seen */
    public int $count = 1;

    /** @param array<string, string|int> $values */
    public function __construct(string $code, int $line, array $values = [], ?int $entry = null)
    {
        $this->code = $code;
        $this->values = $values;
        $this->line = $line;
        $this->entry = $entry;
        $this->text = $values ? $this->text() : self::$texts[$code] = self::$texts[$code] ?? $this->text();
    }

    /** @param string $locale en or de */
    public function text(string $locale = 'en'): string
    {
        return Texts::of(self::DOMAIN, $this->code, $this->values, $locale);
    }

    /** Where it was first seen: "line 5", "entry 12", or nothing. */
    public function place(string $locale = 'en'): string
    {
        $values = ['line' => $this->line, 'entry' => $this->entry ?? 0];

        return $this->entry === null && $this->line === 0 ? ''
            : Texts::of(self::DOMAIN, $this->entry === null ? 'place.line' : 'place.entry', $values, $locale);
    }

    /** @return array<string, mixed> */
    public function jsonSerialize(): array
    {
        $place = $this->entry === null ? ['line' => $this->line] : ['entry' => $this->entry];

        return ['code' => $this->code] + $place + ['count' => $this->count, 'text' => $this->text];
    }
}
