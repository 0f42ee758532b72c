<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/** What the browser sent. Whatever that is, texts come out as UTF-8 of one line. */
final class Request
{
    public const TOKEN = 'sepa_token';

    public const MAX_UPLOAD = 10 * 1024 * 1024;

    private const LOCAL_HOSTS = ['localhost', '127.0.0.1', '[::1]'];

    /** The last field of each form. Without it the engine has cut the form, at max_input_vars. */
    public const LAST_FIELD = 'complete';

    /** @var array<mixed> */
    private array $query;

    /** @var array<mixed> */
    private array $post;

    /** @var array<mixed> */
    private array $files;

    /** @var array<mixed> */
    private array $server;

    private string $token;

    private bool $knowsToken;

    /**
     * @param array<mixed> $query
     * @param array<mixed> $post
     * @param array<mixed> $files
     * @param array<mixed> $cookies
     * @param array<mixed> $server
     */
    public function __construct(array $query, array $post, array $files, array $cookies, array $server)
    {
        $this->query = $query;
        $this->post = $post;
        $this->files = $files;
        $this->server = $server;
        $token = $cookies[self::TOKEN] ?? null;
        $this->knowsToken = is_string($token) && preg_match('/^[0-9a-f]{32}$/D', $token);
        $this->token = $this->knowsToken ? $token : bin2hex(random_bytes(16));
    }

    public static function current(): self
    {
        return new self($_GET, $_POST, $_FILES, $_COOKIE, $_SERVER);
    }

    public function method(): string
    {
        return (string) ($this->server['REQUEST_METHOD'] ?? 'GET');
    }

    /**
     * Whether the browser asked for this server. A site elsewhere whose name leads
     * here could otherwise read what the page answers.
     */
    public function isForThisHost(): bool
    {
        $asked = strtolower((string) preg_replace('/\.?(:\d*)?$/D', '', (string) ($this->server['HTTP_HOST'] ?? '')));
        $address = (string) ($this->server['SERVER_ADDR'] ?? '');
        $given = (string) ($this->server['SEPA_HOSTS'] ?? getenv('SEPA_HOSTS'));
        $own = array_merge(self::LOCAL_HOSTS, [$address, "[$address]", (string) ($this->server['SERVER_NAME'] ?? '')], explode(' ', strtr($given, ',', ' ')));

        return $asked !== '' && in_array($asked, array_map('strtolower', $own), true);
    }

    public function isPost(): bool
    {
        return $this->method() === 'POST';
    }

    public function isSecure(): bool
    {
        return !in_array($this->server['HTTPS'] ?? '', ['', 'off'], true);
    }

    public function page(): string
    {
        $page = $this->query['page'] ?? '';

        return is_string($page) ? $page : '';
    }

    /** Goes into a cookie and into each form: another site can make a browser send the one, not the other. */
    public function token(): string
    {
        return $this->token;
    }

    /** @throws Refused if a posted form is not whole, or not of this site */
    public function verify(): void
    {
        if (!$this->post && (int) ($this->server['CONTENT_LENGTH'] ?? 0) > 0) {
            throw new Refused('That is too much: a file can have 10 MB.', 413);
        }
        if ($this->text(self::LAST_FIELD) === '') {
            throw new Refused('The form has too many fields for this server: take a CSV file.', 413);
        }
        $origin = $this->server['HTTP_ORIGIN'] ?? '';
        $ownSite = $origin === '' || parse_url($origin, PHP_URL_HOST) . self::port($origin) === ($this->server['HTTP_HOST'] ?? '');
        if (!$this->knowsToken || !hash_equals($this->token, $this->text(self::TOKEN)) || !$ownSite) {
            throw new Refused('The form comes from elsewhere or is too old: please open the page again.', 403);
        }
    }

    /** A posted field; empty if there is none. */
    public function text(string $name): string
    {
        return self::line($this->post[$name] ?? '');
    }

    /**
     * Posted rows of fields, such as row[0][iban].
     *
     * @param list<string> $keys
     * @return list<array<string, string>> each with all keys
     */
    public function rows(string $name, array $keys): array
    {
        $rows = [];
        foreach (is_array($this->post[$name] ?? null) ? $this->post[$name] : [] as $row) {
            $cells = [];
            foreach ($keys as $key) {
                $cells[$key] = self::line(is_array($row) ? $row[$key] ?? '' : '');
            }
            $rows[] = $cells;
        }

        return $rows;
    }

    /**
     * Path of an uploaded file, null if none was chosen. It goes with the request.
     *
     * @throws Refused if it is too large or did not come through
     */
    public function upload(string $name): ?string
    {
        $file = $this->files[$name] ?? [];
        $error = $file['error'] ?? UPLOAD_ERR_NO_FILE;
        if ($error === UPLOAD_ERR_NO_FILE) {
            return null;
        }
        if ($error === UPLOAD_ERR_INI_SIZE || $error === UPLOAD_ERR_FORM_SIZE || ($file['size'] ?? 0) > self::MAX_UPLOAD) {
            throw new Refused('The file is too large: it can have 10 MB.', 413);
        }
        if ($error !== UPLOAD_ERR_OK || !is_string($file['tmp_name'] ?? null)) {
            throw new Refused('The file did not come through: please send it again.', 400);
        }

        return $file['tmp_name'];
    }

    /** Removes the files of the request now. The engine would do so at its end, if it comes to that. */
    public function removeUploads(): void
    {
        foreach ($this->files as $file) {
            foreach ((array) ($file['tmp_name'] ?? []) as $path) {
                if (is_string($path) && is_file($path)) {
                    @unlink($path);
                }
            }
        }
    }

    private static function port(string $origin): string
    {
        $port = parse_url($origin, PHP_URL_PORT);

        return $port ? ":$port" : '';
    }

    /** @param mixed $value */
    private static function line($value): string
    {
        return is_string($value) ? trim((string) preg_replace('/[\x00-\x1F\x7F]+/', ' ', mb_scrub($value, 'UTF-8'))) : '';
    }
}
