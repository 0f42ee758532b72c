<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Csv\Reader;
use Symfony\Component\Console\Helper\ProgressBar;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;
use Symfony\Component\Console\Output\StreamOutput;

/** A bar for a file that is read, on a terminal; nothing elsewhere. */
final class Progress
{
    private const EVERY = 1000;

    private ?ProgressBar $bar = null;

    /** @var callable(): int */
    private $bytesRead;

    private int $rows = 0;

    private bool $isShown = false;

    /**
     * @param int|null $size of the file in bytes, if it is known
     * @param callable(): int $bytesRead
     */
    public function __construct(OutputInterface $output, ?int $size, callable $bytesRead)
    {
        $this->bytesRead = $bytesRead;
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        if ($errors instanceof StreamOutput && !$errors->isQuiet() && stream_isatty($errors->getStream())) {
            $this->bar = new ProgressBar($errors, $size ?? 0);
            $this->bar->setFormat(
                $size === null ? '%message% rows, %elapsed%' : '[%bar%] %percent%%, %message% rows, %elapsed%'
            );
            $this->bar->setMessage('0');
        }
    }

    public static function ofTable(OutputInterface $output, Reader $reader): self
    {
        return new self($output, $reader->size(), [$reader, 'bytesRead']);
    }

    public function __invoke(): void
    {
        if (++$this->rows % self::EVERY === 0 && $this->bar !== null) {
            $this->bar->setMessage((string) $this->rows);
            $this->bar->setProgress(($this->bytesRead)());
            $this->isShown = true;
        }
    }

    /** Before anything else is written. */
    public function hide(): void
    {
        if ($this->bar !== null && $this->isShown) {
            $this->bar->clear();
            $this->isShown = false;
        }
    }
}
