<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Iban\Ibans;

final class BankCommand extends LookupCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->describe('bank');
    }

    protected function keys(): array
    {
        return ['query'];
    }

    protected function looksLike(string $key, string $cell): bool
    {
        return preg_match(
            '/^([A-Z]{6}[A-Z0-9]{2}([A-Z0-9]{3})?|[1-9]\d{7}|[A-Z]{2}\d{2}[A-Z0-9]{11,30})$/D',
            Ibans::normalise($cell)
        ) === 1;
    }

    protected function answer(array $question, Rows $rows): bool
    {
        $bank = Ibans::bank($question[0]);
        $rows->add($bank, function () use ($bank): array {
            return [
                'asked for' => $bank->query,
                'BIC' => (string) $bank->bic,
                'bank or reason' => (string) ($bank->name ?? $bank->reason($this->words->locale)),
                'schemes' => implode(' ', $bank->schemes ?? []),
            ];
        });

        return $bank->reason === null;
    }
}
