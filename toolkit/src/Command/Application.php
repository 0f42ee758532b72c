<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Unreadable;
use Sepa\Toolkit\Version;
use Symfony\Component\Console\Application as Console;
use Symfony\Component\Console\Exception\ExceptionInterface;
use Symfony\Component\Console\Input\ArgvInput;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\ConsoleOutput;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** The program bin/sepa. */
final class Application extends Console
{
    public function __construct()
    {
        parent::__construct('sepa', Version::number());
        $this->setAutoExit(false);
        $this->setCatchExceptions(false);
        $this->addCommands([
            new CheckCommand(),
            new ConvertCommand(),
            new BankCommand(),
            new TransferCommand(),
            new DebitCommand(),
            new StatementCommand(),
            new StatusCommand(),
        ]);
    }

    public function run(?InputInterface $input = null, ?OutputInterface $output = null): int
    {
        $input = $input ?? new ArgvInput();
        $output = $output ?? new ConsoleOutput();
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        // Nobody may be there to be asked whether "chek" was meant to be "check".
        $input->setInteractive(false);
        Signals::ignoreFileLimit();
        try {
            return parent::run($input, $output);
        } catch (Failure | Unreadable | \InvalidArgumentException | ExceptionInterface $e) {
            self::tell($errors, $e->getMessage());
        } catch (\Throwable $e) {
            self::tell($errors, get_class($e) . ": {$e->getMessage()}, {$e->getFile()}:{$e->getLine()}");
        }

        return ExitCode::FAILED;
    }

    private static function tell(OutputInterface $errors, string $message): void
    {
        if ($message !== '') {
            // What Symfony proposes stands in lines of its own.
            $lines = array_map([Rows::class, 'clean'], explode("\n", "sepa: $message"));
            $errors->writeln($lines, OutputInterface::OUTPUT_RAW);
        }
    }
}
