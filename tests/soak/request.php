<?php
/* One request: ?case=N, or ?peek for the rulebook that this process has kept. Tells the process first. */
require __DIR__ . '/cases.php';

echo getmypid(), "\n", isset($_GET['peek']) ? kept_rulebook() : run_case((int) $_GET['case']);
