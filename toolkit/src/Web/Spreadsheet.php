<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Symfony\Component\HttpFoundation\HeaderUtils;
use Symfony\Component\HttpFoundation\Response;

/** Tables for a German spreadsheet: semicolons, and a mark that tells UTF-8. */
final class Spreadsheet
{
    /** @param iterable<list<string>> $rows that of headings first; a text that would be a formula is marked as text */
    public static function download(iterable $rows, string $name): Response
    {
        $stream = fopen('php://memory', 'w+b');
        fwrite($stream, "\u{FEFF}");
        foreach ($rows as $row) {
            fputcsv($stream, preg_replace('/^(?=[=@\t\r]|[+-](?![\d.,]+$))/D', "'", $row), ';', '"', '');
        }
        rewind($stream);
        $csv = str_replace("\n", "\r\n", (string) stream_get_contents($stream));

        return self::file($csv, $name, 'text/csv; charset=utf-8');
    }

    public static function file(string $content, string $name, string $type): Response
    {
        $disposition = HeaderUtils::makeDisposition(HeaderUtils::DISPOSITION_ATTACHMENT, $name);

        return new Response($content, 200, ['Content-Type' => $type, 'Content-Disposition' => $disposition]);
    }
}
