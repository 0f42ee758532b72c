<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/** One of the pages: a form, and what comes of it. */
interface Page
{
    public function title(): string;

    /** @throws Refused if the form itself cannot be taken */
    public function respond(Request $request): Response;
}
