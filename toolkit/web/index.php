<?php

/*
 * The page: serve this folder, with this file for all but style.css and icon.svg.
 *
 *     php -d extension=/path/to/sepa.so -S localhost:8080 -t php/web php/web/index.php
 */

declare(strict_types=1);

use Sepa\Toolkit\Web\App;
use Sepa\Toolkit\Web\Request;

ini_set('display_errors', '0');

if (PHP_SAPI === 'cli-server' && in_array($_SERVER['SCRIPT_NAME'] ?? '', ['/style.css', '/icon.svg'], true)) {
    return false;
}
if (!extension_loaded('sepa')) {
    http_response_code(500);
    header('Content-Type: text/plain');
    exit("The extension is not loaded: php -d extension=/path/to/sepa.so …\n");
}

require dirname(__DIR__) . '/autoload.php';

(new App())->run(Request::current());
