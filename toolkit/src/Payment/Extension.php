<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * Asks the extension about single values under one rulebook, so that its rules
 * stand nowhere else.
 */
final class Extension
{
    /** Values that pass under every rulebook, for the keys that are not asked about. */
    private const FILLERS = ['iban' => 'NL91ABNA0417164300', 'amount' => '1'];

    private int $kind;

    private Rulebook $rulebook;

    /** @var array<string, bool> refused or not, by key and character */
    private array $characters = [];

    /** @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI */
    public function __construct(int $kind, Rulebook $rulebook)
    {
        $this->kind = $kind;
        $this->rulebook = $rulebook;
    }

    public function message(): \SEPA
    {
        return new \SEPA($this->kind);
    }

    /**
     * Why a payment is refused: all that is missing in it is filled in.
     *
     * @param array<string, string> $row
     */
    public function refusal(array $row): ?string
    {
        $row += self::FILLERS;
        if ($this->kind === SEPA_MSGTYPE_DDI) {
            $row += ['seq' => 'RCUR'];
        }
        if ($this->rulebook->wantsBic) {
            $row += ['bic' => 'ABNANL2A'];
        }
        try {
            $this->message()->add($row);
        } catch (\SEPAException $e) {
            return $e->getMessage();
        }

        return null;
    }

    /** Why a single value is refused, whatever the rest of its payment. */
    public function refusalOf(string $key, string $value): ?string
    {
        $row = [$key => $value];
        if ($key === 'bic') {
            // A bank outside the EEA asks for an address besides.
            $row += $this->rulebook->structured ? ['addrTown' => 'Bern', 'addrCC' => 'CH'] : ['addrLine1' => 'Bern'];
        }

        return $this->refusal($row);
    }

    /** Whether form and check digits of a creditor identifier are right. */
    public function isCreditorId(string $value): bool
    {
        try {
            $this->message()->setCreditorIdentifier($value);
        } catch (\SEPAException $e) {
            return false;
        }

        return true;
    }

    /**
     * The characters of a UTF-8 text that a key does not take.
     *
     * @return list<string> each once, in the order of the text
     */
    public function refusedCharacters(string $key, string $text): array
    {
        $refused = [];
        preg_match_all('/[^A-Za-z0-9]/u', $text, $matches);
        foreach (array_unique($matches[0]) as $character) {
            $known = &$this->characters["$key $character"];
            $known = $known ?? $this->refusalOf($key, $character) !== null;
            if ($known) {
                $refused[] = $character;
            }
        }

        return $refused;
    }
}
