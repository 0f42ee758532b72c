<?php
/* Statement files that a careless reader takes square time or memory for. */

const ONE_TRANSACTION = "\r\n:20:\r\n:61:240102C1,NTRF\r\n:86:166";

// name => start, repeated part, end and, where half of the file is one text, the byte of that
const STATEMENT_SHAPES = [
    'no comma' => ["\r\n:20:", "\r\n:61:240102C100NTRF", "\r\n-\r\n"],
    'no type' => ['', "\r\n:20:\r\n:61:240102C1,", "\r\n-\r\n"],
    'type at the end' => ["\r\n:20:", "\r\n:61:240102C1,", "\r\nNTRF"],
    'commas and type at the end' => ["\r\n:20:\r\n:61:240102C1", "\r\n:61:240102C1,,,,", "\r\nNTRF"],
    'one reference for all transactions' => ["\r\n:20:", "\r\n:61:240102C1,", "\r\nNTRF", 'x'],
    'one reference for all statements' => ['', "\r\n:20:\r\n:61:240102C1,\r\n-", "\r\nNTRF", 'x'],
    'code after the line' => ["\r\n:20:", "\r\n:61:240102C1,N", "\r\n-\r\n"],
    'code after the line, far bank reference' => ['', "\r\n:20:\r\n:61:240102C1,N\r\n-", '//', 'x'],
    'rising never' => [ONE_TRANSACTION, '?20', "\r\n:62F:"],
    'successors' => [ONE_TRANSACTION, '?20?21?19?', "\r\n:62F:"],
    'small fields' => [ONE_TRANSACTION, "\r\n:86:?00", "\r\n:62F:"],
    'line ends in a field' => [ONE_TRANSACTION, "\r\n", "\r\n:62F:"],
    'created line ends' => [ONE_TRANSACTION, "\r\r\n\n", "\r\n:62F:"],
    'field without end' => [ONE_TRANSACTION, "?20\r\n", ''],
    'fields without transaction' => ['', "\r\n:20:\r\n:86:166", "\r\n-"],
    'carriage returns' => ["\r\n:20:", "\r", "\r\n-\r\n"],
    'one long line' => ["\r\n:20:\r\n:61:240102C", '1', "\r\n-\r\n"],
    'blanks' => ["\r\n:20:\r\n:28C:", "\r\n", "1\r\n-\r\n"],
    'pages' => ["\r\n:20:", "\r\n:28C:1", "\r\n:28C:1/2\r\n-"],
    'tiny statements' => ['', "\r\n:20:\r\n-", ''],
    'starts without end' => ["\r\n:20:", "\r\n:20:", ''],
    'a long account' => ["\r\n:20:\r\n:25:", 'x', "\r\n-\r\n"],
];

function statement_file(string $shape, int $size): string
{
    [$start, $part, $end, $filler] = STATEMENT_SHAPES[$shape] + [3 => null];
    $repeated = $filler === null ? $size : intdiv($size, 2);
    $tail = $filler === null ? '' : str_repeat($filler, $size - $repeated) . "\r\n";
    return $start . str_repeat($part, intdiv($repeated, strlen($part))) . $end . $tail;
}
