<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\SystemError;

/**
 * A file that is there as a whole or not at all, and that others cannot read
 * unless they could read the one that it replaces.
 */
final class OutputFile
{
    private const MAX_LINKS = 40;

    /** @var string where links end, which need not be there */
    private string $path;

    /** @var bool whether it is a pipe or a device, which cannot be renamed over */
    private bool $isDirect;

    private string $content;

    private ?string $temporary = null;

    private function __construct(string $path, string $content)
    {
        $this->path = $path;
        $this->content = $content;
        $this->isDirect = file_exists($path) && !is_file($path);
    }

    /**
     * Writes files of which none gets its name before all are complete.
     *
     * @param array<string, string> $contents by path
     * @throws Failure
     */
    public static function write(array $contents): void
    {
        clearstatcache();
        $files = [];
        $signals = Signals::block();
        try {
            foreach ($contents as $path => $content) {
                $files[] = $file = new self(self::target((string) $path), $content);
                $file->fill();
            }
            foreach ($files as $file) {
                $file->publish();
            }
        } finally {
            foreach ($files as $file) {
                $file->discard();
            }
            Signals::restore($signals);
        }
    }

    /** Whether a file would be replaced. */
    public static function replaces(string $path): bool
    {
        return is_file($path);
    }

    private static function target(string $path): string
    {
        if (file_exists($path)) {
            return realpath($path) ?: $path;
        }
        for ($links = 0; is_link($path); ++$links) {
            if ($links === self::MAX_LINKS) {
                throw new Failure('links', ['file' => $path]);
            }
            $end = (string) readlink($path);
            $path = strncmp($end, '/', 1) === 0 ? $end : dirname($path) . "/$end";
        }

        return $path;
    }

    private function fill(): void
    {
        if (is_dir($this->path)) {
            throw new Failure('cannot_write', ['file' => $this->path, 'system' => 'Is a directory']);
        }
        if ($this->isDirect) {
            return;
        }
        $temporary = dirname($this->path) . '/.sepa-' . bin2hex(random_bytes(8));
        SystemError::forget();
        $mask = umask(077);
        $stream = @fopen($temporary, 'xb');
        umask($mask);
        $this->temporary = $stream === false ? null : $temporary;
        if ($stream === false || !$this->put($stream)) {
            throw $this->failure();
        }
        $this->takeOwnerAndMode($temporary);
    }

    /** Those of the file that is replaced. Without the owner, the mode could let in others. */
    private function takeOwnerAndMode(string $temporary): void
    {
        $replaced = @stat($this->path);
        if ($replaced !== false && @chown($temporary, $replaced['uid']) && @chgrp($temporary, $replaced['gid'])) {
            @chmod($temporary, $replaced['mode'] & 0777);
        }
    }

    private function publish(): void
    {
        SystemError::forget();
        if ($this->temporary !== null) {
            $isDone = @rename($this->temporary, $this->path);
            $this->temporary = $isDone ? null : $this->temporary;
        } else {
            $stream = @fopen($this->path, 'wb');
            $isDone = $stream !== false && $this->put($stream);
        }
        if (!$isDone) {
            throw $this->failure();
        }
    }

    private function discard(): void
    {
        if ($this->temporary !== null) {
            @unlink($this->temporary);
        }
    }

    /** @param resource $stream */
    private function put($stream): bool
    {
        $isWritten = @fwrite($stream, $this->content) === strlen($this->content) && @fflush($stream);
        if ($isWritten && !$this->isDirect && function_exists('fsync')) {
            $isWritten = @fsync($stream);
        }

        return @fclose($stream) && $isWritten;
    }

    private function failure(): Failure
    {
        return Failure::ofSystem('cannot_write', $this->path);
    }
}
