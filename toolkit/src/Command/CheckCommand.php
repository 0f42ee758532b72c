<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Iban\Ibans;

final class CheckCommand extends LookupCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->setName('check')->setDescription('Checks IBANs and tells their banks');
        $this->setHelp(<<<'HELP'
            Checks country, length, form and check digits; of German IBANs also bank code
            and account number. IBANs are understood as people type them.

              <info>sepa check "DE89 3704 0044 0532 0130 00"</info>
              <info>sepa check --csv <customers.csv >checked.csv</info>
              <info>sepa check --json --column "Konto 2" <customers.csv</info>

            Exit code: 0 if all are valid, 1 if some are not, 2 if nothing could be read.
            HELP);
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
        $rows->add($check, static function () use ($check): array {
            return [
                'IBAN' => Ibans::grouped($check->iban),
                'valid' => $check->valid ? 'yes' : 'no',
                'BIC' => (string) $check->bic,
                'bank or reason' => $check->valid ? (string) $check->bank : "$check->reason: $check->hint",
            ];
        });

        return $check->valid;
    }
}
