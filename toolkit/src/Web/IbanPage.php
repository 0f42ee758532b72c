<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Symfony\Component\HttpFoundation\Response;

/** Checks IBANs, makes them of account numbers and bank codes, line by line, and looks a bank up. */
final class IbanPage implements Page
{
    private const MAX_LINES = 5000;

    /** Lines of the table; the rest is in the CSV file. */
    private const MAX_SHOWN = 500;

    private const KINDS = ['bad', 'odd', 'good'];

    private View $view;

    public function __construct(View $view)
    {
        $this->view = $view;
    }

    public function respond(Input $input, ?array $notice): Response
    {
        $action = $input->action();
        $lines = preg_grep('/\S/u', explode("\n", $input->block('lines'))) ?: [];
        $answers = [];
        $results = [];
        if ($action !== '' && count($lines) > self::MAX_LINES) {
            $answers['check'] = $this->bad('iban.many', ['count' => count($lines), 'most' => self::MAX_LINES]);
        } elseif ($action !== '' && ($lines || in_array($action, ['check', 'csv'], true))) {
            $results = array_map([$this, 'line'], array_values($lines) ?: ['']);
            if ($action === 'csv') {
                return Spreadsheet::download($this->csv($results), 'iban.csv');
            }
            $answers['check'] = count($results) === 1 ? $results[0]['notice'] : null;
        }
        if ($action !== '' && ($input->text('query') !== '' || $action === 'bank')) {
            $answers['bank'] = $this->bank($input->text('query'));
        }
        $answers = array_filter($answers);
        $bad = count(array_keys(array_column($answers, 'kind'), 'bad', true));

        return $this->view->page('iban', [
            'notice' => $notice,
            'lines' => $input->block('lines'),
            'query' => $input->text('query'),
            'answers' => $answers,
            'answered' => isset($answers[$action]) ? $action : key($answers),
            'did' => $action,
        ] + $this->table(count($results) > 1 ? $results : []) + ['faults' => $bad]);
    }

    /**
     * @param list<array<string, mixed>> $results
     * @return array<string, mixed> what the table shows, bad ones first
     */
    private function table(array $results): array
    {
        $by = array_fill_keys(self::KINDS, []);
        foreach ($results as $number => $result) {
            $by[$result['notice']['kind']][] = ['number' => $number + 1] + $result;
        }
        $counts = array_map('count', $by);

        return ($counts['bad'] ? ['faults' => $counts['bad']] : []) + [
            'counts' => ['count' => count($results)] + $counts,
            'results' => array_slice(array_merge(...array_values($by)), 0, self::MAX_SHOWN),
        ];
    }

    /**
     * An IBAN, or account number and bank code.
     *
     * @return array{typed: string, iban: ?string, notice: array<string, mixed>}
     */
    private function line(string $line): array
    {
        $typed = trim((string) preg_replace('/[\s\x00-\x1F]+/u', ' ', $line));
        $parts = preg_split('/\s*[\t;,\/|]\s*/', trim($line), -1, PREG_SPLIT_NO_EMPTY);
        $parts = count($parts) === 2 ? $parts : explode(' ', $typed);
        if (count($parts) !== 2 && preg_match('/^\d{9,18}$/D', str_replace(' ', '', $typed), $digits)) {
            $parts = [substr($digits[0], 0, -8), substr($digits[0], -8)];
        }
        $isAccount = count($parts) === 2 && !preg_match('/[A-Za-z]/', $typed);

        return ['typed' => $typed] + ($isAccount ? $this->converted($parts[0], $parts[1]) : $this->checked($typed));
    }

    /** @return array{iban: ?string, notice: array<string, mixed>} */
    private function checked(string $typed): array
    {
        $check = Ibans::check($typed);
        if ($check->valid) {
            $good = $this->view->text('iban.good');
            $facts = $this->facts($check->iban);

            return ['iban' => $check->iban, 'notice' => ['kind' => 'good', 'heading' => $good, 'facts' => $facts]];
        }
        $language = $this->view->language;

        $notice = ['kind' => 'bad', 'heading' => $check->reason($language), 'text' => $check->hint($language)];

        return ['iban' => null, 'notice' => $notice];
    }

    /** @return array{iban: ?string, notice: array<string, mixed>} */
    private function converted(string $account, string $bankCode): array
    {
        $conversion = Ibans::convert($account, $bankCode);
        $told = (string) $conversion->reason($this->view->language);
        $reason = $told === '' ? null : $this->view->sentence($told) . '.';
        if ($conversion->iban === null) {
            return ['iban' => null, 'notice' => $this->bad('iban.none') + ['text' => $reason]];
        }

        return ['iban' => $conversion->iban, 'notice' => [
            'kind' => $reason === null ? 'good' : 'odd',
            'heading' => $this->view->text('iban.made'),
            'text' => $reason,
            'facts' => $this->facts($conversion->iban),
        ]];
    }

    /** @return array<string, mixed> */
    private function bank(string $query): array
    {
        $bank = Ibans::bank($query);
        if ($bank->bic === null) {
            return ['kind' => 'bad', 'heading' => $this->view->sentence((string) $bank->reason($this->view->language))];
        }
        $schemes = array_map(fn (string $scheme): string => $this->view->text("scheme.$scheme"), $bank->schemes ?? []);
        $known = $bank->schemes === null ? 'scheme.unknown' : 'scheme.none';

        return ['kind' => 'good', 'heading' => $bank->name ?? $bank->bic, 'facts' => [
            'bic' => $bank->bic,
            'schemes' => $schemes ? implode(', ', $schemes) : $this->view->text($known),
        ]];
    }

    /** @return array<string, string|null> facts about a good IBAN */
    private function facts(string $iban): array
    {
        $check = Ibans::check($iban);

        return ['iban' => Ibans::grouped($iban), 'bank' => $check->bank, 'bic' => $check->bic];
    }

    /**
     * @param array<string, mixed> $values
     * @return array<string, mixed>
     */
    private function bad(string $text, array $values = []): array
    {
        return ['kind' => 'bad', 'heading' => $this->view->text($text, $values)];
    }

    /**
     * @param list<array<string, mixed>> $results
     * @return list<list<string>> in the order of the lines
     */
    private function csv(array $results): array
    {
        $rows = [array_map([$this->view, 'text'], ['iban.typed', 'fact.iban', 'fact.bank', 'fact.bic', 'iban.told'])];
        foreach ($results as ['typed' => $typed, 'iban' => $iban, 'notice' => $notice]) {
            $told = trim($notice['heading'] . '. ' . ($notice['text'] ?? ''));
            $rows[] = [$typed, (string) $iban, $notice['facts']['bank'] ?? '', $notice['facts']['bic'] ?? '', $told];
        }

        return $rows;
    }
}
