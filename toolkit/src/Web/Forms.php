<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/**
 * The forms of all pages. They travel inside the form of the page that is shown:
 * here nothing is kept.
 */
final class Forms
{
    /** Fields beside those that somebody fills in. */
    private const OURS = [Gate::TOKEN, Gate::LAST_FIELD, 'page', 'kept', 'do', 'lang', 'payee'];

    private string $page;

    /** @var array<string, mixed> */
    private array $fields = [];

    /** @var array<string, array<string, mixed>> by page */
    private array $others = [];

    /**
     * @param string $page that is wanted, not always the one whose form was sent
     * @param list<string> $pages
     * @param array<string, mixed> $sent
     */
    public function __construct(string $page, array $pages, array $sent)
    {
        $this->page = $page;
        $text = static fn (string $name): string => is_string($sent[$name] ?? null) ? $sent[$name] : '';
        $kept = json_decode($text('kept'), true);
        $this->others = array_intersect_key(array_filter(is_array($kept) ? $kept : [], 'is_array'), array_flip($pages));
        $from = in_array($text('page'), $pages, true) ? $text('page') : $page;
        $this->others[$from] = array_diff_key($sent, array_flip(self::OURS));
        $this->fields = $this->others[$page] ?? [];
        unset($this->others[$page]);
        if ($text('payee') !== '') {
            $this->fields['payee'] = $text('payee');
        }
        // A form that comes back from elsewhere, or in another language, shows what it showed.
        $again = $this->fields['did'] ?? '';
        $this->fields['do'] = $from === $page && $text('do') !== '' ? $text('do') : $again;
    }

    /** @return array<string, mixed> of the page, and what to do with them */
    public function fields(): array
    {
        return $this->fields;
    }

    /** The forms of the other pages, as text. */
    public function others(): string
    {
        $whole = JSON_INVALID_UTF8_SUBSTITUTE | JSON_PARTIAL_OUTPUT_ON_ERROR;

        return json_encode($this->others, JSON_UNESCAPED_UNICODE | JSON_UNESCAPED_SLASHES | $whole) ?: '';
    }
}
