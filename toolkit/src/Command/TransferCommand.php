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
        $this->setName('transfer')->setDescription('Makes a credit transfer for the bank out of a CSV file');
        $this->setHelp(<<<'HELP'
            The headings are transaction keys (name, iban, bic, amount, ref, date, id, purp,
            addrTown, ...) or usual German and English words for them. All rows are tested;
            if there are faults, all of them are told and no document is written.

              <info>sepa transfer payments.csv --name "Zimmerei Sander GmbH" \
                  --iban DE89370400440532013000 --bic COBADEFFXXX -o payments.xml</info>

            Exit code: 0 document written, 1 rows have faults, 2 wrong usage or file.
            HELP);
    }

    protected function payments(InputInterface $input): Payments
    {
        self::need($input, ['name', 'iban', 'bic']);

        return new Transfers(
            Party::payer($input->getOption('name'), $input->getOption('iban'), $input->getOption('bic')),
            self::options($input)
        );
    }
}
