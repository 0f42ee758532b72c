<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Transfers;
use Symfony\Component\Console\Input\InputInterface;

final class TransferCommand extends PaymentsCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->describe('transfer');
    }

    protected function payments(InputInterface $input): Payments
    {
        $this->need($input, ['name', 'iban', 'bic']);
        $party = Party::payer($input->getOption('name'), $input->getOption('iban'), $input->getOption('bic'));

        return new Transfers($party, $this->options($input));
    }

    protected function kind(): int
    {
        return SEPA_MSGTYPE_CTI;
    }
}
