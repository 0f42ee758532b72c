<?php

declare(strict_types=1);

/* What the system says of files, by its own words. */

return [
    'Disk quota exceeded' => 'Der zugeteilte Platz ist aufgebraucht',
    'File name too long' => 'Der Name ist zu lang',
    'File too large' => 'Die Datei wird zu groß',
    'Input/output error' => 'Fehler des Datenträgers',
    'Is a directory' => 'Das ist ein Ordner',
    'No space left on device' => 'Der Datenträger ist voll',
    'No such file or directory' => 'Es gibt sie nicht',
    'Not a directory' => 'Ein Teil des Pfads ist kein Ordner',
    'Operation not permitted' => 'nicht erlaubt',
    'Permission denied' => 'Zugriff verweigert',
    'Read-only file system' => 'Der Datenträger ist schreibgeschützt',
    'Stale file handle' => 'Das Netzlaufwerk ist nicht mehr verbunden',
    'Too many levels of symbolic links' => 'Die Verweise drehen sich im Kreis',
];
