<?php

declare(strict_types=1);

/* What the system says of files, in its own words. */

return [
    'Disk quota exceeded' => 'Disk quota exceeded',
    'File name too long' => 'File name too long',
    'File too large' => 'File too large',
    'Input/output error' => 'Input/output error',
    'Is a directory' => 'Is a directory',
    'No space left on device' => 'No space left on device',
    'No such file or directory' => 'No such file or directory',
    'Not a directory' => 'Not a directory',
    'Operation not permitted' => 'Operation not permitted',
    'Permission denied' => 'Permission denied',
    'Read-only file system' => 'Read-only file system',
    'Stale file handle' => 'Stale file handle',
    'Too many levels of symbolic links' => 'Too many levels of symbolic links',
];
