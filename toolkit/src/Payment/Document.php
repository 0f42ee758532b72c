<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/**
 * Makes the bank's document out of the extension's: cut at the lines with which
 * blocks and payments begin and end, every block proved to be the one that is
 * meant, and every payment to which something is added.
 */
final class Document
{
    private const PAYMENTS = [SEPA_MSGTYPE_CTI => 'CdtTrfTxInf', SEPA_MSGTYPE_DDI => 'DrctDbtTxInf'];

    private const DAYS = [SEPA_MSGTYPE_CTI => 'ReqdExctnDt', SEPA_MSGTYPE_DDI => 'ReqdColltnDt'];

    private const BLOCK = "\t\t<PmtInf>\n";

    private const BLOCK_END = "\t\t</PmtInf>\n";

    /** Bytes that are copied at once: a document of many megabytes is not in memory three times. */
    private const PIECE = 1000000;

    /** Payments with additions that are joined at once: many small texts take more than a large one. */
    private const JOINED = 64;

    private string $xml;

    private int $kind;

    /** @var string the line with which a payment begins */
    private string $start;

    /** @var string the line with which a payment ends */
    private string $end;

    /** @var int where the next block begins */
    private int $place;

    /** @var list<string> what is finished, in pieces: appending to a text of many megabytes copies it */
    private array $done = [];

    /** @var int cents of the blocks so far */
    private int $cents = 0;

    /** @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI */
    public function __construct(string $xml, int $kind)
    {
        $this->xml = $xml;
        $this->kind = $kind;
        $this->start = "\t\t\t<" . self::PAYMENTS[$kind] . ">\n";
        $this->end = "\t\t\t</" . self::PAYMENTS[$kind] . ">\n";
        $this->place = (int) strpos($xml, self::BLOCK);
    }

    /**
     * @param int $count of all payments
     * @param int $cents of all payments
     * @throws Misplaced if something cannot be added where it belongs
     * @throws \RangeException if the sums are not those of the payments
     */
    public function complete(Blocks $blocks, Head $head, int $count, int $cents): string
    {
        $this->done[] = $start = substr($this->xml, 0, $this->place);
        self::demand($start, $count, $cents);
        $number = 0;
        foreach ($blocks->inOrder() as [$date, $sequence, $payments, $additions]) {
            $this->done[] = $head->complete($this->head(++$number, $date, $sequence, $payments), $date);
            $this->payments($payments, $additions);
            if (substr_compare($this->xml, self::BLOCK_END, $this->place, strlen(self::BLOCK_END)) !== 0) {
                throw new Misplaced('a payment block of the document has another number of payments');
            }
            $this->done[] = self::BLOCK_END;
            $this->place += strlen(self::BLOCK_END);
        }
        if ($this->cents !== $cents || strpos($this->xml, self::BLOCK, $this->place) !== false) {
            throw new \RangeException('the sums of the blocks are not that of the message');
        }

        $this->done[] = substr($this->xml, $this->place);
        // Before there is a third of its size.
        $this->xml = '';

        return implode('', $this->done);
    }

    /** The lines of a block up to its first payment. */
    private function head(int $number, string $date, string $sequence, int $payments): string
    {
        $end = strpos($this->xml, $this->start, $this->place);
        $head = substr($this->xml, $this->place, (int) $end - $this->place);
        $day = self::DAYS[$this->kind];
        $isMeant = strncmp($head, self::BLOCK, strlen(self::BLOCK)) === 0
            && strpos($head, "-P$number</PmtInfId>\n") !== false
            && strpos($head, "<$day>$date</$day>\n") !== false
            && ($sequence === '' || strpos($head, "<SeqTp>$sequence</SeqTp>\n") !== false);
        if ($end === false || !$isMeant) {
            throw new Misplaced('a payment block of the document is not the one that is meant');
        }
        $this->place = $end;
        $cents = self::sum($head);
        self::demand($head, $payments, $cents);
        $this->cents += $cents;

        return $head;
    }

    /**
     * Finishes the payments of a block.
     *
     * @param array<int, string> $additions by place
     */
    private function payments(int $payments, array $additions): void
    {
        $from = $this->place;
        if (!$additions) {
            $this->place = (int) strpos($this->xml, "\n" . self::BLOCK_END, $from) + 1;
            $this->copy($from, $this->place);

            return;
        }
        $pieces = [];
        for ($number = 0; $number < $payments; ++$number) {
            $end = strpos($this->xml, $this->end, $this->place);
            if ($end === false) {
                throw new Misplaced('a payment block of the document has another number of payments');
            }
            $end += strlen($this->end);
            if (isset($additions[$number])) {
                $pieces[] = $this->without($from, $this->place);
                $pieces[] = $this->payment(substr($this->xml, $this->place, $end - $this->place), $additions[$number]);
                $from = $end;
            }
            $this->place = $end;
            if (count($pieces) >= self::JOINED) {
                $this->done[] = implode('', $pieces);
                $pieces = [];
            }
        }
        $this->done[] = implode('', $pieces);
        $this->copy($from, $this->place);
    }

    private function payment(string $xml, string $addition): string
    {
        return $this->kind === SEPA_MSGTYPE_CTI
            ? Additions::toTransfer($xml, $addition)
            : Additions::toDebit($xml, $addition);
    }

    /** Payments to which nothing is added. A transfer without remittance information has none, not an empty one. */
    private function without(int $from, int $to): string
    {
        return $from === $to ? '' : str_replace(Additions::NO_REFERENCE, '', substr($this->xml, $from, $to - $from));
    }

    private function copy(int $from, int $to): void
    {
        while ($from < $to) {
            $end = $to;
            if ($to - $from > self::PIECE) {
                $end = strpos($this->xml, $this->end, $from + self::PIECE) + strlen($this->end);
            }
            $this->done[] = $this->without($from, $end);
            $from = $end;
        }
    }

    /** @throws \RangeException */
    private static function demand(string $head, int $count, int $cents): void
    {
        if (strpos($head, "\t\t\t<NbOfTxs>$count</NbOfTxs>\n") === false || self::sum($head) !== $cents) {
            throw new \RangeException('the sums of the document are not those of the payments');
        }
    }

    /** @return int the control sum in cents */
    private static function sum(string $head): int
    {
        $from = (int) strpos($head, '<CtrlSum>') + strlen('<CtrlSum>');
        $sum = substr($head, $from, (int) strpos($head, '<', $from) - $from);

        return (int) str_replace('.', '', $sum);
    }
}
