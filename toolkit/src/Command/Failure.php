<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\SystemError;

/** Wrong usage, or a file that cannot be read or written. Nothing is said of one without an id. */
final class Failure extends \RuntimeException
{
    private string $id;

    /** @var array<string, int|string|list<string>> */
    private array $values;

    /**
     * @param string $id of translations/command, in the group "failure"; a text that is not there stands for itself
     * @param array<string, int|string|list<string>> $values
     */
    public function __construct(string $id, array $values = [])
    {
        $this->id = $id;
        $this->values = $values;
        parent::__construct($this->text(new Words('en')));
    }

    /** What could not be done to a file, with the system's last reason. */
    public static function ofSystem(string $id, string $file = ''): self
    {
        return new self($id, ['file' => $file, 'system' => SystemError::reason()]);
    }

    public function text(Words $words): string
    {
        $reason = $this->values['system'] ?? '';
        $reason = $reason === '' ? 'none' : SystemError::translated((string) $reason, $words->locale);

        $text = $words->of("failure.$this->id", ['reason' => $reason] + $this->values);

        return $text === "failure.$this->id" ? $this->id : $text;
    }
}
