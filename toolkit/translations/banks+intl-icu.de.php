<?php

declare(strict_types=1);

/* Why a bank was not found, and what is to be said of the conversion of an account, by its status. */

return [
    'bank' => [
        'form' => 'weder BIC noch IBAN noch Bankleitzahl',
        'country' => 'das Verzeichnis findet Banken nur zu IBANs aus DE, AT, CH und LI',
        'no_bic' => 'das Verzeichnis hat zu dieser Bank keinen BIC',
        'unknown' => 'unbekannte Bank',
    ],
    'conversion' => [
        'account' => 'eine Kontonummer hat 1 bis 10 Ziffern',
        'bank_code' => 'eine Bankleitzahl hat 8 Ziffern',
        'refused' => 'das Konto wird abgelehnt',
        '1' => 'nach der Regel der Bank wurde die Kontonummer geändert',
        '10' => 'die Bankleitzahl ist unbekannt',
        '11' => 'die Kontonummer ist falsch',
        '12' => 'die Bank lässt für dieses Konto keine Umrechnung zu',
        '13' => 'die Bankleitzahl wurde durch die des Nachfolgers ersetzt',
        '15' => 'nach der Regel der Bank wurde die Bankleitzahl geändert',
        '50' => 'die Regel der Bank lehnt dieses Konto ab',
    ],
];
