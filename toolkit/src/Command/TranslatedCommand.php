<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputOption;

/** A command whose own texts are in the group of its name in translations/command. */
abstract class TranslatedCommand extends Command
{
    protected Words $words;

    public function __construct(Words $words)
    {
        $this->words = $words;
        parent::__construct();
    }

    protected function describe(string $name): void
    {
        $this->setName($name);
        $this->setDescription($this->words->of("$name.about"));
        $this->setHelp($this->words->of("$name.help"));
    }

    /** An option with a value. */
    protected function value(string $name, ?string $default = null, ?string $shortcut = null): void
    {
        $this->addOption($name, $shortcut, InputOption::VALUE_REQUIRED, $this->words->of("option.$name"), $default);
    }

    /** An option that is there or not. */
    protected function flag(string $name): void
    {
        $this->addOption($name, null, InputOption::VALUE_NONE, $this->words->of("option.$name"));
    }

    /** An option that can be given several times. */
    protected function values(string $name): void
    {
        $many = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $this->addOption($name, null, $many, $this->words->of("option.$name"));
    }
}
