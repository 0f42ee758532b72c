<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\File\Kind;
use Sepa\Toolkit\File\Part as File;
use Sepa\Toolkit\File\ReadsFiles;
use Sepa\Toolkit\Statement\Notes;
use Sepa\Toolkit\Xml\Document;

/**
 * Reads status reports, pain.002, alone, in gzip or in a ZIP archive:
 *
 *     $reader = Reader::file('report.zip');
 *     foreach ($reader as $report) {
 *         foreach ($report->payments() as $payment) {
 *             echo $payment->eref, ' ', $payment->isRefused() ? 'refused' : $payment->status, "\n";
 *         }
 *     }
 *     foreach ($reader->faults() as $fault) { … }
 *
 * @implements \IteratorAggregate<int, Report>
 */
final class Reader implements \IteratorAggregate
{
    use ReadsFiles;

    /** What else comes as XML from banks or goes to them. */
    private const OTHERS = [
        'CstmrCdtTrfInitn' => 'payments', 'CstmrDrctDbtInitn' => 'payments', 'html' => 'html',
        'BkToCstmrStmt' => 'statements', 'BkToCstmrAcctRpt' => 'statements', 'BkToCstmrDbtCdtNtfctn' => 'statements',
    ];

    /** @return \Generator<int, Report> */
    public function getIterator(): \Generator
    {
        $this->faults = $this->hints = [];
        $number = 0;
        foreach (($this->sources)() as $source) {
            foreach ($source->parts() as $file) {
                $notes = new Notes();
                $report = $this->read($file, $notes);
                if ($file->trouble->code !== null) {
                    $notes->fault($file->trouble->code, 0, $file->trouble->values);
                }
                foreach (array_merge($notes->allFaults(), $notes->allHints()) as $note) {
                    $note->file = $file->name;
                }
                $this->faults = array_merge($this->faults, $notes->allFaults());
                $this->hints = array_merge($this->hints, $notes->allHints());
                if ($report) {
                    yield $number++ => $report;
                }
            }
        }
    }

    private function read(File $file, Notes $notes): ?Report
    {
        if ($file->kind !== Kind::XML) {
            $file->trouble->code === null && self::refuse($file, $notes, $file->kind);

            return null;
        }
        $document = new Document($file, Tables::REPORT_ROOTS);
        $isReport = in_array($document->root, Tables::REPORT_ROOTS, true);
        $report = $isReport ? self::report($document) : null;
        $damage = $document->damage();
        if ($document->hasDoctype) {
            $notes->fault('doctype', 0);
        } elseif ($damage !== null) {
            $notes->fault('malformed', 0, ['reason' => $damage]);
        } elseif (!$report) {
            self::refuse($file, $notes, self::OTHERS[$document->root] ?? 'xml', $document->root);
        }
        if ($report) {
            $report->file = $file->name;
            $report->isCut = $damage !== null;
        }

        return $report;
    }

    private static function report(Document $document): Report
    {
        $blocks = $payments = [];
        $head = [];
        $records = $document->records(Tables::report());
        foreach ($records->each() as $name => $values) {
            if ($name === 'payment' && $records->isWhole()) {
                $payments[] = $values;
            } elseif ($name === 'block') {
                $blocks[] = [$values, $payments];
                $payments = [];
            } elseif ($name === '') {
                $head = $values;
            }
        }
        // In the oldest form payments stand in no block.
        return new Report($head, $payments ? array_merge($blocks, [[[], $payments]]) : $blocks, $document->version);
    }

    private static function refuse(File $file, Notes $notes, string $kind, string $root = ''): void
    {
        if ($file->isMember) {
            $notes->hint('skipped', 0, ['kind' => $kind]);
        } else {
            $notes->fault(
                $kind === Kind::EMPTY ? 'empty' : 'no_report',
                0,
                $kind === Kind::EMPTY ? [] : ['kind' => $kind, 'root' => $root]
            );
        }
    }
}
