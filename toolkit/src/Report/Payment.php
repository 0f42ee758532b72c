<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Report;

use Sepa\Toolkit\Statement\Amount;

/**
 * What a report says of one payment.
 *
 * @psalm-immutable
 */
final class Payment implements \JsonSerializable
{
    /** @var string its status, or that of its block or message where that holds for each; '' if nothing is told of it */
    public string $status;

    /** @var bool whether the status is its own */
    public bool $isOwn;

    /** @var string id of the payment block it was in */
    public string $block;

    /** @var string end-to-end id; '' if there is none */
    public string $eref;

    /** @var string id of the instruction; '' if there is none */
    public string $instrid;

    /** @var string unique end-to-end reference (UETR); '' if there is none */
    public string $uetr;

    /** @var string reference of the bank; '' if there is none */
    public string $bankref;

    /** @var string mandate reference; '' if there is none */
    public string $mref;

    /** @var string name of the other party as it was sent; '' if that is not told */
    public string $name;

    /** @var string its IBAN; '' if that is not told */
    public string $iban;

    /** @var Amount|null without sign; null if it is not told */
    public ?Amount $amount;

    /** @var string what it is for */
    public string $text;

    /** @var string when it was accepted, as the file writes it; '' if that is not told */
    public string $accepted;

    /** @var list<Reason> */
    public array $reasons;

    /** @var string the name that the other bank has for the account, in the verification of a payee; '' if it tells none */
    public string $nameAtBank;

    /** @var string the bank's text about its status; '' if there is none */
    public string $said;

    /**
     * @param array<string, mixed> $values of a record
     * @param list<string> $legend the bank's text about this status
     */
    public function __construct(array $values, string $block, string $status, bool $isDebit, array $legend)
    {
        $text = static fn (string $key): string => trim($values[$key] ?? '');
        $this->isOwn = $text('status') !== '';
        $this->status = $this->isOwn ? $text('status') : $status;
        $this->block = $text('block') !== '' ? $text('block') : $block;
        foreach (['eref', 'instrid', 'uetr', 'bankref', 'mref', 'accepted'] as $key) {
            $this->$key = $text($key);
        }
        $side = $isDebit || $text('method') === 'DD' ? 'debtor' : 'creditor';
        $this->name = $text($side);
        $this->iban = str_replace(' ', '', $text($side . 'Account'));
        $this->amount = Amount::decimal($text('amount'), $text('amount@'));
        $this->text = implode(' ', $values['text'] ?? []);
        $this->reasons = array_map(static fn (array $reason): Reason => new Reason($reason), $values['reasons'] ?? []);
        $said = implode(
            ' ',
            array_filter(array_map(static fn (Reason $reason): string => $reason->said(), $this->reasons))
        );
        $this->nameAtBank = $this->status === Status::CLOSE_MATCH ? $said : '';
        $this->said = $this->nameAtBank === '' && $said !== '' ? $said : Words::joined($legend);
    }

    public function isRefused(): bool
    {
        return Status::isRefused($this->status);
    }

    /** Whether the payee's name is not the one that the account has, or only close to it. */
    public function isOtherName(): bool
    {
        return Status::isOtherName($this->status);
    }

    /** @return array<string, mixed> what is there */
    public function jsonSerialize(): array
    {
        $told = array_filter(
            get_object_vars($this),
            static fn ($value): bool => $value !== '' && $value !== null && $value !== []
        );
        $told['meaning'] = Words::of('status', $this->status);

        return $told + ['currency' => $this->amount ? $this->amount->currency : null];
    }
}
