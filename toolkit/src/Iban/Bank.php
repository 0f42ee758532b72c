<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Iban;

use Sepa\Toolkit\Texts;

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

    /** @var string|null why the bank was not found: a key of translations/banks */
    public ?string $code;

    /** @var string|null that in English */
    public ?string $reason;

    /** @param list<string>|null $schemes */
    public function __construct(string $query, ?string $bic, ?string $name, ?array $schemes, ?string $code)
    {
        $this->query = $query;
        $this->bic = $bic;
        $this->name = $name;
        $this->schemes = $schemes;
        $this->code = $code;
        $this->reason = $this->reason();
    }

    /** Why the bank was not found; null if it was. */
    public function reason(string $locale = 'en'): ?string
    {
        return $this->code === null ? null : Texts::of('banks', "bank.$this->code", [], $locale);
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
