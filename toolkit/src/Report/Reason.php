<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

/**
 * Why something has the status that it has.
 *
 * @psalm-immutable
 */
final class Reason implements \JsonSerializable
{
    /** @var string a code such as AC04; '' if there is only a text */
    public string $code;

    /** @var list<string> the bank's own words, a line each */
    public array $lines;

    /** @var string who says so, a BIC or a name; '' if that is not told */
    public string $by;

    /** @param array<string, mixed> $values of a record */
    public function __construct(array $values)
    {
        $this->code = trim($values['code'] ?? '');
        $this->lines = $values['text'] ?? [];
        $this->by = trim($values['by'] ?? '');
    }

    /** The bank's own words in one text. */
    public function said(): string
    {
        return Words::joined($this->lines);
    }

    /** What the code means; '' for one that is not known. */
    public function meaning(string $locale = 'en'): string
    {
        return Words::of('reason', $this->code, $locale);
    }

    /** @return array<string, string> */
    public function jsonSerialize(): array
    {
        return ['code' => $this->code, 'meaning' => $this->meaning(), 'text' => $this->said(), 'by' => $this->by];
    }
}
