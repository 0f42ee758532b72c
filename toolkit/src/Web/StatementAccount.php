<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Statement;

/** Statements of one account that follow from each other. */
final class StatementAccount
{
    private const IBAN = '/^[A-Z]{2}\d{2}[A-Z0-9]{11,30}$/D';

    /** @var string the account's number, an IBAN where one can be told; empty if it is not named */
    public string $name;

    /** @var string as the file writes it, if that is something else */
    public string $given = '';

    /** @var string name of the bank; empty if it is not known */
    public string $bank;

    /** @var string of the account; empty if it is not told */
    public string $owner;

    public string $currency;

    public ?Balance $opening;

    public ?Balance $closing = null;

    private ?BalanceChart $chart;

    private Statement $last;

    public function __construct(Statement $first)
    {
        $iban = self::iban($first->account);
        $this->name = $iban === '' ? $first->account : Ibans::grouped($iban);
        $this->given = $iban === $first->account || $iban === '' ? '' : $first->account;
        $bank = $first->bank === '' ? null : Ibans::bankName($first->bank);
        $this->bank = (string) ($bank ?? ($iban === '' ? '' : Ibans::check($iban)->bank));
        $this->owner = $first->owner;
        $this->currency = $first->currency;
        $this->opening = $first->opening;
        $this->chart = $first->opening ? new BalanceChart($first->currency, $first->opening->amount->units) : null;
        $this->last = $first;
    }

    /** Whether a statement goes on where the last one ended. */
    public function goesOn(Statement $next): bool
    {
        $last = $this->last;

        $areWhole = $last->balanced && $last->closing && $next->opening;

        return $last->account === $next->account && $areWhole && $last->closing->amount == $next->opening->amount;
    }

    public function take(Statement $statement): void
    {
        $this->last = $statement;
        $this->closing = $statement->closing;
    }

    /** The balance after a booking. */
    public function step(?Amount $balance): void
    {
        if ($this->chart && $balance) {
            $this->chart->add($balance->units);
        }
    }

    /** @return array<string, mixed>|null of BalanceChart */
    public function picture(): ?array
    {
        return $this->chart ? $this->chart->picture() : null;
    }

    /** "37040044/0532013000" has an IBAN, too. */
    private static function iban(string $account): string
    {
        if (preg_match(self::IBAN, $account)) {
            return $account;
        }

        $isGerman = preg_match('~^(\d{8})/(\d{1,10})$~D', $account, $part);

        return $isGerman ? (string) Ibans::convert($part[2], $part[1])->iban : '';
    }
}
