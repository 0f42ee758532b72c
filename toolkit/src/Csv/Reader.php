<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Csv;

use Sepa\Toolkit\SystemError;
use Sepa\Toolkit\Unreadable;

/**
 * Rows of a CSV file as spreadsheets write it: comma, semicolon or tab, quoted
 * cells, a byte order mark, UTF-8 or Windows-1252, any line ends. One row is in
 * memory at a time.
 *
 * @implements \IteratorAggregate<int, list<string>>
 */
final class Reader implements \IteratorAggregate
{
    private const CHUNK = 65536;

    /** Longest row in bytes. Longer ones come of a quote that is never closed. */
    private const MAX_ROW = 1 << 20;

    /** By preference where they are equally frequent: a comma can be part of a number. */
    private const DELIMITERS = [';', "\t", ','];

    /** @var resource */
    private $stream;

    private string $name;

    private string $delimiter = ';';

    private bool $isSettled = false;

    private bool $hasTitle = false;

    private string $pattern = '';

    private int $bytesRead = 0;

    private bool $endsInLine = true;

    /** @param resource $stream */
    public function __construct($stream, string $name)
    {
        $this->stream = $stream;
        $this->name = $name;
    }

    /** @param string $file a name, or "-" for standard input */
    public static function open(string $file): self
    {
        if ($file === '-') {
            return new self(STDIN, 'standard input');
        }
        SystemError::forget();
        $stream = @fopen($file, 'rb');
        if ($stream === false) {
            throw Unreadable::bySystem($file);
        }

        return new self($stream, $file);
    }

    /** @return \Generator<int, list<string>> cells, trimmed and in UTF-8, by the row's number in the spreadsheet */
    public function getIterator(): \Generator
    {
        $number = 0;
        $row = '';
        $open = false;
        foreach ($this->lines() as $line) {
            if ($open) {
                $row .= "\n";
                $row .= $line;
            } else {
                $row = $line;
            }
            if (!$this->isSettled && !$open && $line !== '' && !$this->settleDelimiter($line)) {
                continue;
            }
            $open = strpos($line, '"') === false ? $open : $this->leavesQuoteOpen($open ? "\"$line" : $line);
            if ($open && strlen($row) <= self::MAX_ROW) {
                continue;
            }
            ++$number;
            if (strlen($row) > self::MAX_ROW) {
                throw Unreadable::because('row', ['file' => $this->name, 'row' => $number]);
            }
            yield $number => $this->cells($row);
        }
        if ($open) {
            ++$number;
            throw Unreadable::because('quote', ['file' => $this->name, 'row' => $number]);
        }
    }

    /** Lines of title may come first: each has the delimiter that it shows itself, until endTitle(). */
    public function expectTitle(): void
    {
        $this->hasTitle = true;
    }

    /** The delimiter of the row that was read last is that of the rest. */
    public function endTitle(): void
    {
        $this->hasTitle = false;
        $this->isSettled = true;
    }

    public function bytesRead(): int
    {
        return $this->bytesRead;
    }

    /** @return int|null bytes of a regular file */
    public function size(): ?int
    {
        $stat = fstat($this->stream);

        return $stat && ($stat['mode'] & 0170000) === 0100000 ? $stat['size'] : null;
    }

    /** Whether it is this file that is read, by whatever name. */
    public function reads(string $file): bool
    {
        $read = fstat($this->stream);
        $other = @stat($file);

        return $read && $other && is_file($file) && [$read['dev'], $read['ino']] === [$other['dev'], $other['ino']];
    }

    /** Whether the last line is ended. If it is not, the file may have been cut in it. */
    public function endsInLine(): bool
    {
        return $this->endsInLine;
    }

    /** @return \Generator<string> without their ends */
    private function lines(): \Generator
    {
        $rest = '';
        while (!feof($this->stream)) {
            SystemError::forget();
            $chunk = @fread($this->stream, self::CHUNK);
            if ($chunk === false) {
                throw Unreadable::bySystem($this->name);
            }
            $chunk = $this->bytesRead === 0 ? $this->withoutMark($chunk) : $chunk;
            $this->bytesRead += strlen($chunk);
            $rest .= $chunk;
            // A CR at the end may be the first half of CR LF.
            $whole = substr($rest, -1) === "\r" && !feof($this->stream) ? substr($rest, 0, -1) : $rest;
            $lines = explode("\n", strpos($whole, "\r") === false ? $whole : str_replace(["\r\n", "\r"], "\n", $whole));
            $rest = array_pop($lines) . substr($rest, strlen($whole));
            yield from $lines;
            if (strlen($rest) > self::MAX_ROW) {
                throw Unreadable::because('line', ['file' => $this->name]);
            }
        }
        $this->endsInLine = $rest === '';
        if ($rest !== '') {
            yield $rest;
        }
    }

    /** @param string $start first bytes of the file */
    private function withoutMark(string $start): string
    {
        if (strncmp($start, "PK\x03\x04", 4) === 0 || strncmp($start, "\xD0\xCF\x11\xE0", 4) === 0) {
            throw Unreadable::because('workbook', ['file' => $this->name]);
        }
        if (strncmp($start, "\xFF\xFE", 2) === 0 || strncmp($start, "\xFE\xFF", 2) === 0) {
            throw Unreadable::because('utf16', ['file' => $this->name]);
        }

        return strncmp($start, "\xEF\xBB\xBF", 3) === 0 ? substr($start, 3) : $start;
    }

    /** @return bool false for a line that only names the delimiter, which belongs to no row */
    private function settleDelimiter(string $line): bool
    {
        $named = preg_match('/^sep=([,;\t])$/Di', $line, $part) === 1;
        $unquoted = (string) preg_replace('/"[^"]*"/', '', $line);
        $best = $named ? $part[1] : self::DELIMITERS[0];
        foreach ($named ? [] : self::DELIMITERS as $delimiter) {
            if (substr_count($unquoted, $delimiter) > substr_count($unquoted, $best)) {
                $best = $delimiter;
            }
        }
        $this->delimiter = $best;
        $this->isSettled = $named || !$this->hasTitle;
        $cell = "(?:\"(?:[^\"]++|\"\")*+\"[^$best]*+|(?!\")[^$best]*+)";
        $this->pattern = "/^$cell(?:$best$cell)*+$/sD";

        return !$named;
    }

    private function leavesQuoteOpen(string $text): bool
    {
        return preg_match($this->pattern, $text) === 0;
    }

    /** @return list<string> */
    private function cells(string $row): array
    {
        if (!preg_match('//u', $row)) {
            $row = mb_convert_encoding($row, 'UTF-8', 'Windows-1252');
        }
        $cells = strpos($row, '"') === false
            ? explode($this->delimiter, $row)
            : str_getcsv($row, $this->delimiter, '"', '');
        foreach ($cells as &$cell) {
            // No-break spaces come with numbers copied from elsewhere.
            $cell = trim((string) $cell, " \t\n\r");
            $cell = strpos($cell, "\u{A0}") === false
                ? $cell
                : (string) preg_replace('/^[\s\x{A0}]+|[\s\x{A0}]+$/uD', '', $cell);
        }

        return $cells;
    }
}
