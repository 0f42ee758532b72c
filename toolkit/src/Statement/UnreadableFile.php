<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/** There is nothing to read from: no such file, no permission, a folder, no room for temporary files. */
final class UnreadableFile extends \RuntimeException
{
}
