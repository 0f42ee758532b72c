<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Payment;

/** The keys of a payment, a row each: all that the toolkit knows of one is in its row. */
final class Keys
{
    /** Kinds of messages that have a key. */
    private const TRANSFER = [SEPA_MSGTYPE_CTI];

    private const DEBIT = [SEPA_MSGTYPE_DDI];

    private const BOTH = [SEPA_MSGTYPE_CTI, SEPA_MSGTYPE_DDI];

    /** Groups: keys of addresses come and go with the rulebook. */
    public const PAYMENT = 'payment';

    public const COUNTRY = 'country';

    public const LINES = 'lines';

    public const FIELDS = 'fields';

    /** Keys that the extension does not have: the toolkit writes them into the document. */
    public const ADDED = 'added';

    /** Keys that decide in which of several messages a payment is. */
    public const DOCUMENT = 'document';

    /** Forms of values. */
    public const TEXT = 'text';

    public const IBAN = 'iban';

    public const BIC = 'bic';

    public const AMOUNT = 'amount';

    public const DATE = 'date';

    public const ID = 'id';

    public const CODE = 'code';

    public const PURPOSE = 'purpose';

    public const CREDITOR = 'creditor';

    public const RF = 'rf';

    /**
     * Labels in English and German, kinds, group, form, limit in bytes (of
     * UTF-8, as the extension counts; of added keys in characters), and usual
     * headings of spreadsheets in the form of Csv\Headings::plain; label and key
     * are headings, too. In the order in which people expect columns.
     */
    private const ROWS = [
        'name' => ['Name', 'Name', self::BOTH, self::PAYMENT, self::TEXT, 70,
            'beguenstigterzahlungspflichtiger accountholder firma firmenname company companyname'],
        'iban' => ['IBAN', 'IBAN', self::BOTH, self::PAYMENT, self::IBAN, 34,
            'kontoiban accountiban ibannumber ibankontonummer kontonummeriban ibankonto ibannummer ibannr '
            . 'ibanoderkontonummer'],
        'amount' => ['Amount', 'Betrag', self::BOTH, self::PAYMENT, self::AMOUNT, 12,
            'betrageur betragineur betrageuro betragineuro summe zahlbetrag amounteur sum total '
            . 'rechnungsbetrag bruttobetrag gesamtbetrag endbetrag ueberweisungsbetrag einzugsbetrag '
            . 'lastschriftbetrag zuzahlen beitrag mitgliedsbeitrag jahresbeitrag invoiceamount grossamount'],
        'ref' => ['Reference', 'Verwendungszweck', self::BOTH, self::PAYMENT, self::TEXT, 140,
            'zweck buchungstext remittance remittanceinformation paymentreference details '
            . 'verwendungszweckzeile verwendung betreff zahlungsgrund remittanceinfo paymentdetails description'],
        'date' => ['Date', 'Datum', self::BOTH, self::PAYMENT, self::DATE, 10,
            'ausfuehrungsdatum ausfuehrung termin faelligkeit faelligkeitsdatum faelligam einzugsdatum duedate '
            . 'executiondate collectiondate paymentdate zahlungsdatum zahlungstermin ausfuehrungstermin '
            . 'ueberweisungsdatum '
            . 'faellig faelligzum einzugstermin abbuchungsdatum requestedexecutiondate'],
        'id' => ['End-to-end id', 'Ende-zu-Ende-Id', self::BOTH, self::PAYMENT, self::ID, 35,
            'endezuendereferenz e2eid endtoendreference kundenreferenz endtoendreferenz endezuenderef '
            . 'endtoendref e2ereferenz e2ereference'],
        'bic' => ['BIC', 'BIC', self::BOTH, self::PAYMENT, self::BIC, 11,
            'swift swiftcode biccode bicswift swiftbic bicswiftcode swiftbiccode swiftcodebic bicnummer'],
        'purp' => ['Purpose code', 'Zweckcode', self::BOTH, self::PAYMENT, self::PURPOSE, 4, 'purpose'],
        'rf' => ['Creditor reference', 'Strukturierte Referenz', self::BOTH, self::ADDED, self::RF, 25,
            'rfreferenz rfreference creditorreference structuredreference glaeubigerreferenz referenznummer'],
        'instr_id' => ['Instruction id', 'Auftrags-Id', self::BOTH, self::ADDED, self::ID, 35,
            'instrid auftragsreferenz'],
        'ultm_dbtr' => ['Ultimate debtor', 'Abweichender Zahler', self::BOTH, self::ADDED, self::TEXT, 70,
            'abweichenderzahlungspflichtiger abweichenderschuldner ultimatepayer'],
        'ultm_dbtr_id' => ['Id of the ultimate debtor', 'Id des abweichenden Zahlers', self::BOTH, self::ADDED,
            self::ID, 35, 'ultimatedebtorid'],
        'ultm_cdtr' => ['Ultimate creditor', 'Abweichender Empfänger', self::BOTH, self::ADDED, self::TEXT, 70,
            'abweichenderzahlungsempfaenger abweichenderglaeubiger ultimatepayee ultimatebeneficiary'],
        'ultm_cdtr_id' => ['Id of the ultimate creditor', 'Id des abweichenden Empfängers', self::BOTH, self::ADDED,
            self::ID, 35, 'ultimatecreditorid'],
        'seq' => ['Sequence type', 'Sequenz', self::DEBIT, self::PAYMENT, self::CODE, 4,
            'sequence sequenztyp sequenzart'],
        'mref' => ['Mandate reference', 'Mandatsreferenz', self::DEBIT, self::PAYMENT, self::ID, 35,
            'mandat mandatsref mandatsnummer mandate mandateid umr mandatsid mandatid mandatreferenz '
            . 'mandatsreferenznummer mandatsreferenznr mandatsnr mandatnummer'],
        'mdate' => ['Mandate signature date', 'Mandatsdatum', self::DEBIT, self::PAYMENT, self::DATE, 10,
            'mandatvom unterschriftsdatum unterschriebenam signed signedon signaturedate mandatedate '
            . 'dateofsignature datumderunterschrift unterschriftam unterschrieben datumdesmandats mandatdatum '
            . 'mandatsunterschrift mandatesigned dateofmandate mandatesignaturedate'],
        'old_mref' => ['Old mandate reference', 'Alte Mandatsreferenz', self::DEBIT, self::PAYMENT, self::ID, 35,
            'altesmandat oldmandate oldmandatereference'],
        'old_iban' => ['Old IBAN', 'Alte IBAN', self::DEBIT, self::PAYMENT, self::IBAN, 34, ''],
        'old_name' => ['Old creditor name', 'Alter Gläubigername', self::DEBIT, self::ADDED, self::TEXT, 70,
            'alternameglaeubiger oldname'],
        'old_creditor_id' => ['Old creditor identifier', 'Alte Gläubiger-Id', self::DEBIT, self::ADDED,
            self::CREDITOR, 35, 'alteglaeubigeridentifikationsnummer alteglaeubigerid oldcreditorid'],
        'smnda' => ['Other bank (SMNDA)', 'Andere Bank (SMNDA)', self::DEBIT, self::PAYMENT, self::CODE, 1, ''],
        'own_iban' => ['Own IBAN', 'Eigene IBAN', self::BOTH, self::DOCUMENT, self::IBAN, 34,
            'auftraggeberiban ibanauftraggeber ibandesauftraggebers auftraggeberkonto eigeneskonto ownaccount '
            . 'orderingaccount'],
        'type' => ['Kind of direct debit', 'Art der Lastschrift', self::DEBIT, self::DOCUMENT, self::CODE, 4,
            'lastschriftart localinstrument'],
        'instant' => ['Instant payment', 'Echtzeitüberweisung', self::TRANSFER, self::DOCUMENT, self::CODE, 8,
            'echtzeit echtzeitzahlung sofortueberweisung'],
        'category' => ['Category purpose', 'Kategorie', self::BOTH, self::DOCUMENT, self::PURPOSE, 4, 'categorycode'],
        'priority' => ['Priority', 'Priorität', self::TRANSFER, self::DOCUMENT, self::CODE, 4, 'dringlichkeit'],
        'addrStreet' => ['Street', 'Straße', self::BOTH, self::FIELDS, self::TEXT, 70, 'streetname'],
        'addrNum' => ['House number', 'Hausnummer', self::BOTH, self::FIELDS, self::TEXT, 16, 'hausnr buildingnumber'],
        'addrCode' => ['Postcode', 'Postleitzahl', self::BOTH, self::FIELDS, self::TEXT, 16,
            'plz postalcode zip zipcode'],
        'addrTown' => ['Town', 'Ort', self::BOTH, self::FIELDS, self::TEXT, 35, 'stadt wohnort city'],
        'addrCC' => ['Country', 'Land', self::BOTH, self::COUNTRY, self::CODE, 2, 'laendercode countrycode'],
        'addrLine1' => ['Address line 1', 'Adresszeile 1', self::BOTH, self::LINES, self::TEXT, 70,
            'adresse anschrift adresse1 address address1'],
        'addrLine2' => ['Address line 2', 'Adresszeile 2', self::BOTH, self::LINES, self::TEXT, 70,
            'adresse2 address2'],
        'addrDept' => ['Department', 'Abteilung', self::BOTH, self::FIELDS, self::TEXT, 70, ''],
        'addrSubDept' => ['Sub-department', 'Unterabteilung', self::BOTH, self::FIELDS, self::TEXT, 70, ''],
        'addrBldg' => ['Building', 'Gebäude', self::BOTH, self::FIELDS, self::TEXT, 35, ''],
        'addrFloor' => ['Floor', 'Etage', self::BOTH, self::FIELDS, self::TEXT, 70, ''],
        'addrPoBox' => ['PO box', 'Postfach', self::BOTH, self::FIELDS, self::TEXT, 16, ''],
        'addrRoom' => ['Room', 'Raum', self::BOTH, self::FIELDS, self::TEXT, 70, ''],
        'addrLoc' => ['Part of the town', 'Ortsteil', self::BOTH, self::FIELDS, self::TEXT, 35, ''],
        'addrDstrct' => ['District', 'Bezirk', self::BOTH, self::FIELDS, self::TEXT, 35, ''],
        'addrCtrySub' => ['State', 'Bundesland', self::BOTH, self::FIELDS, self::TEXT, 35, ''],
    ];

    /** What the submitting party and the message are asked for: labels, form and limit. */
    private const OWN = [
        'name' => ['Your name', 'Ihr Name', self::TEXT, 70],
        'iban' => ['Your IBAN', 'Ihre IBAN', self::IBAN, 34],
        'bic' => ["Your bank's BIC", 'BIC Ihrer Bank', self::BIC, 11],
        'creditorId' => ['Creditor identifier', 'Gläubiger-Identifikationsnummer', self::CREDITOR, 35],
        'date' => ['Date', 'Datum', self::DATE, 10],
        'messageId' => ['Message id', 'Nachrichten-Id', self::ID, 30],
        'rulebook' => ['Rulebook', 'Regelwerk', self::CODE, 6],
        'at' => ['Time of execution', 'Ausführungszeitpunkt', self::CODE, 25],
        'currency' => ['Currency of your account', 'Währung Ihres Kontos', self::CODE, 3],
        'hybrid' => ['Hybrid addresses', 'Hybride Adressen', self::CODE, 1],
    ];

    /** @var array<string, int>|null */
    private static ?array $address = null;

    /**
     * @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @return list<string> of a payment, those of other rulebooks among them
     */
    public static function ofKind(int $kind): array
    {
        return array_values(array_diff(self::all($kind), self::ofGroup(self::DOCUMENT)));
    }

    /**
     * @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @return list<string> of a payment, and those that decide in which of several messages it is
     */
    public static function all(int $kind): array
    {
        return array_keys(array_filter(self::ROWS, static fn (array $row): bool => in_array($kind, $row[2], true)));
    }

    /** @return list<string> */
    public static function ofGroup(string $group): array
    {
        return array_keys(array_filter(self::ROWS, static fn (array $row): bool => $row[3] === $group));
    }

    /**
     * @param int $kind SEPA_MSGTYPE_CTI or SEPA_MSGTYPE_DDI
     * @return array<string, int> those that the extension does not take, as keys; purposes of debits among them
     */
    public static function added(int $kind): array
    {
        return array_flip(array_merge(self::ofGroup(self::ADDED), $kind === SEPA_MSGTYPE_DDI ? ['purp'] : []));
    }

    /** @return array<string, int> the keys of addresses as keys */
    public static function address(): array
    {
        return self::$address ?? self::$address = array_flip(array_merge(
            self::ofGroup(self::COUNTRY),
            self::ofGroup(self::LINES),
            self::ofGroup(self::FIELDS)
        ));
    }

    /** The form of a key's values, of a payment or of the submitting party. */
    public static function form(string $key): string
    {
        return self::ROWS[$key][4] ?? self::OWN[$key][2] ?? self::CODE;
    }

    public static function group(string $key): string
    {
        return self::ROWS[$key][3] ?? self::PAYMENT;
    }

    public static function limit(string $key): int
    {
        return self::ROWS[$key][5] ?? self::OWN[$key][3];
    }

    /** As much of a text as its key takes, in whole characters as people see them. */
    public static function fitting(string $key, string $text): string
    {
        $limit = self::limit($key);
        if (self::group($key) === self::ADDED) {
            return mb_strlen($text, 'UTF-8') <= $limit ? $text : rtrim(mb_substr($text, 0, $limit, 'UTF-8'));
        }
        if (strlen($text) <= $limit || !preg_match('//u', $text)) {
            return $text;
        }

        return rtrim((string) grapheme_extract($text, $limit, GRAPHEME_EXTR_MAXBYTES));
    }

    /** @param bool $isOwn whether it is the submitting party's, not a payment's */
    public static function label(string $key, string $locale = 'en', bool $isOwn = false): string
    {
        $row = ($isOwn ? self::OWN[$key] ?? null : null) ?? self::ROWS[$key] ?? self::OWN[$key] ?? [$key, $key];

        return $row[strncmp($locale, 'de', 2) === 0 ? 1 : 0];
    }

    /** @return list<string> usual headings of a key's column, in no writing of their own */
    public static function headings(string $key): array
    {
        $row = self::ROWS[$key] ?? null;

        return $row === null ? [] : array_merge([$row[0], $row[1]], array_filter(explode(' ', $row[6])));
    }
}
