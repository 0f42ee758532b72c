<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** The payment blocks of a message as the extension will write them. */
final class Blocks implements \Countable
{
    /** In the order in which a day's blocks stand in the document. */
    private const SEQUENCES = ['', 'FRST', 'RCUR', 'OOFF', 'FNAL'];

    /** @var array<string, int> number of payments by day and rank of the sequence type */
    private array $counts = [];

    /** @var array<string, array<int, string>> what is added to payments, by block and place in it */
    private array $additions = [];

    /**
     * @param string $date yyyy-mm-dd
     * @param string $sequence of a debit, else empty
     * @param string $addition to the payment in the document, as Additions packs it; empty for none
     */
    public function add(string $date, string $sequence, string $addition): void
    {
        $block = $sequence === '' ? $date : $date . array_search(strtoupper($sequence), self::SEQUENCES, true);
        $place = $this->counts[$block] ?? 0;
        $this->counts[$block] = $place + 1;
        if ($addition !== '') {
            $this->additions[$block][$place] = $addition;
        }
    }

    public function count(): int
    {
        return count($this->counts);
    }

    /**
     * In the order of the document.
     *
     * @return iterable<array{string, string, int, array<int, string>}> day, sequence type or empty, number of payments,
     *     additions by place
     */
    public function inOrder(): iterable
    {
        // Keys as texts: days, and within them the ranks.
        $blocks = array_map('strval', array_keys($this->counts));
        sort($blocks, SORT_STRING);
        foreach ($blocks as $block) {
            $sequence = self::SEQUENCES[(int) substr($block, 10)];
            yield [substr($block, 0, 10), $sequence, $this->counts[$block], $this->additions[$block] ?? []];
        }
    }
}
