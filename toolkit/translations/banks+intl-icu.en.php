<?php

declare(strict_types=1);

/* Why a bank was not found, and what is to be said of the conversion of an account, by its status. */

return [
    'bank' => [
        'form' => 'neither a BIC nor an IBAN nor a bank code',
        'country' => 'the directory finds banks by IBANs of DE, AT, CH and LI only',
        'no_bic' => 'the directory has no BIC for this bank',
        'unknown' => 'unknown bank',
    ],
    'conversion' => [
        'account' => 'an account number has 1 to 10 digits',
        'bank_code' => 'a bank code has 8 digits',
        'refused' => 'the account is refused',
        '1' => "the bank''s rule changed the account number",
        '10' => 'the bank code is unknown',
        '11' => 'the account number fails its check',
        '12' => 'the bank, or this kind of account, takes no conversion',
        '13' => 'the bank code was replaced by its successor',
        '15' => "the bank''s rule changed the bank code",
        '50' => "the bank''s rule refuses this account",
    ],
];
