<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/**
 * Several messages out of one table: columns for the own IBAN, instant payment,
 * category, priority and kind of debit sort its rows into messages, in the order
 * of their first rows. What a row leaves open is as the party and options say.
 */
final class Batches implements Receiver
{
    use Noting;

    private const YES = ['1', 'ja', 'j', 'yes', 'y', 'x', 'true', 'inst', 'instant', 'echtzeit'];

    private const NO = ['0', 'nein', 'n', 'no', 'false'];

    private int $kind;

    private Party $party;

    private Options $options;

    /** @var array<string, int> keys that sort, as keys */
    private array $sorting;

    /** @var array<string, Payments> by what sorts */
    private array $messages = [];

    /** @var array<string, true> what was told of one message, so that it is not told of each */
    private array $told = [];

    private int $count = 0;

    /** @var Payments|null for what holds for all messages, and for rows of which nobody knows the message */
    private ?Payments $spare = null;

    private Notes $spareNotes;

    private function __construct(int $kind, Party $party, Options $options)
    {
        $this->kind = $kind;
        $this->party = $party;
        $this->options = $options;
        $this->notes = new Notes();
        $this->spareNotes = new Notes();
        $this->sorting = array_flip(array_diff(Keys::all($kind), Keys::ofKind($kind)));
    }

    public static function transfers(Party $payer, ?Options $options = null): self
    {
        return new self(SEPA_MSGTYPE_CTI, $payer, $options ?? Options::latest());
    }

    public static function collections(Party $creditor, ?Options $options = null): self
    {
        return new self(SEPA_MSGTYPE_DDI, $creditor, $options ?? Options::latest());
    }

    public function columns(): array
    {
        return Keys::all($this->kind);
    }

    public function keys(): array
    {
        return array_merge($this->spare()->keys(), array_keys($this->sorting));
    }

    public function requiredKeys(): array
    {
        return $this->spare()->requiredKeys();
    }

    public function rulebook(): string
    {
        return $this->options->rulebook;
    }

    /** Number of payments of all messages, bad ones among them. */
    public function count(): int
    {
        return $this->count;
    }

    public function add(array $payment, ?string $label = null, ?int $row = null, array $known = []): bool
    {
        $row = $row ?? $this->count + 1;
        ++$this->count;
        $sorting = array_intersect_key($payment, $this->sorting);
        $payment = array_diff_key($payment, $sorting);
        $sorting = $this->settled($sorting, $known);
        if (array_intersect_key($known, $this->sorting)) {
            $message = $this->spare();
            $this->spareNotes->join($this->notes);
        }

        return ($message ?? $this->message($sorting, $row, $label))->add($payment, $label, $row, $known);
    }

    /**
     * The messages in the order of their first rows; without rows the one that there would be.
     *
     * @return non-empty-list<Payments>
     */
    public function messages(): array
    {
        return array_values($this->messages) ?: [$this->spare()];
    }

    public function messageFaults(): array
    {
        if ($this->count === 0) {
            // What is wrong with the party has not been told of a message yet.
            $spare = $this->spare();

            return array_merge($this->spareNotes->faults->kept(), $spare->messageFaults());
        }
        $faults = array_map(static fn (Payments $message): array => $message->messageFaults(), $this->messages());

        return array_merge(...$faults);
    }

    /** Sum of the good payments of all messages in euro, with two decimals. */
    public function sum(): string
    {
        $cents = 0;
        foreach ($this->messages() as $message) {
            $cents += (int) str_replace('.', '', $message->sum());
        }

        return Payments::euro($cents);
    }

    /**
     * The documents for the bank, in the order of messages().
     *
     * @return non-empty-list<string>
     * @throws FaultyPayments while there are faults
     */
    public function documents(): array
    {
        $faults = $this->faults();
        if ($faults) {
            throw new FaultyPayments($faults, $this->faultCount());
        }

        return array_map(static fn (Payments $message): string => $message->document(), $this->messages());
    }

    private function spare(): Payments
    {
        return $this->spare ?? $this->spare = $this->make([], $this->spareNotes);
    }

    /**
     * The columns in the words of options, and the faults of those that have none.
     *
     * @param array<string, mixed> $given
     * @param array<string, mixed> $known
     * @return array<string, string>
     */
    private function settled(array $given, array &$known): array
    {
        $settled = [];
        foreach ($given as $key => $value) {
            $text = trim((string) (is_scalar($value) ? $value : ''));
            $settled[$key] = self::word($key, $text);
            $code = $this->brokenWord($key, $settled[$key]);
            if ($code !== null) {
                $facts = ['value' => Fault::shown(mb_scrub($text, 'UTF-8')), 'rulebook' => $this->options->rulebook];
                $known[$key] = [$code, $facts];
            }
        }
        ksort($settled);

        // What is as for all others sorts nothing.
        return array_diff_assoc($settled, $this->common());
    }

    /** @return array<string, string> the columns' words for what party and options say */
    private function common(): array
    {
        return [
            'own_iban' => $this->party->iban,
            'instant' => $this->options->instant ? '1' : '0',
            'category' => (string) $this->options->category,
            'priority' => (string) $this->options->priority,
            'type' => $this->options->type,
        ];
    }

    private static function word(string $key, string $text): string
    {
        if ($key === 'own_iban') {
            return Ibans::normalise($text);
        }
        $small = mb_strtolower($text, 'UTF-8');
        if ($key === 'instant') {
            return in_array($small, self::YES, true) ? '1' : (in_array($small, self::NO, true) ? '0' : $text);
        }

        return strtoupper($text);
    }

    /** @return string|null the code of its fault */
    private function brokenWord(string $key, string $word): ?string
    {
        switch ($key) {
            case 'own_iban':
                return Ibans::refusal($word)[0];
            case 'instant':
                return in_array($word, ['0', '1'], true) ? null : 'yes_or_no';
            case 'type':
                return isset(Options::TYPES[$word]) ? null : 'local_instrument';
            default:
                return null;
        }
    }

    /** @param array<string, string> $sorting */
    private function message(array $sorting, int $row, ?string $label): Payments
    {
        $place = serialize($sorting);
        if (!isset($this->messages[$place])) {
            $notes = new Notes();
            $this->messages[$place] = $this->make($sorting, $notes);
            $this->tellOnce($notes, $sorting, $row, $label);
            $notes->join($this->notes);
            $this->number();
        }

        return $this->messages[$place];
    }

    /** @param array<string, string> $sorting */
    private function make(array $sorting, Notes $notes): Payments
    {
        $party = isset($sorting['own_iban']) && $sorting['own_iban'] !== $this->party->iban
            ? $this->party->withAccount($sorting['own_iban'])
            : $this->party;
        $options = $this->options;
        $options = isset($sorting['instant']) ? $options->instant($sorting['instant'] === '1') : $options;
        $options = $options->instant || !isset($sorting['instant']) ? $options : $options->at(null);
        $options = isset($sorting['category']) ? $options->forCategory($sorting['category']) : $options;
        $options = isset($sorting['priority']) ? $options->withPriority($sorting['priority']) : $options;
        $options = isset($sorting['type']) ? $options->ofType($sorting['type']) : $options;

        return $this->kind === SEPA_MSGTYPE_CTI
            ? new Transfers($party, $options, $notes)
            : new Collections($party, $options, $notes);
    }

    /**
     * Tells what is wrong with a new message: at the row if its columns are the
     * reason, else once.
     *
     * @param array<string, string> $sorting
     */
    private function tellOnce(Notes $notes, array $sorting, int $row, ?string $label): void
    {
        foreach ($notes->bySeverity() as $severity => $findings) {
            foreach ($findings->kept() as $fault) {
                $column = in_array($fault->key, ['iban', 'bic'], true) ? 'own_iban' : $fault->key;
                $isOfRow = $column !== null && isset($sorting[$column]);
                $place = "$severity $fault->key $fault->code";
                if ($isOfRow || !isset($this->told[$place])) {
                    $this->told += $isOfRow ? [] : [$place => true];
                    $this->notes->bySeverity()[$severity]->add(
                        $isOfRow ? $row : null,
                        $isOfRow ? $label : null,
                        $isOfRow ? $column : $fault->key,
                        $fault->code,
                        $fault->values
                    );
                }
            }
        }
    }

    /** A given message id is that of one message: of several each gets a number. */
    private function number(): void
    {
        $count = count($this->messages);
        if ($this->options->messageId === null || $count === 1) {
            return;
        }
        $messages = array_values($this->messages);
        foreach ($count === 2 ? [0, 1] : [$count - 1] as $number) {
            $messages[$number]->identify("{$this->options->messageId}-" . ($number + 1));
        }
    }
}
