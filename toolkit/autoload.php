<?php

/**
 * Loads the toolkit's classes: by Composer where it has installed them, else
 * from this folder with the distribution's packages of Symfony and Twig, of which
 * the command needs php-symfony-console, php-symfony-string and
 * php-symfony-translation of Debian, the page php-symfony-http-foundation and
 * php-twig, too.
 */

declare(strict_types=1);

// Cents are integers: with 32 bits they would end at 21 million euro.
if (PHP_INT_SIZE < 8) {
    throw new RuntimeException('the toolkit needs a PHP with integers of 64 bits');
}

foreach ([__DIR__ . '/vendor', dirname(__DIR__, 2)] as $vendor) {
    if (is_file("$vendor/composer/ClassLoader.php")) {
        require_once "$vendor/autoload.php";

        return;
    }
}

foreach (['Console', 'String', 'Translation', 'HttpFoundation', 'Twig'] as $library) {
    $folder = $library === 'Twig' ? $library : "Symfony/Component/$library";
    $packaged = stream_resolve_include_path("$folder/autoload.php");
    if ($packaged !== false) {
        require_once $packaged;
    }
}

spl_autoload_register(static function (string $class): void {
    foreach (['Sepa\\Toolkit\\Tests\\' => 'tests/', 'Sepa\\Toolkit\\' => 'src/'] as $prefix => $folder) {
        if (strncmp($class, $prefix, strlen($prefix)) !== 0) {
            continue;
        }
        $file = __DIR__ . '/' . $folder . strtr(substr($class, strlen($prefix)), '\\', '/') . '.php';
        if (is_file($file)) {
            require $file;
        }

        return;
    }
});
