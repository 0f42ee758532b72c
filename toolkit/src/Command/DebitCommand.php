<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;

final class DebitCommand extends PaymentsCommand
{
    private const SEQUENCES = ['FRST', 'RCUR', 'FNAL', 'OOFF'];

    protected function configure(): void
    {
        parent::configure();
        $this->value('creditor-id');
        $this->value('type', 'CORE');
        $this->value('seq');
        $this->describe('debit');
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        parent::complete($input, $suggestions);
        foreach (['type' => array_keys(Options::TYPES), 'seq' => self::SEQUENCES] as $option => $values) {
            if ($input->mustSuggestOptionValuesFor($option)) {
                $suggestions->suggestValues($values);
            }
        }
    }

    protected function payments(InputInterface $input): Batches
    {
        $this->need($input, ['name', 'iban', 'creditor-id']);
        self::oneOf('type', $input, array_keys(Options::TYPES));
        self::oneOf('seq', $input, self::SEQUENCES);
        $party = Party::creditor(
            $input->getOption('name'),
            $input->getOption('iban'),
            $input->getOption('bic'),
            $input->getOption('creditor-id')
        );

        $options = $this->options($input)->ofType($input->getOption('type'));

        return Batches::collections($this->located($party, $input), $options);
    }

    protected function common(InputInterface $input): array
    {
        return array_filter(['seq' => $input->getOption('seq')]);
    }

    protected function kind(): int
    {
        return SEPA_MSGTYPE_DDI;
    }
}
