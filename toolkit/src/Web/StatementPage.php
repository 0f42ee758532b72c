<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Report\Reader as ReportReader;
use Sepa\Toolkit\Report\Report;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;
use Symfony\Component\HttpFoundation\Response;

/** Reads files of statements, shows their bookings with the running balance, and finds among them. */
final class StatementPage implements Page
{
    private const EXAMPLE = __DIR__ . '/../../../examples/statement.sta';

    /** Bookings of a page. */
    private const SHOWN = 200;

    /** Statements without bookings, and links to those that are to be looked at; the rest is counted. */
    private const MAX_STATEMENTS = 100;

    /** Of the CSV file. */
    private const COLUMNS = [
        'own', 'number', 'booked', 'valuta', 'amount', 'currency', 'name', 'account', 'bank', 'remittance', 'txtext',
        'eref', 'mref', 'file',
    ];

    private View $view;

    public function __construct(View $view)
    {
        $this->view = $view;
    }

    public function respond(Input $input, ?array $notice): Response
    {
        $action = $input->action();
        $search = new Search($input);
        $files = $action === 'example' ? Files::example(self::EXAMPLE) : Files::of($input);
        if ($action === 'csv' && $files->contents) {
            return Spreadsheet::download($this->rows($files, $search), 'bookings.csv');
        }
        $page = max(1, (int) $input->text('p'));
        $values = ['result' => null, 'accounts' => [], 'reports' => []];
        if ($action !== '' && $files->contents) {
            $values = $this->read($files, $search, $page);
        }
        if (!$files->contents && !in_array($action, ['', 'again'], true)) {
            $notice = ['kind' => 'bad', 'heading' => $this->view->text('statement.choose')];
        }

        return $this->view->page('statement', $values + [
            'notice' => $notice,
            'hasExample' => is_file(self::EXAMPLE),
            'packed' => $files->packed(),
            'files' => array_map('strval', array_keys($files->contents)),
            'search' => $search,
            'page_number' => $page,
            // Without its files nothing of it can be shown again.
            'did' => $files->contents ? 'again' : '',
        ]);
    }

    /** @return array<string, mixed> */
    private function read(Files $files, Search $search, int $page): array
    {
        $reader = Reader::texts($files->contents);
        $accounts = $wanting = [];
        $last = null;
        $statements = $bookings = $found = $empty = $good = 0;
        $isShown = function (Booking $booking) use ($search, $page, &$found): bool {
            return $search->finds($booking) && (int) ceil(++$found / self::SHOWN) === $page;
        };
        foreach ($reader as $statement) {
            ++$statements;
            if (!$last || !self::follows($last, $statement)) {
                $accounts[] = new StatementAccount($statement);
            }
            if (!$statement->isGood() && count($wanting) < self::MAX_STATEMENTS) {
                $at = intdiv($found, self::SHOWN) + 1;
                $wanting[] = ['statement' => $statement, 'id' => "s$statements", 'page' => $at];
            }
            $good += $statement->isGood() ? 1 : 0;
            $showsEmpty = $search->isEmpty() && $page === 1 && ++$empty <= self::MAX_STATEMENTS;
            end($accounts)->add($statement, "s$statements", $isShown, $showsEmpty);
            $bookings += count($statement->bookings) + count($statement->pending);
            $last = $statement;
        }

        $isReport = static fn (Note $note): bool => ($note->values['kind'] ?? '') === 'report';
        $faults = array_values(array_filter($reader->faults(), static fn (Note $note): bool => !$isReport($note)));
        $told = array_filter(array_merge($reader->faults(), $reader->hints()), $isReport);

        return [
            'reports' => $told ? self::reports($files) : [],
            'accounts' => array_filter($accounts, static fn (StatementAccount $of): bool => $of->statements !== []),
            'faults' => count($faults) + $statements - $good,
            'result' => [
                'statements' => $statements,
                'bookings' => $bookings,
                'found' => $found,
                'pages' => (int) ceil($found / self::SHOWN),
                'wanting' => $statements - $good,
                'links' => $wanting,
                'faults' => $faults,
                'hints' => array_filter($reader->hints(), static fn (Note $note): bool => !$isReport($note)),
            ],
        ];
    }

    /** @return list<Report> what the bank tells of payments that were sent, in the files that are no statements */
    private static function reports(Files $files): array
    {
        $reports = [];
        foreach ($files->contents as $name => $content) {
            foreach (ReportReader::string($content, (string) $name) as $report) {
                $reports[] = $report;
            }
        }

        return $reports;
    }

    /** @return iterable<list<string>> of what is found */
    private function rows(Files $files, Search $search): iterable
    {
        yield array_map(fn (string $key): string => $this->view->text("detail.$key"), self::COLUMNS);
        $day = static fn (?\DateTimeInterface $day): string => $day ? $day->format('d.m.Y') : '';
        foreach (Reader::texts($files->contents) as $statement) {
            foreach ($statement->bookings as $booking) {
                if ($search->finds($booking)) {
                    yield array_map('strval', [
                        $statement->account, $statement->number, $day($booking->booked), $day($booking->valuta),
                        $booking->amount->text(','), $statement->currency, $booking->name, $booking->account,
                        $booking->bank, $booking->remittance(), $booking->txtext, $booking->eref, $booking->mref, $statement->file,
                    ]);
                }
            }
        }
    }

    /** Whether a statement goes on where another ended. */
    private static function follows(Statement $last, Statement $next): bool
    {
        $areWhole = $last->balanced && $last->closing && $next->opening;

        return $areWhole && $last->account === $next->account && $last->closing->amount == $next->opening->amount;
    }
}
