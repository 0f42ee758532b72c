<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/** One statement of a file, or one page of it. */
final class Statement implements \JsonSerializable
{
    /** @var string what it is: mt940, mt942, or the message's version, such as camt.053.001.08 */
    public string $form = 'mt940';

    /** @var string the file it comes from, of an archive with the member's name; '' if it was given without a name */
    public string $file = '';

    public string $reference;

    /** @var string as the bank writes it: an IBAN, or bank code and account number; '' if it is missing */
    public string $account = '';

    public ?int $number = null;

    public ?int $page = null;

    /** @var string the account's owner; '' in MT940 */
    public string $owner = '';

    /** @var string BIC of the bank; '' in MT940 */
    public string $bank = '';

    /** @var string when it was made, as the file writes it; '' if that is missing, and in MT940 */
    public string $created = '';

    /** @var string '' if no balance could be read */
    public string $currency = '';

    public ?Balance $opening = null;

    public ?Balance $closing = null;

    /** @var list<Balance> other balances: available, forward, interim opening, expected */
    public array $available = [];

    public Bookings $bookings;

    /** @var Bookings what the bank announces or only tells; in no sum */
    public Bookings $pending;

    /** @var string what the bank says about the statement as a whole */
    public string $information = '';

    /** @var bool whether opening balance and bookings come to the closing balance, and all of them could be read */
    public bool $balanced = false;

    /** @var Amount|null closing balance less opening balance and bookings; null if one of them is not known */
    public ?Amount $difference = null;

    /** @var bool whether the file ends before the statement does */
    public bool $cut = false;

    /** @var list<Note> what was read as if the bank had written it well */
    public array $mended = [];

    /** @var list<Note> what could not be read, or does not fit */
    public array $faults = [];

    /** @var list<Note> what is good to know, and neither mended nor a fault */
    public array $hints = [];

    /** @var int its first line in the file; 0 in CAMT */
    public int $line;

    public function __construct(string $reference, int $line)
    {
        $this->reference = Text::utf8($reference);
        $this->line = $line;
        $this->bookings = $this->pending = new Bookings([], 0, static fn (): array => []);
    }

    /** Whether it has both balances, without which nothing can be proved. */
    public function hasBalances(): bool
    {
        return $this->opening && $this->closing;
    }

    /** Whether nobody has to look at it: it balances, or has no balances to prove, and nothing is wrong. */
    public function isGood(): bool
    {
        return !$this->faults && ($this->balanced || (!$this->opening && !$this->closing && !$this->cut));
    }

    /** @internal */
    public function take(Notes $notes): void
    {
        $this->mended = $notes->allMended();
        $this->faults = $notes->allFaults();
        $this->hints = $notes->allHints();
    }

    /**
     * All of it, with every booking; for a large statement take head() and the bookings one by one.
     *
     * @return array<string, mixed>
     */
    public function jsonSerialize(): array
    {
        return $this->head() + [
            'transactions' => iterator_to_array($this->bookings, false),
            'pending' => iterator_to_array($this->pending, false),
        ];
    }

    /**
     * All but the bookings. Amounts are numbers; texts where no float holds them.
     *
     * @return array{
     *     account: string, reference: string, number: ?int, page: ?int,
     *     opening: ?Amount, opening_date: ?string, closing: ?Amount, closing_date: ?string, currency: string,
     *     intermediate: bool, balanced: bool, difference: ?Amount, cut: bool, information: string,
     *     form: string, file: string, owner: string, bank: string, created: string, available: list<Balance>,
     *     mended: list<Note>, faults: list<Note>, hints: list<Note>
     * }
     */
    public function head(): array
    {
        return [
            'account' => $this->account,
            'reference' => $this->reference,
            'number' => $this->number,
            'page' => $this->page,
            'opening' => $this->opening ? $this->opening->amount : null,
            'opening_date' => self::day($this->opening),
            'closing' => $this->closing ? $this->closing->amount : null,
            'closing_date' => self::day($this->closing),
            'currency' => $this->currency,
            'intermediate' => $this->closing && $this->closing->intermediate,
            'balanced' => $this->balanced,
            'difference' => $this->difference,
            'cut' => $this->cut,
            'information' => $this->information,
            'form' => $this->form,
            'file' => $this->file,
            'owner' => $this->owner,
            'bank' => $this->bank,
            'created' => $this->created,
            'available' => $this->available,
            'mended' => $this->mended,
            'faults' => $this->faults,
            'hints' => $this->hints,
        ];
    }

    private static function day(?Balance $balance): ?string
    {
        return $balance && $balance->date ? $balance->date->format('Y-m-d') : null;
    }
}
