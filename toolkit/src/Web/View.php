<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Iban\Ibans;
use Sepa\Toolkit\Payment\Keys;
use Sepa\Toolkit\Statement\Amount;
use Sepa\Toolkit\Texts;
use Sepa\Toolkit\Version;
use Symfony\Component\HttpFoundation\Response;
use Twig\Environment;
use Twig\Loader\FilesystemLoader;
use Twig\TwigFunction;

/** Pages as people see them: templates, texts, and money and days in the way of the language. */
final class View
{
    /** Labels of keys that say more on one page, or on both pages of payments. */
    private const TOLD_BY_PAGE = ['key.name', 'own.date'];

    private const TOLD_BY_ALL = ['key.amount', 'key.account', 'key.bank_code', 'key.currency', 'own.seq'];

    public string $language;

    private string $page;

    private Environment $twig;

    private \NumberFormatter $numbers;

    private \IntlDateFormatter $days;

    /** @param array<string, mixed> $globals what every template has */
    public function __construct(string $language, array $globals)
    {
        $this->language = $language;
        $this->page = $globals['page'];
        // English as in Europe: a day goes before its month.
        $locale = $language === 'en' ? 'en_GB' : $language;
        $this->numbers = new \NumberFormatter($locale, \NumberFormatter::DECIMAL);
        $this->days = new \IntlDateFormatter($locale, \IntlDateFormatter::MEDIUM, \IntlDateFormatter::NONE, 'UTC');
        // Without a cache nothing of it is on the disk.
        $templates = new FilesystemLoader(__DIR__ . '/../../templates');
        $this->twig = new Environment($templates, ['strict_variables' => true, 'cache' => false]);
        foreach (['text', 'label', 'cell', 'money', 'day', 'id'] as $function) {
            $this->twig->addFunction(new TwigFunction($function, [$this, $function]));
        }
        $this->twig->addFunction(new TwigFunction('grouped', [Ibans::class, 'grouped']));
        foreach ($globals + ['language' => $language, 'version' => Version::number()] as $name => $value) {
            $this->twig->addGlobal($name, $value);
        }
    }

    /** @param array<string, mixed> $values of its template */
    public function page(string $template, array $values, int $status = 200): Response
    {
        return new Response($this->twig->render("$template.html.twig", $values), $status);
    }

    /** @param array<string, mixed> $values */
    public function text(string $id, array $values = [], string $domain = 'page'): string
    {
        return Texts::of($domain, $id, $values, $this->language);
    }

    /** With a capital at its beginning. */
    public function sentence(string $text): string
    {
        return mb_strtoupper(mb_substr($text, 0, 1)) . mb_substr($text, 1);
    }

    /**
     * What a key of a payment is called, or one of the submitting party; here more
     * is known of some.
     */
    public function label(string $key, bool $isOwn = false): string
    {
        $id = $isOwn ? "own.$key" : "key.$key";
        if (in_array($id, self::TOLD_BY_PAGE, true)) {
            return $this->text("$this->page.$id");
        }

        $isOurs = in_array($id, self::TOLD_BY_ALL, true);

        return $isOurs ? $this->text("payment.$id") : Keys::label($key, $this->language, $isOwn);
    }

    /** What stands in a field: days and amounts as the language has them. */
    public function cell(string $key, string $typed): string
    {
        $hasForm = in_array(Keys::form($key), [Keys::AMOUNT, Keys::DATE], true);

        return $hasForm ? Texts::shown($typed, $this->language) : $typed;
    }

    /** With its sign and all decimals, exactly: −18.240,17. */
    public function money(Amount $amount): string
    {
        $point = $this->numbers->getSymbol(\NumberFormatter::DECIMAL_SEPARATOR_SYMBOL);
        $thousands = $this->numbers->getSymbol(\NumberFormatter::GROUPING_SEPARATOR_SYMBOL);

        return str_replace('-', "\u{2212}", $amount->text($point, $thousands));
    }

    public function day(\DateTimeInterface $day): string
    {
        return (string) $this->days->format($day);
    }

    /** The id of a field: row[2][iban] is f-row-2-iban. */
    public function id(string $name): string
    {
        return 'f-' . trim((string) preg_replace('/[^A-Za-z0-9]+/', '-', $name), '-');
    }
}
