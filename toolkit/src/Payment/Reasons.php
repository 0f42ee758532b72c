<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

use Sepa\Toolkit\Iban\Ibans;

/** Codes for the extension's texts, and hints for the codes. */
final class Reasons
{
    /** What to do, by code. The codes of IBANs are in Ibans::REASONS. */
    public const HINTS = [
        'address' => 'An address needs at least town and country: addrTown and addrCC, such as Zürich and CH.',
        'address_line' => 'The bank is outside the EEA: give an address line, addrLine1.',
        'amount' => 'Write 1190.00: digits, a decimal point, two decimals, no thousands mark, no currency.',
        'amount_limit' => 'At most 999999999.99: pay it in parts.',
        'amount_zero' => 'The amount must be above zero. Leave out what is not to be paid.',
        'bic' => 'A BIC has 8 or 11 letters and digits, such as COBADEFFXXX. It is on the invoice or the bank statement.',
        'cor1_national' => 'COR1 ended in November 2016: ask the bank, or take CORE.',
        'cells' => 'The row has more or fewer cells than the headings. Is a quote missing, or was the file cut?',
        'characters' => 'Replace the character, or have it transliterated.',
        'control_characters' => 'There is a tab, a line end or another invisible character in it: type it anew.',
        'control_sum' => 'The sum is too large for one message: divide it into several.',
        'country' => 'Two capital letters, such as DE.',
        'creditor_id' => "The identifier stands in the central bank's letter, such as DE98ZZZ09999999999.",
        'date' => 'Write 2026-12-31, a day that exists.',
        'date_far' => 'Is the year right?',
        'date_order' => 'A mandate is signed before money is collected: are both dates right?',
        'date_past' => 'The bank will take the next day it can. Is the date right?',
        'duplicate_id' => 'Statements will not tell the two apart.',
        'duplicate_key' => 'Give each key once; capitals make no difference.',
        'duplicate_payment' => 'Is it meant to be paid twice?',
        'empty' => 'Leave the key out if there is nothing to say.',
        'id' => 'No slash at either end, and no two slashes side by side.',
        'length' => 'Shorten it. An umlaut counts as two characters.',
        'local_instrument' => 'CORE, or B2B with companies; COR1 only under DE-2.7 to DE-2.9, AT-6 and NL-6.',
        'message_id' => 'At most 30 characters: letters, digits, blanks and \' ( ) + , - . / : ?',
        'missing' => 'This is needed: fill it in.',
        'no_bank_day' => 'The bank will take the next day it can.',
        'no_line_end' => 'The file may have been cut in its last row: compare the last payment and the sum.',
        'no_payments' => 'A message needs at least one payment.',
        'other' => 'See the documentation of the key.',
        'purpose' => 'Four capital letters of the ISO list, such as SALA for salaries.',
        'rulebook' => 'DE-3.7 takes addrStreet, addrNum, addrCode, addrTown and addrCC; all others addrLine1, addrLine2 and addrCC.',
        'sequence' => 'FRST for the first collection of a mandate, RCUR for further ones, FNAL for the last, OOFF for a single one.',
        'smnda' => '1, or leave it empty.',
        'smnda_national' => 'The mark is written as before November 2016, which schemas of today refuse: ask the bank.',
        'smnda_sequence' => 'Before DE-3.0 the first collection after a change of bank is FRST.',
        'too_many_blocks' => 'Give a shorter message id, or fewer different dates.',
        'type' => 'Give text or a number.',
        'unknown_heading' => 'Is it spelled right? A column that is not for the bank can be left out.',
        'unknown_key' => 'Is it spelled right?',
        'utf8' => 'The text is not UTF-8: save the file as UTF-8.',
    ];

    /** Start of the extension's text => code. */
    private const CODES = [
        'IBAN missing' => 'missing',
        'BIC missing' => 'missing',
        'Amount missing' => 'missing',
        'Sequence type missing' => 'missing',
        'Invalid character ' => 'characters',
        'sepa_setName: invalid character ' => 'characters',
        'Invalid name ' => 'length',
        'sepa_setAccount: Name too' => 'length',
        'Invalid BIC' => 'bic',
        'sepa_setBIC:' => 'bic',
        'Invalid country code' => 'country',
        'Invalid address line' => 'length',
        'Invalid unstructured remittance information' => 'length',
        'Invalid purpose' => 'purpose',
        'Invalid amount' => 'amount',
        'Empty amount' => 'amount_zero',
        'Negative or zero amount' => 'amount_zero',
        'Invalid execution date' => 'date',
        'Invalid mandate signature date' => 'date',
        'Invalid date' => 'date',
        'Invalid end-to-end ID' => 'length',
        'Invalid mandate reference' => 'length',
        'Invalid old mandate reference' => 'length',
        'Invalid format for' => 'length',
        'selected SEPA rulebook' => 'rulebook',
        'Invalid transaction property' => 'unknown_key',
        'Invalid/unknown sequence type' => 'sequence',
        'Invalid value' => 'smnda',
        'Address required' => 'address_line',
        'Structured address required' => 'address',
        'Creditor Identifier' => 'creditor_id',
        'Invalid Creditor Identifier' => 'creditor_id',
        'Invalid message id' => 'message_id',
        'COR1 is not allowed' => 'local_instrument',
    ];

    /** @return array{string, string} code and hint of an extension's text */
    public static function of(string $text): array
    {
        foreach (Ibans::REASONS as $start => $reason) {
            if (strncmp($text, $start, strlen($start)) === 0) {
                return $reason;
            }
        }
        foreach (self::CODES as $start => $code) {
            if (strncmp($text, $start, strlen($start)) === 0) {
                return [$code, self::HINTS[$code]];
            }
        }

        return ['other', self::HINTS['other']];
    }
}
