<?php

/*
 * The page: serve this folder, with this file for all but style.css and icon.svg.
 *
 *     php -d extension=/path/to/sepa.so -S localhost:8080 -t toolkit/web toolkit/web/index.php
 */

declare(strict_types=1);

use Sepa\Toolkit\Web\App;
use Symfony\Component\HttpFoundation\Request;

ini_set('display_errors', '0');

if (PHP_SAPI === 'cli-server' && in_array($_SERVER['SCRIPT_NAME'] ?? '', ['/style.css', '/icon.svg'], true)) {
    return false;
}
require dirname(__DIR__) . '/autoload.php';

foreach (
    ['the extension sepa' => extension_loaded('sepa'), 'the extension intl' => extension_loaded('intl'),
    'Twig' => class_exists(Twig\Environment::class), 'Symfony HttpFoundation' => class_exists(Request::class),
    'Symfony Translation' => class_exists(Symfony\Component\Translation\Translator::class)] as $part => $isThere
) {
    if (!$isThere) {
        http_response_code(500);
        header('Content-Type: text/plain');
        exit("The page needs $part.\n");
    }
}

(new App())->respond(Request::createFromGlobals())->send();
