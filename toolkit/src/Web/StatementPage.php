<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Command\StatementCommand;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Symfony\Component\HttpFoundation\Response;

/** Reads what a bank delivers, and shows bookings, balances, what is to be checked, and what became of payments. */
final class StatementPage implements Page
{
    private const EXAMPLE = __DIR__ . '/../../../examples/statement.sta';

    /** Of a batch on a page. */
    private const PARTS = 200;

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
        if ($action === '' || !$files->contents) {
            $missing = $action === 'again' ? 'statement.choose_again' : 'statement.choose';
            $notice = $action === '' ? $notice : $this->bad($missing);

            return $this->page($search, $files, ['notice' => $notice]);
        }
        if (!$files->areReadable()) {
            return $this->page($search, Files::none(), ['notice' => $this->bad('statement.too_much')], 413);
        }
        // What was looked for in other files is not meant, unless it was just typed.
        $chosen = count($input->uploads('file'));
        $isNew = $action === 'example' || ($chosen > 0 && $search->digest() === $input->text('searched'));
        if ($isNew || $input->text('statement') !== '' || $action === 'all') {
            $search = Search::all();
        }
        if (in_array($action, ['csv', 'csv_all'], true) && !$search->faults) {
            $records = self::records($files, $action === 'csv' ? $search : Search::all());

            return Spreadsheet::download($records, $this->view->text('statement.csv_name'), true);
        }

        return $this->shown($input, $search, $files, $isNew, $chosen);
    }

    private function shown(Input $input, Search $search, Files $files, bool $isNew, int $chosen): Response
    {
        $isSame = !$isNew && in_array($input->text('searched'), ['', $search->digest()], true);
        $page = $isSame ? max(1, (int) $input->text('p')) : 1;
        $batch = $isNew ? 0 : (int) $input->text('batch');
        $list = new StatementList($search, $page, (int) $input->text('statement'), $batch);
        $reader = Reader::files($files->sources());
        foreach ($reader as $statement) {
            $list->add($statement);
            unset($statement);
        }
        $list->finish();
        $reports = new StatusReports($files->sources());
        $faults = self::withoutOthers($reader->faults(), $reports);
        $at = max(1, (int) $input->text('batch_at'));

        return $this->page($search, $files, [
            'list' => $list,
            'reports' => $reports,
            'notes' => $faults,
            'hints' => self::withoutOthers($reader->hints(), $reports),
            'batch' => $list->batch ? $this->batch($list->batch, $at) : null,
            'isFull' => $chosen > 0 && $chosen >= (int) ini_get('max_file_uploads') ? $chosen : 0,
            'faults' => count($faults) + $list->wanting + $reports->wanting,
            'did' => 'again',
        ], $search->faults ? 422 : 200);
    }

    /** @return array<string, mixed> a page of the payments of a batch */
    private function batch(BookingRow $row, int $page): array
    {
        $count = count($row->booking->parts());
        $pages = max(1, (int) ceil($count / self::PARTS));
        $page = min($page, $pages);
        $parts = [];
        $number = 0;
        foreach ($row->booking->parts() as $part) {
            if (intdiv($number++, self::PARTS) + 1 === $page) {
                $parts[] = $part;
            }
        }

        return ['row' => $row, 'parts' => $parts, 'page' => $page, 'pages' => $pages];
    }

    /** @return \Generator<array<string, mixed>> what the command writes of each booking that is found */
    private static function records(Files $files, Search $search): \Generator
    {
        foreach (Reader::files($files->sources()) as $statement) {
            foreach ($search->means($statement) ? $statement->bookings : [] as $booking) {
                if ($search->finds($booking)) {
                    yield StatementCommand::record($statement, $booking);
                }
            }
            unset($statement, $booking);
        }
    }

    /**
     * Without what is said of files that are read as reports or as payments.
     *
     * @param list<Note> $notes
     * @return list<Note>
     */
    private static function withoutOthers(array $notes, StatusReports $reports): array
    {
        $isOther = static fn (Note $note): bool => in_array($note->file, $reports->files, true)
            && in_array($note->code, ['other_kind', 'skipped'], true);

        return array_values(array_filter($notes, static fn (Note $note): bool => !$isOther($note)));
    }

    /** @return array<string, string> */
    private function bad(string $text): array
    {
        return ['kind' => 'bad', 'heading' => $this->view->text($text)];
    }

    /** @param array<string, mixed> $values */
    private function page(Search $search, Files $files, array $values, int $status = 200): Response
    {
        return $this->view->page('statement', $values + [
            'hasExample' => is_file(self::EXAMPLE),
            'packed' => $files->packed(),
            'files' => array_map('strval', array_keys($files->contents)),
            'search' => $search,
            'list' => null,
            'notice' => null,
        ], $status);
    }
}
