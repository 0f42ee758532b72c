<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Unreadable;
use Symfony\Component\HttpFoundation\HeaderUtils;
use Symfony\Component\HttpFoundation\Response;

/** Makes a credit transfer of a form, or of a CSV file that becomes one. */
final class TransferPage implements Page
{
    private const EXAMPLE = __DIR__ . '/../../../examples/payments.csv';

    private const EXAMPLE_PARTY = ['name' => 'Zimmerei Sander GmbH', 'iban' => 'DE89370400440532013000'];

    private View $view;

    public function __construct(View $view)
    {
        $this->view = $view;
    }

    public function respond(Input $input, ?array $notice): Response
    {
        $form = new TransferForm($input);
        $action = $input->action();
        $typed = $form->filledRows();
        try {
            $path = $action === 'example' ? self::example($form) : $input->upload('file');
            $sheet = $path === null ? null : $form->take($path, $input->fileName('file') ?? basename(self::EXAMPLE));
        } catch (Unreadable $e) {
            return $this->page($form, ['notice' => ['kind' => 'bad', 'heading' => $this->view->sentence($e->text($this->view->language))]], 422);
        }
        if ($typed > 0 && $path !== null) {
            $replaced = $this->view->text($sheet ? 'transfer.apart' : 'transfer.replaced', ['count' => $typed]);
            $notice = ['kind' => 'odd', 'heading' => $replaced];
        }
        if ($action === 'more' || !$form->rows) {
            $form->addRows();
        }
        if (!$sheet && in_array($action, ['', 'more'], true)) {
            return $this->page($form, ['notice' => $notice]);
        }

        try {
            return $this->checked($form, $sheet, $input, $notice);
        } catch (Unreadable $e) {
            return $this->page($form, ['notice' => ['kind' => 'bad', 'heading' => $this->view->sentence($e->text($this->view->language))]], 422);
        }
    }

    /**
     * @param Sheet|null $sheet a file whose rows are too many, or too odd, for the form
     * @param array<string, string>|null $notice
     */
    private function checked(TransferForm $form, ?Sheet $sheet, Input $input, ?array $notice): Response
    {
        $payments = $form->payments();
        $sheet ? $sheet->fill($payments) : $form->fill($payments);
        $verdict = new Verdict($payments, $form, $sheet);
        if ($input->action() === 'document' && $verdict->mayLeave($input->text('seen'))) {
            return self::download($payments);
        }

        return $this->page($form, ['verdict' => $verdict, 'notice' => $notice, 'did' => 'check'], $verdict->faults ? 422 : 200);
    }

    private static function download(Payments $payments): Response
    {
        $name = 'transfer-' . preg_replace('/[^A-Za-z0-9]+/', '-', $payments->messageId()) . '.xml';
        $disposition = HeaderUtils::makeDisposition(HeaderUtils::DISPOSITION_ATTACHMENT, $name);

        return new Response($payments->document(), 200, ['Content-Type' => 'application/xml', 'Content-Disposition' => $disposition]);
    }

    /** Path of the example, whose payer goes into the form; null if something stands there. */
    private static function example(TransferForm $form): ?string
    {
        if (!$form->isEmpty()) {
            return null;
        }
        $form->party = self::EXAMPLE_PARTY + $form->party;

        return self::EXAMPLE;
    }

    /** @param array<string, mixed> $values */
    private function page(TransferForm $form, array $values, int $status = 200): Response
    {
        $verdict = $values['verdict'] ?? null;

        return $this->view->page('transfer', $values + [
            'form' => $form,
            'verdict' => null,
            'faults' => $verdict ? $verdict->faultCount : 0,
            'rulebooks' => Rulebook::names(),
            'hasExample' => is_file(self::EXAMPLE) && $form->isEmpty(),
            'today' => $this->view->day(new \DateTimeImmutable('today')),
        ], $status);
    }
}
