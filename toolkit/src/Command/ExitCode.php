<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

/** What the commands tell the shell. */
final class ExitCode
{
    public const GOOD = 0;

    public const REFUSED = 1;

    public const FAILED = 2;
}
