<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/** A request that is answered with a reason; its code is an HTTP status. */
final class Refused extends \RuntimeException
{
    /** @param string $reason id of its text */
    public function __construct(string $reason, int $status)
    {
        parent::__construct($reason, $status);
    }
}
