<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Unreadable;

/** A table of payments that was chosen or pasted. Up to a size it travels along in the form. */
final class Table
{
    /** Bytes that go to the browser and back with each step. */
    private const MAX_CARRIED = 1 << 20;

    /** Of a column that is not for the bank. */
    public const LEFT_OUT = '-';

    public string $name = '';

    /** @var string UTF-8; empty without a table, and of one that is too large to travel */
    public string $text = '';

    /** @var array<string, string> key by heading, where somebody told it */
    public array $map = [];

    /** @var list<string> headings of columns that are left out */
    public array $ignored = [];

    private ?string $path = null;

    private function __construct()
    {
    }

    public static function none(): self
    {
        return new self();
    }

    /** What travelled along. */
    public static function carried(Input $input): self
    {
        $table = new self();
        $table->text = $input->block('table');
        $table->name = $input->text('table_name');
        foreach ($input->rows('column', ['heading', 'key']) as $column) {
            if ($column['key'] === self::LEFT_OUT) {
                $table->ignored[] = $column['heading'];
            } elseif ($column['key'] !== '') {
                $table->map[$column['heading']] = $column['key'];
            }
        }

        return $table;
    }

    /** What was pasted, each line of which is whole. */
    public static function pasted(string $text, string $name): self
    {
        $table = new self();
        $table->text = rtrim($text) . "\n";
        $table->name = $name;

        return $table;
    }

    /** @throws Unreadable */
    public static function file(string $path, string $name): self
    {
        $table = new self();
        $table->name = $name;
        $table->path = $path;
        $text = filesize($path) <= self::MAX_CARRIED ? (string) file_get_contents($path) : '';
        if ($text !== '' && !preg_match('/^(?:PK\x03\x04|\xFF\xFE|\xFE\xFF|\xD0\xCF)|\0/', $text)) {
            // Some programs write lines of more than one encoding.
            $table->text = implode("\n", array_map([self::class, 'utf8'], preg_split('/\r\n|\r|\n/', $text)));
            $table->path = null;
        }

        return $table;
    }

    public function isThere(): bool
    {
        return $this->text !== '' || $this->path !== null;
    }

    /** Whether it comes back with the form; else the file is to be chosen again. */
    public function travels(): bool
    {
        return $this->path === null;
    }

    /** @throws Unreadable */
    public function reader(): Reader
    {
        $stream = $this->path === null ? fopen('php://temp', 'w+b') : @fopen($this->path, 'rb');
        if (!$stream) {
            throw new Unreadable("cannot read $this->name");
        }
        if ($this->path === null) {
            fwrite($stream, $this->text);
            rewind($stream);
        }

        return new Reader($stream, $this->name);
    }

    /**
     * What each column means, for somebody who may tell it otherwise.
     *
     * @param list<string> $headings empty if nobody knows them
     * @param array<int, string|null> $keys by column
     * @return list<array{heading: string, key: string, samples: list<string>}>
     */
    public function columns(array $headings, array $keys): array
    {
        $columns = [];
        $samples = [];
        foreach ($this->isThere() ? $this->reader() : [] as $cells) {
            if ($headings === [] && implode('', $cells) !== '') {
                $headings = $cells;
            }
            if ($samples || $cells === $headings) {
                $samples[] = $cells;
            }
            if (count($samples) > 2) {
                break;
            }
        }
        foreach ($headings as $column => $heading) {
            $known = $this->map[$heading] ?? $keys[$column] ?? '';
            if ($heading !== '') {
                $values = array_values(array_filter(array_column(array_slice($samples, 1), $column), 'strlen'));
                $columns[] = ['heading' => $heading, 'key' => $known ?: self::LEFT_OUT, 'samples' => $values];
            }
        }

        return $columns;
    }

    private static function utf8(string $line): string
    {
        return preg_match('//u', $line) ? $line : mb_convert_encoding($line, 'UTF-8', 'Windows-1252');
    }
}
