<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/**
 * One message for the bank, tested as a whole: add payments, look at faults()
 * and warnings(), take the document() if there are no faults.
 *
 * The extension's rulebook is one setting for the whole process. Each call
 * here selects its own and leaves it selected.
 */
abstract class Payments implements Receiver
{
    use Noting;

    /** Kind of message, for the extension: SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI. */
    protected const KIND = 0;

    /** The longest id of a payment block is the message id, "-P" and a number. */
    private const MAX_BLOCK_ID = 35;

    protected \SEPA $message;

    protected Rulebook $rulebook;

    protected Reasons $reasons;

    private Extension $extension;

    private Inspector $inspector;

    /** @var array<string, int> keys that the extension does not take, as keys */
    private array $added;

    /** @var array<string, int> keys of addresses, as keys */
    private array $address;

    private Oddities $oddities;

    private ?Transliterator $transliterator;

    private bool $shortens;

    private Head $head;

    private Blocks $blocks;

    private string $messageId;

    private string $date;

    /** @var string|null the only day that payments can have */
    private ?string $onlyDay;

    private int $count = 0;

    /** @var int sum of the good payments */
    private int $cents = 0;

    /** @param Notes|null $notes of several messages */
    protected function __construct(Party $party, Options $options, ?Notes $notes)
    {
        $this->notes = $notes ?? new Notes();
        $this->rulebook = new Rulebook($options->rulebook);
        $this->extension = new Extension(static::KIND, $this->rulebook);
        $this->reasons = new Reasons($this->extension, $this->rulebook);
        $hasLines = $options->hybridAddresses && $this->rulebook->structured;
        $this->inspector = new Inspector($this->extension, $this->reasons, $this->rulebook, static::KIND, $hasLines);
        $this->added = $this->inspector->added();
        $this->address = Keys::address();
        $this->message = $this->extension->message();
        $this->shortens = $options->shortens;
        $this->blocks = new Blocks();
        $this->transliterator = $options->transliterates ? new Transliterator($this->extension) : null;
        $today = $options->today ?? date('Y-m-d');
        $this->oddities = new Oddities($this->notes, $this->rulebook, static::KIND, $today, $options->instant);
        $this->messageId = $options->messageId ?? self::newMessageId();
        $this->submit($party, $options, $today);
    }

    /** Takes the submitting party and what is said once for all payments. */
    private function submit(Party $party, Options $options, string $today): void
    {
        $own = ['name' => $this->transliterated('name', $party->name, null, null)];
        $party = $party->named(($this->shortens ? $this->shortened($own, null, null) : $own)['name']);
        $party = $party->withAccount($party->iban, $this->ownBic($party, $options))
            ->livingAt($this->ownAddress($party));
        $this->head = new Head($party, $options, $this->rulebook, static::KIND);
        foreach ($this->head->faults() as [$key, $code, $values]) {
            $this->refuse(null, null, $key, $code, $values);
        }
        foreach ($this->head->oddities() as [$key, $code, $values]) {
            $this->warn(null, $key, $code, $values);
        }
        $this->onlyDay = $this->head->day();
        $this->date = $this->onlyDay ?? $options->date ?? $today;

        $this->message->setBatchBooking($options->batchBooking);
        $this->set('name', $party->name, 'setName');
        $this->set('iban', $party->iban, 'setIBAN');
        if ($party->bic === '' && !$options->needsNoBic) {
            $this->refuse(null, null, 'bic', 'missing');
        } else {
            $this->set('bic', $party->bic ?: Head::FILLER, 'setBIC');
        }
        $this->set('date', $this->date, 'setDate');
        $this->set('messageId', $this->messageId, 'setMessageId');
    }

    /** The party's BIC, or that of its IBAN; empty if none is known or none is wanted. */
    private function ownBic(Party $party, Options $options): string
    {
        $known = (string) Ibans::check($party->iban)->bic;
        if (self::isNoBic($party->bic)) {
            $this->notes->changes->add(null, null, 'bic', 'bic_dropped', ['value' => $party->bic]);
        } elseif ($party->bic !== '') {
            if ($known !== '' && strncasecmp($known, $party->bic, 8) !== 0) {
                $this->warn(null, 'bic', 'bic_other_bank', ['value' => Fault::shown($party->bic), 'known' => $known]);
            }

            return $party->bic;
        }

        return $options->needsNoBic ? '' : $known;
    }

    /** @return array<string, string> */
    private function ownAddress(Party $party): array
    {
        if (!$party->address) {
            return [];
        }
        $address = $party->address;
        foreach ($address as $key => $text) {
            $address[$key] = is_string($text) ? $this->transliterated((string) $key, $text, null, null) : $text;
        }
        [$values, $faults] = $this->inspector->ownAddress($address);
        foreach ($faults as $key => [$code, $found]) {
            $this->refuse(null, null, (string) $key, $code, $found);
        }
        $this->oddities->address($values, null, null);

        return $values;
    }

    /** Whether a text in place of a BIC says that there is none. */
    private static function isNoBic(string $bic): bool
    {
        return strcasecmp($bic, 'NOTPROVIDED') === 0;
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

    public function columns(): array
    {
        return static::transactionKeys();
    }

    public function keys(): array
    {
        return $this->inspector->keys();
    }

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

    /** Gives it another id, as one of several messages. */
    public function identify(string $messageId): void
    {
        $this->messageId = $messageId;
        $this->set('messageId', $messageId, 'setMessageId');
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
        if (isset($values['bic']) && self::isNoBic($values['bic'])) {
            $this->notes->changes->add($row, $label, 'bic', 'bic_dropped', ['value' => $values['bic']]);
            unset($values['bic']);
        }
        $faults = $this->inspector->faults($values, $known + $faults);
        if ($this->onlyDay !== null && ($values['date'] ?? $this->onlyDay) !== $this->onlyDay) {
            $faults += ['date' => ['time_other_day', ['time' => $this->onlyDay]]];
        }
        $added = array_intersect_key($values, $this->added);
        $text = $faults ? '' : $this->refusal($added ? array_diff_key($values, $added) : $values);
        if ($text === null) {
            $this->remember($values, $added, $row, $label);

            return true;
        }
        $faults = $this->inspector->inWordsOfExtension($values, $faults, $text);
        // In the order of the caller's keys, what is missing at the end.
        $faults = array_filter(array_replace(array_intersect_key($values, $faults), $faults));
        foreach ($faults as $key => [$code, $found]) {
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
        $document = new Document($this->message->toXML(), static::KIND);
        try {
            return $document->complete($this->blocks, $this->head, $this->count, $this->cents);
        } catch (\RangeException $e) {
            throw new FaultyPayments([new Fault(null, null, 'amount', 'control_sum')], 1);
        }
    }

    /** @return list<Fault> of the message as a whole */
    public function messageFaults(): array
    {
        $faults = [];
        if ($this->count === 0 && count($this->notes->faults) === 0) {
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
        $fault = trim($value) === '' ? ['missing', []] : Rules::garbled($value);
        if ($fault === null) {
            try {
                $this->message->$setter($value);
                $fault = (new Rules($this->extension, $this->rulebook))->broken($key, $value);
            } catch (\SEPAException $e) {
                $fault = $this->reasons->of($e->getMessage(), $key, $value);
            }
        }
        if ($fault !== null) {
            $this->refuse(null, null, $key, $fault[0], $fault[1]);
        }
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
            $this->notes->changes->add($row, $label, $key, 'transliterated', ['from' => $text, 'to' => $changed]);
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
                $this->notes->changes->add($row, $label, $key, 'shortened', ['from' => $text, 'to' => $cut]);
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

    /**
     * @param array<string, string> $values of a payment that the message has taken
     * @param array<string, string> $added of them
     */
    private function remember(array $values, array $added, int $row, ?string $label): void
    {
        $cents = self::cents($values['amount']);
        $this->cents += $cents;
        $date = $values['date'] ?? $this->date;
        $addition = $added ? Additions::pack($values, $added, self::euro($cents)) : '';
        $this->blocks->add($date, $values['seq'] ?? '', $addition);
        $this->oddities->payment($values, $cents, $date, $row, $label);
        foreach (array_intersect_key($values, $this->address) as $key => $text) {
            $unusual = $this->extension->refusedCharacters('name', $text);
            if ($unusual) {
                $this->notes->warnings->add($row, $label, $key, 'characters', ['characters' => $unusual]);
            }
        }
    }

    /** @param string $amount by Rules */
    private static function cents(string $amount): int
    {
        $decimals = strlen($amount) - (int) strpos($amount . '.', '.') - 1;

        return (int) str_replace('.', '', $amount) * ($decimals === 2 ? 1 : ($decimals === 1 ? 10 : 100));
    }

    /** Cents as euro with two decimals. */
    public static function euro(int $cents): string
    {
        $digits = str_pad((string) $cents, 3, '0', STR_PAD_LEFT);

        return substr($digits, 0, -2) . '.' . substr($digits, -2);
    }
}
