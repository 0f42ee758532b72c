<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Mt940;

use Sepa\Toolkit\Statement\Notes;
use Sepa\Toolkit\Statement\Statement;

/**
 * Finds where statements begin and end among the lines of a file.
 *
 * @internal
 */
final class Splitter
{
    private const FIELD = '/^:(?:25P?|28C?|60[FM]|61|62[FM]|86):/';

    // Of a SWIFT message, before its text.
    private const HEADER = '/\{(?:[1-4](?::|$)|$)/D';

    private const INLINE_END = '/^(.+)-\}\s*(\{.*)?$/s';

    private Lines $lines;

    /** @var Notes about the file as a whole */
    private Notes $notes;

    private ?Builder $builder = null;

    private int $statements = 0;

    /** @var int number of a line "-" that can be text or the end, 0 if there is none */
    private int $dash = 0;

    private bool $enveloped = false;

    /** @var int line where an envelope or a ":20:" begins with no statement after it yet, 0 if there is none */
    private int $begun = 0;

    /** @param Notes $notes about the file as a whole */
    public function __construct(Lines $lines, Notes $notes)
    {
        $this->lines = $lines;
        $this->notes = $notes;
    }

    /** @return \Generator<Statement> */
    public function each(): \Generator
    {
        $number = 0;
        foreach ($this->lines->each() as $number => $line) {
            $statement = $this->line($line, $number);
            if ($statement) {
                yield $statement;
                unset($statement);
            }
        }
        $statement = $this->end($number);
        if ($statement) {
            yield $statement;
        }
    }

    /** Takes the next line, which isn't empty; gives the statement that is complete now, if there is one. */
    private function line(string $line, int $number): ?Statement
    {
        $first = $line[0];
        if (!$this->builder) {
            $this->outside($line, $number);

            return null;
        }
        if ($this->dash !== 0) {
            if (!preg_match(self::FIELD, $line)) {
                return $this->finish('-', $this->dash, $line, $number);
            }
            $this->builder->line('-', $this->dash, true);
            $this->dash = 0;
        }
        if ($first === ':' && strncmp($line, ':20:', 4) === 0) {
            return $this->finish(':20:', $number, $line, $number);
        }
        if ($first === '{') {
            return $this->finish('{', $number, $line, $number);
        }
        if ($first === '-' && $this->builder->ends($line)) {
            if ($this->builder->dashCanBeText()) {
                $this->dash = $number;

                return null;
            }

            return $this->finish('-', $number, substr($line, 1), $number);
        }
        if ($this->enveloped && preg_match(self::INLINE_END, $line, $part)) {
            $this->builder->line($part[1], $number, true);
            $this->builder->notes()->mended('envelope', $number);

            return $this->finish('-', $number, $part[2] ?? '', $number);
        }
        $this->builder->line($line, $number, $this->lines->lastLineEnds());
        if ($this->lines->wasCut($number)) {
            $this->builder->notes()->fault('too_long', $number);
        }

        return null;
    }

    /** The statement that the end of the file leaves, if there is one. */
    private function end(int $number): ?Statement
    {
        if ($this->builder) {
            // Text that was cut behind its "-" looks like an end.
            $ended = $this->dash !== 0 && ($this->lines->lastLineEnds() || $this->builder->isReport());

            return $this->finish($ended ? '-' : '', $number, '', $number);
        }
        if ($this->begun !== 0) {
            $this->notes->fault('cut', $this->begun);
        }
        if ($this->statements === 0) {
            $this->notes->fault($this->lines->bytes() === 0 ? 'empty' : 'no_statement', 1);
        }

        return null;
    }

    /** @param string $rest what follows the end in the same line, or the line itself */
    private function finish(string $end, int $number, string $rest, int $restNumber): Statement
    {
        $builder = $this->builder;
        $this->builder = null;
        $this->dash = 0;
        $this->lines->tell($builder->notes(), $number);
        if (!$this->lines->lastLineEnds()) {
            $builder->notes()->mended('last_line_end', $number);
        }
        $statement = $builder->finish($end, $number, $end === '' && !$this->lines->lastLineEnds());
        $this->outside($rest, $restNumber);

        return $statement;
    }

    private function outside(string $line, int $number): void
    {
        $text = strpos($line, '{4:');
        if ($text !== false) {
            $this->enveloped = true;
            $line = substr($line, $text + 3);
        }
        if (strncmp($line, ':20:', 4) === 0) {
            ++$this->statements;
            $this->begun = 0;
            $this->builder = new Builder(substr($line, 4), $number);
            if ($text !== false) {
                $this->builder->notes()->mended('envelope', $number);
            } elseif ($number === 1) {
                $this->builder->notes()->mended('first_line_end', $number);
            }
        } elseif (preg_match(self::FIELD, $line)) {
            $this->notes->fault('outside', $number);
        } elseif (($line !== '' && strpos(':20:', $line) === 0) || preg_match(self::HEADER, $line) || $text !== false) {
            $this->begun = $number;
        }
    }
}
