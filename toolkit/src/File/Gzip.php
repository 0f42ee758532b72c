<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

/**
 * What is packed with gzip, piece by piece.
 *
 * @internal
 */
final class Gzip
{
    /** Packed bytes that are taken at once: they can become a thousand times as many. */
    private const STEP = 4096;

    private const GIVEN = 65536;

    /**
     * @param iterable<string> $chunks
     * @return \Generator<string>
     */
    public static function unpack(iterable $chunks, Trouble $trouble): \Generator
    {
        $context = inflate_init(ZLIB_ENCODING_GZIP);
        $bytes = $taken = 0;
        foreach ($chunks as $chunk) {
            foreach (str_split($chunk, self::STEP) as $packed) {
                $taken += strlen($packed);
                while ($packed !== '') {
                    $text = self::step($context, $packed);
                    $bytes += strlen((string) $text);
                    if ($text === null || Source::isTooMuch($bytes, $taken)) {
                        $trouble->tell($text === null ? 'damaged' : 'too_much');

                        return;
                    }
                    if ($text !== '') {
                        yield from str_split($text, self::GIVEN);
                    }
                }
            }
        }
        if (inflate_get_status($context) !== ZLIB_STREAM_END) {
            $trouble->tell('damaged');
        }
    }

    /**
     * @param resource|\InflateContext $context made anew where one stream ends and another follows
     * @param string $packed loses what was taken
     */
    private static function step(&$context, string &$packed): ?string
    {
        $before = inflate_get_read_len($context);
        $text = @inflate_add($context, $packed);
        if ($text === false) {
            return null;
        }
        $rest = inflate_get_status($context) === ZLIB_STREAM_END
            ? ltrim(substr($packed, inflate_get_read_len($context) - $before), "\0") : '';
        if ($rest !== '') {
            $context = inflate_init(ZLIB_ENCODING_GZIP);
        }
        $packed = $rest;

        return $text;
    }
}
