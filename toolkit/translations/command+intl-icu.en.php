<?php

declare(strict_types=1);

/* What the command sepa says: its help, what it tells beside rows, and why it gives up. */

return [
    'argument' => [
        'statements' => 'What the bank delivers: files, ZIP archives, folders; - for standard input',
        'reports' => 'Status reports: files, ZIP archives, folders; - for standard input',
        'table' => 'CSV file with a row of headings; - for standard input',
        'values' => 'What to look at: {names}; without, CSV is read from standard input',
    ],
    'option' => [
        'german-csv' => 'Write CSV as a German spreadsheet opens it by a double click',
        'payments' => 'The file of payments that was sent (pain.001, pain.008)',
        'address' => 'Part of your address, such as addrTown=Oldenburg',
        'ansi' => 'Colours, or none of them',
        'at' => 'Time of execution of instant payments, such as 2026-12-01T10:00:00+01:00',
        'bic' => "Your bank's BIC; found by your IBAN without",
        'category' => 'What all payments are for, such as SALA for salaries',
        'column' => 'Heading of the column with {names}; guessed without',
        'creditor-id' => 'Your creditor identifier',
        'csv' => 'Write CSV',
        'currency' => 'Currency of your account, where the bank asks for it, such as EUR',
        'date' => 'Day for rows without one, such as 2026-12-31; today without',
        'german' => 'Read amounts such as 1.190,00 and dates such as 31.12.2026',
        'help' => 'Show this help',
        'hybrid' => 'Address lines beside town and country under DE-3.7; older schemas refuse them',
        'iban' => 'Your IBAN',
        'ignore' => 'Heading of a column that is not for the bank',
        'instant' => 'Instant payments, executed within seconds',
        'json' => 'Write one JSON object a line',
        'lang' => 'Language of what is said, de or en; else that of the environment (LC_ALL, LC_MESSAGES, LANG)',
        'map' => 'What a column is: "Heading=key"',
        'message-id' => 'Id of the message, at most 30 characters; generated without',
        'name' => 'Your name',
        'no-bic' => 'Write NOTPROVIDED instead of looking your BIC up',
        'no-headings' => 'Write CSV without the row of headings',
        'no-interaction' => 'Ask nothing, which is always so',
        'output' => 'File for the document; standard output without',
        'priority' => 'HIGH or NORM, as agreed with the bank',
        'quiet' => 'Say nothing',
        'raw' => 'Write CSV without the apostrophe before texts that look like formulas',
        'rulebook' => 'DE-2.6, DE-2.7, DE-2.8, DE-2.9, DE-3.0, DE-3.1, DE-3.5, DE-3.7, AT-6 or NL-6',
        'seq' => 'Sequence of rows without one: FRST, RCUR, FNAL or OOFF',
        'shorten' => 'Cut names and texts that are too long, and tell it; ids never',
        'single-booking' => 'One booking for each payment instead of one for all',
        'template' => 'Write an example table to begin with, and nothing else',
        'transliterate' => 'Replace characters that are not allowed, and tell it; ids never',
        'type' => 'CORE, COR1 or B2B',
        'verbose' => 'Say more of errors of the program',
        'version' => 'Show the release of this program',
    ],
    'check' => [
        'about' => 'Checks IBANs and tells their banks',
        'help' => <<<'HELP'
            Checks country, length, form and check digits; of German IBANs also bank code
            and account number. IBANs are understood as people type them.

              <info>sepa check "DE89 3704 0044 0532 0130 00"</info>
              <info>sepa check --csv <customers.csv >checked.csv</info>
              <info>sepa check --json --column "Konto 2" <customers.csv</info>

            Exit code: 0 if all are valid, 1 if some are not, 2 if nothing could be read.
            HELP,
    ],
    'convert' => [
        'about' => 'Turns German account numbers and bank codes into IBANs',
        'help' => <<<'HELP'
            Makes IBANs by the rules of the banks. Arguments and columns go in pairs:
            account number and bank code.

              <info>sepa convert 532013000 37040044</info>
              <info>sepa convert --csv <old-accounts.csv >ibans.csv</info>
              <info>sepa convert --json --column Kto --column Bank <old-accounts.csv</info>

            Exit code: 0 if all were converted, 1 if some were not, 2 if nothing could be read.
            HELP,
    ],
    'bank' => [
        'about' => 'Looks banks up by BIC, IBAN or German bank code',
        'help' => <<<'HELP'
            Tells BIC, name and schemes of a bank: SCT credit transfer, SDD direct debit,
            B2B direct debit between businesses.

              <info>sepa bank COBADEFF 37040044 "DE89 3704 0044 0532 0130 00"</info>
              <info>sepa bank --csv <bics.csv >banks.csv</info>

            Exit code: 0 if all were found, 1 if some were not, 2 if nothing could be read.
            HELP,
    ],
    'transfer' => [
        'about' => 'Makes a credit transfer for the bank out of a CSV file',
        'help' => <<<'HELP'
            The headings are transaction keys (name, iban, bic, amount, ref, date, id, purp,
            addrTown, ...) or usual German and English words for them. Account number and
            bank code in two columns become IBANs. Columns for own IBAN, instant payment,
            category and priority sort the rows into several documents. All rows are tested;
            if there are faults, they are told and no document is written.

              <info>sepa transfer --template >payments.csv</info>
              <info>sepa transfer payments.csv --name "Zimmerei Sander GmbH" \
                  --iban DE89370400440532013000 -o payments.xml</info>

            Exit code: 0 document written, 1 rows have faults, 2 wrong usage or file.
            HELP,
    ],
    'debit' => [
        'about' => 'Makes a direct debit for the bank out of a CSV file',
        'help' => <<<'HELP'
            The headings are transaction keys (name, iban, amount, seq, mref, mdate, ref,
            date, id, ...) or usual German and English words for them. All rows are tested;
            if there are faults, they are told and no document is written.

              <info>sepa debit --template >members.csv</info>
              <info>sepa debit members.csv --name "Turnverein 1862 e.V." --iban DE89370400440532013000 \
                  --creditor-id DE98ZZZ09999999999 -o december.xml</info>

            Exit code: 0 document written, 1 rows have faults, 2 wrong usage or file.
            HELP,
    ],
    'key' => [
        'and' => ' and ',
        'iban' => 'iban',
        'account' => 'account',
        'bank_code' => 'bank_code',
        'query' => 'query',
    ],
    'statement' => [
        'about' => 'Reads bank statements (CAMT, MT940)',
        'help' => <<<'HELP'
            Prints bookings and balances, what was mended in the files, and whether opening
            balance and bookings come to the closing balance. CSV has a row for a booking,
            JSON a line for a statement.

              <info>sepa statement november.zip</info>
              <info>sepa statement --german november.zip >bookings.csv</info>
              <info>sepa statement --csv statements/ october.sta >bookings.csv</info>
              <info>sepa statement --json november.zip | jq "select(.balanced | not) | .difference"</info>

            CAMT (camt.052, 053, 054), MT940 and MT942 are told by what is in a file, not by
            its name. Bookings that a bank only announces are in no CSV.

            Exit code: 0 if all is balanced, or has no balances that could prove it; 1 if
            something is not or could not be read; 2 if there is no statement in a file.
            HELP,
        'number' => 'no. {number}',
        'opening' => 'opening balance',
        'closing' => 'closing balance',
        'announced' => 'announced, not booked',
        'off' => 'NOT BALANCED by {amount}',
        'not_balanced' => 'NOT BALANCED',
        'payments' => '{count} payments',
        'reversal' => '{amount} (reversal)',
        'times' => '{count} times',
        'kind' => ['fault' => 'fault', 'note' => 'note', 'mended' => 'mended'],
        'formats' => 'either --german or --json',
    ],
    'status' => [
        'about' => 'Reads what a bank reports about payments (pain.002)',
        'help' => <<<'HELP'
            Prints what became of each payment, and why: refused, executed, or that the name of a
            payee is not that of the account. With the file that was sent every payment in it
            stands there, in its order, also those that no report tells of.

              <info>sepa status report.zip</info>
              <info>sepa status report.xml --payments payments.xml</info>
              <info>sepa status --csv report.xml >results.csv</info>

            A payment that no report tells of is not thereby accepted: most banks report what
            they refuse alone.

            Exit code: 0 if nothing was refused and all names match; 1 if something was refused,
            a name does not match or a report is damaged; 2 if there is no report in a file.
            HELP,
        'none' => 'nothing told',
        'other_file' => 'The report is about the message {original}, not about {message}, which --payments gives.',
        'not_sent' => 'Payments in reports that cannot be found in the file of payments, or not without doubt: {count}',
        'summary' => 'payments told of: {count}, refused: {refused}, name not matching: {names}',
        'head' => 'Report {id} about {original}',
        'at_bank' => 'at the bank: {name}',
        'cut' => '{file}: The report breaks off: payments may be missing in it.',
    ],
    'column' => [
        'booked' => 'booked',
        'name' => 'name',
        'for' => 'for',
        'amount' => 'amount',
        'balance' => 'balance',
        'payment' => 'payment',
        'IBAN' => 'IBAN',
        'BIC' => 'BIC',
        'valid' => 'valid',
        'bank or reason' => 'bank or reason',
        'account' => 'account',
        'bank code' => 'bank code',
        'status' => 'status',
        'remark' => 'remark',
        'asked for' => 'asked for',
        'schemes' => 'schemes',
        'severity' => 'severity',
        'row' => 'row',
        'column' => 'column',
        'reason' => 'reason',
        'hint' => 'hint',
    ],
    'answer' => ['yes' => 'yes', 'no' => 'no'],
    'severity' => ['fault' => 'fault', 'warning' => 'warning', 'change' => 'change'],
    'told' => [
        'done' => '{file, select, none {} other {{file}: }}payments: {payments}, {sum} EUR, rulebook {rulebook}, message {message}',
        'more' => 'and {more, number} more; --json has all',
        'refused' => 'payments: {payments}, faults: {faults}, no document was written',
        'replaced' => '{file} was there and is replaced.'
            . '{new, select, yes { The message id is new: to the bank this is another message.} other {}}',
        'rows' => 'rows: {rows}, refused: {refused}',
        'type' => 'One row a line; Ctrl-D ends.',
        'suggest' => [
            'german' => '--german reads amounts such as 1.190,00 and dates such as 31.12.2026.',
            'ignore' => '--ignore "Heading" leaves out a column that is not for the bank.',
            'map' => '--map "Heading=key" tells what a column is, such as --map "Total due=amount".',
            'seq' => '--seq FRST (or RCUR, FNAL, OOFF) is the sequence of all rows that have none.',
            'shorten' => '--shorten cuts names and texts that are too long.',
            'transliterate' => '--transliterate replaces characters that are not allowed in names and texts.',
        ],
    ],
    'symfony' => [
        'Description:' => 'Description:',
        'Usage:' => 'Usage:',
        'Arguments:' => 'Arguments:',
        'Options:' => 'Options:',
        'Help:' => 'Help:',
        'Available commands:' => 'Available commands:',
        '[default: ' => '[default: ',
        '[options]' => '[options]',
        '[arguments]' => '[arguments]',
        '(multiple values allowed)' => '(multiple values allowed)',
        'Display help for a command' => 'Display help for a command',
        'List commands' => 'List commands',
        'Dump the shell completion script' => 'Dump the shell completion script',
    ],
    'usage' => [
        'arguments' => "Too much is given to ''{what}''. What has blanks in it stands in quotes.",
        'command' => "There is no command ''{what}''.{alternatives, select, none { sepa list shows all.}"
            . ' other { Is this meant: {alternatives}?}}',
        'option' => "There is no option ''{what}''. Each command tells its own: sepa help COMMAND",
        'option_no_value' => 'The option {what} takes no value.',
        'option_value' => 'The option {what} needs a value.',
    ],
    'failure' => [
        'address' => "--address takes ''key=value'', and not ''{value}''. The keys are: {keys}",
        'cannot_read' => 'cannot read {file}{reason, select, none {} other {: {reason}}}',
        'cannot_write' => 'cannot write {file}{reason, select, none {} other {: {reason}}}',
        'cannot_write_output' => 'cannot write the output{reason, select, none {} other {: {reason}}}',
        'formats' => 'either --csv or --json',
        'is_file' => '{file} is the name of a file. A file is read like this: sepa {command} <{file}',
        'links' => 'cannot write {file}: its links end nowhere',
        'many' => '{documents} documents: --output needs the name of a file, of which each gets a number',
        'map' => "--map takes \"Heading=key\", and not ''{value}''. The keys are: {keys}",
        'missing' => 'missing: {options}',
        'no_column' => "no column for {names}: name it with --column. The first row has: ''{headings}''",
        'no_file' => 'which table? sepa {command} payments.csv --name ... - or sepa {command} --template for one to begin with',
        'no_output' => '--output needs the name of a file',
        'pairs' => 'these belong together: {names}',
        'same_file' => '{file} is the file that is read: give the document another name',
        'value' => "{option} cannot be ''{value}''. It is one of {values}",
    ],
];
