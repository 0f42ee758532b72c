<?php
/*
 * Tells where package.xml, composer.json and the tree disagree, one fault a
 * line, and ends with 1 if they do.
 */

chdir(dirname(__DIR__, 2));
$faults = [];

/** All files of $folders, without what a build in the tree leaves. */
function files_of(string ...$folders): array
{
    $files = [];
    foreach ($folders as $folder) {
        foreach (new RecursiveIteratorIterator(new RecursiveDirectoryIterator($folder, FilesystemIterator::SKIP_DOTS)) as $file) {
            if (!preg_match('~/\.libs/|\.(lo|o|dep|cmake)$~', $file)) {
                $files[] = (string) $file;
            }
        }
    }
    return $files;
}

/** What $pattern captures in $file, once; anything else is a fault. */
function read(string $file, string $pattern): string
{
    if (preg_match_all($pattern, file_get_contents($file), $found) !== 1) {
        $GLOBALS['faults'][] = "$file does not hold $pattern once";
    }
    return $found[1][0] ?? '';
}

function same(string $what, $one, $other): void
{
    if ($one !== $other) {
        $GLOBALS['faults'][] = "$what: " . json_encode($one) . ' and ' . json_encode($other);
    }
}

// All that the extension is built from, its tests, and what there is to read.
preg_match_all('/<file name="([^"]+)" role="([a-z]+)"/', file_get_contents('package.xml'), $named);
$packaged = array_combine($named[1], $named[2]);
$wanted = array_merge(
    ['LICENSE', 'Makefile.frag', 'config.m4', 'sources.list'],
    glob('*.md'),
    glob('tests/phpt/*.{phpt,inc}', GLOB_BRACE),
    preg_grep('~^examples/(cpp/|\.)~', files_of('examples'), PREG_GREP_INVERT),
    files_of('data', 'docs', 'src', 'tools')
);
foreach (array_diff($wanted, array_keys($packaged)) as $file) {
    $faults[] = "package.xml lacks $file";
}
foreach (array_diff(array_keys($packaged), $wanted) as $file) {
    $faults[] = "package.xml names $file, which is not there or not for it";
}
foreach ($packaged as $file => $role) {
    $fits = ['md' => 'doc', 'phpt' => 'test', 'inc' => 'test', 'cpp' => 'src', 'h' => 'src'][pathinfo($file, PATHINFO_EXTENSION)] ?? $role;
    same("role of $file", $role, strpos($file, 'data/') === 0 ? 'src' : $fits);
}

$release = read('package.xml', '/<release>(\d+\.\d+\.\d+)</');
same('versions of package.xml and CMakeLists.txt', $release, read('CMakeLists.txt', '/^project\(sepa VERSION ([\d.]+)/m'));
same('versions of package.xml and the module', $release, read('src/sepa/binding/sepa_module.h', '/SEPA_VERSION "([^"]+)"/') . strrchr($release, '.'));
preg_match('/^## (\S+), (\S+)$/m', file_get_contents('CHANGELOG.md'), $latest);
same('release of package.xml and the latest of CHANGELOG.md', [$release, read('package.xml', '/<date>([\d-]+)</')], array_slice($latest, 1));

$composer = json_decode(file_get_contents('composer.json'), true);
same('oldest PHP', $composer['require'], ['php' => '>=' . preg_replace('/\.0$/', '', read('package.xml', '/<php>\s*<min>([\d.]+)</'))]);
same('what composer.json builds', [$composer['type'], $composer['php-ext']['extension-name']], ['php-ext', read('package.xml', '/<providesextension>(.*)</')]);
same('options', array_column($composer['php-ext']['configure-options'], 'name'), [read('package.xml', '/<configureoption name="([^"]+)"/')]);
same('--with-sepa-directory in config.m4', substr_count(file_get_contents('config.m4'), 'PHP_ARG_WITH(sepa-directory,'), 1);

foreach ($faults as $fault) {
    echo $fault, "\n";
}
exit($faults ? 1 : 0);
