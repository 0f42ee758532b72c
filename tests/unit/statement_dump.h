// All records of a handle as text, for comparison with an expected one. Null
// pointers are left out; dates show the record's own numbers.
#pragma once

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>

#include "statement/mt940.h"

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
        const char* indent = "   ";
        fields(indent, {{"ref", tx->ref}, {"bankref", tx->bankref}, {"txtext", tx->txtext}});
        fields(indent, {{"primanota", tx->primanota}});
        if (tx->gvc) text += "   gvc " + std::to_string(static_cast<unsigned>(tx->gvc)) + "\n";
        if (tx->extcode) text += "   extcode " + std::to_string(static_cast<unsigned>(tx->extcode)) + "\n";
        fields(indent, {{"bank", not_empty(tx->bank)}, {"account", not_empty(tx->account)}});
        fields(indent, {{"name", not_empty(tx->name)}, {"purpose", tx->purpose}, {"eref", tx->eref}});
        fields(indent, {{"kref", tx->kref}, {"mref", tx->mref}, {"cred", tx->cred}, {"debt", tx->debt}});
        fields(indent, {{"purp", tx->purp}, {"coam", tx->coam}, {"oamt", tx->oamt}, {"svwz", tx->svwz}});
        fields(indent, {{"abwa", tx->abwa}, {"abwe", tx->abwe}});
    }

    static const char* not_empty(const char* value) { return *value ? value : nullptr; }

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
            if (*value >= ' ' && *value < 0x7F && *value != '\\') {
                text += *value;
                continue;
            }
            char byte[8];
            auto code = static_cast<unsigned char>(*value);
            snprintf(byte, sizeof byte, code == '\n' ? "\\n" : code == '\r' ? "\\r" : "\\x%02X", code);
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
