<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Bookings;
use Sepa\Toolkit\Statement\Notes;
use Sepa\Toolkit\Statement\Proof;
use Sepa\Toolkit\Statement\Statement;
use Sepa\Toolkit\Statement\Text;

/**
 * Makes one statement of its lines. Bookings are kept as text, some of them to a piece:
 * a NUL after each, and with a CR between them line, dates, mark, units, type, code,
 * references, further text of the line, and the details, which may come twice.
 *
 * @internal
 */
final class Builder
{
    /** Bytes of bookings that are kept in one text. */
    private const PIECE = 65536;

    private const TAG = '/^:(20|21|25P?|28C?|13D?|34F|60[FM]|61|62[FM]|64|65|86|90[CD]|NS):/';

    private const BALANCE = '/^([CD])(.{6})([A-Z]{3})\s*([\d.,]+)\s*$/Ds';

    private const NUMBER = '/^\s*(\d{1,9})(?:\/(\d{1,9}))?\s*$/D';

    // With what comes after the text of a SWIFT message.
    private const END = '/^-\s*(?:\}.*)?$/s';

    // What a line without a tag continues.
    private const NOTHING = 0, ENTRY = 1, DETAILS = 2, INFORMATION = 3;

    private Statement $statement;

    private Notes $notes;

    private Dates $dates;

    private int $context = self::NOTHING;

    private int $fieldLine;

    /** @var list<string> lines of the field that can be continued */
    private array $field = [];

    private int $fieldBytes = 0;

    /** @var string the booking that isn't complete yet, '' if there is none */
    private string $booking = '';

    private bool $hasDetails = false;

    /** @var bool whether the booking that a ":86:" would belong to could not be read */
    private bool $lost = false;

    /** @var list<string> */
    private array $pieces = [];

    private string $piece = '';

    private int $count = 0;

    /** @var int bookings that are not UTF-8 */
    private int $foreign = 0;

    private int $foreignLine = 0;

    private int $umlautsOfDos = 0;

    private Proof $proof;

    private bool $pageOpen = false;

    private bool $interim = false;

    public function __construct(string $reference, int $line)
    {
        $this->statement = new Statement(trim($reference), $line);
        $this->notes = new Notes();
        $this->proof = new Proof();
        $this->dates = new Dates();
        $this->fieldLine = $line;
    }

    public function notes(): Notes
    {
        return $this->notes;
    }

    /** Whether the line, which begins with "-", is no text that continues a field. */
    public function ends(string $line): bool
    {
        return $this->context === self::NOTHING || preg_match(self::END, $line);
    }

    /** Whether a line "-" can be text: details come before a closing balance. */
    public function dashCanBeText(): bool
    {
        return $this->context === self::DETAILS && !$this->statement->closing;
    }

    /** Whether it has what an interim report has, and no balances. */
    public function isReport(): bool
    {
        return $this->interim && !$this->statement->opening && !$this->statement->closing;
    }

    /** @param bool $ends whether the line has a line end: a line without one can be cut */
    public function line(string $line, int $number, bool $ends): void
    {
        if ($line[0] !== ':' || !preg_match(self::TAG, $line, $match)) {
            if ($ends || $line[0] !== ':') {
                $this->continueField($line, $number);
            }

            return;
        }
        $this->endField();
        $this->fieldLine = $number;
        $value = substr($line, strlen($match[0]));
        if ($match[1] === '86') {
            $this->details($value);

            return;
        }
        $this->flushBooking();
        $this->lost = $match[1] === '61' && !$this->entry($line, $ends);
        $this->field($match[1], $value, $ends);
    }

    private function field(string $tag, string $value, bool $ends): void
    {
        switch ($tag) {
            case '60F':
            case '60M':
                $this->opening($value, $tag === '60M');
                break;
            case '62F':
            case '62M':
                $this->closing($value, $tag === '62M', $ends);
                break;
            case '64':
            case '65':
                $balance = $this->balance($value, false, $tag === '64' ? 'CLAV' : 'FWAV', false);
                $balance && $this->statement->available[] = $balance;
                break;
            case '25':
            case '25P':
                $this->account($value);
                break;
            case '28':
            case '28C':
                $this->number($value);
                break;
            case '34F':
                if ($this->statement->currency === '' && preg_match('/^[A-Z]{3}/', $value, $currency)) {
                    $this->statement->currency = $currency[0];
                }
                // no break: as the others, it is only in interim reports
            case '13':
            case '13D':
            case '90C':
            case '90D':
                $this->interim = true;
        }
    }

    /**
     * @param string $end what ends the statement: '-', ':20:', or '' for the end of the file
     * @param bool $mayBeCut whether the file's last line has no end
     */
    public function finish(string $end, int $line, bool $mayBeCut): Statement
    {
        if ($this->context === self::DETAILS) {
            $this->notes->mended('details_last', $this->fieldLine);
        }
        $this->endField();
        $this->flushBooking();
        if ($this->piece !== '') {
            $this->pieces[] = $this->piece;
        }
        $statement = $this->statement;
        $isReport = $this->isReport();
        if ($end !== '-') {
            $this->notes->mended('end_missing', $line);
            $statement->cut = !$statement->closing && !$isReport;
        }
        $statement->form = $this->interim ? 'mt942' : 'mt940';
        $this->tellMissing($isReport, $line);
        $encoding = $this->umlautsOfDos > 0 ? Text::DOS : Text::WINDOWS;
        if ($this->foreign > 0) {
            $code = $encoding === Text::DOS ? 'code_page' : 'encoding';
            $this->notes->mended($code, $this->foreignLine, $this->foreign);
        }
        $reader = new BookingReader($statement->currency, $statement->account, $encoding);
        $statement->bookings = new Bookings($this->pieces, $this->count, [$reader, 'each']);
        $this->proof->settle($statement, $this->notes);
        // A balance that is not cut has its line's end, or comes to what it should.
        $statement->cut = $statement->cut || ($mayBeCut && !$isReport && !$statement->balanced);
        $statement->take($this->notes);

        return $statement;
    }

    private function tellMissing(bool $isReport, int $line): void
    {
        $statement = $this->statement;
        if ($statement->cut && !$statement->closing) {
            $this->notes->fault('cut', $line);
        }
        if ($isReport) {
            $this->notes->hint('interim', $statement->line);

            return;
        }
        if (!$statement->opening) {
            $this->notes->fault('no_opening', $statement->line);
        }
        if (!$statement->closing && !$statement->cut) {
            $this->notes->fault('no_closing', $line);
        }
    }

    private function continueField(string $line, int $number): void
    {
        if ($this->context === self::NOTHING) {
            return;
        }
        $this->fieldBytes += strlen($line);
        if ($this->fieldBytes > Lines::MAX_LENGTH) {
            $this->notes->fault('too_long', $number);

            return;
        }
        if ($line[0] === ':' || ($line[0] === '-' && $this->context === self::ENTRY)) {
            $this->notes->mended('details_line', $number);
        }
        $this->field[] = $line;
    }

    private function startField(int $context, string $value): void
    {
        $this->context = $context;
        $this->field = $value === '' ? [] : [$value];
        $this->fieldBytes = strlen($value);
    }

    private function endField(): void
    {
        $context = $this->context;
        $this->context = self::NOTHING;
        if ($context === self::ENTRY) {
            $this->booking .= implode("\n", $this->field);
        } elseif ($context === self::DETAILS) {
            $this->endDetails();
        } elseif ($context === self::INFORMATION) {
            $this->inform(Text::utf8(implode("\n", $this->field)));
        }
        $this->field = [];
    }

    private function inform(string $text): void
    {
        if (strlen($this->statement->information) > Lines::MAX_LENGTH) {
            $this->notes->fault('too_long', $this->fieldLine);
        } elseif ($text !== '') {
            $this->statement->information .= ($this->statement->information === '' ? '' : "\n") . $text;
        }
    }

    private function endDetails(): void
    {
        $text = implode('', $this->field);
        $mended = Details::withMarker($text);
        if ($mended !== null) {
            $this->notes->mended('details_separator', $this->fieldLine);
            $text = $mended;
        }
        if (Details::hasSubfields($text)) {
            Details::hasKeywordInside($text) && $this->notes->mended('keyword_inside', $this->fieldLine);
        } elseif ($text !== '') {
            $text = implode("\n", $this->field);
            Tagged::read($text) || $this->notes->mended('details_plain', $this->fieldLine);
        }
        if ($this->hasDetails) {
            $this->notes->mended('details_twice', $this->fieldLine);
        }
        $this->hasDetails = true;
        $this->booking .= "\r$text";
    }

    private function details(string $value): void
    {
        if ($this->booking !== '') {
            $this->startField(self::DETAILS, $value);

            return;
        }
        if (!$this->lost) {
            $this->notes->mended('details_of_statement', $this->fieldLine);
            $this->startField(self::INFORMATION, $value);
        }
    }

    private function entry(string $line, bool $ends): bool
    {
        $entry = EntryLine::read($line);
        if ($entry && $entry->type === '' && !$ends) {
            // Cut in the amount, perhaps.
            return false;
        }
        $amount = $entry ? Amount::read($entry->amount, $this->statement->currency) : null;
        if (!$entry || !$amount) {
            $this->notes->fault($entry ? 'amount' : 'booking', $this->fieldLine);

            return false;
        }
        $this->tellEntry($entry);
        $amount = $entry->raises() ? $amount : $amount->negative();
        $this->proof->book($amount, false) || $this->notes->fault('currency', $this->fieldLine);
        ++$this->count;
        $kept = [
            $this->fieldLine, $entry->valuta, $entry->booked, $entry->mark, $amount->units, $entry->type, $entry->code,
            $entry->references,
        ];
        $this->booking = implode("\r", $kept) . "\r";
        $this->hasDetails = false;
        $this->startField(self::ENTRY, '');

        return true;
    }

    private function tellEntry(EntryLine $entry): void
    {
        if ($entry->type !== 'N') {
            $this->notes->mended($entry->type === '' ? 'no_transaction_type' : 'transaction_type', $this->fieldLine);
        }
        if (!preg_match('/^\d+,\d*$/D', $entry->amount)) {
            $this->notes->mended('amount_form', $this->fieldLine);
        }
        $valuta = $this->dates->of($entry->valuta);
        $valuta
            && substr($entry->valuta, -2) !== $valuta->format('d')
            && $this->notes->mended('last_day', $this->fieldLine);
        if (!$valuta || ($entry->booked !== '' && !$this->dates->booked($entry->valuta, $entry->booked))) {
            $this->notes->fault('date', $this->fieldLine);
        } elseif ($entry->booked !== '' && Dates::turnsUnseen($entry->valuta, $entry->booked)) {
            $this->notes->mended('booking_year', $this->fieldLine);
        }
    }

    private function flushBooking(): void
    {
        if ($this->booking === '') {
            return;
        }
        if (!Text::isUtf8($this->booking)) {
            $this->foreignLine = $this->foreignLine ?: $this->fieldLine;
            ++$this->foreign;
            $this->umlautsOfDos += Text::umlautsOfDos($this->booking);
        }
        $this->piece .= $this->booking . "\0";
        $this->booking = '';
        if (strlen($this->piece) >= self::PIECE) {
            $this->pieces[] = $this->piece;
            $this->piece = '';
        }
    }

    private function opening(string $value, bool $intermediate): void
    {
        $balance = $this->balance($value, $intermediate, 'OPBD');
        if (!$balance) {
            return;
        }
        $opening = $this->statement->opening;
        $closing = $this->statement->closing;
        // After the first, another one begins the next page, with the balance that closed the last.
        if ($opening ? !$closing || $this->pageOpen || $closing->amount != $balance->amount : $closing) {
            $this->notes->fault('balances', $this->fieldLine);
        }
        if (!$opening) {
            $this->statement->opening = $balance;
            $this->statement->currency = $balance->amount->currency;
        }
        $this->pageOpen = true;
    }

    private function closing(string $value, bool $intermediate, bool $ends): void
    {
        if (!$ends && !preg_match('/,\d{' . Amount::decimals((string) substr($value, 7, 3)) . '}/', $value)) {
            // Cut in the amount, perhaps.
            return;
        }
        $balance = $this->balance($value, $intermediate, 'CLBD');
        if (!$balance) {
            return;
        }
        if ($this->statement->closing && !$this->pageOpen) {
            $this->notes->fault('balances', $this->fieldLine);
        }
        $opening = $this->statement->opening;
        if ($opening && $opening->amount->currency !== $balance->amount->currency) {
            $this->notes->fault('balances', $this->fieldLine);
        }
        $this->statement->closing = $balance;
        $this->statement->currency = $this->statement->currency ?: $balance->amount->currency;
        $this->pageOpen = false;
    }

    private function balance(string $value, bool $intermediate, string $code, bool $isNeeded = true): ?Balance
    {
        $amount = preg_match(self::BALANCE, $value, $part) ? Amount::read($part[4], $part[3]) : null;
        if (!$amount) {
            $isNeeded && $this->notes->fault('balance', $this->fieldLine);

            return null;
        }
        $date = $this->dates->of($part[2]);
        if (!$date) {
            $this->notes->fault('date', $this->fieldLine);
        }

        return new Balance($part[1] === 'D' ? $amount->negative() : $amount, $date, $intermediate, $code);
    }

    private function account(string $value): void
    {
        $account = Text::utf8(trim($value));
        if ($this->statement->account !== '' && $this->statement->account !== $account) {
            $this->notes->fault('account', $this->fieldLine);

            return;
        }
        $this->statement->account = $account;
    }

    private function number(string $value): void
    {
        if (!preg_match(self::NUMBER, $value, $part)) {
            $this->notes->mended('number', $this->fieldLine);

            return;
        }
        $this->statement->number = (int) $part[1];
        $this->statement->page = isset($part[2]) ? (int) $part[2] : null;
    }
}
