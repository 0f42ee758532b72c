<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Statement\Amount;

/** Pieces of pages. All that comes from outside goes through text(). */
final class Html
{
    public static function text(string $text): string
    {
        return htmlspecialchars($text, ENT_QUOTES | ENT_SUBSTITUTE, 'UTF-8');
    }

    /** With its sign, and thousands apart, as text: −18 240.17. */
    public static function amount(Amount $amount): string
    {
        return str_replace('-', "\u{2212}", $amount->text('.', "\u{202F}"));
    }

    public static function money(Amount $amount): string
    {
        return '<span class="money' . ($amount->units < 0 ? ' negative' : '') . '">' . self::text(self::amount($amount)) . '</span>';
    }

    public static function counted(int $count, string $noun): string
    {
        return self::number($count) . " $noun" . ($count === 1 ? '' : 's');
    }

    public static function number(int $number): string
    {
        return number_format($number, 0, '.', "\u{202F}");
    }

    /**
     * A field with its label.
     *
     * @param array<string, string|bool> $attributes of the input; true for one without a value
     * @param list<string> $faults what is wrong with it
     * @param string $where for those who don't see where the field stands
     */
    public static function field(
        string $name,
        string $label,
        string $value,
        array $attributes = [],
        array $faults = [],
        string $help = '',
        string $where = ''
    ): string {
        $id = self::id($name);
        $described = [];
        $below = '';
        if ($help !== '') {
            $described[] = "$id-help";
            $below .= "<p class=\"help\" id=\"$id-help\">" . self::text($help) . '</p>';
        }
        if ($faults) {
            $described[] = "$id-fault";
            $attributes['aria-invalid'] = 'true';
            $below .= "<p class=\"fault\" id=\"$id-fault\">" . implode('<br>', array_map([self::class, 'text'], $faults)) . '</p>';
        }
        if ($described) {
            $attributes['aria-describedby'] = implode(' ', $described);
        }
        $attributes += ['type' => 'text', 'autocomplete' => 'off', 'spellcheck' => 'false'];
        $input = '<input' . self::attributes(['id' => $id, 'name' => $name, 'value' => $value] + $attributes) . '>';

        $label = self::text($label) . ($where === '' ? '' : '<span class="unseen">' . self::text($where) . '</span>');

        return "<div class=\"field\"><label for=\"$id\">$label</label>$input$below</div>";
    }

    public static function checkbox(string $name, string $label, bool $checked): string
    {
        $attributes = self::attributes(['type' => 'checkbox', 'name' => $name, 'value' => '1', 'checked' => $checked]);

        return "<label class=\"check\"><input$attributes> " . self::text($label) . '</label>';
    }

    /** @param array<string, string|null> $values values by term; what is null is left out */
    public static function facts(array $values): string
    {
        $list = '';
        foreach ($values as $term => $value) {
            if ($value !== null && $value !== '') {
                $list .= '<dt>' . self::text($term) . '</dt><dd>' . self::text($value) . '</dd>';
            }
        }

        return "<dl class=\"facts\">$list</dl>";
    }

    /** @param string $kind good, bad or odd */
    public static function notice(string $kind, string $heading, string $html = ''): string
    {
        $role = $kind === 'bad' ? 'alert' : 'status';

        return "<div class=\"notice $kind\" role=\"$role\"><p class=\"heading\">" . self::text($heading) . "</p>$html</div>";
    }

    /** The end of each form. */
    public static function formEnd(Request $request): string
    {
        return '<input type="hidden" name="' . Request::TOKEN . '" value="' . $request->token() . '">'
            . '<input type="hidden" name="' . Request::LAST_FIELD . '" value="1">';
    }

    /** The id of a field: row[2][iban] is row-2-iban. */
    public static function id(string $name): string
    {
        return 'f-' . trim((string) preg_replace('/[^A-Za-z0-9]+/', '-', $name), '-');
    }

    /**
     * @param array<string, string> $pages titles by name
     */
    public static function document(string $title, array $pages, string $current, string $main): string
    {
        $links = '';
        foreach ($pages as $name => $label) {
            $here = $name === $current ? ' aria-current="page"' : '';
            $links .= "<li><a href=\"?page=$name\"$here>" . self::text($label) . '</a></li>';
        }
        $title = self::text($title);

        return <<<HTML
            <!DOCTYPE html>
            <html lang="en">
            <head>
            <meta charset="utf-8">
            <meta name="viewport" content="width=device-width, initial-scale=1">
            <meta name="color-scheme" content="light dark">
            <title>$title · SEPA toolkit</title>
            <link rel="stylesheet" href="style.css">
            <link rel="icon" href="icon.svg">
            </head>
            <body>
            <a class="skip" href="#main">Skip to the content</a>
            <header>
            <p class="brand">SEPA toolkit</p>
            <nav aria-label="Pages"><ul>$links</ul></nav>
            </header>
            <main id="main">
            <h1>$title</h1>
            $main
            </main>
            <footer><p>Nothing you enter is kept: files are removed as soon as they have been read.</p></footer>
            </body>
            </html>

            HTML;
    }

    /** @param array<string, string|bool> $attributes */
    private static function attributes(array $attributes): string
    {
        $html = '';
        foreach ($attributes as $name => $value) {
            if ($value !== false) {
                $html .= " $name" . ($value === true ? '' : '="' . self::text($value) . '"');
            }
        }

        return $html;
    }
}
