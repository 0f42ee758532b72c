<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** The extension's document is not what the toolkit expects, so nothing was added to it and there is no document. */
final class Misplaced extends \LogicException
{
}
