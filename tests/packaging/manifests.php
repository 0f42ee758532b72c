<?php
/*
 * Tells where versions, composer.json and the head of package.xml disagree, one
 * fault a line, and ends with 1 if they do.
 */

chdir(dirname(__DIR__, 2));
$faults = [];

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

$release = read('CMakeLists.txt', '/^project\(sepa VERSION ([\d.]+)/m');
$module = read('src/sepa/binding/sepa_module.h', '/SEPA_VERSION "([^"]+)"/');
same('versions of CMakeLists.txt and the module', $release, $module . strrchr($release, '.'));
$changes = file_get_contents('CHANGELOG.md');
preg_match('/^## (\d\S+), \d{4}-\d\d-\d\d$/m', $changes, $latest);
same('release and the latest of CHANGELOG.md', $release, $latest[1] ?? '');
$toolkit = trim(file_get_contents('toolkit/VERSION'));
same('version of the toolkit', $toolkit, $release . (strpos($changes, "\n## Not released\n") ? '+dev' : ''));

$head = 'cmake/package.xml.in';
$composer = json_decode(file_get_contents('composer.json'), true);
same('oldest PHP', $composer['require'], ['php' => '>=' . preg_replace('/\.0$/', '', read($head, '/<php>\s*<min>([\d.]+)</'))]);
same('what composer.json builds', [$composer['type'], $composer['php-ext']['extension-name']], ['php-ext', read($head, '/<providesextension>(.*)</')]);
same('options', array_column($composer['php-ext']['configure-options'], 'name'), [read($head, '/<configureoption name="([^"]+)"/')]);
same('--with-sepa-directory in config.m4', substr_count(file_get_contents('config.m4'), 'PHP_ARG_WITH(sepa-directory,'), 1);

foreach ($faults as $fault) {
    echo $fault, "\n";
}
exit($faults ? 1 : 0);
