<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Payment\Batches;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Unreadable;
use Symfony\Component\HttpFoundation\Response;

/** Makes transfers or direct debits of what is typed, pasted, or in a file. */
final class PaymentPage implements Page
{
    private const EXAMPLES = [
        PaymentForm::TRANSFER => __DIR__ . '/../../../examples/payments.csv',
        PaymentForm::DEBIT => __DIR__ . '/../../../examples/collections.csv',
    ];

    private const EXAMPLE_PARTY = [
        'name' => 'Zimmerei Sander GmbH',
        'iban' => 'DE89370400440532013000',
        'creditorId' => 'DE98ZZZ09999999999',
    ];

    private View $view;

    private string $kind;

    private Accounts $accounts;

    public function __construct(View $view, string $kind, Accounts $accounts)
    {
        $this->accounts = $accounts;
        $this->view = $view;
        $this->kind = $kind;
    }

    public function respond(Input $input, ?array $notice): Response
    {
        $action = $input->action();
        $form = new PaymentForm($this->kind, $input, $this->accounts);
        if ($action === 'template') {
            return Spreadsheet::download([array_map([$this->view, 'label'], $form->columns)], "$this->kind.csv");
        }
        try {
            $notice = $this->take($form, $input) ?? $notice;
            if ($form->table->isThere() || !in_array($action, ['', 'more', 'drop'], true)) {
                return $this->checked($form, $input, $notice);
            }
        } catch (Unreadable $e) {
            return $this->unreadable($form, $input, $e);
        }
        if ($action === 'more' || !$form->rows) {
            $form->addRows();
        }

        return $this->page($form, ['notice' => $notice]);
    }

    /** A table whose columns somebody can tell stays; in place of another file comes what was there. */
    private function unreadable(PaymentForm $form, Input $input, Unreadable $e): Response
    {
        try {
            $assigned = $form->table->travels() ? $form->table->columns([], []) : [];
        } catch (Unreadable $second) {
            $assigned = [];
        }
        if (count($assigned) < 2) {
            $assigned = [];
            $form = new PaymentForm($this->kind, $input, $this->accounts);
        }
        if (!$form->rows && !$form->table->isThere()) {
            $form->addRows();
        }
        $notice = ['kind' => 'bad', 'heading' => $this->view->sentence($e->text($this->view->language))];

        return $this->page($form, ['notice' => $notice, 'assigned' => $assigned], 422);
    }

    /**
     * A table that is new here, or goes.
     *
     * @return array<string, string>|null a notice, if it replaces what was typed
     * @throws Unreadable
     */
    private function take(PaymentForm $form, Input $input): ?array
    {
        $table = null;
        $uploads = $input->uploads('file');
        if ($input->action() === 'drop') {
            $form->drop(null);
        } elseif ($input->action() === 'example' && $form->isEmpty()) {
            $form->party = array_intersect_key(self::EXAMPLE_PARTY, $form->party) + $form->party;
            $table = Table::file(self::EXAMPLES[$this->kind], basename(self::EXAMPLES[$this->kind]));
        } elseif ($uploads) {
            $table = Table::file(...$uploads[0]);
        } elseif (trim($input->block('pasted')) !== '') {
            $table = Table::pasted($input->block('pasted'), $this->view->text('payment.pasted'));
        }
        if ($table === null) {
            return null;
        }
        $typed = $form->filledRows();
        $form->drop($table);

        $replaced = $this->view->text('payment.replaced', ['count' => $typed]);

        return $typed === 0 ? null : ['kind' => 'odd', 'heading' => $replaced];
    }

    /** @param array<string, string>|null $notice */
    private function checked(PaymentForm $form, Input $input, ?array $notice): Response
    {
        $payments = $form->payments();
        $sheet = $form->sheet();
        $sheet->fill($payments);
        $verdict = new Verdict($payments, $form, $sheet);
        if ($input->action() === 'document' && $verdict->mayLeave($input->text('seen'))) {
            return $this->download($payments);
        }
        $form->showRows($verdict->rows());
        if ($input->action() === 'more' || (!$form->rows && !$form->table->isThere())) {
            $form->addRows();
        }
        $assigned = [];
        if ($verdict->asksForColumns()) {
            $assigned = $form->table->columns($sheet->headings(), $sheet->columns()->keys());
        }
        $values = ['verdict' => $verdict, 'notice' => $notice, 'did' => 'check', 'assigned' => $assigned];

        return $this->page($form, $values, $verdict->faults ? 422 : 200);
    }

    /** The document, or a ZIP archive of several. */
    private function download(Batches $payments): Response
    {
        $documents = [];
        foreach ($payments->messages() as $message) {
            $name = $this->kind . '-' . preg_replace('/[^A-Za-z0-9]+/', '-', $message->messageId());
            $documents["$name.xml"] = $message->document();
        }

        return count($documents) === 1
            ? Spreadsheet::file(reset($documents), key($documents), 'application/xml')
            : Spreadsheet::file(Zip::of($documents), preg_replace('/-\d+$/D', '', $name) . '.zip', 'application/zip');
    }

    /** @return array{latest: string, groups: array<string, list<string>>} */
    private static function rulebooks(): array
    {
        $current = ['DE' => [Rulebook::LATEST], 'AT' => ['AT-6'], 'NL' => ['NL-6']];

        $old = array_diff(Rulebook::names(), ...array_values($current));

        return ['latest' => Rulebook::LATEST, 'groups' => $current + ['old' => $old]];
    }

    /** @param array<string, mixed> $values */
    private function page(PaymentForm $form, array $values, int $status = 200): Response
    {
        $verdict = $values['verdict'] ?? null;

        return $this->view->page('payments', $values + [
            'form' => $form,
            'verdict' => null,
            'assigned' => [],
            'faults' => $verdict ? $verdict->faultCount : 0,
            'rulebooks' => self::rulebooks(),
            'accounts' => $this->accounts->names(),
            'hasExample' => is_file(self::EXAMPLES[$this->kind]) && $form->isEmpty(),
        ], $status);
    }
}
