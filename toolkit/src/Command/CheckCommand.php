<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Iban\IbanCheck;
use Sepa\Toolkit\Iban\Ibans;

final class CheckCommand extends LookupCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->describe('check');
    }

    protected function keys(): array
    {
        return ['iban'];
    }

    protected function looksLike(string $key, string $cell): bool
    {
        return preg_match('/^[A-Z]{2}\d{2}[A-Z0-9]{11,30}$/D', Ibans::normalise($cell)) === 1;
    }

    protected function answer(array $question, Rows $rows): bool
    {
        $check = Ibans::check($question[0]);
        $rows->add($check, function () use ($check): array {
            return [
                'IBAN' => Ibans::grouped($check->iban),
                'valid' => $this->words->word('answer', $check->valid ? 'yes' : 'no'),
                'BIC' => (string) $check->bic,
                'bank or reason' => $check->valid ? (string) $check->bank : $this->reason($check),
            ];
        });

        return $check->valid;
    }

    private function reason(IbanCheck $check): string
    {
        $locale = $this->words->locale;

        return $check->reason($locale) . ': ' . $check->hint($locale);
    }
}
