<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

/**
 * The members of a ZIP archive, by name. Nothing is unpacked to disk, and no name
 * from inside is ever a path.
 *
 * @internal
 */
final class Archive
{
    public const MAX_MEMBERS = 10000;

    /** What systems put into archives beside the files. */
    private const CLUTTER = '~(?:^|/)(?:__MACOSX/|\.(?!\.?/)|Thumbs\.db$|desktop\.ini$)|/$~i';

    /** Of workbooks and documents, which are archives, too. */
    private const OFFICE = ['[Content_Types].xml', 'mimetype', 'META-INF/manifest.xml'];

    /**
     * @param string $path of the archive
     * @param string $name to show
     * @return \Generator<Part>
     */
    public static function parts(string $path, string $name): \Generator
    {
        $trouble = new Trouble();
        $zip = class_exists(\ZipArchive::class) ? new \ZipArchive() : null;
        if (!$zip || $zip->open($path, \ZipArchive::RDONLY) !== true) {
            $trouble->tell($zip ? 'damaged' : 'no_zip');
            yield self::unreadable($name, $trouble, false);

            return;
        }
        if ($zip->numFiles > self::MAX_MEMBERS) {
            $trouble->tell('too_many', ['count' => $zip->numFiles, 'most' => self::MAX_MEMBERS]);
            yield self::unreadable($name, $trouble, false);
        }
        // Unpacked so far, and what is packed as a whole.
        $bytes = [0, (int) filesize($path)];
        foreach (self::members($zip) as $index => $member) {
            if (in_array($member, self::OFFICE, true)) {
                $trouble->tell('workbook');
                yield self::unreadable($name, $trouble, false);

                return;
            }
            yield self::member($zip, $index, "$name: $member", $bytes);
        }
    }

    /** @return array<int, string> names by index, in order */
    private static function members(\ZipArchive $zip): array
    {
        $names = [];
        for ($i = 0; $i < min($zip->numFiles, self::MAX_MEMBERS); ++$i) {
            $member = (string) $zip->getNameIndex($i);
            if (!preg_match(self::CLUTTER, $member)) {
                $names[$i] = $member;
            }
        }
        // What tells an office document goes first.
        uasort(
            $names,
            static fn (string $a, string $b): int =>
                [!in_array($a, self::OFFICE, true), $a] <=> [!in_array($b, self::OFFICE, true), $b]
        );

        return $names;
    }

    /** @param array{int, int} $bytes unpacked so far, and packed */
    private static function member(\ZipArchive $zip, int $index, string $name, array &$bytes): Part
    {
        $trouble = new Trouble();
        $stat = $zip->statIndex($index) ?: [];
        // Of two members of one name the older releases of PHP open the first alone.
        $stream = ($stat['encryption_method'] ?? 0) === 0
            ? (
                method_exists($zip, 'getStreamIndex')
                    ? @$zip->getStreamIndex($index)
                    : @$zip->getStream((string) $zip->getNameIndex($index))
            )
            : false;
        if (!$stream) {
            $trouble->tell(($stat['encryption_method'] ?? 0) === 0 ? 'damaged' : 'encrypted');

            return self::unreadable($name, $trouble, true);
        }
        $part = new Part(
            $name,
            new Chunks(self::read($stream, (int) ($stat['size'] ?? 0), $trouble, $bytes)),
            $trouble,
            true
        );
        if ($part->kind === Kind::ZIP || $part->kind === Kind::GZIP) {
            $trouble->tell('nested');
        }

        return $part;
    }

    /**
     * @param resource $stream
     * @param array{int, int} $bytes
     * @return \Generator<string>
     */
    private static function read($stream, int $size, Trouble $trouble, array &$bytes): \Generator
    {
        $got = 0;
        try {
            while (!feof($stream)) {
                $chunk = @fread($stream, 65536);
                if ($chunk === false || $chunk === '') {
                    break;
                }
                $got += strlen($chunk);
                $bytes[0] += strlen($chunk);
                if (Source::isTooMuch(...$bytes)) {
                    $trouble->tell('too_much');

                    return;
                }
                yield $chunk;
            }
            if ($got !== $size) {
                $trouble->tell('damaged');
            }
        } finally {
            fclose($stream);
        }
    }

    private static function unreadable(string $name, Trouble $trouble, bool $isMember): Part
    {
        return new Part($name, new Chunks(new \EmptyIterator()), $trouble, $isMember);
    }
}
