<?php

declare(strict_types=1);

/* Why a file cannot be read as a table. */

return [
    'empty' => 'Die Datei ist leer: Es fehlt eine Zeile mit Überschriften wie Empfänger, IBAN, Betrag, Verwendungszweck.',
    'headings' => 'Überschriften wie IBAN und Betrag fehlen in der ersten Zeile: „{first}“',
    'line' => '{file}: Eine Zeile hat mehr als ein Megabyte.',
    'no_heading' => 'Keine Spalte hat die Überschrift „{heading}“.',
    'quote' => '{file}, Zeile {row}: Ein Anführungszeichen ist nicht geschlossen, oder die Datei ist abgeschnitten.',
    'row' => '{file}, Zeile {row}: Die Zeile ist zu lang. Ist ein Anführungszeichen nicht geschlossen?',
    'same' => 'Zwei Spalten haben dieselbe Bedeutung: „{heading}“ und „{other}“.',
    'system' => '{file} kann nicht gelesen werden{reason, select, none {} other {: {reason}}}',
    'utf16' => '{file} ist in UTF-16: Speichern Sie die Tabelle als „CSV UTF-8“.',
    'workbook' => '{file} ist eine Arbeitsmappe: Speichern Sie das Blatt als „CSV UTF-8“.',
];
