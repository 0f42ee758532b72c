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

    /** A file that could not be opened or read, with the system's last reason. */
    public static function bySystem(string $file): self
    {
        return self::because('system', ['file' => $file, 'reason' => SystemError::reason() ?: 'none']);
    }

    /** The message; in English where it is the system's own. */
    public function text(string $locale): string
    {
        if ($this->told === null) {
            return $this->getMessage();
        }
        [$id, $values] = $this->told;
        if (isset($values['reason'])) {
            $values['reason'] = SystemError::translated((string) $values['reason'], $locale);
        }

        return Texts::of('tables', $id, $values, $locale);
    }
}
