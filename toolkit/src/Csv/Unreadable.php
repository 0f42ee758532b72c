<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Csv;

/** A file that cannot be read as a table. */
final class Unreadable extends \RuntimeException
{
}
