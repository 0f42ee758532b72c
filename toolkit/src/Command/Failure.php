<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

/** Wrong usage, or a file that cannot be read or written. */
final class Failure extends \RuntimeException
{
}
