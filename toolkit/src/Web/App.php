<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/** Chooses the page, and sends what it answers. */
final class App
{
    // No script, nothing from elsewhere, no frame around it.
    private const HEADERS = [
        'Content-Security-Policy' => "default-src 'none'; style-src 'self'; img-src 'self'; form-action 'self'; base-uri 'none'; frame-ancestors 'none'",
        'X-Content-Type-Options' => 'nosniff',
        'X-Frame-Options' => 'DENY',
        'Referrer-Policy' => 'same-origin',
        'Cross-Origin-Opener-Policy' => 'same-origin',
        'Cross-Origin-Resource-Policy' => 'same-origin',
        'Cache-Control' => 'no-store',
    ];

    private const METHODS = ['GET', 'HEAD', 'POST'];

    /** @var array<string, Page> */
    private array $pages;

    public function __construct()
    {
        $this->pages = ['iban' => new IbanPage(), 'statement' => new StatementPage(), 'transfer' => new TransferPage()];
    }

    public function run(Request $request): void
    {
        $response = $this->respond($request);
        http_response_code($response->status);
        foreach ($this->headers($request, $response) as $name => $value) {
            header("$name: $value");
        }
        echo $response->body;
    }

    /** The answer, as a whole page or a file. */
    public function respond(Request $request): Response
    {
        $name = isset($this->pages[$request->page()]) ? $request->page() : 'iban';
        $page = $this->pages[$name];
        try {
            if (!$request->isForThisHost()) {
                throw new Refused('The page is not served under this name.', 421);
            }
            if (!in_array($request->method(), self::METHODS, true)) {
                throw new Refused('The page is asked by GET or POST.', 405);
            }
            if ($request->isPost()) {
                $request->verify();
            }
            $response = $page->respond($request);
        } catch (Refused $e) {
            $response = new Response(Html::notice('bad', $e->getMessage()), $e->getCode());
        } catch (\Throwable $e) {
            error_log((string) $e);
            $response = new Response(Html::notice('bad', 'Something went wrong here. It is in the log of the server.'), 500);
        } finally {
            $request->removeUploads();
        }
        if ($response->filename === null) {
            $titles = array_map(static fn (Page $page): string => $page->title(), $this->pages);
            $response->body = Html::document($page->title(), $titles, $name, $response->body);
        }

        return $response;
    }

    /** @return array<string, string> */
    public function headers(Request $request, Response $response): array
    {
        $type = $response->filename === null
            ? ['Content-Type' => 'text/html; charset=utf-8']
            : ['Content-Type' => 'application/xml', 'Content-Disposition' => "attachment; filename=\"$response->filename\""];
        $secure = $request->isSecure() ? '; Secure' : '';
        // Strict would keep it back when a link elsewhere leads here, and a new one would then void all open forms.
        $cookie = ['Set-Cookie' => Request::TOKEN . '=' . $request->token() . "; Path=/; HttpOnly; SameSite=Lax$secure"];

        $allow = $response->status === 405 ? ['Allow' => implode(', ', self::METHODS)] : [];

        return self::HEADERS + $type + $cookie + $allow;
    }
}
