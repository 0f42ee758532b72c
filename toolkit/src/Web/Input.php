<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Symfony\Component\HttpFoundation\File\UploadedFile;

/** What stands in a form that was sent. Whatever that is, texts come out as UTF-8 of one line. */
final class Input
{
    public const MAX_UPLOAD = 10 * 1024 * 1024;

    /** @var array<mixed> */
    private array $fields;

    /** @var array<mixed> */
    private array $files;

    /**
     * @param array<mixed> $fields
     * @param array<mixed> $files
     */
    public function __construct(array $fields, array $files)
    {
        $this->fields = $fields;
        $this->files = $files;
    }

    /** What is to be done; empty for a form that is only shown. */
    public function action(): string
    {
        return $this->text('do');
    }

    public function has(string $name): bool
    {
        return isset($this->fields[$name]);
    }

    /** A field; empty if there is none, or a list in its place. */
    public function text(string $name): string
    {
        return self::line($this->fields[$name] ?? '');
    }

    /**
     * Rows of fields, such as row[1][iban].
     *
     * @param list<string> $keys
     * @return array<int, array<string, string>> each with all keys, by number
     */
    public function rows(string $name, array $keys): array
    {
        return self::cells($this->fields[$name] ?? [], $keys, true);
    }

    /**
     * Rows that travel along as JSON.
     *
     * @param list<string> $keys
     * @return array<int, array<string, string>> by number
     */
    public function edits(string $name, array $keys): array
    {
        $text = $this->fields[$name] ?? '';

        return self::cells(is_string($text) ? json_decode($text, true) : [], $keys, false);
    }

    /** A text of several lines. */
    public function block(string $name): string
    {
        $text = $this->fields[$name] ?? '';

        return is_string($text) ? str_replace(["\r\n", "\r"], "\n", mb_scrub($text, 'UTF-8')) : '';
    }

    /**
     * Uploaded files, as path and name. They go with the request.
     *
     * @return list<array{string, string}>
     * @throws Refused if one is too large or did not come through
     */
    public function uploads(string $name): array
    {
        $uploads = [];
        foreach (is_array($this->files[$name] ?? null) ? $this->files[$name] : [$this->files[$name] ?? null] as $file) {
            if ($file === null) {
                continue;
            }
            if (!$file instanceof UploadedFile) {
                throw new Refused('refused.broken_file', 400);
            }
            $isTooLarge = in_array($file->getError(), [UPLOAD_ERR_INI_SIZE, UPLOAD_ERR_FORM_SIZE], true);
            if ($isTooLarge || ($file->isValid() && $file->getSize() > self::MAX_UPLOAD)) {
                throw new Refused('refused.large_file', 413);
            }
            if (!$file->isValid()) {
                throw new Refused('refused.broken_file', 400);
            }
            $uploads[] = [$file->getPathname(), self::line($file->getClientOriginalName())];
        }

        return $uploads;
    }

    /**
     * @param mixed $rows
     * @param list<string> $keys
     * @return array<int, array<string, string>>
     */
    private static function cells($rows, array $keys, bool $all): array
    {
        $cells = [];
        foreach (is_array($rows) ? $rows : [] as $number => $row) {
            if (is_int($number) && $number > 0 && $number < 10000000) {
                $there = is_array($row) ? array_intersect_key($row, array_flip($keys)) : [];
                $cells[$number] = array_map([self::class, 'line'], $all ? $there + array_fill_keys($keys, '') : $there);
            }
        }

        return $cells;
    }

    /** @param mixed $value */
    private static function line($value): string
    {
        $text = is_string($value) ? mb_scrub($value, 'UTF-8') : '';

        return trim((string) preg_replace('/[\x00-\x1F\x7F]+/', ' ', $text));
    }
}
