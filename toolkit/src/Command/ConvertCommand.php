<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Iban\Ibans;

final class ConvertCommand extends LookupCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->describe('convert');
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
        $rows->add($conversion, function () use ($conversion): array {
            return [
                'account' => $conversion->account,
                'bank code' => $conversion->bankCode,
                'IBAN' => Ibans::grouped((string) $conversion->iban),
                'status' => (string) $conversion->status,
                'remark' => (string) $conversion->reason($this->words->locale),
            ];
        });

        return $conversion->iban !== null;
    }
}
