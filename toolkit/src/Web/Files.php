<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\File\Source;

/** Files of statements: those that are chosen, else those that travelled along, packed. */
final class Files
{
    /** Bytes that go to the browser and back with each step. */
    private const MAX_CARRIED = 4 << 20;

    /** Bytes of all files. */
    private const MAX_SIZE = 32 << 20;

    /** Bytes of all that is packed in them: each answer reads it again, and one statement may be in memory. */
    private const MAX_UNPACKED = 64 << 20;

    /** @var array<string, string> contents by name */
    public array $contents;

    /** @param array<string, string> $contents */
    private function __construct(array $contents)
    {
        $this->contents = $contents;
    }

    /** @throws Refused if they are too large, or did not come through */
    public static function of(Input $input): self
    {
        $chosen = [];
        $size = 0;
        foreach ($input->uploads('file') as [$path, $name]) {
            $size += filesize($path);
            if ($size > self::MAX_SIZE) {
                throw new Refused('refused.large_file', 413);
            }
            $name = isset($chosen[$name]) ? "$name (" . (count($chosen) + 1) . ')' : $name;
            $chosen[$name] = (string) file_get_contents($path);
        }

        return new self($chosen ?: self::unpacked($input->block('packed')));
    }

    public static function none(): self
    {
        return new self([]);
    }

    public static function example(string $path): self
    {
        return new self([basename($path) => (string) file_get_contents($path)]);
    }

    /** @return list<Source> */
    public function sources(): array
    {
        $sources = [];
        foreach ($this->contents as $name => $content) {
            $sources[] = Source::string($content, (string) $name);
        }

        return $sources;
    }

    /** Whether a page can read them: a small archive may hold a very large file. */
    public function areReadable(): bool
    {
        $bytes = 0;
        foreach ($this->sources() as $source) {
            foreach ($source->parts() as $part) {
                foreach ($part->chunks() as $chunk) {
                    $bytes += strlen($chunk);
                    if ($bytes > self::MAX_UNPACKED) {
                        return false;
                    }
                }
            }
        }

        return true;
    }

    /** As text for a form; empty if that would be too much. */
    public function packed(): string
    {
        $bytes = '';
        foreach ($this->contents as $name => $content) {
            $bytes .= pack('NN', strlen((string) $name), strlen($content)) . $name . $content;
        }
        $packed = $bytes === '' ? '' : base64_encode((string) gzencode($bytes));

        return strlen($packed) <= self::MAX_CARRIED ? $packed : '';
    }

    /** @return array<string, string> nothing of what is not whole */
    private static function unpacked(string $packed): array
    {
        $isOurs = $packed !== '' && strlen($packed) <= self::MAX_CARRIED;
        $bytes = !$isOurs ? '' : @gzdecode((string) base64_decode($packed, true), self::MAX_SIZE);
        $contents = [];
        for ($at = 0; is_string($bytes) && $at + 8 <= strlen($bytes); $at += 8 + $part['name'] + $part['content']) {
            $part = unpack('Nname/Ncontent', $bytes, $at);
            if ($part['name'] + $part['content'] > strlen($bytes) - $at - 8) {
                break;
            }
            $name = substr($bytes, $at + 8, $part['name']);
            $contents[$name] = substr($bytes, $at + 8 + $part['name'], $part['content']);
        }

        return $contents;
    }
}
