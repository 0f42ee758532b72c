<?php

/**
 * Loads the toolkit's classes: by Composer where it has installed them, else
 * from this folder with the distribution's packages of Symfony
 * (php-symfony-console, php-symfony-string, php-symfony-translation on Debian).
 */

declare(strict_types=1);

foreach ([__DIR__ . '/vendor', dirname(__DIR__, 2)] as $vendor) {
    if (is_file("$vendor/composer/ClassLoader.php")) {
        require_once "$vendor/autoload.php";

        return;
    }
}

foreach (['Console', 'String', 'Translation'] as $component) {
    $packaged = stream_resolve_include_path("Symfony/Component/$component/autoload.php");
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
