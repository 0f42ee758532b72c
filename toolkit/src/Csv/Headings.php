<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Csv;

/** What the headings of spreadsheets mean. */
final class Headings
{
    /** Usual German and English headings by key, in the form of plain(). */
    private const SYNONYMS = [
        'name' => ['empfaenger', 'empfaengername', 'zahlungsempfaenger', 'beguenstigter', 'kontoinhaber', 'zahlungspflichtiger',
            'zahler', 'schuldner', 'kunde', 'lieferant', 'recipient', 'payee', 'beneficiary', 'accountholder', 'debtor', 'payer',
            'creditor', 'customer', 'supplier'],
        'iban' => ['kontoiban', 'ibanempfaenger', 'empfaengeriban', 'ibandesempfaengers', 'accountiban', 'ibannumber'],
        'bic' => ['swift', 'swiftcode', 'biccode', 'bicswift', 'swiftbic', 'bicempfaenger'],
        'amount' => ['betrag', 'betrageur', 'betragineur', 'betrageuro', 'betragineuro', 'summe', 'zahlbetrag', 'amounteur', 'sum', 'total'],
        'ref' => ['verwendungszweck', 'zweck', 'buchungstext', 'reference', 'remittance', 'remittanceinformation', 'paymentreference', 'details'],
        'date' => ['datum', 'ausfuehrungsdatum', 'ausfuehrung', 'termin', 'faelligkeit', 'faelligkeitsdatum', 'faelligam', 'einzugsdatum',
            'duedate', 'executiondate', 'collectiondate', 'paymentdate'],
        'id' => ['endezuendeid', 'endezuendereferenz', 'endtoendid', 'e2eid', 'endtoendreference', 'kundenreferenz'],
        'purp' => ['zweckcode', 'purposecode', 'purpose'],
        'seq' => ['sequenz', 'sequenztyp', 'sequence', 'sequencetype'],
        'mref' => ['mandat', 'mandatsreferenz', 'mandatsref', 'mandatsnummer', 'mandate', 'mandatereference', 'mandateid', 'umr'],
        'mdate' => ['mandatsdatum', 'mandatvom', 'unterschriftsdatum', 'unterschriebenam', 'signed', 'signaturedate', 'mandatedate', 'dateofsignature'],
        'old_mref' => ['altemandatsreferenz', 'altesmandat', 'oldmandate', 'oldmandatereference'],
        'old_iban' => ['alteiban'],
        'addrStreet' => ['strasse', 'street', 'streetname'],
        'addrNum' => ['hausnummer', 'hausnr', 'housenumber', 'buildingnumber'],
        'addrCode' => ['plz', 'postleitzahl', 'postcode', 'postalcode', 'zip', 'zipcode'],
        'addrTown' => ['ort', 'stadt', 'wohnort', 'town', 'city'],
        'addrCC' => ['land', 'laendercode', 'country', 'countrycode'],
        'addrLine1' => ['adresse', 'anschrift', 'adresse1', 'address', 'address1', 'addressline1'],
        'addrLine2' => ['adresse2', 'address2', 'addressline2'],
        'account' => ['konto', 'kontonummer', 'kontonr', 'ktonr', 'accountnumber', 'accountno'],
        'bank_code' => ['blz', 'bankleitzahl', 'bankid', 'sortcode'],
        'query' => ['bic', 'swift', 'swiftcode', 'iban', 'blz', 'bankleitzahl', 'bankcode', 'bank'],
    ];

    /**
     * The key that a heading means, of those that are wanted.
     *
     * @param list<string> $keys
     */
    public static function key(string $heading, array $keys): ?string
    {
        $plain = self::plain($heading);
        foreach ($keys as $key) {
            if ($plain === self::plain($key)) {
                return $key;
            }
        }
        foreach ($keys as $key) {
            if (in_array($plain, self::SYNONYMS[$key] ?? [], true)) {
                return $key;
            }
        }

        return null;
    }

    /** Small ASCII letters and digits alone: "Fällig am:" is "faelligam". */
    private static function plain(string $heading): string
    {
        $small = strtr(mb_strtolower($heading, 'UTF-8'), ['ä' => 'ae', 'ö' => 'oe', 'ü' => 'ue', 'ß' => 'ss']);

        return (string) preg_replace('/[^a-z0-9]/', '', $small);
    }
}
