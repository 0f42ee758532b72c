<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;

/** Checks an IBAN, makes one of an old account number, looks a bank up. */
final class IbanPage implements Page
{
    private const SCHEMES = [
        'SCT' => 'transfers',
        'SDD' => 'direct debits',
        'COR1' => 'direct debits on one day\'s notice',
        'B2B' => 'direct debits between companies',
    ];

    public function title(): string
    {
        return 'IBANs';
    }

    public function respond(Request $request): Response
    {
        $result = ['check' => '', 'convert' => '', 'bank' => ''];
        $do = $request->text('do');
        if ($do === 'check') {
            $result[$do] = $this->check($request->text('iban'));
        } elseif ($do === 'convert') {
            $result[$do] = $this->convert($request->text('account'), $request->text('bank_code'));
        } elseif ($do === 'bank') {
            $result[$do] = $this->bank($request->text('query'));
        }

        return new Response(
            $this->form($request, 'check', 'Check an IBAN', 'Check', $result, Html::field('iban', 'IBAN', $request->text('iban'), [
                'placeholder' => 'DE89 3704 0044 0532 0130 00', 'required' => true, 'maxlength' => '60', 'class' => 'code',
            ]))
            . $this->form($request, 'convert', 'Make an IBAN of a German account number', 'Convert', $result, '<div class="pair">'
                . Html::field('account', 'Account number', $request->text('account'), ['inputmode' => 'numeric', 'required' => true, 'maxlength' => '20', 'class' => 'code'])
                . Html::field('bank_code', 'Bank code (BLZ)', $request->text('bank_code'), ['inputmode' => 'numeric', 'required' => true, 'maxlength' => '20', 'class' => 'code'])
                . '</div>')
            . $this->form($request, 'bank', 'Look a bank up', 'Look up', $result, Html::field('query', 'BIC, IBAN or German bank code', $request->text('query'), [
                'placeholder' => 'COBADEFFXXX', 'required' => true, 'maxlength' => '60', 'class' => 'code',
            ]))
        );
    }

    /** @param array<string, string> $result */
    private function form(Request $request, string $do, string $heading, string $button, array $result, string $fields): string
    {
        return "<section class=\"card\" id=\"$do\"><h2>" . Html::text($heading) . "</h2>$result[$do]"
            . "<form method=\"post\" action=\"?page=iban#$do\">$fields<button name=\"do\" value=\"$do\">" . Html::text($button) . '</button>'
            . Html::formEnd($request) . '</form></section>';
    }

    private function check(string $text): string
    {
        $check = Ibans::check($text);
        if (!$check->valid) {
            return Html::notice('bad', (string) $check->reason, '<p>' . Html::text((string) $check->hint) . '</p>');
        }

        return Html::notice('good', 'The IBAN is good', Html::facts([
            'IBAN' => Ibans::grouped($check->iban), 'Bank' => $check->bank, 'BIC' => $check->bic,
        ]));
    }

    private function convert(string $account, string $bankCode): string
    {
        $conversion = Ibans::convert($account, $bankCode);
        if ($conversion->iban === null) {
            return Html::notice('bad', 'No IBAN', '<p>' . Html::text(ucfirst((string) $conversion->reason)) . '.</p>');
        }
        $bank = Ibans::check($conversion->iban);

        return Html::notice($conversion->reason === null ? 'good' : 'odd', 'The IBAN', Html::facts([
            'IBAN' => Ibans::grouped($conversion->iban), 'Bank' => $bank->bank, 'BIC' => $bank->bic,
            'Note' => $conversion->reason === null ? null : ucfirst($conversion->reason),
        ]));
    }

    private function bank(string $query): string
    {
        $bank = Ibans::bank($query);
        if ($bank->bic === null) {
            return Html::notice('bad', ucfirst((string) $bank->reason));
        }
        $schemes = array_map(static fn (string $scheme): string => self::SCHEMES[$scheme] ?? $scheme, $bank->schemes ?? []);

        return Html::notice('good', $bank->name ?? $bank->bic, Html::facts([
            'BIC' => $bank->bic, 'Takes part in' => $bank->schemes === null ? 'not known' : (implode(', ', $schemes) ?: 'no scheme'),
        ]));
    }
}
