<?php
/*
 * links.php FOLDER: tells which links of the documents in it lead nowhere, one a
 * line, and ends with 1 if there are any.
 */

chdir($argv[1]);
$documents = array_merge(glob('*.md'), glob('docs/*.md'), glob('data/README.md'), glob('tests/data/README.md'));

/** The heading's anchor, as web pages of repositories make it. */
function anchor(string $heading): string
{
    return strtr(preg_replace('/[^a-z0-9 _-]/', '', strtolower(trim($heading))), ' ', '-');
}

$dead = [];
foreach ($documents as $document) {
    preg_match_all('/\]\((?!https?:)([^)#]*)(?:#([^)]*))?\)/', file_get_contents($document), $links, PREG_SET_ORDER);
    foreach ($links as $link) {
        $file = $link[1] === '' ? $document : dirname($document) . '/' . $link[1];
        preg_match_all('/^#+ (.*)$/m', is_file($file) ? file_get_contents($file) : '', $headings);
        if (!is_file($file) || isset($link[2]) && !in_array($link[2], array_map('anchor', $headings[1]), true)) {
            $dead[] = "$document: $link[0]";
        }
    }
}
foreach ($dead as $link) {
    echo $link, "\n";
}
exit($documents && !$dead ? 0 : 1);
