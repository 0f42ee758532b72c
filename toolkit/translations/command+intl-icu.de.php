<?php

declare(strict_types=1);

/* What the command sepa says: its help, what it tells beside rows, and why it gives up. */

return [
    'argument' => [
        'statements' => 'Was die Bank liefert: Dateien, ZIP-Archive, Ordner; - für die Standardeingabe',
        'reports' => 'Statusberichte: Dateien, ZIP-Archive, Ordner; - für die Standardeingabe',
        'table' => 'CSV-Datei mit einer Zeile Überschriften; - für die Standardeingabe',
        'values' => 'Was nachzusehen ist: {names}; ohne Angabe wird CSV von der Standardeingabe gelesen',
    ],
    'option' => [
        'german-csv' => 'CSV schreiben, das eine deutsche Tabellenkalkulation mit einem Doppelklick öffnet',
        'payments' => 'Die Zahlungsdatei, die an die Bank ging (pain.001, pain.008)',
        'address' => 'Teil Ihrer Adresse, zum Beispiel addrTown=Oldenburg',
        'ansi' => 'Mit oder ohne Farben',
        'at' => 'Zeitpunkt von Echtzeitüberweisungen, zum Beispiel 2026-12-01T10:00:00+01:00',
        'bic' => 'BIC Ihrer Bank; sonst wird er zur IBAN gesucht',
        'category' => 'Wofür alle Zahlungen sind, zum Beispiel SALA für Gehälter',
        'column' => 'Überschrift der Spalte mit {names}; ohne Angabe wird sie gesucht',
        'creditor-id' => 'Ihre Gläubiger-Identifikationsnummer',
        'csv' => 'CSV schreiben',
        'currency' => 'Währung Ihres Kontos, wenn die Bank sie verlangt, zum Beispiel EUR',
        'date' => 'Tag für Zeilen ohne Datum, zum Beispiel 2026-12-31 (mit --german auch 31.12.2026); sonst heute',
        'german' => 'Beträge wie 1.190,00 und Tage wie 31.12.2026 lesen',
        'help' => 'Diese Hilfe zeigen',
        'hybrid' => 'Unter DE-3.7 Adresszeilen neben Ort und Land; ältere Schemata lehnen sie ab',
        'iban' => 'Ihre IBAN',
        'ignore' => 'Überschrift einer Spalte, die nicht für die Bank ist',
        'instant' => 'Echtzeitüberweisungen, in Sekunden ausgeführt',
        'json' => 'Ein JSON-Objekt je Zeile schreiben',
        'lang' => 'Sprache der Texte, de oder en; sonst die der Umgebung (LC_ALL, LC_MESSAGES, LANG)',
        'map' => 'Was eine Spalte ist: "Überschrift=Schlüssel"',
        'message-id' => 'Nachrichten-Id, höchstens 30 Zeichen; sonst wird eine erzeugt',
        'name' => 'Ihr Name',
        'no-bic' => 'NOTPROVIDED schreiben, statt Ihren BIC zu suchen',
        'no-headings' => 'CSV ohne die Zeile mit Überschriften schreiben',
        'no-interaction' => 'Nichts fragen, was immer so ist',
        'output' => 'Datei für die Zahlungen; sonst die Standardausgabe',
        'priority' => 'HIGH oder NORM, wie mit der Bank vereinbart',
        'quiet' => 'Nichts sagen',
        'raw' => 'CSV ohne das Hochkomma vor Texten schreiben, die wie Formeln aussehen',
        'rulebook' => 'DE-2.6, DE-2.7, DE-2.8, DE-2.9, DE-3.0, DE-3.1, DE-3.5, DE-3.7, AT-6 oder NL-6',
        'seq' => 'Sequenz der Zeilen ohne eigene: FRST, RCUR, FNAL oder OOFF',
        'shorten' => 'Zu lange Namen und Texte kürzen und es sagen; Ids nie',
        'single-booking' => 'Eine Buchung je Zahlung statt einer für alle',
        'template' => 'Nur eine Beispieltabelle für den Anfang schreiben',
        'transliterate' => 'Nicht erlaubte Zeichen ersetzen und es sagen; in Ids nie',
        'type' => 'CORE, COR1 oder B2B',
        'verbose' => 'Mehr von Fehlern des Programms sagen',
        'version' => 'Die Version dieses Programms zeigen',
    ],
    'check' => [
        'about' => 'Prüft IBANs und nennt ihre Banken',
        'help' => <<<'HELP'
            Prüft Land, Länge, Aufbau und Prüfziffer, bei deutschen IBANs auch Bankleitzahl
            und Kontonummer. IBANs werden so verstanden, wie man sie tippt.

              <info>sepa check "DE89 3704 0044 0532 0130 00"</info>
              <info>sepa check --csv <kunden.csv >geprueft.csv</info>
              <info>sepa check --json --column "Konto 2" <kunden.csv</info>

            Ende mit 0, wenn alle gültig sind, 1, wenn einige es nicht sind, 2, wenn nichts zu lesen war.
            HELP,
    ],
    'convert' => [
        'about' => 'Macht aus deutschen Kontonummern und Bankleitzahlen IBANs',
        'help' => <<<'HELP'
            Rechnet nach den Regeln der Banken um. Angaben und Spalten gehören paarweise
            zusammen: Kontonummer und Bankleitzahl.

              <info>sepa convert 532013000 37040044</info>
              <info>sepa convert --csv <alte-konten.csv >ibans.csv</info>
              <info>sepa convert --json --column Kto --column Bank <alte-konten.csv</info>

            Ende mit 0, wenn es alle IBANs gibt, 1, wenn einige fehlen, 2, wenn nichts zu lesen war.
            HELP,
    ],
    'bank' => [
        'about' => 'Sucht Banken nach BIC, IBAN oder deutscher Bankleitzahl',
        'help' => <<<'HELP'
            Nennt BIC, Namen und Verfahren einer Bank: SCT Überweisung, SDD Lastschrift,
            B2B Firmenlastschrift.

              <info>sepa bank COBADEFF 37040044 "DE89 3704 0044 0532 0130 00"</info>
              <info>sepa bank --csv <bics.csv >banken.csv</info>

            Ende mit 0, wenn alle gefunden sind, 1, wenn einige fehlen, 2, wenn nichts zu lesen war.
            HELP,
    ],
    'transfer' => [
        'about' => 'Macht aus einer CSV-Datei Überweisungen für die Bank',
        'help' => <<<'HELP'
            Die Überschriften sind übliche deutsche oder englische Wörter (Empfänger, IBAN,
            Betrag, Verwendungszweck, Datum, ...) oder die Schlüssel name, iban, bic, amount,
            ref, date, id, purp, addrTown, ... Aus Kontonummer und Bankleitzahl in zwei Spalten
            werden IBANs. Spalten für eigene IBAN, Echtzeit, Kategorie und Priorität verteilen
            die Zeilen auf mehrere Dateien. Alle Zeilen werden geprüft; gibt es Fehler, werden
            sie genannt und keine Datei geschrieben.

              <info>sepa transfer --template --german >zahlungen.csv</info>
              <info>sepa transfer zahlungen.csv --german --name "Zimmerei Sander GmbH" \
                  --iban DE89370400440532013000 -o zahlungen.xml</info>

            Ende mit 0, wenn die Datei geschrieben ist, 1, wenn Zeilen Fehler haben, 2, wenn der
            Aufruf oder die Tabelle nicht stimmt.
            HELP,
    ],
    'debit' => [
        'about' => 'Macht aus einer CSV-Datei Lastschriften für die Bank',
        'help' => <<<'HELP'
            Die Überschriften sind übliche deutsche oder englische Wörter (Zahlungspflichtiger,
            IBAN, Betrag, Mandatsreferenz, Mandatsdatum, Sequenz, ...) oder die Schlüssel name,
            iban, amount, mref, mdate, seq, ref, date, id, ... Alle Zeilen werden geprüft; gibt es
            Fehler, werden sie genannt und keine Datei geschrieben.

              <info>sepa debit --template --german >mitglieder.csv</info>
              <info>sepa debit mitglieder.csv --german --name "Turnverein 1862 e.V." \
                  --iban DE89370400440532013000 --creditor-id DE98ZZZ09999999999 -o dezember.xml</info>

            Ende mit 0, wenn die Datei geschrieben ist, 1, wenn Zeilen Fehler haben, 2, wenn der
            Aufruf oder die Tabelle nicht stimmt.
            HELP,
    ],
    'key' => [
        'and' => ' und ',
        'iban' => 'IBAN',
        'account' => 'Kontonummer',
        'bank_code' => 'Bankleitzahl',
        'query' => 'BIC, IBAN oder Bankleitzahl',
    ],
    'statement' => [
        'about' => 'Liest Kontoauszüge (CAMT, MT940)',
        'help' => <<<'HELP'
            Zeigt Umsätze und Salden, was in den Dateien berichtigt wurde, und ob Anfangssaldo
            und Umsätze den Endsaldo ergeben. CSV hat eine Zeile je Umsatz, JSON eine je Auszug.

              <info>sepa statement november.zip</info>
              <info>sepa statement --german november.zip >umsaetze.csv</info>
              <info>sepa statement --csv auszuege/ oktober.sta >umsaetze.csv</info>
              <info>sepa statement --json november.zip | jq "select(.balanced | not) | .difference"</info>

            CAMT (camt.052, 053, 054), MT940 und MT942 werden am Inhalt erkannt, nicht am Namen
            der Datei. Umsätze, die eine Bank nur ankündigt, stehen in keinem CSV.

            Rückgabe: 0, wenn alles aufgeht oder keine Salden hat, die es belegen könnten; 1, wenn
            etwas nicht aufgeht oder nicht lesbar war; 2, wenn in einer Datei kein Auszug ist.
            HELP,
        'number' => 'Nr. {number}',
        'opening' => 'Anfangssaldo',
        'closing' => 'Endsaldo',
        'announced' => 'angekündigt, nicht gebucht',
        'off' => 'GEHT NICHT AUF, Unterschied {amount}',
        'not_balanced' => 'GEHT NICHT AUF',
        'payments' => '{count} Zahlungen',
        'reversal' => '{amount} (Storno)',
        'times' => '{count}-mal',
        'kind' => ['fault' => 'Fehler', 'note' => 'Hinweis', 'mended' => 'berichtigt'],
        'formats' => 'entweder --german oder --json',
    ],
    'status' => [
        'about' => 'Liest, was eine Bank über Zahlungen meldet (pain.002)',
        'help' => <<<'HELP'
            Zeigt, was aus jeder Zahlung wurde und warum: abgelehnt, ausgeführt, oder dass der Name
            des Empfängers nicht der des Kontos ist. Mit der Datei, die an die Bank ging, steht jede
            Zahlung darin da, in ihrer Reihenfolge, auch wenn kein Bericht sie nennt.

              <info>sepa status bericht.zip</info>
              <info>sepa status bericht.xml --payments zahlungen.xml</info>
              <info>sepa status --csv bericht.xml >ergebnisse.csv</info>

            Was kein Bericht nennt, ist damit nicht angenommen: Die meisten Banken melden nur,
            was sie ablehnen.

            Rückgabe: 0, wenn nichts abgelehnt ist und alle Namen stimmen; 1, wenn etwas abgelehnt
            ist, ein Name abweicht oder ein Bericht beschädigt ist; 2, wenn eine Datei keinen
            Bericht enthält.
            HELP,
        'none' => 'nichts gemeldet',
        'other_file' => 'Der Bericht betrifft die Nachricht {original}, nicht {message} aus --payments.',
        'not_sent' => 'Zahlungen in Berichten, die in der Zahlungsdatei nicht oder nicht eindeutig zu finden sind: {count}',
        'summary' => 'gemeldete Zahlungen: {count}, abgelehnt: {refused}, Name abweichend: {names}',
        'head' => 'Bericht {id} über {original}',
        'at_bank' => 'bei der Bank: {name}',
        'cut' => '{file}: Der Bericht bricht ab: Darin können Zahlungen fehlen.',
    ],
    'column' => [
        'booked' => 'gebucht',
        'name' => 'Name',
        'for' => 'Zweck',
        'amount' => 'Betrag',
        'balance' => 'Saldo',
        'payment' => 'Zahlung',
        'IBAN' => 'IBAN',
        'BIC' => 'BIC',
        'valid' => 'gültig',
        'bank or reason' => 'Bank oder Grund',
        'account' => 'Konto',
        'bank code' => 'Bankleitzahl',
        'status' => 'Status',
        'remark' => 'Bemerkung',
        'asked for' => 'gefragt',
        'schemes' => 'Verfahren',
        'severity' => 'Art',
        'row' => 'Zeile',
        'column' => 'Spalte',
        'reason' => 'Grund',
        'hint' => 'Abhilfe',
    ],
    'answer' => ['yes' => 'ja', 'no' => 'nein'],
    'severity' => ['fault' => 'Fehler', 'warning' => 'Warnung', 'change' => 'Änderung'],
    'told' => [
        'done' => '{file, select, none {} other {{file}: }}Zahlungen: {payments}, {sum} EUR, Format {rulebook}, Nachricht {message}',
        'more' => 'und {more, number} weitere; --json nennt alle',
        'refused' => 'Zahlungen: {payments}, Fehler: {faults}; es wurde keine Datei geschrieben',
        'replaced' => '{file} gab es schon; die Datei ist ersetzt.'
            . '{new, select, yes { Die Nachrichten-Id ist neu: Für die Bank ist es ein anderer Auftrag.} other {}}',
        'rows' => 'Zeilen: {rows}, abgelehnt: {refused}',
        'type' => 'Je Zeile eine Angabe; Strg-D beendet.',
        'suggest' => [
            'german' => '--german liest Beträge wie 1.190,00 und Tage wie 31.12.2026.',
            'ignore' => '--ignore "Überschrift" lässt eine Spalte weg, die nicht für die Bank ist.',
            'map' => '--map "Überschrift=Schlüssel" sagt, was eine Spalte ist, zum Beispiel --map "Endsumme=amount".',
            'seq' => '--seq FRST (oder RCUR, FNAL, OOFF) gilt für alle Zeilen ohne Sequenz.',
            'shorten' => '--shorten kürzt zu lange Namen und Texte.',
            'transliterate' => '--transliterate ersetzt in Namen und Texten, was nicht erlaubt ist.',
        ],
    ],
    'symfony' => [
        'Description:' => 'Beschreibung:',
        'Usage:' => 'Aufruf:',
        'Arguments:' => 'Angaben:',
        'Options:' => 'Optionen:',
        'Help:' => 'Hilfe:',
        'Available commands:' => 'Befehle:',
        '[default: ' => '[sonst: ',
        '[options]' => '[Optionen]',
        '[arguments]' => '[Angaben]',
        '(multiple values allowed)' => '(mehrmals möglich)',
        'Display help for a command' => 'Zeigt die Hilfe zu einem Befehl',
        'List commands' => 'Zeigt alle Befehle',
        'Dump the shell completion script' => 'Schreibt das Skript, mit dem die Shell ergänzt',
    ],
    'usage' => [
        'arguments' => 'Für „{what}“ ist zu viel angegeben. Was Leerzeichen enthält, steht in Anführungszeichen.',
        'command' => 'Den Befehl „{what}“ gibt es nicht.{alternatives, select, none { sepa list zeigt alle.}'
            . ' other { Ist das gemeint: {alternatives}?}}',
        'option' => 'Die Option „{what}“ gibt es nicht. Jeder Befehl nennt seine: sepa help BEFEHL',
        'option_no_value' => 'Die Option {what} hat keinen Wert.',
        'option_value' => 'Die Option {what} braucht einen Wert.',
    ],
    'failure' => [
        'address' => '--address braucht Schlüssel=Wert, nicht „{value}“. Die Schlüssel sind: {keys}',
        'cannot_read' => '{file} kann nicht gelesen werden{reason, select, none {} other {: {reason}}}',
        'cannot_write' => '{file} kann nicht geschrieben werden{reason, select, none {} other {: {reason}}}',
        'cannot_write_output' => 'Die Ausgabe kann nicht geschrieben werden{reason, select, none {} other {: {reason}}}',
        'formats' => 'entweder --csv oder --json',
        'is_file' => '{file} ist der Name einer Datei. Eine Datei wird so gelesen: sepa {command} <{file}',
        'links' => '{file} kann nicht geschrieben werden: Die Verweise enden nirgends',
        'many' => 'Es sind {documents} Dateien: --output braucht einen Namen, jede bekommt eine Nummer dazu',
        'map' => '--map braucht "Überschrift=Schlüssel", nicht „{value}“. Die Schlüssel sind: {keys}',
        'missing' => 'Es fehlt: {options}',
        'no_column' => 'Keine Spalte für {names}: Nennen Sie sie mit --column. In der ersten Zeile steht: „{headings}“',
        'no_file' => 'Welche Tabelle? sepa {command} zahlungen.csv --name ... - oder sepa {command} --template für den Anfang',
        'no_output' => '--output braucht den Namen einer Datei',
        'pairs' => 'Das gehört zusammen: {names}',
        'same_file' => '{file} ist die Tabelle selbst: Geben Sie der Ausgabe einen anderen Namen',
        'value' => '{option} kann nicht „{value}“ sein. Möglich sind {values}',
    ],
];
