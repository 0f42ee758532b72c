<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Bookings;
use Sepa\Toolkit\Statement\Notes;
use Sepa\Toolkit\Statement\Proof;
use Sepa\Toolkit\Statement\Statement;

/**
 * Makes one statement of its records, or of those of all its pages. Entries are kept
 * as text: a line of JSON for each, and after it one for each transaction within.
 *
 * @internal
 */
final class Builder
{
    /** Bytes of entries that are kept in one text. */
    private const PIECE = 65536;

    private const JSON = JSON_UNESCAPED_UNICODE | JSON_UNESCAPED_SLASHES;

    /** What banks call the id by which they tell one booking in all their messages. */
    private const OWN_IDS = ['FI-UMSATZ-ID', 'FIUMSATZ-ID', 'UMSATZ'];

    private const OPENINGS = ['OPBD', 'PRCD'];

    private const CLOSINGS = ['CLBD', 'ITBD'];

    /** @var string which messages there are: camt.052, camt.053, camt.054 */
    private string $kind;

    private Notes $notes;

    private Days $days;

    private Statement $statement;

    /** @var int number of the entry that came last */
    private int $number = 0;

    /** @var array<int, list<string|array{string, string}>> texts of what is booked, and of what is not; an entry and its parts */
    private array $pieces = [[], []];

    /** @var array{0: string, 1: string} */
    private array $piece = ['', ''];

    /** @var array{0: int, 1: int} */
    private array $count = [0, 0];

    private Proof $proof;

    private Batch $batch;

    private string $ids = '';

    private int $page = 1;

    private bool $isLast = true;

    private bool $hasFirst = true;

    public function __construct(string $kind)
    {
        $this->kind = $kind;
        $this->notes = new Notes(true);
        $this->days = new Days();
        $this->proof = new Proof();
        $this->batch = new Batch();
        $this->statement = new Statement('', 0);
    }

    public function notes(): Notes
    {
        return $this->notes;
    }

    public function number(): int
    {
        return $this->number;
    }

    /**
     * @param array<string, mixed> $values
     * @param array<string, mixed> $entry around it, as far as it is read
     */
    public function transaction(array $values, array $entry): void
    {
        $batch = $this->batch;
        if ($batch->count === 0) {
            // Most entries have one, whose amount is the entry's.
            ++$batch->count;
            $batch->first = $values;

            return;
        }
        if ($batch->first) {
            $batch->count = 0;
            $batch->text = self::part($batch, $batch->first, $entry['amount@'] ?? null);
            $batch->first = null;
        }
        $batch->text .= self::part($batch, $values, $entry['amount@'] ?? null);
    }

    /**
     * @param array<string, mixed> $values
     * @param array<string, mixed> $statement around it, as far as it is read
     */
    public function entry(array $values, array $statement): void
    {
        ++$this->number;
        $batch = $this->batch;
        $this->batch = new Batch();
        $currency = (string) ($values['amount@'] ?? '');
        $rounded = false;
        $amount = Amount::decimal((string) ($values['amount'] ?? ''), $currency, $rounded);
        $sign = trim((string) ($values['sign'] ?? ''));
        if (!$amount || ($sign !== 'CRDT' && $sign !== 'DBIT')) {
            $this->notes->fault('amount', $this->number);

            return;
        }
        $rounded && $this->notes->mended('rounded', $this->number);
        $amount = $sign === 'DBIT' ? $amount->negative() : $amount;
        $batch->differs($amount) && $this->notes->hint('parts', $this->number);
        $isReversal = in_array(trim((string) ($values['reversal'] ?? '')), ['true', '1'], true);
        $isBooked = trim((string) ($values['status'] ?? Booking::BOOKED)) === Booking::BOOKED;
        if ($isBooked) {
            $this->book($amount, $isReversal);
            $id = self::id($batch->first['own'] ?? $batch->own) ?? $values['bankref'] ?? null;
            $this->ids .= $id === null || $id === 'NONREF' ? ''
                : substr(md5(($statement['account'] ?? '') . "|$amount->units|$id", true), 0, 8);
        } else {
            $this->proof->announce();
            $this->notes->hint('pending', $this->number);
        }
        unset($values['amount'], $values['sign'], $values['balances']);
        $values['units'] = $amount->units;
        if ($batch->first) {
            unset($batch->first['amount'], $batch->first['amount@'], $batch->first['own']);
            $values['first'] = $batch->first;
        }
        $values['reversal'] = $isReversal;
        $this->keep(
            $isBooked ? 0 : 1,
            $values + ['number' => $this->number, 'parts' => $batch->count, 'bytes' => strlen($batch->text)],
            $batch->text
        );
    }

    /**
     * What the statement says of itself, when all its entries are there.
     *
     * @param array<string, mixed> $values
     * @param array<string, mixed> $header of the message
     */
    public function head(array $values, array $header, string $form): void
    {
        $text = static fn (string $key): string => trim((string) ($values[$key] ?? ''));
        $statement = $this->statement;
        $statement->reference = $text('id');
        $statement->form = $form;
        $statement->account = $text('account');
        $statement->currency = $text('currency');
        $statement->owner = $text('owner');
        $statement->bank = $text('bank');
        $statement->created = $text('created');
        $statement->number = (int) $text('number') > 0 ? (int) $text('number') : null;
        $statement->information = implode("\n", $values['info'] ?? []);
        $this->page = max(1, (int) ($values['page'] ?? $header['page'] ?? 1));
        $this->isLast = trim((string) ($values['last'] ?? $header['last'] ?? 'true')) !== 'false';
        $this->hasFirst = $this->page === 1;
        foreach ($values['balances'] ?? [] as $balance) {
            $this->balance($balance);
        }
        if ($text('copy') !== '') {
            $this->notes->hint('copy', 0);
        }
        $this->proof->tell($values);
    }

    /** It ends before its own end, since the document does. */
    public function breakOff(string $reason): void
    {
        $this->statement->cut = true;
        $this->notes->fault('malformed', $this->number, ['reason' => $reason]);
    }

    public function from(string $file): void
    {
        $this->statement->file = $file;
    }

    /** Whether the document breaks off within it. */
    public function isBroken(): bool
    {
        return $this->statement->cut;
    }

    /** Whether pages of it follow. */
    public function isOpen(): bool
    {
        return !$this->isLast;
    }

    /** Takes the next page, if that is one of the same statement. */
    public function goOn(self $next): bool
    {
        $mine = $this->statement;
        $other = $next->statement;
        $isSame = $mine->account === $other->account
            && ($mine->number ?? $mine->reference) === ($other->number ?? $other->reference);
        if ($this->isLast || $next->page !== $this->page + 1 || !$isSame) {
            return false;
        }
        $this->page = $next->page;
        $this->isLast = $next->isLast;
        foreach ([0, 1] as $which) {
            $next->flush($which);
            $this->flush($which);
            array_push($this->pieces[$which], ...$next->pieces[$which]);
            $this->count[$which] += $next->count[$which];
        }
        $this->number += $next->number;
        $this->ids .= $next->ids;
        $this->proof->add($next->proof);
        $this->notes->take($next->notes);
        $mine->closing = $other->closing;
        $mine->available = $other->available;
        $mine->information = trim("$mine->information\n$other->information");

        return true;
    }

    /** @return array{Statement, string} the statement, and the ids of its bookings, eight bytes each */
    public function finish(): array
    {
        $statement = $this->statement;
        $isPage = !$this->isLast || !$this->hasFirst;
        if ($isPage) {
            $statement->page = $this->page;
            $this->notes->hint('pages', 0);
        }
        if (!$statement->hasBalances() && !$statement->cut) {
            $this->tellMissing($isPage);
        }
        $turned = $this->proof->settle($statement, $this->notes);
        $reader = new BookingReader($statement->account, $statement->currency, $turned);
        foreach ([0, 1] as $which) {
            $this->flush($which);
        }
        $statement->bookings = new Bookings($this->pieces[0], $this->count[0], [$reader, 'each']);
        $statement->pending = new Bookings($this->pieces[1], $this->count[1], [$reader, 'each']);
        $statement->take($this->notes);

        return [$statement, $this->ids];
    }

    private function tellMissing(bool $isPage): void
    {
        $statement = $this->statement;
        if ($this->kind !== 'camt.053' || ($isPage && ($statement->opening || $statement->closing))) {
            $statement->opening || $statement->closing || $this->notes->hint('interim', 0);

            return;
        }
        $statement->opening || $this->notes->fault('no_opening', 0);
        $statement->closing || $this->notes->fault('no_closing', 0);
    }

    private function book(Amount $amount, bool $isReversal): void
    {
        $this->proof->book($amount, $isReversal) || $this->notes->fault('currency', $this->number);
    }

    /**
     * The line of JSON for one of several transactions.
     *
     * @param array<string, mixed> $values
     */
    private static function part(Batch $batch, array $values, ?string $currency): string
    {
        $units = $batch->add($values, $currency);
        unset($values['amount'], $values['amount@'], $values['own']);

        return json_encode(['units' => $units] + $values, self::JSON) . "\n";
    }

    /** @param array<string, mixed> $values */
    private function keep(int $which, array $values, string $parts): void
    {
        ++$this->count[$which];
        if (strlen($parts) > self::PIECE) {
            // A text of many megabytes is not copied into another.
            $this->flush($which);
            $this->pieces[$which][] = [json_encode($values, self::JSON), $parts];

            return;
        }
        $this->piece[$which] .= json_encode($values, self::JSON) . "\n" . $parts;
        if (strlen($this->piece[$which]) >= self::PIECE) {
            $this->flush($which);
        }
    }

    private function flush(int $which): void
    {
        if ($this->piece[$which] !== '') {
            $this->pieces[$which][] = $this->piece[$which];
            $this->piece[$which] = '';
        }
    }

    /** @param array<string, string> $values */
    private function balance(array $values): void
    {
        $rounded = false;
        $amount = Amount::decimal($values['amount'] ?? '', $values['amount@'] ?? '', $rounded);
        $code = trim($values['code'] ?? '');
        if (!$amount) {
            if (in_array($code, array_merge(self::OPENINGS, self::CLOSINGS), true)) {
                $this->notes->fault('balance', 0);
            }

            return;
        }
        $rounded && $this->notes->mended('rounded', 0);
        $amount = trim($values['sign'] ?? '') === 'DBIT' ? $amount->negative() : $amount;
        $balance = new Balance($amount, $this->days->of($values['date'] ?? ''), $code === 'ITBD', $code);
        $statement = $this->statement;
        if (in_array($code, self::OPENINGS, true)) {
            $statement->opening = $statement->opening && $code !== 'OPBD' ? $statement->opening : $balance;
        } elseif (in_array($code, self::CLOSINGS, true)) {
            $statement->closing = $statement->closing && $code !== 'CLBD' ? $statement->closing : $balance;
        } else {
            $statement->available[] = $balance;
        }
        $statement->currency = $statement->currency ?: $amount->currency;
    }

    /** @param list<array<string, string>> $own */
    private static function id(array $own): ?string
    {
        foreach ($own as $reference) {
            if (in_array($reference['type'] ?? '', self::OWN_IDS, true)) {
                return $reference['ref'] ?? null;
            }
        }

        return null;
    }
}
