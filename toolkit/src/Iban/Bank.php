<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

/**
 * What the directory says about a bank.
 *
 * @psalm-immutable
 */
final class Bank implements \JsonSerializable
{
    /** @var string what was asked for */
    public string $query;

    public ?string $bic;

    public ?string $name;

    /** @var list<string>|null of SCT, SDD, COR1, B2B; null if the directory doesn't know */
    public ?array $schemes;

    /** @var string|null why the bank was not found */
    public ?string $reason;

    /** @param list<string>|null $schemes */
    public function __construct(string $query, ?string $bic, ?string $name, ?array $schemes, ?string $reason)
    {
        $this->query = $query;
        $this->bic = $bic;
        $this->name = $name;
        $this->schemes = $schemes;
        $this->reason = $reason;
    }

    /** @return array{query: string, bic: ?string, bank: ?string, schemes: ?list<string>, reason: ?string} */
    public function jsonSerialize(): array
    {
        return [
            'query' => $this->query,
            'bic' => $this->bic,
            'bank' => $this->name,
            'schemes' => $this->schemes,
            'reason' => $this->reason,
        ];
    }
}
