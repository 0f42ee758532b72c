<?php

declare(strict_types=1);

/*
 * What is wrong or odd in payments, by code: the reason and what to do about it.
 * Parameters: {key}, its {label}, and the values of the fault that are named. In
 * English the extension's own sentence stands in place of a reason, if it has one.
 */

return [
    'account_differs' => [
        'reason' => 'The bank makes {to} of account number {account} and bank code {bank_code}',
        'hint' => 'The IBAN of the row counts. Are both of the same account?',
    ],
    'address' => [
        'reason' => '{label} missing',
        'hint' => 'An address needs at least town and country: addrTown and addrCC, such as Zürich and CH.',
    ],
    'address_country_alone' => [
        'reason' => 'A country without an address line',
        'hint' => 'Austrian schemas refuse it: give an address line, addrLine1, or leave the country out.',
    ],
    'address_hybrid' => [
        'reason' => '{label} beside address lines',
        'hint' => 'Beside lines there are only town, country and postcode: write street and number into the lines, or all of it into fields.',
    ],
    'address_line' => [
        'reason' => 'Address required for banks outside the EEA',
        'hint' => 'The bank is outside the EEA: give an address line, addrLine1.',
    ],
    'address_lines' => [
        'reason' => 'An address of lines alone',
        'hint' => 'Since {date} banks refuse such addresses: under DE-3.7 give street, town and country, or leave the address out.',
    ],
    'amount' => [
        'reason' => 'Invalid amount',
        'hint' => '{german, select, yes {Write 1.190,00 or 1190,00.}'
            . ' other {Write 1190.00: digits, a decimal point, two decimals, no thousands mark, no currency.}}',
    ],
    'amount_limit' => [
        'reason' => 'Amount above {limit}',
        'hint' => 'At most {limit}: pay it in parts.',
    ],
    'amount_zero' => [
        'reason' => 'The amount is not above zero',
        'hint' => 'The amount must be above zero. Leave out what is not to be paid.',
    ],
    'bic' => [
        'reason' => 'Invalid BIC: {value}',
        'hint' => 'A BIC has 8 or 11 letters and digits, such as COBADEFFXXX. It is on the invoice or the bank statement.',
    ],
    'blank' => '(blank)',
    'bic_dropped' => [
        'reason' => '“{value}” is no BIC and was left out',
        'hint' => 'It says that there is none.',
    ],
    'bic_other_bank' => [
        'reason' => "The BIC {value} is not that of the IBAN''s bank, {known}",
        'hint' => 'Leave the BIC out: the bank is found by the IBAN.',
    ],
    'bic_other_country' => [
        'reason' => 'A BIC of {bank} with an IBAN of {country}',
        'hint' => 'Leave the BIC out: the bank is found by the IBAN.',
    ],
    'cells' => [
        'reason' => '{cells} cells under {headings} headings',
        'hint' => 'The row has more or fewer cells than the headings. Is a quote missing, or was the file cut?',
    ],
    'characters' => [
        'reason' => 'Not allowed in ‘{label}’: {characters}',
        'hint' => '{characters, select, none {} other {Not allowed here: {characters}. }}'
            . '{form, select, text {Replace the character, or have it transliterated.} other {Replace the character.}}',
    ],
    'control_characters' => [
        'reason' => "Control character in ''{key}''",
        'hint' => 'There is a tab, a line end or another invisible character in it: type it anew.',
    ],
    'control_sum' => [
        'reason' => 'Sum of the amounts out of range',
        'hint' => 'The sum is too large for one message: divide it into several.',
    ],
    'conversion' => [
        'reason' => 'No IBAN for account number {account} and bank code {bank_code}: '
            . '{conversion, select, account {an account number has 1 to 10 digits} bank_code {a bank code has 8 digits}'
            . ' 10 {the bank code is unknown} 11 {the account number fails its check}'
            . ' 12 {the bank, or this kind of account, takes no conversion} other {the bank refuses the account}}',
        'hint' => 'Ask the account holder for the IBAN.',
    ],
    'converted' => [
        'reason' => 'Account number {account} and bank code {bank_code} become {to}'
            . '{conversion, select, 1 {, with another account number by the rule of the bank}'
            . ' 13 {, with the bank code of the successor} 15 {, with another bank code by the rule of the bank} other {}}',
        'hint' => '',
    ],
    'cor1_national' => [
        'reason' => 'COR1 under {rulebook}',
        'hint' => 'COR1 ended in November 2016: ask the bank, or take CORE.',
    ],
    'country' => [
        'reason' => 'Invalid country code: {value}',
        'hint' => 'Two capital letters, such as DE.',
    ],
    'creditor_id' => [
        'reason' => 'Invalid form or length of Creditor Identifier',
        'hint' => "The identifier stands in the central bank''s letter, such as DE98ZZZ09999999999.",
    ],
    'currency' => [
        'reason' => 'Not in euro: {value}',
        'hint' => 'SEPA payments are in euro. Other currencies go by the online banking of the bank.',
    ],
    'account_currency' => [
        'reason' => 'Invalid currency: {value}',
        'hint' => 'Three capital letters, such as EUR.',
    ],
    'date' => [
        'reason' => 'No such date: {value}',
        'hint' => 'Write {german, select, yes {31.12.2026} other {2026-12-31}}, a day that exists.',
    ],
    'date_far' => [
        'reason' => '{date} is more than a year away',
        'hint' => 'Is the year right?',
    ],
    'date_order' => [
        'reason' => 'Mandate of {signed} is younger than its collection of {date}',
        'hint' => 'A mandate is signed before money is collected: are both dates right?',
    ],
    'date_past' => [
        'reason' => '{date} is in the past',
        'hint' => 'The bank will take the next day it can. Is the date right?',
    ],
    'duplicate_id' => [
        'reason' => 'End-to-end id of row {row} again',
        'hint' => 'Statements will not tell the two apart.',
    ],
    'duplicate_key' => [
        'reason' => "''{key}'' is given twice",
        'hint' => 'Give each key once; capitals make no difference.',
    ],
    'duplicate_payment' => [
        'reason' => 'Account and amount of row {row} again',
        'hint' => 'Is it meant to be paid twice?',
    ],
    'empty' => [
        'reason' => "{blanks, select, yes {Only blanks in ''{key}''} other {Empty value for ''{key}''}}",
        'hint' => 'Leave the key out if there is nothing to say.',
    ],
    'form_ends' => [
        'reason' => 'Documents of {rulebook} end',
        'hint' => 'Some banks refuse them after {date}: take DE-3.7, or ask the bank.',
    ],
    'iban' => [
        'reason' => 'Invalid IBAN',
        'hint' => 'Compare it with the invoice.',
    ],
    'iban_account' => [
        'reason' => 'Invalid account number in IBAN',
        'hint' => 'The account number in it (the last ten digits) cannot exist at this bank. Ask the payee.',
    ],
    'iban_bank' => [
        'reason' => 'Invalid bank ID (BLZ) in IBAN',
        'hint' => 'The bank code in it (characters 5 to 12) is not in the list: a typing error, or the bank has merged,'
            . ' or it is newer than the lists of this program. Ask the payee.',
    ],
    'iban_checksum' => [
        'reason' => 'Invalid IBAN checksum',
        'hint' => 'The check digits do not fit: a digit is wrong, or two are swapped.',
    ],
    'iban_country' => [
        'reason' => 'No country has these letters',
        'hint' => 'An IBAN starts with the two letters of its country, such as DE. Is a part missing at the front?',
    ],
    'iban_country_outside' => [
        'reason' => 'Country outside of SEPA, or without IBANs',
        'hint' => 'The check digits are right; more of it is not known here. No SEPA payment goes there.',
    ],
    'iban_country_outside_checksum' => [
        'reason' => 'Country outside of SEPA, or without IBANs',
        'hint' => 'The check digits are wrong, too: compare it with the invoice. No SEPA payment goes there.',
    ],
    'iban_country_unsupported' => [
        'reason' => 'Country of SEPA that is not known here',
        'hint' => 'It joined later: this program can neither check nor use its IBANs. Pay it in the online banking.',
    ],
    'iban_format' => [
        'reason' => 'Invalid IBAN format',
        'hint' => 'There is a letter where this country has digits, or the other way round: O and 0, I and 1?',
    ],
    'iban_length' => [
        'reason' => 'Wrong IBAN length',
        'hint' => 'Characters are missing or too many: compare it with the invoice, four by four.',
    ],
    'id' => [
        'reason' => "Slash at an end of ''{key}'', or two slashes in it",
        'hint' => 'No slash at either end, and no two slashes side by side.',
    ],
    'instant_outside_eea' => [
        'reason' => 'An instant payment to a bank outside the EEA',
        'hint' => 'Such banks need not take instant payments, and many do not: the bank may refuse it.',
    ],
    'instant_priority' => [
        'reason' => 'A priority of instant payments',
        'hint' => 'Instant payments have none: leave it out.',
    ],
    'length' => [
        'reason' => '{length, plural, =0 {{label} is empty} other {{label} is too long: # bytes, at most {limit}}}',
        'hint' => '{length, plural, =0 {Fill it in, or leave the key out.} other {{over, plural, one {One byte} other {# bytes}}'
            . ' too many; an umlaut counts as two.{cut, select, none {} other { This would fit: “{cut}”}}}}',
    ],
    'length_characters' => [
        'reason' => '{label} is too long: {length, plural, other {#}} characters, at most {limit}',
        'hint' => '{over, plural, one {One character} other {# characters}} too many.'
            . '{cut, select, none {} other { This would fit: “{cut}”}}',
    ],
    'local_instrument' => [
        'reason' => '{value} is not possible under {rulebook}',
        'hint' => 'CORE, or B2B with companies; COR1 only under DE-2.7 to DE-2.9, AT-6 and NL-6.',
    ],
    'memory' => [
        'reason' => 'Out of memory',
        'hint' => 'Divide the payments into several messages, or allow more memory.',
    ],
    'message_id' => [
        'reason' => 'Invalid message id (must be 1-{limit} characters)',
        'hint' => "At most {limit} characters: letters, digits, blanks and '' ( ) + , - . / : ?",
    ],
    'missing' => [
        'reason' => '{label} missing',
        'hint' => '{key, select, seq {FRST for the first collection of a mandate, RCUR for further ones, FNAL for the last,'
            . ' OOFF for a single one.} other {This is needed: fill it in.}}',
    ],
    'missing_column' => [
        'reason' => 'No column is headed {label}',
        'hint' => 'Every row needs it. Is the heading spelled in another way?{key, select, seq { The values are FRST for the first'
            . ' collection of a mandate, RCUR for further ones, FNAL for the last, OOFF for a single one.} other {}}',
    ],
    'no_bank_day' => [
        'reason' => '{date} is {day, select, saturday {a Saturday} sunday {a Sunday} other {a TARGET holiday ({day, select,'
            . ' new_year {New Year} labour_day {Labour Day} christmas {Christmas Day} december_26 {26 December}'
            . ' good_friday {Good Friday} other {Easter Monday}})}}',
        'hint' => 'The bank will take the next day it can.',
    ],
    'no_line_end' => [
        'reason' => 'The last line has no end',
        'hint' => 'The file may have been cut in its last row: compare the last payment and the sum.',
    ],
    'no_payments' => [
        'reason' => 'No transactions available',
        'hint' => 'A message needs at least one payment.',
    ],
    'not_in_debits' => [
        'reason' => '{label}: not in direct debits',
        'hint' => 'Only transfers have it.',
    ],
    'not_in_rulebook' => [
        'reason' => '{label}: not under {rulebook}',
        'hint' => 'The document of this rulebook cannot say it: take DE-3.7, or leave it out.',
    ],
    'notice' => [
        'reason' => '{date} is too soon for a direct debit',
        'hint' => 'The bank needs one bank day: the earliest day is {earliest}.',
    ],
    'other' => [
        'reason' => 'Refused',
        'hint' => 'See the documentation of the key.',
    ],
    'own_outside_eea' => [
        'reason' => 'Your account is outside the EEA',
        'hint' => 'Banks ask for the address of every payer then.',
    ],
    'priority' => [
        'reason' => 'Invalid priority: {value}',
        'hint' => 'HIGH or NORM.',
    ],
    'purpose' => [
        'reason' => 'Invalid purpose (must be 4 capital letters or digits)',
        'hint' => 'Four capital letters of the ISO list, such as SALA for salaries.',
    ],
    'purpose_national' => [
        'reason' => 'Purpose {value} is not possible under {rulebook}',
        'hint' => 'The older list of the Austrian schemas does not have it.',
    ],
    'purpose_unknown' => [
        'reason' => 'Unknown purpose: {value}',
        'hint' => 'The list of ISO 20022 of 2023 does not have it: is it spelled right?',
    ],
    'reference' => [
        'reason' => 'Invalid creditor reference: {value}',
        'hint' => 'A creditor reference begins with RF and two check digits, such as RF18539007547034. Compare it with the invoice.',
    ],
    'reference_twice' => [
        'reason' => 'Both a reference and a creditor reference',
        'hint' => 'A payment has one or the other.',
    ],
    'rulebook' => [
        'reason' => 'Under {rulebook} an address is given by {structured, select, yes {fields} other {lines}}',
        'hint' => 'DE-3.7 takes addrStreet, addrNum, addrCode, addrTown and addrCC; all others addrLine1, addrLine2 and addrCC.',
    ],
    'sequence' => [
        'reason' => 'Unknown sequence type: {value}',
        'hint' => 'FRST for the first collection of a mandate, RCUR for further ones, FNAL for the last, OOFF for a single one.',
    ],
    'shortened' => [
        'reason' => '“{from}” becomes “{to}”',
        'hint' => '',
    ],
    'smnda' => [
        'reason' => 'Invalid value for SMNDA: {value}',
        'hint' => '1, or leave it empty.',
    ],
    'smnda_national' => [
        'reason' => 'SMNDA under {rulebook}',
        'hint' => 'The mark is written as before November 2016, which schemas of today refuse: ask the bank.',
    ],
    'smnda_sequence' => [
        'reason' => 'SMNDA with {sequence} under {rulebook}',
        'hint' => 'Before DE-3.0 the first collection after a change of bank is FRST.',
    ],
    'spreadsheet_error' => [
        'reason' => 'An error of the spreadsheet, or a formula: {value}',
        'hint' => 'Mend the cell there and save the sheet anew, with values instead of formulas; ### is a column that is too narrow.',
    ],
    'title_lines' => [
        'reason' => '{lines, plural, one {One line} other {# lines}} before the headings skipped, from “{text}” on',
        'hint' => '',
    ],
    'time' => [
        'reason' => 'Invalid time: {value}',
        'hint' => 'Write 2026-12-01T10:00:00+01:00, with the offset from UTC.',
    ],
    'time_not_instant' => [
        'reason' => 'A time of execution, and no instant payments',
        'hint' => 'Only instant payments are executed at a time: ask for them, too, or give a date.',
    ],
    'time_other_day' => [
        'reason' => 'A day other than that of {time}',
        'hint' => 'The time of execution holds for all payments: leave the day out.',
    ],
    'too_many_blocks' => [
        'reason' => 'Message id too long for so many payment blocks',
        'hint' => 'Give a shorter message id, or fewer different dates.',
    ],
    'transliterated' => [
        'reason' => '“{from}” becomes “{to}”',
        'hint' => "",
    ],
    'type' => [
        'reason' => "Invalid type of value for ''{key}'' ({type})",
        'hint' => 'Give text or a number.',
    ],
    'unknown_heading' => [
        'reason' => "Unknown heading ''{key}''",
        'hint' => 'Is it spelled right? A column that is not for the bank can be left out. The keys are: {keys}.',
    ],
    'unknown_key' => [
        'reason' => "Invalid transaction property ''{key}''",
        'hint' => 'Is it spelled right? The keys are: {keys}.',
    ],
    'utf8' => [
        'reason' => "Not UTF-8: ''{key}''",
        'hint' => 'The text is not UTF-8: save the file as UTF-8.',
    ],
    'yes_or_no' => [
        'reason' => 'Neither yes nor no: {value}',
        'hint' => '1 or yes, 0 or no; without a value it is as for all others.',
    ],
];
