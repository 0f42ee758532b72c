<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Unreadable;
use Symfony\Component\Console\Application as Console;
use Symfony\Component\Console\Exception\ExceptionInterface;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\ConsoleOutput;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** The program bin/sepa. */
final class Application extends Console
{
    public function __construct()
    {
        parent::__construct('sepa', '1.0');
        $this->setAutoExit(false);
        $this->setCatchExceptions(false);
        $this->addCommands([
            new CheckCommand(),
            new ConvertCommand(),
            new BankCommand(),
            new TransferCommand(),
            new DebitCommand(),
            new StatementCommand(),
        ]);
    }

    public function run(?InputInterface $input = null, ?OutputInterface $output = null): int
    {
        $output = $output ?? new ConsoleOutput();
        $errors = $output instanceof ConsoleOutputInterface ? $output->getErrorOutput() : $output;
        try {
            return parent::run($input, $output);
        } catch (Failure | Unreadable | \InvalidArgumentException | ExceptionInterface $e) {
            if ($e->getMessage() !== '') {
                $errors->writeln('sepa: ' . $e->getMessage(), OutputInterface::OUTPUT_RAW);
            }
        } catch (\Throwable $e) {
            $this->renderThrowable($e, $errors);
        }

        return ExitCode::FAILED;
    }
}
