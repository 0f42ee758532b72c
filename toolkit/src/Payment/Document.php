<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** A document as the extension wrote it, line by line as it writes them. */
final class Document
{
    private string $xml;

    public function __construct(string $xml)
    {
        $this->xml = $xml;
    }

    /** Whether its sums agree with each other and with what was asked for. */
    public function isSumOf(int $count, string $sum): bool
    {
        preg_match_all('~^\t*<(NbOfTxs|CtrlSum)>(\d+)(?:\.(\d\d))?</~m', $this->xml, $sums, PREG_SET_ORDER);
        $totals = ['NbOfTxs' => [], 'CtrlSum' => []];
        foreach ($sums as $found) {
            $totals[$found[1]][] = (int) ($found[2] . ($found[3] ?? ''));
        }
        $asked = ['NbOfTxs' => $count, 'CtrlSum' => (int) str_replace('.', '', $sum)];
        foreach ($totals as $element => $numbers) {
            // The first is the message's, the others are its blocks'.
            $message = array_shift($numbers);
            if ($message !== $asked[$element] || array_sum($numbers) !== $message) {
                return false;
            }
        }

        return true;
    }

    /** With what the schema of the rulebook wants besides. */
    public function forBank(Rulebook $rulebook): string
    {
        // A transfer without remittance information has none, not an empty one.
        $xml = preg_replace('~^\t*<RmtInf>\n\t*</RmtInf>\n~m', '', $this->xml);
        if ($rulebook->hasDt) {
            // pain.001.001.09 has a choice of date and time here.
            $xml = preg_replace(
                '~^(\t*)<ReqdExctnDt>([^<\n]*)</ReqdExctnDt>$~m',
                "\$1<ReqdExctnDt>\n\$1\t<Dt>\$2</Dt>\n\$1</ReqdExctnDt>",
                (string) $xml
            );
        }
        if ($xml === null) {
            throw new \RuntimeException('cannot finish the document: ' . preg_last_error());
        }

        return $xml;
    }
}
