<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Statement\Balance;
use Sepa\Toolkit\Statement\Booking;
use Sepa\Toolkit\Statement\Note;
use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;

/** Reads a statement file and shows its bookings and the running balance. */
final class StatementPage implements Page
{
    private const EXAMPLE = __DIR__ . '/../../../examples/statement.sta';

    /** Of one file; the rest is counted. */
    private const MAX_STATEMENTS = 100;

    private const MAX_BOOKINGS = 500;

    public function title(): string
    {
        return 'Statements';
    }

    public function respond(Request $request): Response
    {
        $result = '';
        if ($request->isPost()) {
            $path = $request->text('do') === 'example' ? self::EXAMPLE : $request->upload('file');
            $result = $path === null ? Html::notice('bad', 'Choose a file first.') : $this->read(Reader::file($path));
        }
        $file = '<div class="field"><label for="f-file">MT940 file of your bank (.sta, .mt940, .txt), up to 10 MB</label>'
            . '<input type="file" id="f-file" name="file" accept=".sta,.mt940,.940,.swi,.txt,text/plain"></div>';
        $example = is_file(self::EXAMPLE) ? '<button class="quiet" name="do" value="example">Show an example</button>' : '';

        return new Response("<section class=\"card\"><form method=\"post\" action=\"?page=statement\" enctype=\"multipart/form-data\">$file"
            . "<div class=\"buttons\"><button name=\"do\" value=\"read\">Read the file</button>$example</div>" . Html::formEnd($request) . "</form></section>$result");
    }

    private function read(Reader $reader): string
    {
        $accounts = '';
        $account = '';
        $chart = null;
        $from = $to = '';
        $last = null;
        $statements = $bookings = $good = 0;
        foreach ($reader as $statement) {
            ++$statements;
            $good += $statement->balanced && !$statement->faults ? 1 : 0;
            if (!$last || !self::follows($last, $statement)) {
                $accounts .= self::account($last, $chart, $from, $to, $account);
                $account = '';
                $chart = $statement->opening ? new BalanceChart($statement->currency, $statement->opening->amount->units) : null;
                $from = self::day($statement->opening);
            }
            $shown = $statements > self::MAX_STATEMENTS ? 0 : max(0, self::MAX_BOOKINGS - $bookings);
            $account .= $this->statement($statement, $chart, $shown, $statements <= self::MAX_STATEMENTS);
            $to = self::day($statement->closing);
            $bookings += count($statement->bookings);
            $last = $statement;
        }
        $accounts .= self::account($last, $chart, $from, $to, $account);
        $faults = self::notes($reader->faults());
        if ($statements === 0) {
            return Html::notice('bad', 'No statement was found', $faults);
        }
        $counts = Html::counted($statements, 'statement') . ', ' . Html::counted($bookings, 'booking') . ': ';
        $isGood = $good === $statements && $faults === '';
        $verdict = $good === $statements ? 'opening balances and bookings come to the closing balances' : Html::number($statements - $good) . ' to be looked at';
        $more = $statements > self::MAX_STATEMENTS || $bookings > self::MAX_BOOKINGS
            ? '<p>' . Html::text(sprintf('The first %d statements and %d bookings are shown.', self::MAX_STATEMENTS, self::MAX_BOOKINGS)) . '</p>' : '';

        return Html::notice($isGood ? 'good' : 'bad', $counts . $verdict, $faults . $more) . $accounts;
    }

    /** Whether a statement goes on where another ended. */
    private static function follows(Statement $last, Statement $next): bool
    {
        return $last->account === $next->account && $last->balanced && $next->opening && $last->closing->amount == $next->opening->amount;
    }

    private static function account(?Statement $last, ?BalanceChart $chart, string $from, string $to, string $statements): string
    {
        if (!$last || $statements === '') {
            return '';
        }
        $name = $last->account === '' ? 'Account not named' : $last->account;
        $name = preg_match('/^[A-Z]{2}\d{2}[A-Z0-9]{11,30}$/D', $name) ? Ibans::grouped($name) : $name;

        return '<section class="card"><h2>' . Html::text($name) . ' <small>' . Html::text($last->currency) . '</small></h2>' . ($chart ? $chart->html($from, $to) : '') . "$statements</section>";
    }

    private function statement(Statement $statement, ?BalanceChart $chart, int $most, bool $isShown): string
    {
        $rows = '';
        $shown = 0;
        $balance = $statement->opening ? $statement->opening->amount : null;
        foreach ($statement->bookings as $booking) {
            $balance = $balance ? $balance->plus($booking->amount) : null;
            if ($chart && $balance) {
                $chart->add($balance->units);
            }
            if ($shown < $most) {
                ++$shown;
                $rows .= self::booking($booking, $balance ? Html::money($balance) : '');
            }
        }
        if (!$isShown) {
            return '';
        }
        $number = $statement->number === null ? 'Statement' : 'No. ' . $statement->number . ($statement->page ? "/$statement->page" : '');
        $rest = count($statement->bookings) - $shown;

        return '<article class="statement"><h3>' . Html::text($number) . ' ' . self::badge($statement) . '</h3>' . self::notes($statement->faults)
            . ($statement->information === '' ? '' : '<p class="text">' . nl2br(Html::text($statement->information)) . '</p>')
            . '<table class="bookings"><thead><tr><th scope="col">Date</th><th scope="col">Booking</th><th scope="col" class="number">Amount</th>'
            . '<th scope="col" class="number">Balance</th></tr></thead><tbody>' . self::balance($statement, true) . $rows
            . ($rest > 0 ? "<tr><td></td><td colspan=\"3\" class=\"text\">and $rest more</td></tr>" : '') . self::balance($statement, false)
            . '</tbody></table>' . self::mended($statement->mended) . '</article>';
    }

    private static function badge(Statement $statement): string
    {
        if ($statement->balanced) {
            return '<span class="badge good">balanced</span>' . ($statement->cut ? ' <span class="badge odd">no end</span>' : '');
        }
        $off = $statement->difference && $statement->difference->units !== 0;

        return ($statement->cut ? '<span class="badge bad">cut</span> ' : '')
            . ($off ? '<span class="badge bad">off by ' . Html::money($statement->difference) . '</span>' : '<span class="badge bad">not balanced</span>');
    }

    private static function balance(Statement $statement, bool $opening): string
    {
        $balance = $opening ? $statement->opening : $statement->closing;
        $name = $opening ? 'Opening balance' : 'Closing balance';
        $name .= $balance && $balance->intermediate ? ' of the page' : '';
        $currency = $balance && $balance->amount->currency !== $statement->currency ? ' ' . Html::text($balance->amount->currency) : '';

        return "<tr class=\"balance\"><td>" . self::day($balance) . "</td><td>$name</td><td></td><td class=\"number\">"
            . ($balance ? Html::money($balance->amount) : 'missing') . $currency . '</td></tr>';
    }

    private static function booking(Booking $booking, string $balance): string
    {
        $date = $booking->booked ?? $booking->valuta;
        $value = $booking->booked && $booking->valuta && $booking->booked != $booking->valuta ? 'value ' . $booking->valuta->format('Y-m-d') : '';
        $name = $booking->name ?? $booking->txtext ?? $booking->code;
        $tags = array_filter([$booking->reversal ? 'taken back' : '', $booking->expected ? 'expected' : '', $value, $name === $booking->txtext ? '' : (string) $booking->txtext]);
        $text = $booking->remittance() === $name ? '' : $booking->remittance();

        return '<tr><td>' . ($date ? $date->format('Y-m-d') : 'no such date') . '</td><td><strong>' . Html::text($name) . '</strong>'
            . ($text === '' ? '' : '<br><span class="text">' . Html::text($text) . '</span>')
            . ($tags ? '<br><small>' . Html::text(implode(' · ', $tags)) . '</small>' : '')
            . '</td><td class="number">' . Html::money($booking->amount) . "</td><td class=\"number\">$balance</td></tr>";
    }

    /** @param list<Note> $notes */
    private static function notes(array $notes): string
    {
        $items = '';
        foreach ($notes as $note) {
            $times = $note->count > 1 ? ", $note->count times" : '';
            $items .= '<li>' . Html::text($note->text) . " <small>line $note->line$times</small></li>";
        }

        return $items === '' ? '' : "<ul class=\"notes\">$items</ul>";
    }

    /** @param list<Note> $notes */
    private static function mended(array $notes): string
    {
        return $notes ? '<details><summary>' . Html::counted(count($notes), 'thing') . ' mended while reading</summary>' . self::notes($notes) . '</details>' : '';
    }

    /** The day of a balance; empty if there is none. */
    private static function day(?Balance $balance): string
    {
        return $balance && $balance->date ? $balance->date->format('Y-m-d') : '';
    }
}
