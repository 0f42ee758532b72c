<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Symfony\Component\HttpFoundation\Response;

/** One of the pages: a form, and what comes of it. */
interface Page
{
    /**
     * @param Input $input empty for a page that is opened
     * @param array<string, mixed>|null $notice to be shown above the form, in place of what would come of it
     * @throws Refused if the form itself cannot be taken
     */
    public function respond(Input $input, ?array $notice): Response;
}
