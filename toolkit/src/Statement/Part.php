<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * One payment of a batch, which is booked in one sum.
 *
 * @psalm-immutable
 */
final class Part extends Transaction
{
    /** @var Amount|null as in a booking: negative for a debit; null if the file doesn't tell it in the account's currency */
    public ?Amount $amount = null;
}
