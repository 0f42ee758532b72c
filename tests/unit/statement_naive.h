// The statement parser once more, written for plainness alone: C string
// functions from the cursor to the end of the text, again and again. The text
// needs no care at its end, since the buffer goes on with NULs.
#pragma once

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

#include "statement/mt940.h"
#include "statement/utf8_cut.h"

class naive_parser_t {
public:
    explicit naive_parser_t(sepa_stmt_parser_t* handle) : handle_(handle) {}

    void parse(char* text) {
        at_ = text;
        while (char* start = strstr(at_, "\r\n:20:")) {
            char* ref_end = strstr(start + 6, "\r\n");
            if (!ref_end) return;
            statement_ = create<sepa_statement_t>();
            statement_->ref = start + 6;
            *ref_end = 0;
            at_ = ref_end + 2;
            for (;;) {
                end_ = strstr(at_, "\r\n");
                if (!line() || !end_) break;
                at_ = end_ + 2;
            }
            link(statement_, &handle_->first, &handle_->last);
        }
    }

private:
    sepa_stmt_parser_t* handle_;
    char *at_ = nullptr, *end_ = nullptr;
    sepa_statement_t* statement_ = nullptr;
    sepa_stmt_tx_t* tx_ = nullptr;

    template <typename T>
    static T* create() {
        return static_cast<T*>(calloc(1, sizeof(T)));
    }
    template <typename T>
    static void link(T* record, T** first, T** last) {
        (*last ? (*last)->next : *first) = record;
        *last = record;
    }
    bool is(const char* tag) const { return strncmp(at_, tag, strlen(tag)) == 0; }
    char* skip(size_t n) const { return at_ + strnlen(at_, n); }
    static bool digits(const char* p, size_t n) { return strspn(p, "0123456789") >= n; }

    bool line() {
        sepa_statement_t* s = statement_;
        if (is(":25:")) {
            s->account = at_ + 4;
            if (end_) *end_ = 0;
            return end_;
        }
        if (is(":28C:") || is(":28:")) {
            at_ = strchr(at_ + 1, ':') + 1;
            char* slash = strchr(at_, '/');
            if (slash && end_ && slash < end_) return sscanf(at_, "%u/%u", &s->number, &s->page) == 2;
            bool valid = sscanf(at_, "%u", &s->number) == 1;
            if (valid) s->page = 0;
            return valid;
        }
        if (is(":60F:") || is(":60M:")) return balance(&s->open_date, s->open_currency, &s->open_saldo);
        if (is(":62F:") || is(":62M:")) return balance(&s->close_date, s->close_currency, &s->close_saldo);
        if (is(":61:")) return transaction();
        if (is(":86:")) return details();
        return !is("-");
    }

    static void set(struct tm* to, int yy, int month, int day) {
        to->tm_year = yy > 79 ? yy : yy + 100;
        to->tm_mon = month - 1;
        to->tm_mday = day;
    }
    static bool date(const char* p, int* yy, struct tm* to) {
        int month, day;
        if (sscanf(p, "%02d%02d%02d", yy, &month, &day) != 3) return false;
        set(to, *yy, month, day);
        return true;
    }

    bool balance(struct tm* day, char* currency, double* saldo) {
        int yy;
        if (!date(skip(6), &yy, day)) return false;
        memset(currency, 0, 4);
        strncpy(currency, skip(12), 3);
        char* amount = skip(15);
        char* comma = strchr(amount, ',');
        if (comma && comma < amount + 15 && end_ && comma < end_) *comma = '.';
        *saldo = parse_amount(amount, nullptr) * (*skip(5) == 'D' ? -1.0 : 1.0);
        return true;
    }

    bool transaction() {
        tx_ = create<sepa_stmt_tx_t>();
        link(tx_, &statement_->tx_first, &statement_->tx_last);
        at_ += 4;
        int yy;
        if (!date(at_, &yy, &tx_->valuta)) return false;
        at_ = skip(6);
        if (digits(at_, 4)) {
            int month, day;
            sscanf(at_, "%02d%02d", &month, &day);
            if (tx_->valuta.tm_mon == 11 && month == 1) ++yy;
            if (tx_->valuta.tm_mon == 0 && month == 12) --yy;
            set(&tx_->booked, yy, month, day);
            at_ += 4;
        }
        if (*at_ == 'R') tx_->reversal = 1, ++at_;
        double sign = *at_ == 'D' ? -1.0 : 1.0;
        at_ = skip(1);
        if (isascii(*at_) && isalpha(*at_)) ++at_;
        char* comma = strchr(at_, ',');
        char* type = strchr(at_, 'N');
        if (!type) return false;
        if (comma && comma < type) *comma = '.';
        tx_->amount = parse_amount(at_, nullptr) * sign;
        strncpy(tx_->code, type + 1, 3);
        char* ref = type + 1 + strnlen(type + 1, 3);
        if (end_) *end_ = 0;
        char* slashes = strstr(ref, "//");
        tx_->ref = ref;
        if (slashes) *slashes = 0, tx_->bankref = slashes + 2;
        return true;
    }

    bool details() {
        end_ = strstr(at_, "\r\n:");
        if (!tx_ && end_) at_ = end_;
        if (tx_ && !end_) sscanf(at_ + 4, "%03d", &tx_->gvc);
        if (!tx_ || !end_) return false;
        std::string field(at_, end_);
        for (size_t p = 0; (p = field.find("\r\n", p)) != std::string::npos;) field.erase(p, 2);
        memcpy(at_, field.c_str(), field.size() + 1);
        sscanf(at_ + 4, "%03d", &tx_->gvc);
        char* marker = strchr(at_ + 4, '?');
        if (marker && digits(marker + 1, 2)) subfields(marker);
        return true;
    }

    static int number_at(const char* marker) { return (marker[1] - '0') * 10 + marker[2] - '0'; }

    void subfields(char* marker) {
        const char** target = nullptr;
        size_t last = 0;
        while (marker) {
            int number = number_at(marker);
            char* text = marker + 3;
            char* next = strchr(text, '?');
            while (next && (!digits(next + 1, 2) || number_at(next) <= number)) next = strchr(next + 1, '?');
            char successor[8];
            snprintf(successor, sizeof successor, "?%02d", number + 1);
            for (char* p = next; p && (p = strstr(p + 1, successor));) next = p;
            char* end = next ? next : strchr(text, 0);
            if (number == 0 || number == 10) {
                (number ? tx_->primanota : tx_->txtext) = text;
                *end = 0;
            } else if ((number >= 20 && number <= 29) || (number >= 60 && number <= 63)) {
                purpose(text, end, &target, &last);
            } else {
                short_field(number, std::string(text, end));
            }
            marker = next;
        }
    }

    void short_field(int number, const std::string& text) {
        auto store = [&text](auto& field, size_t used) {
            store_cut(field, sizeof field, used, text.data(), text.size());
        };
        size_t used = strlen(tx_->name);
        if (number == 33 && used < 27) tx_->name[used++] = ' ';
        if (number == 33) store(tx_->name, used);
        if (number == 30) store(tx_->bank, 0);
        if (number == 31) store(tx_->account, 0);
        if (number == 32) store(tx_->name, 0);
        if (number == 34) sscanf(text.c_str(), "%03d", &tx_->extcode);
    }

    void purpose(char* text, char* end, const char*** target, size_t* last) {
        static const std::map<std::string, const char* sepa_stmt_tx_t::*> slots = {
            {"EREF+", &sepa_stmt_tx_t::eref}, {"KREF+", &sepa_stmt_tx_t::kref}, {"MREF+", &sepa_stmt_tx_t::mref},
            {"CRED+", &sepa_stmt_tx_t::cred}, {"DEBT+", &sepa_stmt_tx_t::debt}, {"PURP+", &sepa_stmt_tx_t::purp},
            {"COAM+", &sepa_stmt_tx_t::coam}, {"OAMT+", &sepa_stmt_tx_t::oamt}, {"SVWZ+", &sepa_stmt_tx_t::svwz},
            {"ABWA+", &sepa_stmt_tx_t::abwa}, {"ABWE+", &sepa_stmt_tx_t::abwe}};
        std::string fragment(text, end);
        auto slot = slots.find(fragment.substr(0, 5));
        if (slot != slots.end()) {
            *end = 0;
            char* comma = strchr(text + 5, ',');
            if (comma && (slot->first == "COAM+" || slot->first == "OAMT+")) *comma = '.';
            *target = &(tx_->*slot->second);
            **target = text + 5;
        } else if (!*target) {
            *end = 0;
            *target = &tx_->purpose;
            tx_->purpose = text;
        } else {
            std::string joined = **target;
            bool blank = *last < 27 && joined.size() != 22;
            joined += (*target == &tx_->purpose ? "\n" : blank ? " " : "") + fragment;
            memcpy(const_cast<char*>(**target), joined.c_str(), joined.size() + 1);
            *last = fragment.size();
        }
    }
};
