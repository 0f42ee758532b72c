<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\File\Source;
use Sepa\Toolkit\Report\PaymentFile;
use Sepa\Toolkit\Report\Reader;
use Sepa\Toolkit\Report\Report;
use Sepa\Toolkit\Report\Result;

/** Status reports among the files, beside the payments that they are about where these are there, too. */
final class StatusReports
{
    /** Results that are shown of a message; those that somebody must look at go first. */
    public const ROWS = 500;

    /**
     * @var list<array{report: Report|null, id: string, status: string, isSent: bool, isCut: bool, refused: int,
     *     names: int, results: list<Result>, count: int}> by message
     */
    public array $messages = [];

    /** @var int payments that were refused, or whose payee has another name, and reports that break off */
    public int $wanting = 0;

    /** @var list<string> names of the files that are reports, or payments */
    public array $files = [];

    /** @param list<Source> $sources */
    public function __construct(array $sources)
    {
        $reports = [];
        foreach (Reader::files($sources) as $report) {
            $reports[$report->originalId][] = $report;
            $this->files[] = $report->file;
            $this->wanting += $report->isCut ? 1 : 0;
        }
        foreach ($sources as $source) {
            foreach (PaymentFile::in($source) as $name => $sent) {
                $this->files[] = $name;
                $about = $reports[$sent->id] ?? [];
                $this->add(Result::beside($sent, $about), $about, $sent->id, true);
                unset($reports[$sent->id]);
            }
        }
        foreach ($reports as $id => $of) {
            $this->add(array_merge(...array_map([self::class, 'resultsOf'], $of)), $of, (string) $id, false);
        }
    }

    /** @return list<Result> */
    private static function resultsOf(Report $report): array
    {
        return Result::ofReport($report) ?: [Result::ofWhole($report)];
    }

    /**
     * @param list<Result> $results
     * @param list<Report> $reports
     */
    private function add(array $results, array $reports, string $id, bool $isSent): void
    {
        $isBad = static fn (Result $result): bool => $result->isRefused() || $result->isOtherName();
        $bad = array_filter($results, $isBad);
        $refused = count(array_filter($bad, static fn (Result $result): bool => $result->isRefused()));
        $this->wanting += count($bad);
        $sorted = array_merge($bad, array_diff_key($results, $bad));
        $this->messages[] = [
            'report' => end($reports) ?: null,
            'id' => $id,
            'status' => $reports ? end($reports)->status : '',
            'isSent' => $isSent,
            'isCut' => in_array(true, array_column($reports, 'isCut'), true),
            'refused' => $refused,
            'names' => count($bad) - $refused,
            'results' => array_slice($sorted, 0, self::ROWS),
            'count' => count($results),
        ];
    }
}
