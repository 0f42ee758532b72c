<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Symfony\Component\HttpFoundation\Response;

/** Checks an IBAN, makes one of an old account number, looks a bank up: whatever of them is filled in. */
final class IbanPage implements Page
{
    /** Fields by question. */
    private const FIELDS = ['check' => ['iban'], 'convert' => ['account', 'bank_code'], 'bank' => ['query']];

    private View $view;

    public function __construct(View $view)
    {
        $this->view = $view;
    }

    public function respond(Input $input, ?array $notice): Response
    {
        $fields = [];
        $answers = [];
        foreach (self::FIELDS as $question => $names) {
            $texts = array_map([$input, 'text'], $names);
            $fields += array_combine($names, $texts);
            if ($input->action() !== '' && (implode('', $texts) !== '' || $input->action() === $question)) {
                $answers[$question] = $this->$question(...$texts);
            }
        }
        $answered = isset($answers[$input->action()]) ? $input->action() : key($answers);

        return $this->view->page('iban', [
            'notice' => $notice,
            'fields' => $fields,
            'answers' => $answers,
            'answered' => $answered,
            'did' => $input->action(),
            'faults' => count(array_filter($answers, static fn (array $answer): bool => $answer['kind'] === 'bad')),
        ]);
    }

    /** @return array<string, mixed> kind, heading and facts of a notice */
    private function check(string $text): array
    {
        $check = Ibans::check($text);
        if (!$check->valid) {
            $code = $check->code === 'empty' ? 'missing' : $check->code;
            $of = fn (string $part): string => $this->view->text("$code.$part", ['label' => 'IBAN'], 'faults');

            return ['kind' => 'bad', 'heading' => $of('reason'), 'text' => $of('hint')];
        }

        return ['kind' => 'good', 'heading' => $this->view->text('iban.good'), 'facts' => $this->account($check->iban)];
    }

    /** @return array<string, mixed> */
    private function convert(string $account, string $bankCode): array
    {
        $conversion = Ibans::convert($account, $bankCode);
        $reason = $conversion->codes ? $this->view->sentence((string) $conversion->reason($this->view->language)) . '.' : null;
        if ($conversion->iban === null) {
            return ['kind' => 'bad', 'heading' => $this->view->text('iban.none'), 'text' => $reason];
        }

        return [
            'kind' => $reason === null ? 'good' : 'odd',
            'heading' => $this->view->text('iban.made'),
            'text' => $reason,
            'facts' => $this->account($conversion->iban),
        ];
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
    private function account(string $iban): array
    {
        $check = Ibans::check($iban);

        return ['iban' => Ibans::grouped($iban), 'bank' => $check->bank, 'bic' => $check->bic];
    }
}
