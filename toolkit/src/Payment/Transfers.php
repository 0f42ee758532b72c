<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Credit transfers: the submitting party pays. */
final class Transfers extends Payments
{
    protected const KIND = SEPA_MSGTYPE_CTI;

    /**
     * @param Options|null $options those of Options::latest() if null
     * @param Notes|null $notes of several messages that are told of together
     */
    public function __construct(Party $payer, ?Options $options = null, ?Notes $notes = null)
    {
        parent::__construct($payer, $options ?? Options::latest(), $notes);
    }
}
