<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Iban\Ibans;

final class ConvertCommand extends LookupCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->setName('convert')->setDescription('Turns German account numbers and bank codes into IBANs');
        $this->setHelp(<<<'HELP'
            Makes IBANs by the rules of the banks. Arguments and columns go in pairs:
            account number and bank code.

              <info>sepa convert 532013000 37040044</info>
              <info>sepa convert --csv <old-accounts.csv >ibans.csv</info>
              <info>sepa convert --json --column Kto --column Bank <old-accounts.csv</info>

            Exit code: 0 if all were converted, 1 if some were not, 2 if nothing could be read.
            HELP);
    }

    protected function keys(): array
    {
        return ['account', 'bank_code'];
    }

    protected function looksLike(string $key, string $cell): bool
    {
        $digits = (string) preg_replace('/[\s.\-]/', '', $cell);
        $isBankCode = preg_match('/^[1-9]\d{7}$/D', $digits) === 1;

        // What could be either is no help.
        return $key === 'bank_code' ? $isBankCode : !$isBankCode && preg_match('/^\d{1,10}$/D', $digits) === 1;
    }

    protected function answer(array $question, Rows $rows): bool
    {
        $conversion = Ibans::convert($question[0], $question[1]);
        $rows->add($conversion, static function () use ($conversion): array {
            return [
                'account' => $conversion->account,
                'bank code' => $conversion->bankCode,
                'IBAN' => Ibans::grouped((string) $conversion->iban),
                'status' => (string) $conversion->status,
                'remark' => (string) $conversion->reason,
            ];
        });

        return $conversion->iban !== null;
    }
}
