<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Csv\Reader;
use Sepa\Toolkit\Payment\Fault;
use Sepa\Toolkit\Payment\Keys;
use Sepa\Toolkit\Payment\Payments;
use Sepa\Toolkit\Payment\Rulebook;
use Sepa\Toolkit\Payment\Sheet;
use Sepa\Toolkit\Unreadable;

/** Makes a credit transfer of a form, or of a CSV file that becomes one. */
final class TransferPage implements Page
{
    private const EXAMPLE = __DIR__ . '/../../../examples/payments.csv';

    private const EXAMPLE_PARTY = ['name' => 'Zimmerei Sander GmbH', 'iban' => 'DE89370400440532013000', 'bic' => ''];

    /** Lines about a file; the rest is counted. */
    private const MAX_TOLD = 200;

    /** Columns that a row has room for; more stand in several lines. */
    private const MAX_IN_LINE = 5;

    private const PARTY = [
        'name' => ['Your name', ['autocomplete' => 'organization', 'maxlength' => '70']],
        'iban' => ['Your IBAN', ['class' => 'code', 'maxlength' => '60']],
        'bic' => ['BIC', ['class' => 'code', 'maxlength' => '11']],
        'date' => ['Date', ['type' => 'date']],
        'messageId' => ['Message id', ['class' => 'code', 'maxlength' => '35']],
    ];

    private const HELP = [
        'bic' => 'Found by your IBAN, if you leave it empty.',
        'date' => 'Of payments without one of their own; today, if you leave it empty.',
        'messageId' => 'Made for you, if you leave it empty. The bank refuses a second message with the same.',
    ];

    /** Where the label of a key can say more. */
    private const LABELS = ['name' => 'Payee', 'amount' => 'Amount in EUR'];

    public function title(): string
    {
        return 'Transfers';
    }

    public function respond(Request $request): Response
    {
        $form = new TransferForm($request);
        $do = $request->text('do');
        if (!$request->isPost() || $do === 'more') {
            $form->addRows();

            return new Response($this->form($request, $form, []));
        }
        $path = $do === 'example' ? self::EXAMPLE : $request->upload('file');
        if ($do === 'example') {
            $form->party = array_merge($form->party, self::EXAMPLE_PARTY);
        }
        try {
            $isFile = $path !== null && !$form->take(self::reader($path));
            if ($isFile) {
                $form->takeWhole($path);
            }
            $payments = $form->payments();
            if (!$isFile) {
                $form->fill($payments);
                foreach (array_merge($payments->faults(), $payments->warnings()) as $fault) {
                    $form->showColumns($fault->row === null ? [] : [(string) $fault->key]);
                }
            } else {
                $ignored = $form->ignoreUnknown ? TransferForm::unknownHeadings(self::reader($path)) : [];
                $sheet = new Sheet(self::reader($path), $form->german, $ignored);
                $sheet->fill($payments);
            }
        } catch (Unreadable $e) {
            return new Response(Html::notice('bad', ucfirst($e->getMessage())) . $this->form($request, $form, []), 422);
        }

        $hash = static fn (array $warnings): string => hash('sha256', serialize([$warnings, $payments->changes()]));
        $isOdd = $payments->warnings() || $payments->changes();
        if ($do === 'document' && !$payments->faults() && (!$isOdd || $request->text('seen') === $hash($payments->warnings()))) {
            return new Response($payments->document(), 200, 'transfer-' . preg_replace('/[^A-Za-z0-9]+/', '-', $payments->messageId()) . '.xml');
        }
        // What is true of a file alone is not found again when the form comes back with its rows.
        $seen = $hash(array_values(array_filter($payments->warnings(), static fn (Fault $fault): bool => $isFile || $fault->code !== 'no_line_end')));
        $found = $payments->faults() ?: $payments->warnings();
        $told = array_merge($found, $payments->changes());
        $told = $isFile ? $this->listed($told, $sheet) : $this->linked($told, $form->columns);
        $result = self::verdict($payments, $isFile, $told) . "<input type=\"hidden\" name=\"seen\" form=\"transfer\" value=\"$seen\">";
        // The rows of a file that does not become the form are not those of the form.
        $shown = array_filter($found, static fn (Fault $fault): bool => !$isFile || $fault->row === null);

        return new Response($result . $this->form($request, $form, $shown), $payments->faults() ? 422 : 200);
    }

    private static function reader(string $path): Reader
    {
        $stream = @fopen($path, 'rb');
        if (!$stream) {
            throw new Unreadable('the file cannot be read');
        }

        return new Reader($stream, 'the file');
    }

    private static function verdict(Payments $payments, bool $isFile, string $told): string
    {
        $faults = $payments->faultCount();
        $counted = Html::counted(count($payments), 'payment');
        if ($faults > 0) {
            return Html::notice('bad', "$counted, " . Html::counted($faults, 'fault') . ': there is no document yet', $told);
        }
        $ready = "$counted, {$payments->sum()} EUR: ready for the bank";
        $next = $isFile
            ? '<p>Choose the file again, and download the document.</p>'
            : '<p><button form="transfer" name="do" value="document">Download the document</button></p>';

        return Html::notice($told === '' ? 'good' : 'odd', $ready, ($told === '' ? '' : '<p>Please look at this before you download the document.</p>') . $told . $next);
    }

    /**
     * Faults, warnings and changes as links to their fields.
     *
     * @param list<Fault> $told
     * @param list<string> $columns
     */
    private function linked(array $told, array $columns): string
    {
        $items = '';
        // As the fields stand on the page.
        $place = static fn (Fault $fault): array => [
            $fault->row ?? 0,
            array_search($fault->key, $fault->row === null ? array_keys(self::PARTY) : $columns, true),
        ];
        usort($told, static fn (Fault $a, Fault $b): int => $place($a) <=> $place($b));
        foreach ($told as $fault) {
            $number = $fault->row === null ? null : $fault->row - TransferForm::ROW_OFFSET;
            $payment = $number === null ? '' : 'Payment ' . ($number + 1);
            $where = array_filter([$payment, $this->label($fault, $payment === '' ? 'Message' : '')]);
            $text = Html::text(implode(', ', $where) . ": {$fault->text()}");
            $items .= $fault->key === null ? "<li>$text</li>" : '<li><a href="#' . Html::id(self::field($number, $fault->key)) . "\">$text</a></li>";
        }

        return $items === '' ? '' : "<ul class=\"notes\">$items</ul>";
    }

    /**
     * Faults, warnings and changes of a file, by its rows and columns.
     *
     * @param list<Fault> $told
     */
    private function listed(array $told, Sheet $sheet): string
    {
        $rows = '';
        foreach (array_slice($told, 0, self::MAX_TOLD) as $fault) {
            $heading = $fault->row === null ? null : $sheet->heading((string) $fault->key);
            $hint = $fault->hint() === '' ? '' : '<br><small>' . Html::text($fault->hint()) . '</small>';
            $rows .= "<tr><td>$fault->row</td><td>" . Html::text($heading ?? $this->label($fault, '')) . '</td><td>' . Html::text($fault->text()) . "$hint</td></tr>";
        }
        $more = count($told) - self::MAX_TOLD;

        return $rows === '' ? '' : '<table class="list"><thead><tr><th scope="col">Row</th><th scope="col">Column</th><th scope="col">What it is</th></tr></thead>'
            . "<tbody>$rows</tbody></table>" . ($more > 0 ? "<p>And $more more.</p>" : '');
    }

    /** @param array<Fault> $found what stands beside the fields */
    private function form(Request $request, TransferForm $form, array $found): string
    {
        $by = [];
        foreach ($found as $fault) {
            $by[$fault->row === null ? '' : $fault->row - TransferForm::ROW_OFFSET][$fault->key ?? ''][] = trim("{$fault->text()}. {$fault->hint()}", ' ');
        }
        $party = '';
        foreach (self::PARTY as $key => [$label, $attributes]) {
            $attributes += ['bic' => ['placeholder' => $form->foundBic()], 'messageId' => ['placeholder' => $form->messageId()]][$key] ?? [];
            $party .= Html::field($key, $label, $form->party[$key], $attributes, $by[''][$key] ?? [], self::HELP[$key] ?? '');
        }
        $rulebooks = '';
        foreach (Rulebook::names() as $rulebook) {
            $rulebooks .= '<option' . ($rulebook === $form->rulebook ? ' selected' : '') . ">$rulebook</option>";
        }
        $party .= "<div class=\"field\"><label for=\"f-rulebook\">Rulebook</label><select id=\"f-rulebook\" name=\"rulebook\">$rulebooks</select></div>";
        $options = Html::checkbox('german', 'Amounts such as 1.190,00 and dates such as 31.12.2026', $form->german)
            . Html::checkbox('transliterate', 'Replace letters that the bank does not take', $form->transliterate)
            . Html::checkbox('ignore', 'Leave out columns of the file whose heading is not known', $form->ignoreUnknown);
        $columns = Html::text(implode(',', $form->columns));
        $example = is_file(self::EXAMPLE) ? '<button class="quiet" name="do" value="example">Fill in an example</button>' : '';

        return '<form class="transfer" id="transfer" method="post" action="?page=transfer" enctype="multipart/form-data">'
            . "<input type=\"hidden\" name=\"columns\" value=\"$columns\"><input type=\"hidden\" name=\"seed\" value=\"$form->seed\">"
            . "<section class=\"card\"><h2>From</h2><div class=\"party\">$party</div></section>"
            . '<section class="card"><h2>Payments</h2>' . $this->rows($form, $by)
            . '<button class="quiet" name="do" value="check" hidden></button><button class="quiet" name="do" value="more">More rows</button>'
            . '<div class="field file"><label for="f-file">Or a CSV file, up to 10 MB, with headings such as name, iban, amount, ref</label>'
            . "<input type=\"file\" id=\"f-file\" name=\"file\" accept=\".csv,.txt,text/csv\"></div><div class=\"options\">$options</div></section>"
            . '<div class="buttons"><button name="do" value="check">Check</button> <button name="do" value="document">Download the document</button> '
            . $example . '</div>' . Html::formEnd($request) . '</form>';
    }

    /** @param array<int|string, array<string, list<string>>> $faults by row and key */
    private function rows(TransferForm $form, array $faults): string
    {
        $head = '';
        foreach ($form->columns as $key) {
            $head .= "<th scope=\"col\" class=\"$key\">" . Html::text(self::LABELS[$key] ?? Keys::label($key)) . '</th>';
        }
        $body = '';
        foreach ($form->rows as $number => $row) {
            $cells = '';
            foreach ($form->columns as $key) {
                $attributes = ['class' => $key === 'iban' || $key === 'bic' ? 'code' : ''] + ($key === 'amount' ? ['inputmode' => 'decimal'] : []);
                $where = ', payment ' . ($number + 1);
                $cells .= "<td class=\"$key\">"
                    . Html::field(self::field($number, $key), self::LABELS[$key] ?? Keys::label($key), $row[$key] ?? '', $attributes, $faults[$number][$key] ?? [], '', $where) . '</td>';
            }
            $other = implode(' ', $faults[$number][''] ?? []);
            $body .= '<tr><th scope="row"><span class="word">Payment </span>' . ($number + 1) . ($other === '' ? '' : '<p class="fault">' . Html::text($other) . '</p>') . "</th>$cells</tr>";
        }

        $many = count($form->columns) > self::MAX_IN_LINE ? ' many' : '';

        return "<table class=\"rows$many\"><thead><tr><th scope=\"col\"><span class=\"unseen\">Number</span></th>$head</tr></thead><tbody>$body</tbody></table>";
    }

    private static function field(?int $number, string $key): string
    {
        return $number === null ? $key : "row[$number][$key]";
    }

    private function label(Fault $fault, string $none): string
    {
        $key = $fault->key ?? '';
        $label = $fault->row === null ? self::PARTY[$key][0] ?? null : self::LABELS[$key] ?? Keys::label($key);

        return $label ?? $fault->key ?? $none;
    }
}
