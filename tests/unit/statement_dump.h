// All records of a handle as text, for comparison with an expected one. Null
// pointers are left out; dates show the record's own numbers.
#pragma once

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>

#include "sepa/statement/mt940.h"

class dump_t {
public:
    std::string text;

    explicit dump_t(const sepa_stmt_parser_t* handle) {
        const sepa_statement_t* last = nullptr;
        for (const sepa_statement_t* s = handle->first; s; last = s, s = s->next) statement(s);
        if (last != handle->last) text += "last is not the last\n";
    }

private:
    void statement(const sepa_statement_t* s) {
        text += "statement\n";
        fields(" ", {{"ref", s->ref}, {"account", s->account}});
        text += " number " + std::to_string(s->number) + "\n page " + std::to_string(s->page) + "\n";
        balance(" open ", s->open_saldo, s->open_currency, s->open_date);
        balance(" close ", s->close_saldo, s->close_currency, s->close_date);
        const sepa_stmt_tx_t* last = nullptr;
        for (const sepa_stmt_tx_t* tx = s->tx_first; tx; last = tx, tx = tx->next) transaction(tx);
        if (last != s->tx_last) text += "tx_last is not the last\n";
    }

    void transaction(const sepa_stmt_tx_t* tx) {
        text += " tx ";
        quoted(tx->code);
        text += " " + date(tx->valuta) + " " + date(tx->booked) + " " + number(tx->amount);
        text += tx->reversal ? " reversal\n" : "\n";
        fields("   ", {{"ref", tx->ref}, {"bankref", tx->bankref}, {"txtext", tx->txtext}});
        fields("   ", {{"primanota", tx->primanota}});
        if (tx->gvc) text += "   gvc " + std::to_string(static_cast<unsigned>(tx->gvc)) + "\n";
        if (tx->extcode) text += "   extcode " + std::to_string(static_cast<unsigned>(tx->extcode)) + "\n";
        for (auto [name, value] : {std::pair("bank", tx->bank), {"account", tx->account}, {"name", tx->name}})
            if (*value) fields("   ", {{name, value}});
        fields("   ", {{"purpose", tx->purpose}, {"eref", tx->eref}, {"kref", tx->kref}, {"mref", tx->mref}});
        fields("   ", {{"cred", tx->cred}, {"debt", tx->debt}, {"purp", tx->purp}, {"coam", tx->coam}});
        fields("   ", {{"oamt", tx->oamt}, {"svwz", tx->svwz}, {"abwa", tx->abwa}, {"abwe", tx->abwe}});
    }

    void fields(const char* indent, std::initializer_list<std::pair<const char*, const char*>> list) {
        for (auto [name, value] : list) {
            if (!value) continue;
            text.append(indent).append(name) += ' ';
            quoted(value);
            text += '\n';
        }
    }
    void quoted(const char* value) {
        text += '"';
        for (; *value; ++value) {
            char byte[8] = {*value};
            auto code = static_cast<unsigned char>(*value);
            const char* form = code == '\n' ? "\\n" : code == '\r' ? "\\r" : "\\x%02X";
            if (code < ' ' || code > '~' || code == '\\') snprintf(byte, sizeof byte, form, code);
            text += byte;
        }
        text += '"';
    }
    void balance(const char* name, double saldo, const char* currency, const struct tm& day) {
        text += name + date(day) + " ";
        quoted(currency);
        text += " " + number(saldo) + "\n";
    }
    static std::string date(const struct tm& day) {
        return std::to_string(day.tm_year) + "/" + std::to_string(day.tm_mon) + "/" + std::to_string(day.tm_mday);
    }
    static std::string number(double value) {
        char out[32] = "0";
        if (value != 0 || std::signbit(value)) snprintf(out, sizeof out, "%.17g", value);
        return out;
    }
};

inline std::string dump(const sepa_stmt_parser_t* handle) { return dump_t(handle).text; }
