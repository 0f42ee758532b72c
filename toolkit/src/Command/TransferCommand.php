<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Party;
use Symfony\Component\Console\Input\InputInterface;

final class TransferCommand extends PaymentsCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->flag('instant');
        array_map([$this, 'value'], ['at', 'priority']);
        $this->describe('transfer');
    }

    protected function payments(InputInterface $input): Batches
    {
        $this->need($input, ['name', 'iban']);
        $party = Party::payer($input->getOption('name'), $input->getOption('iban'), $input->getOption('bic'));
        $options = $this->options($input)
            ->instant($input->getOption('instant') || $input->getOption('at') !== null)
            ->at($input->getOption('at'))
            ->withPriority($input->getOption('priority'));

        return Batches::transfers($this->located($party, $input), $options);
    }

    protected function kind(): int
    {
        return SEPA_MSGTYPE_CTI;
    }
}
