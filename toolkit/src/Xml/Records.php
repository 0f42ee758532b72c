<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Xml;

/**
 * Walks over a document once and gives the records in it: flat arrays of what stands
 * below an element, by short keys. What no table names is passed over unread.
 *
 * A table tells for each path below its element ("/Acct/Id/IBAN") a key, with one of
 * these marks before it: none for a text, of which the first counts, "+" for all of
 * them as a list, "$" for an amount with its currency under the key and "@", ">" for
 * a record that is given by itself when it ends, "*" for records that are a list in
 * the one around them. An element "Pty" in a party, as newer versions have it, is
 * no part of a path.
 */
final class Records
{
    /** Bytes that a record keeps; what is beyond them is left out and told. */
    private const ROOM = 1048576;

    private const PER_VALUE = 64;

    private const PER_RECORD = 512;

    // XMLReader's own constants, which are looked up each time.
    private const ELEMENT = 1, TEXT = 3, CDATA = 4, END_ELEMENT = 15;

    /** What a node of a table has beside the elements below it. */
    private const KEY = 0, MARK = 1;

    /** Elements that newer versions have a "Pty" in. */
    private const PARTIES = ['Dbtr', 'Cdtr', 'UltmtDbtr', 'UltmtCdtr'];

    private \XMLReader $reader;

    /** @var array<string, array<int|string, mixed>> */
    private array $tables;

    /** @var list<array{string, string, int, array<string, mixed>, int}> name, mark, depth, values and room of the records around the one that is read */
    private array $around = [];

    /** @var array<string, mixed> */
    private array $outer = [];

    /** @var int records that had no room for all of their texts */
    private int $overfull = 0;

    private bool $isWhole = true;

    private bool $goesOn = false;

    /** @param array<string, array<int|string, mixed>> $tables by the record's name, from tables() */
    public function __construct(\XMLReader $reader, array $tables)
    {
        $this->reader = $reader;
        $this->tables = $tables;
    }

    /**
     * Tables as trees whose nodes are elements.
     *
     * @param array<string, array<string, string>> $tables
     * @return array<string, array<int|string, mixed>>
     */
    public static function tables(array $tables): array
    {
        $trees = [];
        foreach ($tables as $name => $rows) {
            $tree = ['', ''];
            foreach ($rows as $path => $key) {
                $node = &$tree;
                foreach (explode('/', substr($path, 1)) as $element) {
                    $node[$element] = $node[$element] ?? ['', ''];
                    $node = &$node[$element];
                }
                $node[self::KEY] = ltrim($key, '+$>*');
                $node[self::MARK] = substr($key, 0, strlen($key) - strlen($node[self::KEY]));
                unset($node);
            }
            $trees[$name] = self::withParties($tree);
        }

        return $trees;
    }

    /**
     * What the record around the one that was given has so far.
     *
     * @return array<string, mixed>
     */
    public function outer(): array
    {
        return $this->outer;
    }

    /** Whether the record that was given has its end; one that is open where the document breaks off has not. */
    public function isWhole(): bool
    {
        return $this->isWhole;
    }

    /** Whether something follows the element with the records that is not told in them. */
    public function goesOn(): bool
    {
        return $this->goesOn;
    }

    /** How many records had no room for all of their texts since this was asked last. */
    public function overfull(): int
    {
        [$overfull, $this->overfull] = [$this->overfull, 0];

        return $overfull;
    }

    /**
     * The records below the element that the reader stands on; its own is the last and
     * has the name "".
     *
     * @return \Generator<string, array<string, mixed>>
     */
    public function each(): \Generator
    {
        $reader = $this->reader;
        [$name, $mark, $base, $values, $room] = ['', '>', $reader->depth, [], self::ROOM];
        $nodes = [$base => $this->tables['']];
        $more = !$reader->isEmptyElement && $reader->read();
        while ($more) {
            $type = $reader->nodeType;
            if ($type !== self::ELEMENT) {
                if ($type === self::END_ELEMENT && $reader->depth === $base) {
                    $ended = [$name, $mark, $values, $room];
                    [$name, $mark, $base, $values, $room] = array_pop($this->around) ?? ['', '', -1, [], 0];
                    yield from $this->end($ended, $values, $room);
                }
                $more = $reader->read();
                continue;
            }
            $depth = $reader->depth;
            $nodes[$depth] = $node = $nodes[$depth - 1][$reader->localName] ?? null;
            if ($node === null || $base < 0) {
                $this->goesOn = $this->goesOn || $base < 0;
                $more = $reader->next();
                continue;
            }
            [$key, $its] = $node;
            if (($its === '>' || $its === '*') && !$reader->isEmptyElement) {
                $this->around[] = [$name, $mark, $base, $values, $room];
                [$name, $mark, $base, $values] = [$key, $its, $depth, []];
                $room = $mark === '>' ? self::ROOM : $room - self::PER_RECORD;
                $nodes[$depth] = $this->tables[$key];
            } elseif ($its === '$') {
                $values["$key@"] = $values["$key@"] ?? $reader->getAttribute('Ccy');
            }
            $more = $reader->read();
            $type = $key === '' || $depth === $base ? 0 : $reader->nodeType;
            if (
                $type !== self::TEXT
                && ($type < self::CDATA || $type === self::END_ELEMENT || $reader->depth <= $depth)
            ) {
                continue;
            }
            $text = $type === self::TEXT || $type === self::CDATA ? $reader->value : '';
            $more = $reader->read();
            $more = $reader->nodeType === self::END_ELEMENT ? $reader->read() : $this->goOn($text, $more);
            $room -= strlen($text) + self::PER_VALUE;
            if ($room >= 0 && $its === '+') {
                $values[$key][] = $text;
            } elseif ($room >= 0 && !isset($values[$key]) && $text !== '') {
                $values[$key] = $text;
            }
        }
        yield from $this->breakOff($name, $base, $values);
    }

    /**
     * Adds to a text what comes in further pieces, up to the element's end, which is
     * passed over, or an element in it.
     *
     * @return bool whether the document goes on
     */
    private function goOn(string &$text, bool $more): bool
    {
        $reader = $this->reader;
        for (; $more; $more = $reader->read()) {
            $type = $reader->nodeType;
            if ($type === self::END_ELEMENT || $type === self::ELEMENT) {
                return $type === self::ELEMENT || $reader->read();
            }
            if ($type === self::TEXT || $type === self::CDATA) {
                $text .= $reader->value;
            }
        }

        return false;
    }

    /**
     * @param array{string, string, array<string, mixed>, int} $ended name, mark, values and room
     * @param array<string, mixed> $values of the record around it
     * @return array<string, array<string, mixed>> the record, if it is one to give
     */
    private function end(array $ended, array &$values, int &$room): array
    {
        [$name, $mark, $its, $left] = $ended;
        if ($mark === '>') {
            $this->overfull += $left < 0 ? 1 : 0;
            $this->outer = $values;

            return [$name => $its];
        }
        $room = $left;
        if ($left >= 0) {
            $values[$name][] = $its;
        }

        return [];
    }

    /**
     * What is open where the document ends, from the inside out.
     *
     * @param array<string, mixed> $values
     * @return \Generator<string, array<string, mixed>>
     */
    private function breakOff(string $name, int $base, array $values): \Generator
    {
        if ($base < 0) {
            return;
        }
        $this->isWhole = false;
        $this->outer = [];
        yield $name => $values;
        while ($this->around) {
            [$name, , , $values] = array_pop($this->around);
            yield $name => $values;
        }
    }

    /**
     * @param array<int|string, mixed> $node
     * @return array<int|string, mixed>
     */
    private static function withParties(array $node): array
    {
        foreach ($node as $element => $below) {
            if (is_array($below)) {
                $node[$element] = self::withParties($below);
                if (in_array($element, self::PARTIES, true)) {
                    $node[$element]['Pty'] = $node[$element];
                }
            }
        }

        return $node;
    }
}
