<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Command\Rows;
use Symfony\Component\Console\Output\BufferedOutput;
use Symfony\Component\HttpFoundation\HeaderUtils;
use Symfony\Component\HttpFoundation\Response;

/** Tables for a German spreadsheet, by the rules of the command. */
final class Spreadsheet
{
    /**
     * @param iterable<array<int|string, mixed>> $rows cells as of Rows
     * @param bool $areKeyed whether the keys of the first are headings; else the first row is
     */
    public static function download(iterable $rows, string $name, bool $areKeyed = false): Response
    {
        $output = new BufferedOutput();
        $csv = (new Rows($output, Rows::CSV, $areKeyed))->german();
        foreach ($rows as $row) {
            $csv->add($row, static fn (): array => []);
        }
        $csv->flush();

        return self::file($output->fetch(), $name, 'text/csv; charset=utf-8');
    }

    public static function file(string $content, string $name, string $type): Response
    {
        $disposition = HeaderUtils::makeDisposition(HeaderUtils::DISPOSITION_ATTACHMENT, $name);

        return new Response($content, 200, ['Content-Type' => $type, 'Content-Disposition' => $disposition]);
    }
}
