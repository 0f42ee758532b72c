<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** Credit transfers: the submitting party pays. */
final class Transfers extends Payments
{
    /**
     * @param string $name of the submitting party, as are $iban and $bic
     * @param string|null $date yyyy-mm-dd, of payments that have none of their own; today if null
     * @param string|null $messageId generated if null
     * @param bool $batchBooking whether the bank books the payments of a day as one sum
     * @param bool $transliterate whether texts are changed where the character set refuses them
     * @param \DateTimeInterface|null $today for tests
     */
    public function __construct(
        string $name,
        string $iban,
        string $bic,
        string $rulebook = 'DE-3.7',
        ?string $date = null,
        ?string $messageId = null,
        bool $batchBooking = true,
        bool $transliterate = false,
        ?\DateTimeInterface $today = null
    ) {
        parent::__construct(
            SEPA_MSGTYPE_CTI,
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
    }

    public static function transactionKeys(): array
    {
        return Inspector::withAddress(['name', 'iban', 'bic', 'amount', 'ref', 'date', 'id', 'purp']);
    }

    protected static function required(string $rulebook): array
    {
        // Their schemas want something in RmtInf, which is always written.
        $wantsRef = strncmp($rulebook, 'DE-', 3) === 0 && $rulebook !== 'DE-3.7';

        return parent::required($rulebook) + ($wantsRef ? ['ref' => 'Remittance information missing'] : []);
    }
}
