<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Language;
use Symfony\Component\HttpFoundation\Cookie;
use Symfony\Component\HttpFoundation\Request;
use Symfony\Component\HttpFoundation\Response;

/** Chooses page and language, and answers a request. */
final class App
{
    // No script, nothing from elsewhere, no frame around it. Back and Forward show
    // answers again, a cache on the way does not keep them.
    private const HEADERS = [
        'Content-Security-Policy' => "default-src 'none'; style-src 'self'; img-src 'self'; form-action 'self';"
            . " base-uri 'none'; frame-ancestors 'none'",
        'X-Content-Type-Options' => 'nosniff',
        'X-Frame-Options' => 'DENY',
        'Referrer-Policy' => 'same-origin',
        'Cross-Origin-Opener-Policy' => 'same-origin',
        'Cross-Origin-Resource-Policy' => 'same-origin',
        'Cache-Control' => 'private, no-cache',
    ];

    private const PAGES = [
        'transfer' => PaymentPage::class,
        'debit' => PaymentPage::class,
        'statement' => StatementPage::class,
        'iban' => IbanPage::class,
    ];

    private const LANGUAGE = 'sepa_lang';

    public function respond(Request $request): Response
    {
        $accounts = Accounts::of($request);
        $gate = new Gate($request, $accounts->hosts);
        $asked = $request->query->all()['page'] ?? '';
        $name = is_string($asked) && isset(self::PAGES[$asked]) ? $asked : 'transfer';
        $sent = $request->isMethod('POST') ? $request->request->all() : self::bookmarked($request);
        $forms = new Forms($name, array_keys(self::PAGES), $sent);
        $language = self::language($request);
        $view = new View($language, [
            'page' => $name,
            'pages' => array_keys(self::PAGES),
            'kept' => $forms->others(),
            'token' => $gate->token(),
        ]);
        $class = self::PAGES[$name];
        try {
            $response = $this->answer($request, $gate, $forms->fields(), new $class($view, $name, $accounts), $view);
        } catch (Refused $e) {
            $response = $view->page('refused', ['notice' => self::notice($view, $e->getMessage())], $e->getCode());
        } catch (\Throwable $e) {
            error_log((string) $e);
            $response = $view->page('refused', ['notice' => self::notice($view, 'refused.failure')], 500);
        } finally {
            self::removeUploads($request);
        }
        $isRefused = $response->getStatusCode() === 405;
        $response->headers->add(self::HEADERS + ($isRefused ? ['Allow' => implode(', ', Gate::METHODS)] : []));
        $response->headers->setCookie($gate->cookie());
        if ($language === self::chosen($request)) {
            $isSecure = $request->isSecure();
            $cookie = Cookie::create(self::LANGUAGE, $language, '+1 year', '/', null, $isSecure, true, false, 'lax');
            $response->headers->setCookie($cookie);
        }

        return $response->prepare($request);
    }

    /**
     * @param array<string, mixed> $fields
     */
    private function answer(Request $request, Gate $gate, array $fields, Page $page, View $view): Response
    {
        $gate->check();
        try {
            if ($request->isMethod('POST')) {
                $gate->checkToken();
            }

            return $page->respond(new Input($fields, $request->files->all()), null);
        } catch (Refused $e) {
            // What was typed comes back, and nothing is done with it.
            unset($fields['do']);
            $response = $page->respond(new Input($fields, []), self::notice($view, $e->getMessage()));

            return $response->setStatusCode($e->getCode());
        }
    }

    /** @return array<string, string> */
    private static function notice(View $view, string $text): array
    {
        return ['kind' => 'bad', 'heading' => $view->text($text)];
    }

    /** @return array<string, mixed> what a link fills into the form */
    private static function bookmarked(Request $request): array
    {
        return array_intersect_key($request->query->all(), array_flip(PaymentForm::BOOKMARKED));
    }

    /** What is chosen, was chosen, or what the browser wants; German where that is none. */
    private static function language(Request $request): string
    {
        $before = $request->cookies->all()[self::LANGUAGE] ?? null;

        $before = in_array($before, Language::ALL, true) ? $before : null;

        return self::chosen($request) ?? $before ?? (string) $request->getPreferredLanguage(Language::ALL);
    }

    private static function chosen(Request $request): ?string
    {
        $chosen = $request->request->all()['lang'] ?? $request->query->all()['lang'] ?? null;

        return in_array($chosen, Language::ALL, true) ? $chosen : null;
    }

    /** The engine would do so at its end, if it comes to that. */
    private static function removeUploads(Request $request): void
    {
        $files = $request->files->all();
        array_walk_recursive($files, static function ($file): void {
            if ($file instanceof \SplFileInfo && $file->isFile()) {
                @unlink($file->getPathname());
            }
        });
    }
}
