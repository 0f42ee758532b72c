<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Direct debits: the submitting party collects. */
final class Collections extends Payments
{
    public const TYPES = ['CORE' => SEPA_DDTYPE_CORE, 'COR1' => SEPA_DDTYPE_COR1, 'B2B' => SEPA_DDTYPE_B2B];

    /**
     * @param string $name of the submitting party, as are $iban, $bic and $creditorId
     * @param string $type a key of TYPES
     * @param string|null $date yyyy-mm-dd, of collections that have none of their own; today if null
     * @param string|null $messageId generated if null
     * @param bool $batchBooking whether the bank books the collections of a day as one sum
     * @param bool $transliterate whether texts are changed where the character set refuses them
     * @param \DateTimeInterface|null $today for tests
     */
    public function __construct(
        string $name,
        string $iban,
        string $bic,
        string $creditorId,
        string $type = 'CORE',
        string $rulebook = 'DE-3.7',
        ?string $date = null,
        ?string $messageId = null,
        bool $batchBooking = true,
        bool $transliterate = false,
        ?\DateTimeInterface $today = null
    ) {
        if (!isset(self::TYPES[$type])) {
            throw new \InvalidArgumentException("unknown type of direct debit: $type");
        }
        parent::__construct(
            SEPA_MSGTYPE_DDI,
            $name,
            $iban,
            $bic,
            $rulebook,
            $date,
            $messageId,
            $batchBooking,
            $transliterate,
            $today
        );
        $this->set('creditorId', (string) preg_replace('/\s+/', '', $creditorId), 'setCreditorIdentifier');
        try {
            $this->message->setDDType(self::TYPES[$type]);
        } catch (\SEPAException $e) {
            [$code] = Reasons::of($e->getMessage());
            $this->refuse(null, null, 'type', $code, $e->getMessage());
        }
        if ($type === 'COR1' && in_array($rulebook, ['AT-6', 'NL-6'], true)) {
            $this->warn(null, 'type', 'cor1_national', "COR1 under $rulebook");
        }
    }

    public static function transactionKeys(): array
    {
        return Inspector::withAddress([
            'name', 'iban', 'bic', 'amount', 'ref', 'date', 'id', 'seq', 'mref', 'mdate', 'old_mref', 'old_iban', 'smnda',
        ]);
    }

    protected static function required(string $rulebook): array
    {
        return parent::required($rulebook) + [
            'seq' => 'Sequence type missing',
            'mref' => 'Mandate reference missing',
            'mdate' => 'Mandate signature date missing',
        ];
    }

    protected function block(array $values): string
    {
        return parent::block($values) . strtoupper($values['seq']);
    }

    protected function findOddities(Oddities $oddities, array $values, int $row, ?string $label): void
    {
        parent::findOddities($oddities, $values, $row, $label);
        $oddities->mandate($values, parent::block($values), $this->rulebook, $row, $label);
    }
}
