<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Payment\Collections;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Payments;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

final class DebitCommand extends PaymentsCommand
{
    protected function configure(): void
    {
        parent::configure();
        $this->addOption('creditor-id', null, InputOption::VALUE_REQUIRED, 'Your creditor identifier');
        $this->addOption('type', null, InputOption::VALUE_REQUIRED, implode(', ', array_keys(Options::TYPES)), 'CORE');
        $this->setName('debit')->setDescription('Makes a direct debit for the bank out of a CSV file');
        $this->setHelp(<<<'HELP'
            The headings are transaction keys (name, iban, amount, seq, mref, mdate, ref,
            date, id, ...) or usual German and English words for them. All rows are tested;
            if there are faults, all of them are told and no document is written.

              <info>sepa debit members.csv --name "Turnverein 1862 e.V." --iban DE89370400440532013000 \
                  --bic COBADEFFXXX --creditor-id DE98ZZZ09999999999 -o december.xml</info>

            Exit code: 0 document written, 1 rows have faults, 2 wrong usage or file.
            HELP);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        parent::complete($input, $suggestions);
        if ($input->mustSuggestOptionValuesFor('type')) {
            $suggestions->suggestValues(array_keys(Options::TYPES));
        }
    }

    protected function payments(InputInterface $input): Payments
    {
        self::need($input, ['name', 'iban', 'bic', 'creditor-id']);

        return new Collections(
            Party::creditor(
                $input->getOption('name'),
                $input->getOption('iban'),
                $input->getOption('bic'),
                $input->getOption('creditor-id')
            ),
            self::options($input)->ofType($input->getOption('type'))
        );
    }
}
