<?php

declare(strict_types=1);

namespace Sepa\Toolkit;

/** There is nothing to read: no such file, no permission, a folder, or no table where one is needed. */
final class Unreadable extends \RuntimeException
{
    /** @var array{string, array<string, string|int>}|null id and values of its text in translations/tables */
    private ?array $told = null;

    /** @param array<string, string|int> $values */
    public static function because(string $id, array $values = []): self
    {
        $unreadable = new self(Texts::of('tables', $id, $values));
        $unreadable->told = [$id, $values];

        return $unreadable;
    }

    /** The message; in English where it is the system's own. */
    public function text(string $locale): string
    {
        return $this->told === null ? $this->getMessage() : Texts::of('tables', $this->told[0], $this->told[1], $locale);
    }
}
