<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Symfony\Component\HttpFoundation\Request;

/**
 * Own accounts, of an ini file that SEPA_ACCOUNTS names, in the environment or as a
 * fastcgi_param: a section for each, with name, iban, and if there are any bic and
 * creditor_id; before them hosts, further names of this server.
 */
final class Accounts
{
    private const KEYS = ['name' => 'name', 'iban' => 'iban', 'bic' => 'bic', 'creditor_id' => 'creditorId'];

    /** @var string names of this server, divided by commas or blanks */
    public string $hosts = '';

    /** @var array<string, array<string, string>> the submitting party by the name of the account */
    private array $parties = [];

    public static function of(Request $request): self
    {
        $accounts = new self();
        $path = (string) $request->server->get('SEPA_ACCOUNTS', (string) getenv('SEPA_ACCOUNTS'));
        $sections = $path === '' ? [] : parse_ini_file($path, true, INI_SCANNER_RAW);
        if ($sections === false) {
            throw new \RuntimeException("cannot read the accounts of $path");
        }
        foreach ($sections as $name => $section) {
            if (is_array($section)) {
                foreach (self::KEYS as $written => $key) {
                    $value = $section[$written] ?? '';
                    $accounts->parties[(string) $name][$key] = is_string($value) ? trim($value) : '';
                }
            } elseif ($name === 'hosts') {
                $accounts->hosts = $section;
            }
        }

        return $accounts;
    }

    /** @return list<string> */
    public function names(): array
    {
        return array_map('strval', array_keys($this->parties));
    }

    /** @return array<string, string> by the keys of faults */
    public function party(string $name): array
    {
        return $this->parties[$name] ?? [];
    }
}
