// Every field of a handle's records as text, one field a line, for comparison
// with an expected text. Null pointers are left out; dates show the record's
// own numbers.
#pragma once

#include <cstdio>
#include <string>

#include "statement/mt940.h"

inline std::string quoted(const char* text) {
    std::string out = "\"";
    for (; *text; ++text) {
        auto c = static_cast<unsigned char>(*text);
        if (c >= ' ' && c != '\\' && c < 0x7F) {
            out += *text;
            continue;
        }
        char byte[8];
        snprintf(byte, sizeof byte, c == '\n' ? "\\n" : c == '\r' ? "\\r" : "\\x%02X", c);
        out += byte;
    }
    return out + "\"";
}

class dump_t {
public:
    std::string text;

    void statement(const sepa_statement_t* s) {
        text += "statement\n";
        field("ref", s->ref);
        field("account", s->account);
        field("number", s->number);
        field("page", s->page);
        balance("open", s->open_saldo, s->open_currency, s->open_date);
        balance("close", s->close_saldo, s->close_currency, s->close_date);
        const sepa_stmt_tx_t* last = nullptr;
        for (const sepa_stmt_tx_t* tx = s->tx_first; tx; last = tx, tx = tx->next) transaction(tx);
        if (last != s->tx_last) text += "tx_last is not the last\n";
    }

private:
    void transaction(const sepa_stmt_tx_t* tx) {
        text += " tx " + quoted(tx->code) + " " + date(tx->valuta) + " " + date(tx->booked) + " " + number(tx->amount);
        text += tx->reversal ? " reversal\n" : "\n";
        field("  ref", tx->ref);
        field("  bankref", tx->bankref);
        field("  txtext", tx->txtext);
        field("  primanota", tx->primanota);
        if (tx->gvc) field("  gvc", static_cast<unsigned>(tx->gvc));
        if (tx->extcode) field("  extcode", static_cast<unsigned>(tx->extcode));
        if (*tx->bank) field("  bank", tx->bank);
        if (*tx->account) field("  account", tx->account);
        if (*tx->name) field("  name", tx->name);
        field("  purpose", tx->purpose);
        field("  eref", tx->eref);
        field("  kref", tx->kref);
        field("  mref", tx->mref);
        field("  cred", tx->cred);
        field("  debt", tx->debt);
        field("  purp", tx->purp);
        field("  coam", tx->coam);
        field("  oamt", tx->oamt);
        field("  svwz", tx->svwz);
        field("  abwa", tx->abwa);
        field("  abwe", tx->abwe);
    }

    void field(const char* name, const char* value) {
        if (value) text += std::string(" ") + name + " " + quoted(value) + "\n";
    }
    void field(const char* name, unsigned value) {
        text += std::string(" ") + name + " " + std::to_string(value) + "\n";
    }
    void balance(const char* name, double saldo, const char* currency, const struct tm& day) {
        text += std::string(" ") + name + " " + date(day) + " " + quoted(currency) + " " + number(saldo) + "\n";
    }
    static std::string date(const struct tm& day) {
        return std::to_string(day.tm_year) + "/" + std::to_string(day.tm_mon) + "/" + std::to_string(day.tm_mday);
    }
    static std::string number(double value) {
        char out[32];
        snprintf(out, sizeof out, "%.17g", value);
        return out;
    }
};

inline std::string dump(const sepa_stmt_parser_t* handle) {
    dump_t out;
    const sepa_statement_t* last = nullptr;
    for (const sepa_statement_t* s = handle->first; s; last = s, s = s->next) out.statement(s);
    if (last != handle->last) out.text += "last is not the last\n";
    return out.text;
}
