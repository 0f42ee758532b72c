<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

/** Signals, where PHP knows them. */
final class Signals
{
    /** A file that grows beyond the limit of the process is told as a full disk is, not ended by a signal. */
    public static function ignoreFileLimit(): void
    {
        if (function_exists('pcntl_signal')) {
            pcntl_signal(SIGXFSZ, SIG_IGN);
        }
    }

    /**
     * Makes those that would end the program wait.
     *
     * @return list<int> for restore()
     */
    public static function block(): array
    {
        $before = [];
        if (function_exists('pcntl_sigprocmask')) {
            pcntl_sigprocmask(SIG_BLOCK, [
                SIGHUP, SIGINT, SIGQUIT, SIGUSR1, SIGUSR2, SIGPIPE, SIGALRM, SIGTERM, SIGXCPU, SIGVTALRM, SIGPROF,
            ], $before);
        }

        return $before;
    }

    /** @param list<int> $before */
    public static function restore(array $before): void
    {
        if (function_exists('pcntl_sigprocmask')) {
            pcntl_sigprocmask(SIG_SETMASK, $before);
        }
    }
}
