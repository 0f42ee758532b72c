<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Csv\Headings;
use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Payment\Transfers;
use Sepa\Toolkit\Unreadable;

/** What stands in the form of a transfer. */
final class TransferForm
{
    /** More rows than these are better edited in the spreadsheet that they come from. */
    public const MAX_ROWS = 100;

    /** Keys of the fields about the submitting party and the message, in their order. */
    public const PARTY = ['name', 'iban', 'bic', 'date', 'messageId'];

    private const EMPTY_ROWS = 3;

    /** Of an empty form. */
    private const COLUMNS = ['name', 'iban', 'amount', 'ref'];

    /** @var array<string, string> the submitting party and the message, by the keys of faults */
    public array $party;

    public string $rulebook;

    public bool $transliterate;

    public bool $ignoreUnknown;

    /** @var list<string> keys of the payments that are shown */
    public array $columns = self::COLUMNS;

    /** @var list<array<string, string>> */
    public array $rows = [];

    /** @var string what ids of the messages that come of this form begin with, and are made of */
    public string $seed;

    /** Whether the last line of the file that the rows come from has its end. */
    private bool $endsInLine = true;

    /** @var string|null of a file whose rows are not those of the form */
    private ?string $fileDigest = null;

    public function __construct(Input $input)
    {
        foreach (self::PARTY as $key) {
            $this->party[$key] = $input->text($key);
        }
        $seed = $input->text('seed');
        $this->seed = preg_match('/^\d{8}-\d{6}-[0-9a-f]{12}$/D', $seed) ? $seed : Payments::newMessageId();
        $rulebook = $input->text('rulebook');
        $this->rulebook = in_array($rulebook, Rulebook::names(), true) ? $rulebook : Rulebook::LATEST;
        $this->transliterate = $input->text('transliterate') !== '';
        $this->ignoreUnknown = $input->text('ignore') !== '';
        $this->showColumns(explode(',', $input->text('columns')));
        $this->rows = array_slice($input->rows('row', $this->columns), 0, self::MAX_ROWS);
    }

    /** The BIC that goes with the own IBAN; empty if it is not known. It never becomes what somebody typed. */
    public function foundBic(): string
    {
        return (string) Ibans::check($this->party['iban'])->bic;
    }

    /**
     * The id for what the form has now, unless one is typed: the same payments
     * get the same id, so that the bank refuses them the second time, and others
     * get another.
     */
    public function messageId(): string
    {
        $party = ['messageId' => '', 'date' => Sheet::understood('date', $this->party['date']) ?: date('Y-m-d')] + $this->party;
        $content = [$party, $this->rulebook, $this->transliterate, $this->ignoreUnknown, $this->fileDigest ?? $this->filledCells()];
        $made = substr($this->seed, 0, -12) . substr(hash_hmac('sha256', serialize($content), $this->seed), 0, 12);

        return $this->party['messageId'] === '' ? $made : $this->party['messageId'];
    }

    /** @return list<array<string, string>> rows without empty cells, whatever columns are shown, in the bank's notation */
    private function filledCells(): array
    {
        $rows = [];
        foreach ($this->rows as $row) {
            $cells = array_filter($row, static fn (string $cell): bool => $cell !== '');
            ksort($cells);
            $rows[] = array_combine(array_keys($cells), array_map([Sheet::class, 'understood'], array_keys($cells), $cells));
        }

        return array_values(array_filter($rows));
    }

    /**
     * Takes a file: its rows become the form's if they fit with all that is in them.
     *
     * @return Sheet|null the file as a whole, if they do not
     * @throws Unreadable
     */
    public function take(string $path, string $name): ?Sheet
    {
        if ($this->takeRows(self::reader($path, $name))) {
            return null;
        }
        $this->fileDigest = (string) hash_file('sha256', $path);

        return new Sheet(self::reader($path, $name), true, $this->ignoreUnknown ? self::unknownHeadings(self::reader($path, $name)) : []);
    }

    /** Whether nothing is typed. */
    public function isEmpty(): bool
    {
        return !$this->filledCells() && implode('', $this->party) === '';
    }

    /** Number of rows in which something stands. */
    public function filledRows(): int
    {
        return count($this->filledCells());
    }

    /** @param list<string> $keys those that a transfer has are shown, too */
    public function showColumns(array $keys): void
    {
        $this->columns = array_values(array_intersect(Transfers::transactionKeys(), array_merge($this->columns, $keys)));
    }

    public function addRows(): void
    {
        $this->rows = array_slice(array_pad($this->rows, count($this->rows) + self::EMPTY_ROWS, []), 0, self::MAX_ROWS);
    }

    public function payments(): Transfers
    {
        $date = Sheet::understood('date', $this->party['date']);

        return new Transfers(
            Party::payer($this->party['name'], $this->party['iban'], $this->party['bic'] ?: $this->foundBic()),
            Options::under($this->rulebook)
                ->on($date ?: null)
                ->withMessageId($this->messageId())
                ->transliterating($this->transliterate)
        );
    }

    /** Adds the rows to a message, as the sheet that they are. */
    public function fill(Payments $payments): void
    {
        $stream = fopen('php://temp', 'w+b');
        fputcsv($stream, $this->columns, ';', '"', '');
        foreach ($this->rows as $row) {
            fputcsv($stream, array_map(static fn (string $key): string => $row[$key] ?? '', $this->columns), ';', '"', '');
        }
        if (!$this->endsInLine) {
            ftruncate($stream, ftell($stream) - 1);
        }
        rewind($stream);
        (new Sheet(new Reader($stream, 'the form'), true))->fill($payments);
    }

    private function takeRows(Reader $reader): bool
    {
        $known = null;
        $width = 0;
        $rows = [];
        foreach ($reader as $cells) {
            if (implode('', $cells) === '') {
                continue;
            }
            $isHead = $known === null;
            if ($isHead) {
                $known = array_filter(array_map([self::class, 'key'], $cells));
                $width = count($cells);
                if (count(array_unique($known)) < count($known) || !array_intersect(['iban', 'amount'], $known)) {
                    return false;
                }
            }
            // A delimiter at the end of each line makes a column of which nothing is lost.
            $isLost = !$this->ignoreUnknown && implode('', array_diff_key($cells, $known)) !== '';
            if ($isLost || count($cells) !== $width || count($rows) === self::MAX_ROWS) {
                return false;
            }
            if (!$isHead) {
                $rows[] = array_combine($known, array_intersect_key($cells, $known));
            }
        }
        if (!$rows) {
            return false;
        }
        $this->showColumns(array_filter($known, static fn (string $key): bool => implode('', array_column($rows, $key)) !== ''));
        $this->rows = $rows;
        $this->endsInLine = $reader->endsInLine();

        return true;
    }

    /** @return list<string> headings of a file that mean nothing here */
    private static function unknownHeadings(Reader $reader): array
    {
        foreach ($reader as $cells) {
            if (implode('', $cells) !== '') {
                return array_values(array_filter($cells, static fn (string $heading): bool => self::key($heading) === null));
            }
        }

        return [];
    }

    private static function reader(string $path, string $name): Reader
    {
        $stream = @fopen($path, 'rb');
        if (!$stream) {
            throw new Unreadable("cannot read $name");
        }

        return new Reader($stream, $name);
    }

    private static function key(string $heading): ?string
    {
        return Headings::key($heading, Transfers::transactionKeys());
    }
}
