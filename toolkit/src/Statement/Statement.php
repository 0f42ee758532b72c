<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/** One statement of a file, or one page of it. */
final class Statement implements \JsonSerializable
{
    public string $reference;

    /** @var string as the bank writes it: an IBAN, or bank code and account number; '' if it is missing */
    public string $account = '';

    public ?int $number = null;

    public ?int $page = null;

    /** @var string '' if no balance could be read */
    public string $currency = '';

    public ?Balance $opening = null;

    public ?Balance $closing = null;

    public Bookings $bookings;

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

    /** @var int its first line in the file */
    public int $line;

    public function __construct(string $reference, int $line)
    {
        $this->reference = Text::utf8($reference);
        $this->line = $line;
    }

    /**
     * All of it, with every booking; for a large statement take head() and the bookings one by one.
     *
     * @return array<string, mixed>
     */
    public function jsonSerialize(): array
    {
        return $this->head() + ['transactions' => iterator_to_array($this->bookings, false)];
    }

    /**
     * All but the bookings. Amounts are numbers; texts where no float holds them.
     *
     * @return array{
     *     account: string, reference: string, number: ?int, page: ?int,
     *     opening: ?Amount, opening_date: ?string, closing: ?Amount, closing_date: ?string, currency: string,
     *     intermediate: bool, balanced: bool, difference: ?Amount, cut: bool, information: string,
     *     mended: list<Note>, faults: list<Note>
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
            'mended' => $this->mended,
            'faults' => $this->faults,
        ];
    }

    private static function day(?Balance $balance): ?string
    {
        return $balance && $balance->date ? $balance->date->format('Y-m-d') : null;
    }
}
