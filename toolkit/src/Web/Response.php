<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/** What goes back to the browser. */
final class Response
{
    /** @var string HTML for the middle of the page, or the file that is downloaded */
    public string $body;

    public int $status;

    /** @var string|null name of the file; null for a page */
    public ?string $filename;

    public function __construct(string $body, int $status = 200, ?string $filename = null)
    {
        $this->body = $body;
        $this->status = $status;
        $this->filename = $filename;
    }
}
