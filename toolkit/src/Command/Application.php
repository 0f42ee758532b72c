<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Language;
use Sepa\Toolkit\Unreadable;
use Sepa\Toolkit\Version;
use Symfony\Component\Console\Application as Console;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Command\HelpCommand;
use Symfony\Component\Console\Command\ListCommand;
use Symfony\Component\Console\Exception\ExceptionInterface;
use Symfony\Component\Console\Input\ArgvInput;
use Symfony\Component\Console\Input\InputDefinition;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\BufferedOutput;
use Symfony\Component\Console\Output\ConsoleOutput;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** The program bin/sepa. */
final class Application extends Console
{
    /** Of Symfony's help: ids of translations/command, too. */
    private const PHRASES = [
        'Description:', 'Usage:', 'Arguments:', 'Options:', 'Help:', 'Available commands:', '[default: ', '[options]',
        '[arguments]', '(multiple values allowed)', 'Display help for a command', 'List commands',
        'Dump the shell completion script',
    ];

    private Words $words;

    /** @param string $language of Language::ALL */
    public function __construct(string $language = Language::ENGLISH)
    {
        $this->words = new Words($language);
        parent::__construct('sepa', Version::number());
        $this->setAutoExit(false);
        $this->setCatchExceptions(false);
        $this->addCommands([
            new CheckCommand($this->words),
            new ConvertCommand($this->words),
            new BankCommand($this->words),
            new TransferCommand($this->words),
            new DebitCommand($this->words),
            new StatementCommand($this->words),
            new StatusCommand($this->words),
        ]);
    }

    /** The program, in the language that it is told or that the environment wants. */
    public static function main(): int
    {
        $input = new ArgvInput();
        $told = $input->getParameterOption('--lang', null, true);
        try {
            $application = new self(Language::ofCommand(is_string($told) ? $told : null, getenv()));
        } catch (\InvalidArgumentException $e) {
            self::tell((new ConsoleOutput())->getErrorOutput(), $e->getMessage());

            return ExitCode::FAILED;
        }

        return $application->run($input);
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
        } catch (Failure $e) {
            self::tell($errors, $e->text($this->words));
        } catch (ExceptionInterface $e) {
            self::tell($errors, (new WrongUse($this->words))->text($e));
        } catch (Unreadable $e) {
            self::tell($errors, $e->text($this->words->locale));
        } catch (\InvalidArgumentException $e) {
            self::tell($errors, $e->getMessage());
        } catch (\Throwable $e) {
            $trace = $errors->isVerbose() ? "\n{$e->getTraceAsString()}" : '';
            self::tell($errors, get_class($e) . ": {$e->getMessage()}, {$e->getFile()}:{$e->getLine()}$trace");
        }

        return ExitCode::FAILED;
    }

    /** Symfony's own words in help are translated in what it has written. */
    protected function doRunCommand(Command $command, InputInterface $input, OutputInterface $output): int
    {
        if (!$command instanceof HelpCommand && !$command instanceof ListCommand) {
            return parent::doRunCommand($command, $input, $output);
        }
        $help = new BufferedOutput($output->getVerbosity(), $output->isDecorated(), $output->getFormatter());
        $status = parent::doRunCommand($command, $input, $help);
        $phrases = array_map(fn (string $phrase): string => $this->words->word('symfony', $phrase), self::PHRASES);
        // As it is typed.
        $text = (string) preg_replace('/^(.*Usage:.*\R  )/m', '$1sepa ', $help->fetch());
        Rows::write($output, strtr($text, array_combine(self::PHRASES, $phrases)));

        return $status;
    }

    protected function getDefaultInputDefinition(): InputDefinition
    {
        $definition = parent::getDefaultInputDefinition();
        $options = [];
        foreach ($definition->getOptions() as $option) {
            $flags = $option->isNegatable() ? InputOption::VALUE_NEGATABLE : InputOption::VALUE_NONE;
            $text = $this->words->word('option', $option->getName());
            $options[] = new InputOption($option->getName(), $option->getShortcut(), $flags, $text);
        }
        $options[] = new InputOption('lang', null, InputOption::VALUE_REQUIRED, $this->words->of('option.lang'));
        $definition->setOptions($options);

        return $definition;
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
