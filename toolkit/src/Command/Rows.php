<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\SystemError;
use Symfony\Component\Console\Formatter\OutputFormatter;
use Symfony\Component\Console\Helper\Table;
use Symfony\Component\Console\Helper\TableStyle;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\BufferedOutput;
use Symfony\Component\Console\Output\OutputInterface;
use Symfony\Component\Console\Output\StreamOutput;
use Symfony\Component\Console\Terminal;

/**
 * Writes rows as they come: tables for people, CSV or one JSON object a line
 * for programs. What is not written yet is bounded, whatever the number of rows.
 */
final class Rows
{
    public const TABLE = 'table';

    public const CSV = 'csv';

    public const JSON = 'json';

    /** Rows of one table: the widths of its columns are those of its own cells. */
    private const TABLE_ROWS = 500;

    public const BUFFER = 65536;

    public const JSON_FLAGS = JSON_UNESCAPED_UNICODE | JSON_UNESCAPED_SLASHES | JSON_INVALID_UTF8_SUBSTITUTE;

    /** Widest cell of a table, in characters; longer ones take several lines. */
    private const CELL_WIDTH = 60;

    /** Columns up to here are as wide as they are, also where there is little room. */
    private const NARROW = 16;

    /** Headings of columns whose cells stand at the right. */
    private const NUMBERS = ['row', 'amount', 'balance'];

    private OutputInterface $output;

    private string $format;

    private bool $headings;

    /** @var bool whether a text that a spreadsheet would take for a formula is left as it is */
    private bool $raw;

    private bool $isGerman = false;

    /** @var list<array<string, string>> */
    private array $tableRows = [];

    private string $buffer = '';

    private ?Progress $progress = null;

    private ?Words $words;

    public function __construct(
        OutputInterface $output,
        string $format,
        bool $headings = true,
        bool $raw = false,
        ?Words $words = null
    ) {
        $this->output = $output;
        $this->format = $format;
        $this->headings = $headings;
        $this->raw = $raw;
        $this->words = $words;
    }

    /** @return list<InputOption> that choose the format */
    public static function options(?Words $words = null): array
    {
        $words = $words ?? new Words('en');

        return array_map(static function (string $name) use ($words): InputOption {
            return new InputOption($name, null, InputOption::VALUE_NONE, $words->of("option.$name"));
        }, ['csv', 'json', 'no-headings', 'raw']);
    }

    public static function format(InputInterface $input): string
    {
        if ($input->getOption('csv') && $input->getOption('json')) {
            throw new Failure('formats');
        }
        if ($input->getOption('csv')) {
            return self::CSV;
        }

        return $input->getOption('json') ? self::JSON : self::TABLE;
    }

    /** @param Words|null $words in which the headings of tables are */
    public static function of(InputInterface $input, OutputInterface $output, ?Words $words = null): self
    {
        $raw = (bool) $input->getOption('raw');

        return new self($output, self::format($input), !$input->getOption('no-headings'), $raw, $words);
    }

    /** CSV as a German spreadsheet opens it: semicolons, decimal commas, days such as 31.12.2026, a byte order mark. */
    public function german(): self
    {
        $this->isGerman = true;
        $this->buffer = "\u{FEFF}";

        return $this;
    }

    /**
     * @param array<string, mixed>|\JsonSerializable $record for programs; CSV may have objects of Amount
     *                                                       and days as \DateTimeInterface in it
     * @param callable(): array<string, string> $cells for people, by heading
     */
    public function add($record, callable $cells): void
    {
        if ($this->format === self::TABLE) {
            $this->tableRows[] = $cells();
            if (count($this->tableRows) === self::TABLE_ROWS) {
                $this->flush();
            }

            return;
        }
        $this->buffer .= $this->format === self::JSON
            ? json_encode($record, self::JSON_FLAGS) . "\n"
            : $this->csv($record instanceof \JsonSerializable ? $record->jsonSerialize() : $record);
        if (strlen($this->buffer) >= self::BUFFER) {
            $this->flush();
        }
    }

    /** Rows and a bar may share a terminal. */
    public function besides(Progress $progress): void
    {
        if ($this->output instanceof StreamOutput && stream_isatty($this->output->getStream())) {
            $this->progress = $progress;
        }
    }

    public function flush(): void
    {
        if ($this->progress !== null) {
            $this->progress->hide();
        }
        if ($this->tableRows) {
            $table = new BufferedOutput($this->output->getVerbosity(), $this->output->isDecorated());
            $this->renderTable($table);
            $this->buffer = $table->fetch();
            $this->tableRows = [];
        }
        self::write($this->output, $this->buffer);
        $this->buffer = '';
    }

    /** @throws Failure where Symfony's own would go on in silence */
    public static function write(OutputInterface $output, string $text): void
    {
        if (!$output instanceof StreamOutput) {
            $output->write($text, false, OutputInterface::OUTPUT_RAW);

            return;
        }
        while ($text !== '') {
            SystemError::forget();
            $written = @fwrite($output->getStream(), $text);
            if ($written === false || $written === 0) {
                // A reader that has seen enough is no fault to tell.
                throw SystemError::reason() === 'Broken pipe'
                    ? new Failure('')
                    : Failure::ofSystem('cannot_write_output');
            }
            $text = substr($text, $written);
        }
        fflush($output->getStream());
    }

    private function renderTable(OutputInterface $output): void
    {
        $table = new Table($output);
        $headings = array_keys($this->tableRows[0]);
        $words = $this->words ?? new Words('en');
        $titles = array_map(static fn (string $heading): string => $words->word('column', $heading), $headings);
        $table->setHeaders($titles);
        foreach ($this->widths($titles) as $column => $width) {
            $table->setColumnMaxWidth($column, $width);
        }
        foreach (array_intersect($headings, self::NUMBERS) as $column => $heading) {
            $table->setColumnStyle($column, (new TableStyle())->setPadType(STR_PAD_LEFT));
        }
        foreach ($this->tableRows as $cells) {
            $table->addRow(array_map([self::class, 'printable'], array_values($cells)));
        }
        $table->render();
    }

    /**
     * @param list<string> $titles
     * @return list<int> the widest cells of the table's columns; on a terminal so that rows fit it
     */
    private function widths(array $titles): array
    {
        $widths = [];
        foreach (array_keys($this->tableRows[0]) as $column => $heading) {
            $longest = max(array_map('mb_strwidth', array_column($this->tableRows, $heading)));
            $widths[] = min(self::CELL_WIDTH, max($longest, mb_strwidth($titles[$column])));
        }
        $isTerminal = $this->output instanceof StreamOutput && stream_isatty($this->output->getStream());
        // A line beside each column, and a blank on both sides.
        $room = $isTerminal ? (new Terminal())->getWidth() - 3 * count($widths) - 1 : PHP_INT_MAX;
        $wide = array_filter($widths, static fn (int $width): bool => $width > self::NARROW);
        if ($wide && array_sum($widths) > $room) {
            $each = max(self::NARROW, intdiv($room - array_sum(array_diff_key($widths, $wide)), count($wide)));
            $widths = array_replace($widths, array_map(static fn (int $width): int => min($width, $each), $wide));
        }

        return $widths;
    }

    /** One line without what a terminal would obey: control characters, and those that turn the direction. */
    public static function clean(string $text): string
    {
        return self::cleanOf('\p{Cc}', $text);
    }

    private static function cleanOf(string $characters, string $text): string
    {
        $obeyed = "/[$characters\\x{202A}-\\x{202E}\\x{2066}-\\x{2069}]/u";

        return (string) preg_replace($obeyed, '?', mb_scrub($text, 'UTF-8'));
    }

    private static function printable(string $cell): string
    {
        return OutputFormatter::escape(self::clean((string) preg_replace('/\s+/u', ' ', mb_scrub($cell, 'UTF-8'))));
    }

    /** @param array<string, mixed> $record */
    private function csv(array $record): string
    {
        $lines = '';
        foreach ($this->headings ? [array_keys($record), $record] : [$record] as $cells) {
            $texts = array_map([$this, 'csvCell'], $cells);
            $lines .= implode($this->isGerman ? ';' : ',', $texts) . "\n";
        }
        $this->headings = false;

        return $lines;
    }

    /** @param mixed $value */
    private function csvCell($value): string
    {
        if (is_bool($value)) {
            return $value ? 'true' : 'false';
        }
        if ($value instanceof Amount) {
            return $value->text($this->isGerman ? ',' : '.');
        }
        if ($value instanceof \DateTimeInterface) {
            return $value->format($this->isGerman ? 'd.m.Y' : 'Y-m-d');
        }
        $text = is_array($value) ? implode(' ', $value) : (string) $value;

        return self::quoted(is_int($value) || is_float($value) ? $text : $this->harmless($text));
    }

    /** Neither a terminal nor a spreadsheet obeys it. */
    private function harmless(string $text): string
    {
        // Most texts have neither a control character nor anything beyond ASCII.
        $text = preg_match('/[^ -~]/', $text) ? self::cleanOf('\x00-\x08\x0B\x0C\x0E-\x1F\x7F-\x{9F}', $text) : $text;

        return !$this->raw && $text !== '' && strpos("=+-@\t\r", $text[0]) !== false ? "'$text" : $text;
    }

    private static function quoted(string $text): string
    {
        return strpbrk($text, "\",;\r\n") === false ? $text : '"' . str_replace('"', '""', $text) . '"';
    }
}
