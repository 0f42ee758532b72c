<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

/** A file that is there as a whole or not at all. */
final class OutputFile
{
    /** Nothing may stop the program between making the temporary file and renaming it. */
    private const SIGNALS = [1, 2, 15];

    /** @throws Failure */
    public static function write(string $path, string $content): void
    {
        // A link is written through; a pipe or a device cannot be renamed over.
        $path = realpath($path) ?: $path;
        $direct = file_exists($path) && !is_file($path);
        $temporary = $direct ? $path : sprintf('%s/.%s.%s', dirname($path), basename($path), bin2hex(random_bytes(6)));
        $block = function_exists('pcntl_sigprocmask');
        if ($block) {
            pcntl_sigprocmask(SIG_BLOCK, self::SIGNALS);
        }
        try {
            if (!self::put($temporary, $content) || (!$direct && !@rename($temporary, $path))) {
                if (!$direct) {
                    @unlink($temporary);
                }
                throw new Failure("cannot write $path");
            }
        } finally {
            if ($block) {
                pcntl_sigprocmask(SIG_UNBLOCK, self::SIGNALS);
            }
        }
    }

    private static function put(string $file, string $content): bool
    {
        $stream = @fopen($file, 'wb');
        if ($stream === false) {
            return false;
        }
        $written = @fwrite($stream, $content) === strlen($content) && fflush($stream);
        if ($written && function_exists('fsync')) {
            @fsync($stream);
        }

        return fclose($stream) && $written;
    }
}
