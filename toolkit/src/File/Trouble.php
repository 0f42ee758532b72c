<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

/** What went wrong with a file while its bytes were read, if something did. */
final class Trouble
{
    /** @var string|null damaged, too_much, too_many, encrypted, no_zip, nested */
    public ?string $code = null;

    /** @var array<string, string|int> what it is about */
    public array $values = [];

    /** @param array<string, string|int> $values */
    public function tell(string $code, array $values = []): void
    {
        $this->code = $this->code ?? $code;
        $this->values = $this->values ?: $values;
    }
}
