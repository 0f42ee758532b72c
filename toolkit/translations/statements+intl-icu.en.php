<?php

declare(strict_types=1);

/*
 * Notes about statements and files of statements, and the words of the standard's
 * codes. Parameters: the values of the note that are named.
 */

return [
    // What is read as if the bank had written it well; no booking and no money is lost by it.
    'amount_form' => 'An amount without decimal comma, or with points.',
    'booking_year' => 'A booking date on the other side of the turn of the year.',
    'byte_order_mark' => 'The file begins with a byte order mark.',
    'code_page' => 'Text is in code page 850 and was turned into UTF-8.',
    'details_last' => 'Details (:86:) with no field after them.',
    'details_line' => 'A line of details (:86:) that begins like a field or an end.',
    'details_of_statement' => 'A :86: that is about the statement, not about a booking.',
    'details_plain' => 'Details (:86:) without subfields: they are the text of the booking.',
    'details_separator' => 'Subfields of details (:86:) marked by another character than "?".',
    'details_twice' => 'Details (:86:) come twice for one booking: where both have a subfield the later counts.',
    'encoding' => 'Text is in ISO-8859-1 or Windows-1252 and was turned into UTF-8.',
    'end_missing' => 'The line "-" that ends a statement is missing.',
    'envelope' => 'The SWIFT envelope stands on a line with a field.',
    'first_line_end' => 'The file begins with :20: at once, with no line end before it.',
    'keyword_inside' => 'A keyword such as SVWZ+ in the middle of a subfield.',
    'last_day' => 'A value date such as 30 February, of banks whose months have 30 days: the last day of the month is taken.',
    'last_line_end' => 'The last line has no line end.',
    'line_ends' => 'Lines end in LF, CR or @@ instead of CR LF.',
    'no_transaction_type' => 'A booking without a transaction type.',
    'nul_bytes' => 'NUL bytes were turned into blanks.',
    'number' => 'The statement number in :28: or :28C: cannot be read and is left out.',
    'reversals_turned' => 'Reversals are signed as what they take back. Only with their signs turned the statement balances, so they are.',
    'rounded' => 'An amount has more decimals than its currency, and was rounded.',
    'transaction_type' => 'A transaction type that does not begin with N.',

    // What is no fault and good to know.
    'copy' => 'The bank calls this a copy or a duplicate of another statement.',
    'double' => 'Bookings that another statement has, too: account, amount and the bank’s reference are the same.',
    'double_statement' => 'This statement came already: a file was given twice, or is in two archives.',
    'empty_document' => 'The document is an empty shell, with no statement in it.',
    'gap' => 'The opening balance {opening} is not the closing balance of the statement before, {closing}: statements are missing between them.',
    'interim' => 'A report without balances, which nothing can prove; its bookings may come again in the statement.',
    'pages' => 'One page of a longer statement: those before or after it are missing.',
    'parts' => 'The payments of a batch do not come to the amount of its booking. The booking counts.',
    'pending' => 'Bookings that the bank only announces. They are in no sum.',
    'skipped' => 'Left out: {kind, select, payments {payments to send to a bank} report {a report about payments} pdf {a PDF} picture {a picture} workbook {a workbook or an office document} word {a text document} html {a page of a web site} table {a table} empty {empty} zip {an archive} gzip {an archive} text {no statement} other {another kind of file}}.',
    'summary' => 'Numbers or sums of the bookings that the bank tells are others than those of its bookings.',

    // What leaves the statement wanting: look at the file, or ask the bank for another.
    'account' => 'One statement names two accounts.',
    'amount' => 'The amount of a booking cannot be read; the booking is left out.',
    'balance' => 'A balance cannot be read.',
    'balances' => 'Balances do not follow from each other: pages are missing, or statements are mixed up.',
    'booking' => 'A booking (:61:) cannot be read and is left out.',
    'currency' => 'A booking is in another currency than the account.',
    'cut' => 'The statement, or the file, ends before its closing balance: it was cut, or parts are missing.',
    'damaged' => 'The archive is damaged or was cut.',
    'date' => 'A date that the calendar does not have is left out.',
    'doctype' => 'The document declares a DOCTYPE, which no bank does, and is not read.',
    'empty' => 'The file is empty.',
    'encrypted' => 'It is locked with a password: unpack it first.',
    'malformed' => 'The XML breaks off or is damaged: {reason}.',
    'nested' => 'An archive within an archive is not read: unpack it first.',
    'no_closing' => 'The closing balance is missing.',
    'no_opening' => 'The opening balance is missing.',
    'no_report' => 'This is no status report but {kind, select, payments {payments to send to a bank} statements {a bank statement, which “sepa statement” reads} pdf {a PDF} picture {a picture} workbook {a workbook or an office document} word {a text document} html {a page of a web site, perhaps of a login that has ended} table {a table} text {text} other {another kind of XML, {root}}}.',
    'no_statement' => 'There is no statement in the file: no line begins with :20:.',
    'no_zip' => 'PHP’s extension zip is missing: php-zip on Debian. Or unpack the archive first.',
    'old_form' => 'The form {form} is too old to be read: ask the bank for camt.053.001.02 or later.',
    'other_kind' => 'This is no statement but {kind, select, payments {payments to send to a bank} report {a report about payments, which “sepa status” reads} statements {a bank statement, which “sepa statement” reads} pdf {a PDF: ask the bank for CAMT or MT940} picture {a picture: ask the bank for CAMT or MT940} workbook {a workbook or an office document: ask the bank for CAMT or MT940} word {a text document: ask the bank for CAMT or MT940} html {a page of a web site, perhaps of a login that has ended} table {a table, such as CSV: ask the bank for CAMT or MT940} text {text} other {another kind of XML, {root}}}.',
    'outside' => 'A field stands outside of any statement and is left out.',
    'too_large' => 'The sum of the bookings is beyond 64 bits.',
    'too_long' => 'A field or a booking is longer than it can be, and was cut.',
    'too_many' => 'The archive has {count} files; {most} are read.',
    'too_much' => 'What is packed is far more than a bank delivers, and is not read any further.',
    'place' => ['line' => 'line {line}', 'entry' => 'entry {entry}'],
];
