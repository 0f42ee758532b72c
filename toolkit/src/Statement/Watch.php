<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * Tells of statements that come one after the other what came already, and where one
 * is missing between two.
 *
 * @internal
 */
final class Watch
{
    /** Bookings that are remembered; beyond them doubles are not told. */
    private const MOST = 2000000;

    /** @var array<int, true> ids of bookings, hashed */
    private array $ids = [];

    /** @var string ids of the statement that came last, eight bytes each */
    private string $lastIds = '';

    /** @var array<string, true> */
    private array $statements = [];

    /** @var array<string, Statement> the latest by account and currency, without its bookings */
    private array $latest = [];

    /** @param string $ids of its bookings, eight bytes each */
    public function look(Statement $statement, string $ids): void
    {
        $identity = md5(
            json_encode(
                array_diff_key($statement->head(), ['file' => 1, 'mended' => 1, 'hints' => 1, 'faults' => 1])
            ) . count($statement->bookings),
            true
        );
        if (isset($this->statements[$identity])) {
            $statement->hints[] = new Note('double_statement', $statement->line);

            return;
        }
        $this->statements[$identity] = true;
        $this->lookAtBookings($statement, $ids);
        if (
            $statement->hasBalances()
            && $statement->closing->code !== 'ITBD'
            && strncmp($statement->form, 'camt.052', 8) !== 0
        ) {
            $this->lookBack($statement);
        }
    }

    private function lookAtBookings(Statement $statement, string $ids): void
    {
        foreach (count($this->ids) < self::MOST ? self::numbers($this->lastIds) : [] as $id) {
            $this->ids[$id] = true;
        }
        $this->lastIds = $ids;
        $doubles = 0;
        foreach ($this->ids ? self::numbers($ids) : [] as $id) {
            $doubles += isset($this->ids[$id]) ? 1 : 0;
        }
        if ($doubles > 0) {
            $statement->hints[] = $note = new Note('double', $statement->line);
            $note->count = $doubles;
        }
    }

    private function lookBack(Statement $statement): void
    {
        $account = "$statement->account $statement->currency";
        $last = $this->latest[$account] ?? null;
        $follows = $last && $last->closing->amount->units === $statement->opening->amount->units;
        if ($last && !$follows) {
            if (!self::isLater($last, $statement)) {
                return;
            }
            $values = ['opening' => $statement->opening->amount->text(), 'closing' => $last->closing->amount->text()];
            $statement->hints[] = new Note('gap', $statement->line, $values);
        }
        $kept = clone $statement;
        $kept->bookings = $kept->pending = new Bookings([], 0, static fn (): array => []);
        $this->latest[$account] = $kept;
    }

    private static function isLater(Statement $last, Statement $next): bool
    {
        if ($last->closing->date && $next->closing->date && $last->closing->date != $next->closing->date) {
            return $next->closing->date > $last->closing->date;
        }

        return $last->number !== null && $next->number !== null && $next->number > $last->number;
    }

    /** @return array<int, int> */
    private static function numbers(string $ids): array
    {
        return $ids === '' ? [] : unpack('q*', $ids);
    }
}
