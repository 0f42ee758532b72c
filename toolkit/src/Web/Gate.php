<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Symfony\Component\HttpFoundation\Cookie;
use Symfony\Component\HttpFoundation\Request;

/** Lets in what a browser sends for this page, and nothing that another site makes it send. */
final class Gate
{
    public const TOKEN = 'sepa_token';

    /** The last field of each form. Without it the engine has cut the form, at max_input_vars. */
    public const LAST_FIELD = 'complete';

    public const METHODS = ['GET', 'HEAD', 'POST'];

    private const LOCAL_HOSTS = ['localhost', '127.0.0.1', '[::1]'];

    private Request $request;

    private string $token;

    private bool $knowsToken;

    private string $hosts;

    /** @param string $hosts further names of this server, divided by commas or blanks */
    public function __construct(Request $request, string $hosts)
    {
        $this->request = $request;
        $this->hosts = $hosts . ' ' . $request->server->get('SEPA_HOSTS', (string) getenv('SEPA_HOSTS'));
        $token = $request->cookies->all()[self::TOKEN] ?? null;
        $this->knowsToken = is_string($token) && preg_match('/^[0-9a-f]{32}$/D', $token);
        $this->token = $this->knowsToken ? $token : bin2hex(random_bytes(16));
    }

    /** Goes into a cookie and into each form: another site can make a browser send the one, not the other. */
    public function token(): string
    {
        return $this->token;
    }

    public function cookie(): Cookie
    {
        // Strict would keep it back when a link elsewhere leads here, and a new one would then void all open forms.
        return Cookie::create(self::TOKEN, $this->token, 0, '/', null, $this->request->isSecure(), true, false, 'lax');
    }

    /** @throws Refused of which nothing may be shown again, or nothing has come */
    public function check(): void
    {
        if (!$this->isForThisHost()) {
            throw new Refused('refused.host', 421);
        }
        if (!in_array($this->request->getRealMethod(), self::METHODS, true)) {
            throw new Refused('refused.method', 405);
        }
        if (!$this->request->isMethod('POST')) {
            return;
        }
        $origin = (string) $this->request->headers->get('Origin');
        $host = parse_url($origin, PHP_URL_HOST) . rtrim(':' . parse_url($origin, PHP_URL_PORT), ':');
        if ($origin !== '' && $host !== $this->request->headers->get('Host')) {
            throw new Refused('refused.origin', 403);
        }
        if (!$this->request->request->has(self::LAST_FIELD)) {
            $isCut = $this->request->request->count() > 0;
            throw new Refused($isCut ? 'refused.many_fields' : 'refused.large_form', 413);
        }
    }

    /** @throws Refused if the form is to be seen again before anything is done */
    public function checkToken(): void
    {
        $sent = $this->request->request->all()[self::TOKEN] ?? null;
        if (!$this->knowsToken || !is_string($sent) || !hash_equals($this->token, $sent)) {
            throw new Refused('refused.cookie', 403);
        }
    }

    /**
     * Whether the browser asked for this server. A site elsewhere whose name leads
     * here could otherwise read what the page answers.
     */
    private function isForThisHost(): bool
    {
        $server = $this->request->server;
        $asked = strtolower((string) preg_replace('/\.?(:\d*)?$/D', '', (string) $this->request->headers->get('Host')));
        $given = explode(' ', strtr($this->hosts, ',', ' '));
        $address = (string) $server->get('SERVER_ADDR');
        $own = array_merge(self::LOCAL_HOSTS, [$address, "[$address]", (string) $server->get('SERVER_NAME')], $given);

        return $asked !== '' && in_array($asked, array_map('strtolower', $own), true);
    }
}
