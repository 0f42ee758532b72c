<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Xml;

/**
 * A document's bytes in what it says they are: where that is UTF-8, or nothing, bytes
 * that are not are read as Windows-1252, which includes ISO-8859-1.
 *
 * @internal
 */
final class Utf8
{
    private const DECLARED = '/^(?:\xEF\xBB\xBF)?<\?xml[^>]*?\sencoding\s*=\s*["\']([A-Za-z0-9._-]+)["\']/';

    private const CHARACTER = '[\xC2-\xDF][\x80-\xBF]|\xE0[\xA0-\xBF][\x80-\xBF]'
        . '|[\xE1-\xEC\xEE\xEF][\x80-\xBF]{2}|\xED[\x80-\x9F][\x80-\xBF]'
        . '|\xF0[\x90-\xBF][\x80-\xBF]{2}|[\xF1-\xF3][\x80-\xBF]{3}|\xF4[\x80-\x8F][\x80-\xBF]{2}';

    /** The first bytes of a character that may go on in the next chunk. */
    private const BEGUN = '/(?:[\xC2-\xF4]|[\xE0-\xF4][\x80-\xBF]|[\xF0-\xF4][\x80-\xBF]{2})$/D';

    /** @var bool whether bytes were turned into UTF-8 */
    public bool $mended = false;

    /**
     * @param string $head of the document
     * @param \Iterator<string> $chunks
     * @return \Iterator<string>
     */
    public function each(string $head, \Iterator $chunks): \Iterator
    {
        $declared = preg_match(self::DECLARED, $head, $part) ? strtoupper($part[1]) : 'UTF-8';

        return $declared === 'UTF-8' && !preg_match('/^(?:\xFF\xFE|\xFE\xFF|<\0|\0<)/', $head)
            ? $this->mend($chunks)
            : $chunks;
    }

    /**
     * @param \Iterator<string> $chunks
     * @return \Generator<string>
     */
    private function mend(\Iterator $chunks): \Generator
    {
        $held = '';
        foreach ($chunks as $chunk) {
            $chunk = $held . $chunk;
            $held = preg_match(self::BEGUN, substr($chunk, -3), $begun) ? $begun[0] : '';
            $whole = $held === '' ? $chunk : substr($chunk, 0, -strlen($held));
            yield preg_match('//u', $whole) ? $whole : $this->turned($whole);
        }
        if ($held !== '') {
            yield $this->turned($held);
        }
    }

    private function turned(string $text): string
    {
        $this->mended = true;

        $foreign = '/[\x00-\x7F]++(*SKIP)(*F)|(?:' . self::CHARACTER . ')(*SKIP)(*F)|[\x80-\xFF]/';

        return (string) preg_replace_callback($foreign, static function (array $byte): string {
            return mb_convert_encoding($byte[0], 'UTF-8', 'Windows-1252');
        }, $text);
    }
}
