<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Direct debits: the submitting party collects. */
final class Collections extends Payments
{
    protected const KIND = SEPA_MSGTYPE_DDI;

    /**
     * @param Options|null $options those of Options::latest() if null
     * @param Notes|null $notes of several messages that are told of together
     */
    public function __construct(Party $creditor, ?Options $options = null, ?Notes $notes = null)
    {
        $options = $options ?? Options::latest();
        if (!isset(Options::TYPES[$options->type])) {
            throw new \InvalidArgumentException("unknown type of direct debit: $options->type");
        }
        parent::__construct($creditor, $options, $notes);
        $this->set('creditorId', $creditor->creditorId, 'setCreditorIdentifier');
        try {
            $this->message->setDDType(Options::TYPES[$options->type]);
        } catch (\SEPAException $e) {
            [$code, $values] = $this->reasons->of($e->getMessage(), 'type', $options->type);
            $this->refuse(null, null, 'type', $code, $values);
        }
        if ($options->type === 'COR1' && $this->rulebook->country !== 'DE') {
            $this->warn(null, 'type', 'cor1_national', ['rulebook' => $this->rulebook->name]);
        }
        if ($this->rulebook->outsideEea !== '' && Inspector::isOutsideEea($creditor->iban)) {
            $this->warn(null, 'iban', 'own_outside_eea');
        }
    }
}
