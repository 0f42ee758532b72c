<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

/**
 * What was mended in a statement, or what could not be.
 */
final class Note implements \JsonSerializable
{
    /** What is read as if the bank had written it well; no booking and no money is lost by it. */
    public const MENDED = [
        'byte_order_mark' => 'The file begins with a byte order mark.',
        'first_line_end' => 'The file begins with :20: at once, with no line end before it.',
        'line_ends' => 'Lines end in LF or CR alone instead of CR LF.',
        'last_line_end' => 'The last line has no line end.',
        'end_missing' => 'The line "-" that ends a statement is missing.',
        'encoding' => 'Text is in ISO-8859-1 or Windows-1252 and was turned into UTF-8.',
        'nul_bytes' => 'NUL bytes were turned into blanks.',
        'envelope' => 'The SWIFT envelope stands on a line with a field.',
        'number' => 'The statement number in :28: or :28C: cannot be read and is left out.',
        'transaction_type' => 'A transaction type that does not begin with N.',
        'no_transaction_type' => 'A booking without a transaction type.',
        'amount_form' => 'An amount without decimal comma, or with points.',
        'booking_year' => 'A booking date on the other side of the turn of the year.',
        'details_last' => 'Details (:86:) with no field after them.',
        'details_of_statement' => 'A :86: that is about the statement, not about a booking.',
        'details_twice' => 'Details (:86:) come twice for one booking: where both have a subfield the later counts.',
        'details_line' => 'A line of details (:86:) that begins like a field or an end.',
        'details_separator' => 'Subfields of details (:86:) marked by another character than "?".',
        'details_plain' => 'Details (:86:) without subfields: they are the text of the booking.',
        'keyword_inside' => 'A keyword such as SVWZ+ in the middle of a subfield.',
    ];

    /** What leaves the statement wanting: look at the file, or ask the bank for another. */
    public const FAULTS = [
        'cut' => 'The statement, or the file, ends before its closing balance: it was cut, or parts are missing.',
        'no_opening' => 'The opening balance (:60F: or :60M:) is missing.',
        'no_closing' => 'The closing balance (:62F: or :62M:) is missing.',
        'interim' => 'An interim report (MT942) has no balances, and its bookings may come again in the statement.',
        'balance' => 'A balance cannot be read.',
        'balances' => 'Balances do not follow from each other: pages are missing, or statements are mixed up.',
        'account' => 'One statement names two accounts.',
        'booking' => 'A booking (:61:) cannot be read and is left out.',
        'amount' => 'The amount of a booking cannot be read; the booking is left out.',
        'too_large' => 'The sum of the bookings is beyond 64 bits.',
        'date' => 'A date that the calendar does not have is left out.',
        'too_long' => 'A field is longer than 64 kB and was cut there.',
        'empty' => 'The file is empty.',
        'no_statement' => 'There is no statement in the file: no line begins with :20:.',
        'outside' => 'A field stands outside of any statement and is left out.',
    ];

    public string $code;

    public string $text;

    /** @var int line of the file where it was first seen */
    public int $line;

    /** @var int how often it was seen */
    public int $count = 1;

    public function __construct(string $code, int $line)
    {
        $this->code = $code;
        $this->text = self::MENDED[$code] ?? self::FAULTS[$code];
        $this->line = $line;
    }

    /** @return array{code: string, line: int, count: int, text: string} */
    public function jsonSerialize(): array
    {
        return ['code' => $this->code, 'line' => $this->line, 'count' => $this->count, 'text' => $this->text];
    }
}
