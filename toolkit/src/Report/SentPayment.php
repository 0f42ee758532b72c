<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\Statement\Amount;

/** A payment as it was sent. */
final class SentPayment
{
    public string $block = '';

    public string $eref;

    public string $instrid;

    /** @var string of the other party */
    public string $name;

    public string $iban;

    public ?Amount $amount;

    /** @param array<string, mixed> $values of a record */
    public function __construct(array $values, string $side)
    {
        $this->eref = trim($values['eref'] ?? '');
        $this->instrid = trim($values['instrid'] ?? '');
        $this->name = trim($values[$side] ?? '');
        $this->iban = str_replace(' ', '', $values[$side . 'Account'] ?? '');
        $this->amount = Amount::decimal($values['amount'] ?? '', $values['amount@'] ?? '');
    }
}
