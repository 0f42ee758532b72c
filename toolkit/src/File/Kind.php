<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

/** What a file is, told by its first bytes and never by its name. */
final class Kind
{
    public const EMPTY = 'empty';

    public const XML = 'xml';

    public const ZIP = 'zip';

    public const GZIP = 'gzip';

    /** Lines of text: MT940, or something that nothing here reads. */
    public const TEXT = 'text';

    private const SIGNATURES = [
        "PK\x03\x04" => self::ZIP,
        "PK\x05\x06" => self::ZIP,
        "\x1F\x8B" => self::GZIP,
        '%PDF' => 'pdf',
        "\xD0\xCF\x11\xE0" => 'workbook',
        "\x89PNG" => 'picture',
        "\xFF\xD8\xFF" => 'picture',
        'GIF8' => 'picture',
        "II*\0" => 'picture',
        "MM\0*" => 'picture',
        '{\rtf' => 'word',
    ];

    private const HTML = '/^<(?:!doctype\s+html|html|head|body|script|meta)\b/i';

    /** A table: its first line has a delimiter three times and nothing of SWIFT. */
    private const TABLE = '/^(?!.*:20:)[^\n{]*([;\t])[^\n]*\1[^\n]*\1/';

    /** @param string $head the first kilobytes; the whole file if it is smaller */
    public static function of(string $head): string
    {
        foreach (self::SIGNATURES as $signature => $kind) {
            if (strncmp($head, $signature, strlen($signature)) === 0) {
                return $kind;
            }
        }
        $text = ltrim(self::plain($head));
        if ($text === '') {
            return $head === '' ? self::EMPTY : self::TEXT;
        }
        if ($text[0] === '<') {
            return preg_match(self::HTML, $text) ? 'html' : self::XML;
        }

        return preg_match(self::TABLE, $text) ? 'table' : self::TEXT;
    }

    /** Without a mark of the byte order; UTF-16 as ASCII, which is enough for markup. */
    private static function plain(string $head): string
    {
        if (strncmp($head, "\xFF\xFE", 2) === 0 || strncmp($head, "\xFE\xFF", 2) === 0) {
            return str_replace("\0", '', substr($head, 2));
        }

        return strncmp($head, "\xEF\xBB\xBF", 3) === 0 ? substr($head, 3) : $head;
    }
}
