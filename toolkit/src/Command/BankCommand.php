<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Iban\Ibans;

final class BankCommand extends LookupCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->setName('bank')->setDescription('Looks banks up by BIC, IBAN or German bank code');
        $this->setHelp(<<<'HELP'
            Tells BIC, name and schemes of a bank: SCT credit transfer, SDD direct debit,
            B2B direct debit between businesses.

              <info>sepa bank COBADEFF 37040044 "DE89 3704 0044 0532 0130 00"</info>
              <info>sepa bank --csv <bics.csv >banks.csv</info>

            Exit code: 0 if all were found, 1 if some were not, 2 if nothing could be read.
            HELP);
    }

    protected function keys(): array
    {
        return ['query'];
    }

    protected function looksLike(string $key, string $cell): bool
    {
        return preg_match('/^([A-Z]{6}[A-Z0-9]{2}([A-Z0-9]{3})?|[1-9]\d{7}|[A-Z]{2}\d{2}[A-Z0-9]{11,30})$/D', Ibans::normalise($cell)) === 1;
    }

    protected function answer(array $question, Rows $rows): bool
    {
        $bank = Ibans::bank($question[0]);
        $rows->add($bank, static function () use ($bank): array {
            return [
                'asked for' => $bank->query,
                'BIC' => (string) $bank->bic,
                'bank or reason' => (string) ($bank->name ?? $bank->reason),
                'schemes' => implode(' ', $bank->schemes ?? []),
            ];
        });

        return $bank->reason === null;
    }
}
