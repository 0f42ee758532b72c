#include "sepa/message/rulebook.h"

#include <climits>
#include <cstring>
#include <iterator>

#include "sepa/platform/clock.h"

std::atomic<int> current_rulebook{RULEBOOK_NONE};

namespace sepa_internal {

constexpr charsets_t usual = {set_base, set_base | set_blank, set_base | set_blank | set_german};
constexpr charsets_t fewer = {set_base, set_base | set_blank, set_base | set_blank};
constexpr charsets_t more = {usual.strict | set_austrian, usual.space | set_austrian, usual.extended | set_austrian};

constexpr smnda_place_t agent = {"OrgnlDbtrAgt", "FinInstnId"}, account = {"OrgnlDbtrAcct", "Id"};

constexpr address_kind_t lines = address_of_lines, parts = address_of_parts;
constexpr cor1_t taken = cor1_set_and_written, written = cor1_only_written, refused = cor1_refused;
constexpr address_need_t none = nothing_needed, line = line_needed, town = town_and_country_needed;
constexpr bic_element_t bic = element_bic, bicfi = element_bicfi;
constexpr int strict = CHARSET_STRICT, blanks = CHARSET_SPACE;

// Rulebooks that are over, or of another country, are never chosen by date.
constexpr int never = INT_MAX, always = INT_MIN;

// clang-format off
constexpr rulebook_t rulebooks[] = {
    // id             name      transfer           debit              file   chars  BIC    address mref   COR1     non-EEA SMNDA   element  from
    {RULEBOOK_DE_2_6, "DE-2.6", "pain.001.002.03", "pain.008.002.02", true,  fewer, true,  lines, strict, written, none,  agent,   bic,     never},
    {RULEBOOK_DE_2_7, "DE-2.7", "pain.001.003.03", "pain.008.003.02", true,  usual, false, lines, strict, taken,   none,  agent,   bic,     never},
    {RULEBOOK_AT_6,   "AT-6",   "pain.001.001.03", "pain.008.001.02", false, more,  false, lines, strict, taken,   none,  agent,   bic,     never},
    {RULEBOOK_NL_6,   "NL-6",   "pain.001.001.03", "pain.008.001.02", false, usual, false, lines, strict, taken,   none,  agent,   bic,     never},
    {RULEBOOK_DE_2_8, "DE-2.8", "pain.001.003.03", "pain.008.003.02", true,  usual, false, lines, strict, taken,   none,  agent,   bic,     never},
    {RULEBOOK_DE_2_9, "DE-2.9", "pain.001.003.03", "pain.008.003.02", true,  usual, false, lines, strict, taken,   none,  agent,   bic,     never},
    {RULEBOOK_DE_3_0, "DE-3.0", "pain.001.001.03", "pain.008.001.02", true,  usual, false, lines, blanks, refused, none,  account, bic,     never},
    {RULEBOOK_DE_3_1, "DE-3.1", "pain.001.001.03", "pain.008.001.02", true,  usual, false, lines, blanks, refused, line,  account, bic,     never},
    {RULEBOOK_DE_3_5, "DE-3.5", "pain.001.001.03", "pain.008.001.02", true,  usual, false, lines, blanks, refused, line,  account, bic,     always},
    {RULEBOOK_DE_3_7, "DE-3.7", "pain.001.001.09", "pain.008.001.08", true,  usual, false, parts, blanks, refused, town,  account, bicfi,   20240417},
};
constexpr rulebook_t no_rulebook =
    {RULEBOOK_NONE,   "",       nullptr,           nullptr,           false, usual, false, lines, strict, written, none,  agent,   bic,     never};
// clang-format on

static_assert(std::size(rulebooks) == RULEBOOK_COUNT, "a rulebook of sepa.h lacks its row");

static constexpr bool stand_at_their_ids() {
    for (int i = 0; i < RULEBOOK_COUNT; ++i)
        if (rulebooks[i].id != i) return false;
    return true;
}
static_assert(stand_at_their_ids(), "the rows are not in the order of the rulebooks' ids");

static constexpr int of_date(int date) {
    const rulebook_t* latest = nullptr;
    for (const rulebook_t& row : rulebooks)
        if (row.in_force_from <= date && (!latest || row.in_force_from > latest->in_force_from)) latest = &row;
    return latest ? latest->id : RULEBOOK_NONE;
}
static_assert(of_date(always) != RULEBOOK_NONE, "every date has a rulebook");

const rulebook_t& rulebook_in_force() {
    int id = current_rulebook;
    return id >= 0 && id < RULEBOOK_COUNT ? rulebooks[id] : no_rulebook;
}

static int today() {
    struct tm local;
    clock_local(clock_now(), &local);
    return (local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 + local.tm_mday;
}

void settle_rulebook() {
    int none_yet = RULEBOOK_NONE;
    if (current_rulebook == RULEBOOK_NONE) current_rulebook.compare_exchange_strong(none_yet, of_date(today()));
}

}  // namespace sepa_internal

int sepa_init(long option, const char* value) {
    if (option != SEPA_INIT_RULEBOOK || !value) return 0;
    for (const auto& rulebook : sepa_internal::rulebooks) {
        if (strcmp(value, rulebook.name) != 0) continue;
        current_rulebook = rulebook.id;
        return 1;
    }
    return 0;
}
