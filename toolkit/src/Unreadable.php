<?php

declare(strict_types=1);

namespace Sepa\Toolkit;

/** There is nothing to read: no such file, no permission, a folder, or no table where one is needed. */
final class Unreadable extends \RuntimeException
{
}
