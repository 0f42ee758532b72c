<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\File\Kind;
use Sepa\Toolkit\File\Source;
use Sepa\Toolkit\Unreadable;
use Sepa\Toolkit\Xml\Document;

/** The payments of a file that went to a bank (pain.001, pain.008), to lay reports beside. */
final class PaymentFile
{
    /** @var string id of the message */
    public string $id = '';

    /** @var list<SentPayment> */
    public array $payments = [];

    /** Stands where a payment has no end-to-end id. */
    private const NO_ID = 'NOTPROVIDED';

    /** @var array<string, list<int>> places in the list, by end-to-end id */
    private array $byId = [];

    private function __construct()
    {
    }

    /** @throws Unreadable if it cannot be read, or is no file of payments */
    public static function read(string $path): self
    {
        foreach (self::in(Source::file($path)) as $file) {
            return $file;
        }

        throw new Unreadable("$path is no file of payments (pain.001 or pain.008), or is damaged.");
    }

    /**
     * The files of payments that are whole among the documents of a source.
     *
     * @return \Generator<string, self> by the document's name
     */
    public static function in(Source $source): \Generator
    {
        foreach ($source->parts() as $part) {
            $document = $part->kind === Kind::XML ? new Document($part, array_keys(Tables::PAYMENT_ROOTS)) : null;
            if (!$document || !isset(Tables::PAYMENT_ROOTS[$document->root])) {
                continue;
            }
            $file = new self();
            $file->fill($document);
            if ($document->damage() === null) {
                yield $part->name => $file;
            }
        }
    }

    /**
     * The payment that a report speaks of: by block and end-to-end id, and where that
     * is missing or that of several also by instruction, amount and IBAN.
     *
     * @return int|null its place in the list; null if there is none or more than one
     */
    public function find(Payment $payment): ?int
    {
        $places = $this->byId[$payment->eref] ?? [];
        $members = ['block', 'instrid', 'iban', 'amount'];
        foreach ($members as $member) {
            $isNeeded = count($places) > 1
                || ($payment->eref === self::NO_ID && $member !== 'instrid')
                || $member === 'block';
            if ($isNeeded && ($payment->$member ?? '') !== '') {
                $places = array_filter(
                    $places,
                    fn (int $place): bool => $this->payments[$place]->$member == $payment->$member
                );
            }
        }

        return count($places) === 1 ? reset($places) : null;
    }

    private function fill(Document $document): void
    {
        $side = Tables::PAYMENT_ROOTS[$document->root] ? 'debtor' : 'creditor';
        $from = 0;
        foreach ($document->records(Tables::payments())->each() as $name => $values) {
            if ($name === 'payment') {
                $this->payments[] = new SentPayment($values, $side);
            } elseif ($name === 'block') {
                for (; $from < count($this->payments); ++$from) {
                    $payment = $this->payments[$from];
                    $payment->block = trim($values['id'] ?? '');
                    $this->byId[$payment->eref][] = $from;
                }
            } else {
                $this->id = trim($values['id'] ?? '');
            }
        }
    }
}
