<?php
/* One request: ?case=N, ?peek for the rulebook that this process has kept, or
   ?zone for its hours ahead of UTC. Tells the process first. */
require __DIR__ . '/cases.php';

echo getmypid(), "\n";
if (isset($_GET['zone'])) {
    echo hours_ahead();
} else {
    echo isset($_GET['peek']) ? kept_rulebook() : run_case((int) $_GET['case']);
}
