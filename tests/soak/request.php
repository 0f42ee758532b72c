<?php
/* One request: ?case=N, or ?peek for the rulebook that this process has kept. */
require __DIR__ . '/cases.php';

header('Content-Type: text/plain');
header('X-Process: ' . getmypid());
if (isset($_GET['peek'])) {
    preg_match('~xsd:([^"]*)"~', (new SEPA(SEPA_MSGTYPE_CTI))->toXML(), $schema);
    echo $schema[1];
} else {
    echo run_case((int) $_GET['case']);
}
