<?php

declare(strict_types=1);

/* What is wrong or odd in payments, by code: the reason and what to do about it. */

return [
    'account_currency' => [
        'reason' => 'Keine gültige Währung: {value}',
        'hint' => 'Drei Großbuchstaben, zum Beispiel EUR.',
    ],
    'account_differs' => [
        'reason' => 'Aus Kontonummer {account} und Bankleitzahl {bank_code} macht die Bank {to}',
        'hint' => 'Es gilt die IBAN der Zeile. Gehören beide zum selben Konto?',
    ],
    'address' => [
        'reason' => '{label} fehlt',
        'hint' => 'Zu einer Adresse gehören wenigstens Ort und Land, zum Beispiel Zürich und CH.',
    ],
    'address_country_alone' => [
        'reason' => 'Ein Land ohne Adresszeile',
        'hint' => 'Österreichische Schemata lehnen das ab: Geben Sie eine Adresszeile an, oder lassen Sie das Land weg.',
    ],
    'address_hybrid' => [
        'reason' => '{label} neben Adresszeilen',
        'hint' => 'Neben Zeilen stehen nur Ort, Land und Postleitzahl: Schreiben Sie Straße und Hausnummer in die Zeilen, oder alles in Felder.',
    ],
    'address_line' => [
        'reason' => 'Bei Banken außerhalb des EWR wird die Adresse gebraucht',
        'hint' => 'Geben Sie in Adresszeile 1 die Adresse an.',
    ],
    'address_lines' => [
        'reason' => 'Eine Adresse nur aus Zeilen',
        'hint' => 'Seit dem {date} lehnen Banken solche Adressen ab: Geben Sie unter DE-3.7 Straße, Ort und Land an, oder lassen Sie die Adresse weg.',
    ],
    'amount' => [
        'reason' => 'Kein gültiger Betrag',
        'hint' => '{german, select, yes {Schreiben Sie zum Beispiel 1.190,00 oder 1190.}'
            . ' other {Schreiben Sie zum Beispiel 1190.00, mit Punkt und ohne Tausenderzeichen.}}',
    ],
    'amount_limit' => [
        'reason' => 'Der Betrag liegt über {limit}',
        'hint' => 'Möglich sind höchstens {limit}: Teilen Sie die Zahlung.',
    ],
    'amount_zero' => [
        'reason' => 'Der Betrag ist nicht größer als null',
        'hint' => 'Lassen Sie weg, was nicht gezahlt werden soll.',
    ],
    'bic' => [
        'reason' => 'Kein gültiger BIC: {value}',
        'hint' => 'Ein BIC hat 8 oder 11 Buchstaben und Ziffern, zum Beispiel COBADEFFXXX. Er steht auf der Rechnung oder dem Kontoauszug.',
    ],
    'bic_dropped' => [
        'reason' => '„{value}“ ist kein BIC und wurde weggelassen',
        'hint' => 'Es sagt, dass es keinen gibt.',
    ],
    'bic_other_bank' => [
        'reason' => 'Der BIC {value} ist nicht der der Bank der IBAN, {known}',
        'hint' => 'Lassen Sie den BIC weg: Die Bank findet sich über die IBAN.',
    ],
    'bic_other_country' => [
        'reason' => 'Ein BIC aus {bank} zu einer IBAN aus {country}',
        'hint' => 'Lassen Sie den BIC weg: Die Bank findet sich über die IBAN.',
    ],
    'blank' => '(Leerzeichen)',
    'cells' => [
        'reason' => '{cells} Felder unter {headings} Überschriften',
        'hint' => 'Die Zeile hat mehr oder weniger Felder als die Überschriften. Fehlt ein Anführungszeichen, oder ist die Datei abgeschnitten?',
    ],
    'characters' => [
        'reason' => '{characters, select, none {Nicht erlaubte Zeichen} other {Nicht erlaubt: {characters}}}',
        'hint' => '{form, select, text {Ersetzen Sie das Zeichen, oder lassen Sie es ersetzen.} other {Ersetzen Sie das Zeichen.}}',
    ],
    'control_characters' => [
        'reason' => 'Unsichtbare Zeichen in „{label}“',
        'hint' => 'Ein Tabulator, ein Zeilenende oder ein anderes unsichtbares Zeichen steht darin: Geben Sie den Text neu ein.',
    ],
    'control_sum' => [
        'reason' => 'Die Summe der Beträge ist zu groß',
        'hint' => 'Teilen Sie die Zahlungen auf mehrere Dateien auf.',
    ],
    'conversion' => [
        'reason' => 'Keine IBAN zu Kontonummer {account} und Bankleitzahl {bank_code}: '
            . '{conversion, select, account {eine Kontonummer hat 1 bis 10 Ziffern} bank_code {eine Bankleitzahl hat 8 Ziffern}'
            . ' 10 {die Bankleitzahl ist unbekannt} 11 {die Kontonummer ist falsch}'
            . ' 12 {die Bank lässt für dieses Konto keine Umrechnung zu} other {die Bank lehnt das Konto ab}}',
        'hint' => 'Fragen Sie den Kontoinhaber nach der IBAN.',
    ],
    'converted' => [
        'reason' => 'Aus Kontonummer {account} und Bankleitzahl {bank_code} wird {to}'
            . '{conversion, select, 1 {, nach der Regel der Bank mit anderer Kontonummer}'
            . ' 13 {, mit der Bankleitzahl des Nachfolgers} 15 {, nach der Regel der Bank mit anderer Bankleitzahl} other {}}',
        'hint' => '',
    ],
    'cor1_national' => [
        'reason' => 'COR1 im Format {rulebook}',
        'hint' => 'COR1 gibt es seit November 2016 nicht mehr: Fragen Sie die Bank, oder nehmen Sie CORE.',
    ],
    'country' => [
        'reason' => 'Kein gültiges Länderkürzel: {value}',
        'hint' => 'Zwei Großbuchstaben, zum Beispiel DE.',
    ],
    'creditor_id' => [
        'reason' => 'Keine gültige Gläubiger-ID',
        'hint' => 'Die Gläubiger-ID steht im Schreiben der Bundesbank, zum Beispiel DE98ZZZ09999999999.',
    ],
    'currency' => [
        'reason' => 'Nicht in Euro: {value}',
        'hint' => 'SEPA-Zahlungen lauten auf Euro. Andere Währungen gehen über das Online-Banking der Bank.',
    ],
    'date' => [
        'reason' => 'Dieses Datum gibt es nicht: {value}',
        'hint' => 'Schreiben Sie zum Beispiel {german, select, yes {31.12.2026} other {2026-12-31}}.',
    ],
    'date_far' => [
        'reason' => 'Bis zum {date} ist es mehr als ein Jahr',
        'hint' => 'Stimmt das Jahr?',
    ],
    'date_order' => [
        'reason' => 'Das Mandat vom {signed} ist jünger als der Einzug am {date}',
        'hint' => 'Ein Mandat wird vor dem Einzug unterschrieben: Stimmen beide Daten?',
    ],
    'date_past' => [
        'reason' => 'Der {date} ist vergangen',
        'hint' => 'Die Bank nimmt den nächstmöglichen Tag. Stimmt das Datum?',
    ],
    'duplicate_id' => [
        'reason' => 'Ende-zu-Ende-Id wie in Zeile {row}',
        'hint' => 'Auf dem Kontoauszug sind die beiden nicht zu unterscheiden.',
    ],
    'duplicate_key' => [
        'reason' => '„{label}“ ist doppelt angegeben',
        'hint' => 'Geben Sie es einmal an; auf Groß- und Kleinschreibung kommt es nicht an.',
    ],
    'duplicate_payment' => [
        'reason' => 'Konto und Betrag wie in Zeile {row}',
        'hint' => 'Soll zweimal gezahlt werden?',
    ],
    'empty' => [
        'reason' => '{blanks, select, yes {„{label}“ enthält nur Leerzeichen} other {„{label}“ ist leer}}',
        'hint' => 'Lassen Sie das Feld leer, wenn nichts anzugeben ist.',
    ],
    'form_ends' => [
        'reason' => 'Dateien nach {rulebook} laufen aus',
        'hint' => 'Manche Banken lehnen sie nach dem {date} ab: Nehmen Sie DE-3.7, oder fragen Sie die Bank.',
    ],
    'iban' => [
        'reason' => 'Keine gültige IBAN',
        'hint' => 'Vergleichen Sie sie mit der Rechnung.',
    ],
    'iban_account' => [
        'reason' => 'Die Kontonummer in der IBAN ist falsch',
        'hint' => 'Die Kontonummer (die letzten zehn Ziffern) kann es bei dieser Bank nicht geben. Fragen Sie den Kontoinhaber.',
    ],
    'iban_bank' => [
        'reason' => 'Die Bankleitzahl in der IBAN ist unbekannt',
        'hint' => 'Die Bankleitzahl (Stellen 5 bis 12) steht nicht im Verzeichnis: ein Tippfehler, die Bank hat fusioniert,'
            . ' oder sie ist neuer als das Verzeichnis dieses Programms. Fragen Sie den Kontoinhaber.',
    ],
    'iban_checksum' => [
        'reason' => 'Die Prüfziffer der IBAN ist falsch',
        'hint' => 'Eine Ziffer ist falsch, oder zwei sind vertauscht: Vergleichen Sie die IBAN mit der Rechnung.',
    ],
    'iban_country' => [
        'reason' => 'Diese Buchstaben hat kein Land',
        'hint' => 'Eine IBAN beginnt mit den zwei Buchstaben ihres Landes, zum Beispiel DE. Fehlt vorn etwas?',
    ],
    'iban_country_outside' => [
        'reason' => 'Das Land gehört nicht zu SEPA oder hat keine IBAN',
        'hint' => 'Die Prüfziffer stimmt, mehr ist hier nicht bekannt. SEPA-Zahlungen dorthin gibt es nicht.',
    ],
    'iban_country_outside_checksum' => [
        'reason' => 'Das Land gehört nicht zu SEPA oder hat keine IBAN',
        'hint' => 'Auch die Prüfziffer ist falsch: Vergleichen Sie sie mit der Rechnung. SEPA-Zahlungen dorthin gibt es nicht.',
    ],
    'iban_country_unsupported' => [
        'reason' => 'Dieses SEPA-Land ist hier nicht bekannt',
        'hint' => 'Es kam später hinzu: Dieses Programm kann seine IBANs weder prüfen noch verwenden. Zahlen Sie im Online-Banking.',
    ],
    'iban_format' => [
        'reason' => 'Die IBAN ist nicht richtig aufgebaut',
        'hint' => 'Wo Ziffern stehen müssen, steht ein Buchstabe, oder umgekehrt: O und 0, I und 1?',
    ],
    'iban_length' => [
        'reason' => 'Die Länge der IBAN ist falsch',
        'hint' => 'Es fehlen Zeichen, oder es sind zu viele: Vergleichen Sie je vier mit der Rechnung.',
    ],
    'id' => [
        'reason' => '„{label}“ beginnt oder endet mit einem Schrägstrich oder enthält zwei hintereinander',
        'hint' => 'Schrägstriche dürfen nur einzeln und nicht am Rand stehen.',
    ],
    'instant_outside_eea' => [
        'reason' => 'Eine Echtzeitüberweisung an eine Bank außerhalb des EWR',
        'hint' => 'Solche Banken müssen Echtzeitüberweisungen nicht annehmen, und viele tun es nicht: Die Bank kann sie ablehnen.',
    ],
    'instant_priority' => [
        'reason' => 'Eine Priorität bei Echtzeitüberweisungen',
        'hint' => 'Echtzeitüberweisungen haben keine: Lassen Sie sie weg.',
    ],
    'length' => [
        'reason' => '{length, plural, =0 {„{label}“ fehlt}'
            . ' other {„{label}“ ist um {over, plural, one {ein Byte} other {# Byte}} zu lang, möglich sind {limit}}}',
        'hint' => '{length, plural, =0 {Bitte ausfüllen.}'
            . ' other {Umlaute zählen doppelt.{cut, select, none {} other { So würde es passen: „{cut}“}}}}',
    ],
    'length_characters' => [
        'reason' => '{label} ist zu lang: {length, plural, other {#}} Zeichen, möglich sind {limit}',
        'hint' => '{over, plural, one {Ein Zeichen} other {# Zeichen}} zu viel.'
            . '{cut, select, none {} other { So würde es passen: „{cut}“}}',
    ],
    'local_instrument' => [
        'reason' => '{value} gibt es im Format {rulebook} nicht',
        'hint' => 'CORE, oder B2B mit Unternehmen; COR1 nur in DE-2.7 bis DE-2.9, AT-6 und NL-6.',
    ],
    'memory' => [
        'reason' => 'Der Arbeitsspeicher reicht nicht',
        'hint' => 'Teilen Sie die Zahlungen auf mehrere Dateien auf.',
    ],
    'message_id' => [
        'reason' => 'Keine gültige Nachrichten-Id (1 bis {limit} Zeichen)',
        'hint' => "Höchstens {limit} Zeichen: Buchstaben, Ziffern, Leerzeichen und '' ( ) + , - . / : ?",
    ],
    'missing' => [
        'reason' => '{label} fehlt',
        'hint' => '{key, select, seq {FRST für den ersten Einzug eines Mandats, RCUR für weitere, FNAL für den letzten,'
            . ' OOFF für einen einmaligen.} other {Bitte ausfüllen.}}',
    ],
    'missing_column' => [
        'reason' => 'Keine Spalte für {label}',
        'hint' => 'Jede Zeile braucht sie. Ist sie anders überschrieben?{key, select, seq { Möglich sind FRST für den ersten Einzug'
            . ' eines Mandats, RCUR für weitere, FNAL für den letzten, OOFF für einen einmaligen.} other {}}',
    ],
    'no_bank_day' => [
        'reason' => 'Der {date} ist {day, select, saturday {ein Samstag} sunday {ein Sonntag} other {ein Bankfeiertag ({day, select,'
            . ' new_year {Neujahr} labour_day {1. Mai} christmas {1. Weihnachtstag} december_26 {2. Weihnachtstag}'
            . ' good_friday {Karfreitag} other {Ostermontag}})}}',
        'hint' => 'Die Bank nimmt den nächstmöglichen Tag.',
    ],
    'no_line_end' => [
        'reason' => 'Die letzte Zeile ist nicht abgeschlossen',
        'hint' => 'Die Datei kann in der letzten Zeile abgeschnitten sein: Vergleichen Sie die letzte Zahlung und die Summe.',
    ],
    'no_payments' => [
        'reason' => 'Es sind keine Zahlungen angegeben',
        'hint' => 'Geben Sie mindestens eine Zahlung ein.',
    ],
    'not_in_debits' => [
        'reason' => '{label}: nicht bei Lastschriften',
        'hint' => 'Das gibt es nur bei Überweisungen.',
    ],
    'not_in_rulebook' => [
        'reason' => '{label}: nicht unter {rulebook}',
        'hint' => 'In einer Datei nach diesem Regelwerk lässt es sich nicht sagen: Nehmen Sie DE-3.7, oder lassen Sie es weg.',
    ],
    'notice' => [
        'reason' => 'Der {date} ist für eine Lastschrift zu früh',
        'hint' => 'Die Bank braucht einen Bankarbeitstag: Der früheste Tag ist der {earliest}.',
    ],
    'other' => [
        'reason' => 'Abgewiesen',
        'hint' => 'Näheres steht in der Beschreibung der Felder.',
    ],
    'own_outside_eea' => [
        'reason' => 'Ihr Konto liegt außerhalb des EWR',
        'hint' => 'Banken verlangen dann die Adresse jedes Zahlungspflichtigen.',
    ],
    'priority' => [
        'reason' => 'Keine gültige Priorität: {value}',
        'hint' => 'HIGH oder NORM.',
    ],
    'purpose' => [
        'reason' => 'Kein gültiger Zweckcode',
        'hint' => 'Vier Großbuchstaben der ISO-Liste, zum Beispiel SALA für Gehälter.',
    ],
    'purpose_national' => [
        'reason' => 'Der Zweck {value} ist unter {rulebook} nicht möglich',
        'hint' => 'Die ältere Liste der österreichischen Schemata hat ihn nicht.',
    ],
    'purpose_unknown' => [
        'reason' => 'Unbekannter Zweck: {value}',
        'hint' => 'Die Liste von ISO 20022 aus dem Jahr 2023 hat ihn nicht: Ist er richtig geschrieben?',
    ],
    'reference' => [
        'reason' => 'Keine gültige strukturierte Referenz: {value}',
        'hint' => 'Sie beginnt mit RF und zwei Prüfziffern, zum Beispiel RF18539007547034. Vergleichen Sie sie mit der Rechnung.',
    ],
    'reference_twice' => [
        'reason' => 'Verwendungszweck und strukturierte Referenz zugleich',
        'hint' => 'Eine Zahlung hat das eine oder das andere.',
    ],
    'rulebook' => [
        'reason' => 'Im Format {rulebook} wird die Adresse in {structured, select, yes {einzelnen Feldern} other {Zeilen}} angegeben',
        'hint' => '{structured, select, yes {Nehmen Sie Straße, Hausnummer, Postleitzahl, Ort und Land.}'
            . ' other {Nehmen Sie Adresszeile 1, Adresszeile 2 und Land.}}',
    ],
    'sequence' => [
        'reason' => 'Unbekannte Sequenz: {value}',
        'hint' => 'FRST für den ersten Einzug eines Mandats, RCUR für weitere, FNAL für den letzten, OOFF für einen einmaligen.',
    ],
    'shortened' => [
        'reason' => 'Aus „{from}“ wird „{to}“',
        'hint' => '',
    ],
    'smnda' => [
        'reason' => 'Kein gültiger Wert für SMNDA: {value}',
        'hint' => '1, oder leer lassen.',
    ],
    'smnda_national' => [
        'reason' => 'SMNDA im Format {rulebook}',
        'hint' => 'Das Kennzeichen wird wie vor November 2016 geschrieben, was heutige Formate nicht annehmen: Fragen Sie die Bank.',
    ],
    'smnda_sequence' => [
        'reason' => 'SMNDA mit {sequence} im Format {rulebook}',
        'hint' => 'Vor DE-3.0 ist der erste Einzug nach einem Bankwechsel FRST.',
    ],
    'spreadsheet_error' => [
        'reason' => 'Ein Fehler der Tabelle oder eine Formel: {value}',
        'hint' => 'Berichtigen Sie die Zelle dort und speichern Sie neu, mit Werten statt Formeln; ### ist eine zu schmale Spalte.',
    ],
    'time' => [
        'reason' => 'Kein gültiger Zeitpunkt: {value}',
        'hint' => 'Schreiben Sie 2026-12-01T10:00:00+01:00, mit der Abweichung von UTC.',
    ],
    'time_not_instant' => [
        'reason' => 'Ein Ausführungszeitpunkt ohne Echtzeitüberweisung',
        'hint' => 'Nur Echtzeitüberweisungen werden zu einem Zeitpunkt ausgeführt: Verlangen Sie auch diese, oder geben Sie einen Tag an.',
    ],
    'time_other_day' => [
        'reason' => 'Ein anderer Tag als der von {time}',
        'hint' => 'Der Ausführungszeitpunkt gilt für alle Zahlungen: Lassen Sie den Tag weg.',
    ],
    'title_lines' => [
        'reason' => '{lines, plural, one {Eine Zeile} other {# Zeilen}} vor den Überschriften übergangen, ab „{text}“',
        'hint' => '',
    ],
    'too_many_blocks' => [
        'reason' => 'Die Nachrichten-Id ist zu lang für so viele Ausführungstage',
        'hint' => 'Nehmen Sie eine kürzere Nachrichten-Id oder weniger verschiedene Tage.',
    ],
    'transliterated' => [
        'reason' => 'Aus „{from}“ wird „{to}“',
        'hint' => '',
    ],
    'type' => [
        'reason' => 'Für „{label}“ ist weder Text noch Zahl angegeben ({type})',
        'hint' => 'Geben Sie einen Text oder eine Zahl an.',
    ],
    'unknown_heading' => [
        'reason' => 'Unbekannte Überschrift „{key}“',
        'hint' => 'Ist sie richtig geschrieben? Eine Spalte, die nicht für die Bank ist, kann weggelassen werden. Bekannt sind: {keys}.',
    ],
    'unknown_key' => [
        'reason' => 'Unbekannte Angabe „{key}“',
        'hint' => 'Ist sie richtig geschrieben? Bekannt sind: {keys}.',
    ],
    'utf8' => [
        'reason' => '„{label}“ ist nicht in UTF-8',
        'hint' => 'Speichern Sie die Datei als „CSV UTF-8“.',
    ],
    'yes_or_no' => [
        'reason' => 'Weder ja noch nein: {value}',
        'hint' => 'Schreiben Sie ja oder nein; ohne Angabe gilt, was für alle gilt.',
    ],
];
