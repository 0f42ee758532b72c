// All that the library does, in several threads at once and from the first
// instruction on. The preset tsan finds accesses that only happened to go well.
#include <pthread.h>

#include <array>
#include <atomic>
#include <set>
#include <thread>

#include "account/account_check.h"
#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "tests/unit/message_helpers.h"
#include "tests/unit/statement_dump.h"

namespace {

constexpr size_t thread_count = 8;

// Runs work(number) in each thread. No thread starts before all are there.
template <typename Work>
void in_threads(Work work) {
    pthread_barrier_t start;
    pthread_barrier_init(&start, nullptr, thread_count);
    std::array<std::thread, thread_count> threads;
    for (size_t i = 0; i < thread_count; ++i)
        threads[i] = std::thread([&start, work, i] {
            pthread_barrier_wait(&start);
            work(i);
        });
    for (std::thread& thread : threads) thread.join();
    pthread_barrier_destroy(&start);
}

std::string check() {
    std::string answers;
    for (const char* iban : {german_iban, "DE88370400440532013000", "US12"}) {
        const char* reason = "";
        answers += IBAN_check(iban, &reason) ? "+" : reason;
    }
    for (const char* bic : {"DEUTDEFFXXX", "deutdeff"}) answers += sepa_check_field(FIELD_BIC, bic) ? "+" : "-";
    return answers;
}

std::string look_up() {
    std::string answers;
    for (const char* bank : {"37040044", "50010517", "72020700", "99999999"}) {
        char iban[IBAN_BUFFER_SIZE], bic[BIC_BUFFER_SIZE] = "";
        int8_t status;
        if (IBAN_convert("DE", "532013000", bank, iban, &status)) IBAN_getBIC(iban, bic);
        bank_info_t* info = nullptr;
        if (bank_info_get(bic, &info) == 1) answers += info->name;
        free(info);
        answers += std::to_string(status) + " " + iban + " " + bic + "\n";
    }
    for (int method = 0; method < 256; ++method)
        answers += std::to_string(account_check_bank("532013000", "37040044", static_cast<uint8_t>(method)));
    return answers;
}

message_t filled_message(long kind) {
    message_t message = new_message(kind);
    sepa_setIBAN(message.get(), german_iban);
    sepa_setBIC(message.get(), "cobadeff");
    sepa_setName(message.get(), "Müller & Söhne");
    sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999");
    message->msgid = strdup("ID");
    keys_t keys = {{"iban", austrian_iban}, {"name", "Name"}, {"seq", "RCUR"}, {"mref", "M"}, {"mdate", "2024-01-01"}};
    keys.push_back({"amount", "12.34"});
    for (int i = 0; i < 20; ++i) {
        keys.back().value = i % 5 ? "12.34" : "not a number";
        add(message, keys);
    }
    return message;
}

template <long kind>
std::string write_document() {
    message_t message = filled_message(kind);
    return document_of(message) + message->last_error;
}

std::string read_statements() {
    sepa_stmt_parser_t* parser = sepa_stmt_parser_new();
    sepa_stmt_parser_load(parser, SEPA_STMT_FORMAT_MT940, TEST_DATA "/statements/transaction_texts.sta");
    std::string text = dump(parser);
    sepa_stmt_parser_free(parser);
    return text;
}

constexpr std::string (*jobs[])() = {check, look_up, read_statements, write_document<SEPA_MSGTYPE_CTI>,
                                     write_document<SEPA_MSGTYPE_DDI>};
constexpr size_t job_count = std::size(jobs);

// Must stay the first test: the patterns are compiled and the rulebook is
// chosen once in a process. Every job is the first one in some thread.
TEST(Threads, AllAnswerAsOneDoes) {
    ASSERT_EQ(current_rulebook, RULEBOOK_NONE);
    std::array<std::array<std::string, job_count>, thread_count> answers;
    in_threads([&answers](size_t number) {
        for (size_t i = 0; i < 3 * job_count; ++i) {
            size_t job = (number + i) % job_count;
            answers[number][job] += jobs[job]();
        }
    });
    EXPECT_EQ(current_rulebook, RULEBOOK_DE_3_7);
    for (size_t job = 0; job < job_count; ++job) {
        std::string once = jobs[job]();
        EXPECT_GT(once.size(), 5u);
        for (const auto& of_thread : answers) EXPECT_EQ(of_thread[job], once + once + once);
    }
}

TEST(Threads, NoMessageIdTwice) {
    constexpr size_t per_thread = 1500;
    std::array<std::set<std::string>, thread_count> ids;
    use_rulebook("DE-3.7");
    in_threads([&ids](size_t number) {
        for (size_t i = 0; i < per_thread; ++i) {
            message_t message = new_message(SEPA_MSGTYPE_CTI);
            add(message, {{"iban", austrian_iban}, {"amount", "1"}});
            document_of(message);
            ids[number].insert(message->msgid);
        }
    });
    std::set<std::string> all;
    for (const auto& of_thread : ids) all.insert(of_thread.begin(), of_thread.end());
    EXPECT_EQ(all.size(), thread_count * per_thread);
}

// Another thread may choose another rulebook at any time; a document is of one
// all the same.
TEST(Threads, ADocumentIsOfOneRulebook) {
    use_rulebook("DE-3.7");
    std::array<message_t, thread_count> messages;
    for (message_t& message : messages) message = filled_message(SEPA_MSGTYPE_CTI);
    std::set<std::string> possible;
    for (const char* rulebook : {"DE-2.7", "DE-3.7"}) {
        use_rulebook(rulebook);
        possible.insert(document_of(messages[0]));
    }
    ASSERT_EQ(possible.size(), 2u);
    std::atomic<size_t> writers{thread_count - 1};
    in_threads([&](size_t number) {
        if (number == 0) {
            while (writers)
                for (const char* rulebook : {"DE-2.7", "DE-3.7"}) use_rulebook(rulebook);
            return;
        }
        for (int i = 0; i < 200; ++i) EXPECT_TRUE(possible.count(document_of(messages[number])));
        --writers;
    });
}

}  // namespace
