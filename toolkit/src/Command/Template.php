<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Command;

use Sepa\Toolkit\Payment\Calendar;
use Sepa\Toolkit\Payment\Keys;

/** A table to begin with: headings and two payments, which the commands take as it is. */
final class Template
{
    /** By key; of no account that somebody has. */
    private const PAYMENTS = [
        ['name' => 'Beispiel GmbH', 'iban' => 'DE89 3704 0044 0532 0130 00', 'amount' => '1190.00',
            'ref' => 'Rechnung 4711', 'mref' => 'M-0001', 'mdate' => '2025-03-31', 'seq' => 'FRST'],
        ['name' => 'Erika Mustermann', 'iban' => 'NL91 ABNA 0417 1643 00', 'amount' => '48.50', 'ref' => 'Beitrag 2026',
            'mref' => 'M-0002', 'mdate' => '2019-11-04', 'seq' => 'RCUR'],
    ];

    private const TRANSFER = ['name', 'iban', 'amount', 'ref', 'date'];

    private const DEBIT = ['name', 'iban', 'amount', 'ref', 'date', 'mref', 'mdate', 'seq'];

    /** Days until the example's payments, so that notice and holidays are no matter. */
    private const AHEAD = 7;

    private int $kind;

    private bool $german;

    /**
     * @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @param bool $german whether it is as German spreadsheets open and write it
     */
    public function __construct(int $kind, bool $german)
    {
        $this->kind = $kind;
        $this->german = $german;
    }

    /** @param string $today yyyy-mm-dd */
    public function text(string $today): string
    {
        $keys = $this->kind === SEPA_MSGTYPE_DDI ? self::DEBIT : self::TRANSFER;
        $day = (new \DateTimeImmutable($today))->modify('+' . self::AHEAD . ' days');
        while (Calendar::closed($day->format('Y-m-d')) !== null) {
            $day = $day->modify('+1 day');
        }
        $lines = [array_map(fn (string $key): string => Keys::label($key, $this->german ? 'de' : 'en'), $keys)];
        foreach (self::PAYMENTS as $payment) {
            $payment['date'] = $day->format('Y-m-d');
            $lines[] = array_map(fn (string $key): string => $this->cell($key, $payment[$key]), $keys);
        }
        $delimiter = $this->german ? ';' : ',';
        $rows = array_map(static fn (array $cells): string => implode($delimiter, $cells) . "\r\n", $lines);

        // The mark tells the spreadsheet that this is UTF-8.
        return "\u{FEFF}" . implode('', $rows);
    }

    private function cell(string $key, string $value): string
    {
        if ($this->german && Keys::form($key) === Keys::DATE) {
            return (new \DateTimeImmutable($value))->format('d.m.Y');
        }

        return $this->german && Keys::form($key) === Keys::AMOUNT ? number_format((float) $value, 2, ',', '.') : $value;
    }
}
