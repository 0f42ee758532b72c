<?php

declare(strict_types=1);

/* Why a file cannot be read as a table. */

return [
    'empty' => 'the file is empty: a row of headings is expected, such as name, iban, amount, ref',
    'headings' => "no headings iban and amount in the first row: ''{first}''",
    'line' => '{file}: a line of more than a megabyte',
    'no_heading' => "no column has the heading ''{heading}''",
    'quote' => '{file}, row {row}: a quote is not closed, or the file was cut',
    'row' => '{file}, row {row}: too long; is a quote not closed?',
    'same' => "two columns are ''{key}'': ''{heading}'' and ''{other}''",
    'system' => 'cannot read {file}{reason, select, none {} other {: {reason}}}',
    'utf16' => '{file} is in UTF-16: save it as CSV (UTF-8)',
    'workbook' => '{file} is a workbook: save the sheet as CSV (UTF-8)',
];
