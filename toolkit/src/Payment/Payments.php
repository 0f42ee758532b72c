<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * One message for the bank, tested as a whole: add payments, look at faults()
 * and warnings(), take the document() if there are no faults.
 *
 * The extension's rulebook is one setting for the whole process. Each call
 * here selects its own and leaves it selected.
 */
abstract class Payments implements \Countable
{
    /** Kind of message, for the extension: SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI. */
    protected const KIND = 0;

    /** The longest id of a payment block is the message id, "-P" and a number. */
    private const MAX_BLOCK_ID = 35;

    protected \SEPA $message;

    protected Rulebook $rulebook;

    protected Reasons $reasons;

    private Extension $extension;

    private Inspector $inspector;

    private Oddities $oddities;

    private ?Transliterator $transliterator;

    private bool $shortens;

    private string $messageId;

    private string $date;

    private int $count = 0;

    /** @var int sum of the good payments */
    private int $cents = 0;

    /** @var array<string, true> by what tells payment blocks apart */
    private array $blocks = [];

    private Findings $faults;

    private Findings $warnings;

    private Findings $changes;

    protected function __construct(Party $party, Options $options)
    {
        $this->rulebook = new Rulebook($options->rulebook);
        $this->extension = new Extension(static::KIND, $this->rulebook);
        $this->reasons = new Reasons($this->extension, $this->rulebook);
        $this->inspector = new Inspector($this->extension, $this->reasons, $this->rulebook, static::KIND);
        $this->message = $this->extension->message();
        $this->shortens = $options->shortens;
        $this->transliterator = $options->transliterates ? new Transliterator($this->extension) : null;
        $now = $options->today ?? date('Y-m-d');
        $this->faults = new Findings();
        $this->warnings = new Findings();
        $this->changes = new Findings();
        $this->oddities = new Oddities($this->warnings, $now);
        $this->date = $options->date ?? $now;
        $this->messageId = $options->messageId ?? self::newMessageId();

        $this->message->setBatchBooking($options->batchBooking);
        $own = ['name' => $this->transliterated('name', $party->name, null, null)];
        $this->set('name', ($this->shortens ? $this->shortened($own, null, null) : $own)['name'], 'setName');
        $this->set('iban', $party->iban, 'setIBAN');
        $this->set('bic', $party->bic, 'setBIC');
        $this->set('date', $this->date, 'setDate');
        $this->set('messageId', $this->messageId, 'setMessageId');
    }

    /** Unique over machines and containers. */
    public static function newMessageId(): string
    {
        return gmdate('Ymd-His') . '-' . bin2hex(random_bytes(6));
    }

    /** @return list<string> keys of a payment, those of other rulebooks among them */
    public static function transactionKeys(): array
    {
        return Keys::ofKind(static::KIND);
    }

    /** @return list<string> keys of a payment under the rulebook */
    public function keys(): array
    {
        return $this->inspector->keys();
    }

    /** @return list<string> keys that every payment must have under the rulebook */
    public function requiredKeys(): array
    {
        return $this->inspector->required();
    }

    public function rulebook(): string
    {
        return $this->rulebook->name;
    }

    public function messageId(): string
    {
        return $this->messageId;
    }

    /** Number of payments, bad ones among them. */
    public function count(): int
    {
        return $this->count;
    }

    /** Sum of the good payments in euro, with two decimals. */
    public function sum(): string
    {
        return self::euro($this->cents);
    }

    /**
     * Tests a payment and takes it.
     *
     * @param array<string, string|int|float|bool> $payment by the keys of docs/messages.md
     * @param string|null $label the caller's own name for it, which its faults will carry
     * @param int|null $row its number there, if it is not simply the number of the call
     * @param array<string, array{string, array<string, int|string|list<string>>}|null> $known faults that were found
     *     outside, as code and values by key; null for a key whose lack has been told for all payments
     * @return bool whether it is without fault
     */
    public function add(array $payment, ?string $label = null, ?int $row = null, array $known = []): bool
    {
        $this->rulebook->select();
        $row = $row ?? $this->count + 1;
        ++$this->count;
        [$values, $faults] = $this->inspector->texts($payment);
        foreach ($this->transliterator === null ? [] : $values as $key => $text) {
            $values[$key] = $this->transliterated($key, $text, $row, $label);
        }
        if ($this->shortens) {
            $values = $this->shortened($values, $row, $label);
        }
        $faults = $this->inspector->faults($values, $known + $faults);
        $text = $faults ? '' : $this->refusal($values);
        if ($text === null) {
            $this->remember($values, $row, $label);

            return true;
        }
        $faults = $this->inspector->inWordsOfExtension($values, $faults, $text);
        // In the order of the caller's keys, what is missing at the end.
        foreach (array_filter(array_replace(array_intersect_key($values, $faults), $faults)) as $key => [$code, $found]) {
            $this->refuse($row, $label, (string) $key, $code, $found);
        }

        return false;
    }

    /** @param iterable<array<string, string|int|float|bool>> $payments their keys, if they are texts, become labels */
    public function addAll(iterable $payments): void
    {
        foreach ($payments as $label => $payment) {
            $this->add($payment, is_string($label) ? $label : null);
        }
    }

    /**
     * Notes a fault that was found outside, such as in the file that a payment comes from.
     *
     * @param array<string, int|string|list<string>> $values what the code's texts are made from
     */
    public function refuse(?int $row, ?string $label, ?string $key, string $code, array $values = []): void
    {
        $this->faults->add($row, $label, $key, $code, $values);
    }

    /**
     * Notes something odd that was found outside.
     *
     * @param array<string, int|string|list<string>> $values
     */
    public function warn(?int $row, ?string $key, string $code, array $values = []): void
    {
        $this->warnings->add($row, null, $key, $code, $values);
    }

    /**
     * Notes a change of a value that was made outside.
     *
     * @param array<string, int|string|list<string>> $values
     */
    public function change(int $row, string $key, string $code, array $values): void
    {
        $this->changes->add($row, null, $key, $code, $values);
    }

    /** @return list<Fault> faults so far, the first Findings::KEPT of each code; empty if the document can be had */
    public function faults(): array
    {
        return array_merge($this->faults->kept(), $this->messageFaults());
    }

    /** Number of all faults. */
    public function faultCount(): int
    {
        return count($this->faults) + count($this->messageFaults());
    }

    /** @return list<Fault> what is legal and odd, the first Findings::KEPT of each code */
    public function warnings(): array
    {
        return $this->warnings->kept();
    }

    /** @return list<Fault> what was changed in values, the first Findings::KEPT of each code */
    public function changes(): array
    {
        return $this->changes->kept();
    }

    /** @return array{fault: Findings, warning: Findings, change: Findings} what was found in values, with all counts */
    public function findings(): array
    {
        return ['fault' => $this->faults, 'warning' => $this->warnings, 'change' => $this->changes];
    }

    /**
     * Is given every fault, warning and change of a value, also those that are not kept.
     *
     * @param callable(string, Fault): void $listener with "fault", "warning" or "change"
     */
    public function tell(callable $listener): void
    {
        foreach ($this->findings() as $severity => $findings) {
            $findings->tell(static function (Fault $fault) use ($listener, $severity): void {
                $listener($severity, $fault);
            });
        }
    }

    /**
     * The document for the bank.
     *
     * @throws FaultyPayments while there are faults
     */
    public function document(): string
    {
        $faults = $this->faults();
        if ($faults) {
            throw new FaultyPayments($faults, $this->faultCount());
        }
        $this->rulebook->select();
        $document = new Document($this->message->toXML());
        if (!$document->isSumOf($this->count, self::euro($this->cents))) {
            throw new FaultyPayments([new Fault(null, null, 'amount', 'control_sum')], 1);
        }

        return $document->forBank($this->rulebook);
    }

    /** @return list<Fault> of the message as a whole */
    private function messageFaults(): array
    {
        $faults = [];
        if ($this->count === 0 && count($this->faults) === 0) {
            $faults[] = new Fault(null, null, null, 'no_payments');
        }
        if (strlen($this->messageId . '-P' . count($this->blocks)) > self::MAX_BLOCK_ID) {
            $faults[] = new Fault(null, null, 'messageId', 'too_many_blocks');
        }

        return $faults;
    }

    /** Applies one setter of the submitting party. */
    protected function set(string $key, string $value, string $setter): void
    {
        $this->rulebook->select();
        $fault = trim($value) === '' ? ['missing', []] : Rules::garbled($key, $value);
        if ($fault === null) {
            try {
                $this->message->$setter($value);
                $fault = Rules::broken($key, $value, $this->rulebook);
            } catch (\SEPAException $e) {
                $fault = $this->reasons->of($e->getMessage(), $key, $value);
            }
        }
        if ($fault !== null) {
            $this->refuse(null, null, $key, $fault[0], $fault[1]);
        }
    }

    /**
     * What tells the payment block of a payment from others.
     *
     * @param array<string, string> $values
     */
    protected function block(array $values): string
    {
        return $values['date'] ?? $this->date;
    }

    /** @param array<string, string> $values of a good payment */
    protected function findOddities(Oddities $oddities, array $values, int $row, ?string $label): void
    {
        $oddities->payment($values, $values['date'] ?? null, $this->date, $row, $label);
    }

    private function transliterated(string $key, string $text, ?int $row, ?string $label): string
    {
        if ($this->transliterator === null || Keys::form($key) !== Keys::TEXT) {
            return $text;
        }
        if (!preg_match('//u', $text) || strpos($text, "\0") !== false) {
            return $text;
        }
        // Structured addresses are under the same rule of the banks as names, though nothing tests them.
        $changed = $this->transliterator->apply('name', $text);
        if ($changed !== $text) {
            $this->changes->add($row, $label, $key, 'transliterated', ['from' => $text, 'to' => $changed]);
        }

        return $changed;
    }

    /**
     * Texts that are too long, cut before a whole character. Ids name something: half of one names nothing.
     *
     * @param array<string, string> $values
     * @return array<string, string>
     */
    private function shortened(array $values, ?int $row, ?string $label): array
    {
        foreach ($values as $key => $text) {
            $cut = Keys::form($key) === Keys::TEXT ? Keys::fitting($key, $text) : $text;
            if ($cut !== $text) {
                $this->changes->add($row, $label, $key, 'shortened', ['from' => $text, 'to' => $cut]);
                $values[$key] = $cut;
            }
        }

        return $values;
    }

    /**
     * Adds a payment to the message.
     *
     * @param array<string, string> $values
     */
    private function refusal(array $values): ?string
    {
        try {
            $this->message->add($values);
        } catch (\SEPAException $e) {
            return $e->getMessage();
        }

        return null;
    }

    /** @param array<string, string> $values of a payment that the message has taken */
    private function remember(array $values, int $row, ?string $label): void
    {
        $cents = self::cents($values['amount']);
        $this->cents += $cents;
        $this->blocks[$this->block($values)] = true;
        $this->findOddities($this->oddities, $values, $row, $label);
        foreach (array_intersect_key($values, Keys::address()) as $key => $text) {
            $unusual = $this->extension->refusedCharacters('name', $text);
            if ($unusual) {
                $this->oddities->characters($key, $unusual, $row, $label);
            }
        }
    }

    /** @param string $amount by Rules */
    private static function cents(string $amount): int
    {
        $decimals = strlen($amount) - (int) strpos($amount . '.', '.') - 1;

        return (int) str_replace('.', '', $amount) * ($decimals === 2 ? 1 : ($decimals === 1 ? 10 : 100));
    }

    private static function euro(int $cents): string
    {
        return sprintf('%d.%02d', intdiv($cents, 100), $cents % 100);
    }
}
