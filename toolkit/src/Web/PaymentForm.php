<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Calendar;
use Sepa\Toolkit\Payment\Keys;
use Sepa\Toolkit\Payment\Options;
use Sepa\Toolkit\Payment\Party;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Unreadable;

/**
 * What stands in the form of payments: the party, and a table, which travels
 * along as text, with what was typed into its rows.
 */
final class PaymentForm
{
    public const TRANSFER = 'transfer';

    public const DEBIT = 'debit';

    /** Keys of the fields about the submitting party and the message, in their order. */
    public const PARTY = [
        self::TRANSFER => ['name', 'iban', 'bic', 'date', 'messageId'],
        self::DEBIT => ['name', 'iban', 'creditorId', 'type', 'seq', 'date', 'bic', 'messageId'],
    ];

    /** What is chosen in place of being typed; the first if nothing is. */
    public const CHOICES = ['type' => ['CORE', 'B2B'], 'seq' => ['RCUR', 'FRST', 'OOFF', 'FNAL']];

    public const CATEGORIES = ['SALA', 'PENS', 'SUPP', 'TAXS', 'SSBE', 'INTC'];

    /** More rows than these are better edited in the spreadsheet that they come from. */
    public const MAX_ROWS = 100;

    private const EMPTY_ROWS = 3;

    /** Of a form in which nothing stands. */
    private const COLUMNS = [
        self::TRANSFER => ['name', 'iban', 'amount', 'ref'],
        self::DEBIT => ['name', 'iban', 'amount', 'ref', 'mref', 'mdate'],
    ];

    /** What a link can fill in. */
    public const BOOKMARKED = ['name', 'iban', 'bic', 'creditorId'];

    public string $kind;

    /** @var string name of the own account that was chosen; empty if the party is typed */
    public string $own;

    /** @var array<string, string> the submitting party and the message, by the keys of faults */
    public array $party;

    public string $rulebook;

    public bool $transliterate;

    /** Whether transfers are executed within seconds. */
    public bool $instant;

    /** @var string what all transfers are for: one of CATEGORIES, or empty */
    public string $category;

    /** Whether all rows have fields, not only those with faults. */
    public bool $showsAll;

    /** @var list<string> keys of the payments that are shown */
    public array $columns;

    /** @var array<int, array<string, string>> what was typed, by the number of the row on the page */
    public array $rows;

    /** @var array<int, true> numbers of rows that have fields; what was typed into others travels along */
    private array $shown;

    /** The file, or what was pasted. */
    public Table $table;

    /** @var string what ids of the messages that come of this form begin with, and are made of */
    public string $seed;

    private ?string $digest = null;

    public function __construct(string $kind, Input $input, Accounts $accounts)
    {
        $this->kind = $kind;
        $names = $accounts->names();
        $first = $input->text('name') . $input->text('iban') === '' ? $names[0] ?? '' : '';
        $this->own = $input->has('own') ? $input->text('own') : $first;
        $this->own = in_array($this->own, $names, true) ? $this->own : '';
        foreach (self::PARTY[$kind] as $key) {
            $choices = self::CHOICES[$key] ?? null;
            $typed = $input->text($key);
            $this->party[$key] = $choices && !in_array($typed, $choices, true) ? $choices[0] : $typed;
        }
        if ($this->own !== '') {
            $this->party = array_replace($this->party, array_intersect_key($accounts->party($this->own), $this->party));
        }
        $seed = $input->text('seed');
        $this->seed = preg_match('/^\d{8}-\d{6}-[0-9a-f]{12}$/D', $seed) ? $seed : Payments::newMessageId();
        $rulebook = $input->text('rulebook');
        $this->rulebook = in_array($rulebook, Rulebook::names(), true) ? $rulebook : Rulebook::LATEST;
        $this->transliterate = $input->text('transliterate') !== '';
        $this->instant = $kind === self::TRANSFER && $input->text('instant') !== '';
        $category = $input->text('category');
        $this->category = in_array($category, self::CATEGORIES, true) ? $category : '';
        $this->showsAll = $input->action() === 'all' || $input->text('all') !== '';
        $this->columns = self::COLUMNS[$kind];
        $this->showColumns(explode(',', $input->text('columns')));
        $this->table = Table::carried($input);
        $this->rows = $input->rows('row', $this->columns);
        $this->shown = array_fill_keys(array_keys($this->rows), true);
        $this->rows += $input->edits('edits', $this->keys());
        ksort($this->rows);
        if ($input->text('payee') !== '') {
            $this->addPayee($input->text('payee'));
        }
    }

    /** The party as a link that fills it in; null if there is nothing to fill in. */
    public function bookmark(): ?string
    {
        $typed = array_filter(array_intersect_key($this->party, array_flip(self::BOOKMARKED)));

        $isWhole = $this->own === '' && isset($typed['name'], $typed['iban']);

        return $isWhole ? http_build_query(['page' => $this->kind] + $typed) : null;
    }

    /** @return list<string> of a payment, and those that sort payments into several messages */
    public function keys(): array
    {
        return Keys::all($this->kind === self::DEBIT ? SEPA_MSGTYPE_DDI : SEPA_MSGTYPE_CTI);
    }

    /** The BIC that goes with the own IBAN; empty if it is not known. It never becomes what somebody typed. */
    public function foundBic(): string
    {
        return (string) Ibans::check($this->party['iban'])->bic;
    }

    /** Name of the bank that has the own account. */
    public function bank(): ?string
    {
        return Ibans::check($this->party['iban'])->bank;
    }

    /** @return list<string> */
    public function categories(): array
    {
        return self::CATEGORIES;
    }

    /** @return list<string> */
    public function choices(string $key): array
    {
        return self::CHOICES[$key];
    }

    /**
     * The id for what the form has now, unless one is typed: the same payments
     * get the same id, so that the bank refuses them the second time, and others
     * get another.
     */
    public function messageId(): string
    {
        return $this->party['messageId'] ?: $this->messageIdMade();
    }

    /** @throws \Sepa\Toolkit\Unreadable */
    public function messageIdMade(): string
    {
        $this->digest = $this->digest ?? $this->digest();

        // With room for the number that each of several messages gets.
        return substr($this->seed, 0, -12) . substr($this->digest, 0, 10);
    }

    /** Whether nothing is typed and no table chosen. */
    public function isEmpty(): bool
    {
        $party = $this->party['name'] . $this->party['iban'];

        return $party === '' && $this->filledRows() === 0 && !$this->table->isThere();
    }

    /** Number of rows in which something was typed. */
    public function filledRows(): int
    {
        return count(array_filter($this->rows, static fn (array $row): bool => implode('', $row) !== ''));
    }

    /** @param list<string> $keys those that a payment has are shown, too */
    public function showColumns(array $keys): void
    {
        $this->columns = array_values(array_intersect($this->keys(), array_merge($this->columns, $keys)));
    }

    /** Room for further payments, at the end. */
    public function addRows(): void
    {
        $last = max($this->rows ? max(array_keys($this->rows)) : 0, $this->table->isThere() ? $this->lastRow() : 0);
        for ($row = $last + 1; $row <= $last + self::EMPTY_ROWS && count($this->rows) < self::MAX_ROWS; ++$row) {
            $this->rows[$row] = [];
            $this->shown[$row] = true;
        }
    }

    /** Takes an IBAN into the first row in which nothing stands. */
    private function addPayee(string $iban): void
    {
        $free = array_search('', array_map('implode', $this->fields()), true);
        if ($free === false) {
            $this->addRows();
            $free = max(array_keys($this->rows)) - self::EMPTY_ROWS + 1;
        }
        $this->rows[$free]['iban'] = $iban;
    }

    /** Another table or none comes in place of what is there. */
    public function drop(?Table $table): void
    {
        $this->table = $table ?? Table::none();
        $this->rows = $this->shown = [];
    }

    /** @return array<int, array<string, string>> rows that have fields */
    public function fields(): array
    {
        return array_intersect_key($this->rows, $this->shown);
    }

    /** What was typed into rows without fields. */
    public function edits(): string
    {
        $edits = array_diff_key($this->rows, $this->shown);

        return (string) json_encode($edits, JSON_UNESCAPED_UNICODE | JSON_FORCE_OBJECT);
    }

    /** yyyy-mm-dd, of payments for which nobody tells one: the next day on which banks can work on them. */
    public function proposedDay(): string
    {
        $day = new \DateTimeImmutable($this->kind === self::DEBIT ? 'tomorrow' : 'today');
        while (!$this->instant && Calendar::closed($day->format('Y-m-d')) !== null) {
            $day = $day->modify('+1 day');
        }

        return $day->format('Y-m-d');
    }

    public function date(): string
    {
        return Sheet::understood('date', $this->party['date']) ?: $this->proposedDay();
    }

    public function payments(): Batches
    {
        $party = $this->party;
        $bic = $party['bic'] ?: $this->foundBic();
        $options = Options::under($this->rulebook)
            ->on($this->date())
            ->withMessageId($this->messageId())
            ->transliterating($this->transliterate)
            ->instant($this->instant)
            ->forCategory($this->category ?: null);

        if ($this->kind === self::TRANSFER) {
            return Batches::transfers(Party::payer($party['name'], $party['iban'], $bic), $options);
        }
        $creditor = Party::creditor($party['name'], $party['iban'], $bic, $party['creditorId']);

        return Batches::collections($creditor, $options->ofType($party['type']));
    }

    /** @throws \Sepa\Toolkit\Unreadable */
    public function sheet(): Sheet
    {
        $common = isset($this->party['seq']) ? ['seq' => $this->party['seq']] : [];
        $typed = [];
        foreach ($this->rows as $number => $row) {
            $typed[$number + $this->offset()] = $row;
        }
        if (!$this->table->isThere()) {
            $keys = array_unique(array_merge($this->columns, (new Rulebook($this->rulebook))->wantsBic ? ['bic'] : []));
            $stream = fopen('php://temp', 'w+b');
            fwrite($stream, implode(';', $keys) . "\n");
            rewind($stream);

            $filled = array_filter($typed, static fn (array $row): bool => implode('', $row) !== '');

            return new Sheet(new Reader($stream, ''), true, [], [], $common, $filled);
        }

        return new Sheet($this->table->reader(), true, $this->table->ignored, $this->table->map, $common, $typed);
    }

    /** What a row's number in the sheet is above that on the page: typed rows stand below headings. */
    public function offset(): int
    {
        return $this->table->isThere() ? 0 : 1;
    }

    /**
     * Rows of the table that get fields, with all that they have.
     *
     * @param list<int>|null $numbers all if null
     */
    public function showRows(?array $numbers): void
    {
        if (!$this->table->isThere()) {
            return;
        }
        $this->shown = [];
        $wanted = array_flip($numbers ?? []);
        foreach ($this->sheet()->values($this->keys()) as $number => $values) {
            if ($numbers === null || isset($wanted[$number])) {
                $this->shown[$number] = true;
                $this->rows[$number] = ($this->rows[$number] ?? []) + $values;
                $this->showColumns(array_keys($values));
            }
        }
        ksort($this->rows);
    }

    private function lastRow(): int
    {
        $last = 1;
        try {
            foreach ($this->sheet()->values($this->keys()) as $last => $values) {
                continue;
            }
        } catch (Unreadable $e) {
            // It will be told when the table is looked at as a whole.
            return $last;
        }

        return $last;
    }

    private function digest(): string
    {
        $party = ['messageId' => '', 'date' => $this->date()] + $this->party;
        $hash = hash_init('sha256', HASH_HMAC, $this->seed);
        $options = [$this->rulebook, $this->transliterate, $this->instant, $this->category];
        hash_update($hash, serialize([$this->kind, $party, $options]));
        foreach ($this->sheet()->values($this->keys()) as $values) {
            ksort($values);
            $keys = array_keys($values);
            hash_update($hash, serialize([$keys, array_map([Sheet::class, 'understood'], $keys, $values)]));
        }

        return hash_final($hash);
    }
}
