// The generator of the bank directory as a program: what it refuses, what it
// writes, and what it leaves behind.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace {

const std::string german_header = "valid_from,bank_code,flag,method,rule,successor,bic,name,postal_code,city,country\n";
const std::string national_header = "bank_id,bic,name,postal_code,city,country\n";
const std::string bic_header = "bic,sct,sdd,cor1,b2b,name\n";

using lists_t = std::map<std::string, std::string>;

// Small lists without a fault, a row each.
lists_t good_lists() {
    return {{"de.csv", german_header + "2025-03-03,10000000,0,09,4201,,MARKDEF1100,Bundesbank,10591,Berlin,DE\n"},
            {"at.csv", national_header + "00100,NABAATWWXXX,Nationalbank,1090,Wien,AT\n"},
            {"ch.csv", national_header + "00100,SNBZCHZZXXX,Nationalbank,8022,Zürich,\n"},
            {"bic.csv", bic_header + "MARKDEFFXXX,1,1,0,1,Bundesbank\n"}};
}

std::string read_whole(const std::string& name) {
    std::ifstream in(name, std::ios::binary);
    std::stringstream content;
    content << in.rdbuf();
    return content.str();
}

void write_whole(const std::string& name, const std::string& content) {
    std::ofstream(name, std::ios::binary) << content;
}

bool exists(const std::string& name) { return access(name.c_str(), F_OK) == 0; }

class Generator : public testing::Test {
protected:
    void SetUp() override {
        char name[] = "/tmp/gen_directory_XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        folder = name;
        output = folder + "/tables.inc";
    }

    void TearDown() override {
        for (const char* name : {"de.csv", "at.csv", "ch.csv", "bic.csv", "tables.inc", "tables.inc.tmp"}) {
            unlink((folder + "/" + name).c_str());
        }
        rmdir(folder.c_str());
    }

    // Runs the generator and keeps its exit status and what it said.
    void run(const std::string& arguments) {
        FILE* pipe = popen((GEN_DIRECTORY " " + arguments + " 2>&1").c_str(), "r");
        ASSERT_NE(pipe, nullptr);
        said.clear();
        char buffer[256];
        while (fgets(buffer, sizeof buffer, pipe)) said += buffer;
        status = WEXITSTATUS(pclose(pipe));
    }

    void generate(const lists_t& lists, const std::string& option = "") {
        for (const auto& [name, content] : lists) write_whole(folder + "/" + name, content);
        run(option + " " + folder + " " + output);
    }

    // Generates from good lists with `rows` behind the row of one of them.
    void generate_with(const std::string& list, const std::string& rows) {
        lists_t lists = good_lists();
        lists[list] += rows;
        generate(lists);
    }

    std::string constant(const std::string& name) {
        std::string text = read_whole(output), start = " " + name + " = ";
        size_t at = text.find(start) + start.size();
        return text.substr(at, text.find(';', at) - at);
    }

    std::string folder, output, said;
    int status = -1;
};

struct refusal_t {
    const char *name, *list, *rows;
    int line;  // counted from the header, which is line 1; the good row is line 2
    const char* reason;
};

std::string text_of_length(size_t length) { return std::string(length, 'n'); }

const std::string long_german = "2025-03-03,20000000,0,09,0,,," + text_of_length(160) + ",,,DE\n";  // 167 with bars
const std::string long_national = "00200,," + text_of_length(161) + ",,,AT\n";                      // 167 with bars
const std::string long_name = "LONGDEFFXXX,1,0,0,0," + text_of_length(152) + "\n";
const std::string longer_german = "2025-03-03,20000000,0,09,0,,," + text_of_length(161) + ",,,DE\n";
const std::string longer_national = "00200,," + text_of_length(162) + ",,,AT\n";
const std::string longer_name = "LONGDEFFXXX,1,0,0,0," + text_of_length(153) + "\n";

const refusal_t refusals[] = {
    {"too few fields", "at.csv", "00200,,a,,\n", 3, "wrong number of fields, expected 6"},
    {"too many fields", "ch.csv", "00200,,a,,,,\n", 3, "wrong number of fields, expected 6"},
    {"empty line", "de.csv", "\n", 3, "wrong number of fields, expected 11"},
    {"cut file", "bic.csv", "AAAADEFFXXX,1,1,0,1,Bank", 3, "the last line has no line end"},
    {"open quote", "at.csv", "00200,,\"a,,,AT\n", 3, "bad quoting: no closing quote"},
    {"text behind a quote", "at.csv", "00200,,\"a\"b,,,AT\n", 3, "bad quoting: text behind the closing quote"},
    {"quote inside", "at.csv", "00200,,a\"b\",,,AT\n", 3, "bad quoting: quote inside a field without quotes"},
    {"lone continuation byte", "at.csv", "00200,,a\x80,,,AT\n", 3, "invalid UTF-8"},
    {"cut character", "at.csv", "00200,,a\xC3,,,AT\n", 3, "invalid UTF-8"},
    {"overlong character", "at.csv", "00200,,a\xE0\x9F\xBF,,,AT\n", 3, "invalid UTF-8"},
    {"surrogate", "at.csv", "00200,,a\xED\xA0\x80,,,AT\n", 3, "invalid UTF-8"},
    {"beyond Unicode", "at.csv", "00200,,a\xF4\x90\x80\x80,,,AT\n", 3, "invalid UTF-8"},
    {"bar", "ch.csv", "00200,,a|b,,,\n", 3, "vertical bar in a text"},
    {"tab", "ch.csv", "00200,,a\tb,,,\n", 3, "control character in a text"},
    {"carriage return", "ch.csv", "00200,,a,,,\r\n", 3, "control character in a text"},
    {"delete", "ch.csv", "00200,,a\x7F,,,\n", 3, "control character in a text"},
    {"C1 control", "ch.csv", "00200,,a\xC2\x85,,,\n", 3, "control character in a text"},
    {"quoted line break", "ch.csv", "00200,,\"a\nb\",,,\n", 3, "bad quoting: no closing quote"},
    {"short bank code", "de.csv", "2025-03-03,1000000,0,09,0,,,a,,,DE\n", 3, "bank code is not 8 digits"},
    {"letter in a bank code", "de.csv", "2025-03-03,1000000A,0,09,0,,,a,,,DE\n", 3, "bank code is not 8 digits"},
    {"long bank id", "at.csv", "000100,,a,,,AT\n", 3, "bank id is not 5 digits"},
    {"blank in a bank id", "ch.csv", "0010 ,,a,,,\n", 3, "bank id is not 5 digits"},
    {"short key BIC", "bic.csv", "MARKDEFF,1,1,0,1,a\n", 3, "BIC is not 11 capital letters and digits"},
    {"small key BIC", "bic.csv", "markdeffxxx,1,1,0,1,a\n", 3, "BIC is not 11 capital letters and digits"},
    {"bank code twice", "de.csv", "2025-03-03,10000000,0,09,0,,,a,,,DE\n", 3, "duplicate bank code 10000000"},
    {"bank id twice", "at.csv", "00200,,a,,,AT\n00100,,a,,,AT\n", 4, "duplicate bank id 00100"},
    {"BIC twice", "bic.csv", "MARKDEFFXXX,1,1,0,1,a\n", 3, "duplicate BIC MARKDEFFXXX"},
    {"flag", "de.csv", "2025-03-03,20000000,2,09,0,,,a,,,DE\n", 3, "flag is neither 0 nor 1"},
    {"scheme", "bic.csv", "AAAADEFFXXX,1,1,0,,a\n", 3, "b2b is neither 0 nor 1"},
    {"no date", "de.csv", "2025-3-03,20000000,0,09,0,,,a,,,DE\n", 3,
     "bad valid_from, expected a date yyyy-mm-dd from 1996 on"},
    {"day that is none", "de.csv", "2025-02-29,20000000,0,09,0,,,a,,,DE\n", 3,
     "bad valid_from, expected a date yyyy-mm-dd from 1996 on"},
    {"third period", "de.csv", "2025-06-09,10000000,0,09,0,,,a,,,DE\n2025-09-08,10000000,0,09,0,,,a,,,DE\n", 4,
     "third valid_from"},
    {"method of one digit", "de.csv", "2025-03-03,20000000,0,9,0,,,a,,,DE\n", 3,
     "method is not two hexadecimal digits"},
    {"method beyond F", "de.csv", "2025-03-03,20000000,0,G1,0,,,a,,,DE\n", 3, "method is not two hexadecimal digits"},
    {"no method", "de.csv", "2025-03-03,20000000,0,,0,,,a,,,DE\n", 3, "method is not two hexadecimal digits"},
    {"no rule", "de.csv", "2025-03-03,20000000,0,09,,,,a,,,DE\n", 3, "rule is not a decimal number"},
    {"hexadecimal rule", "de.csv", "2025-03-03,20000000,0,09,0x1,,,a,,,DE\n", 3, "rule is not a decimal number"},
    {"large rule", "de.csv", "2025-03-03,20000000,0,09,65536,,,a,,,DE\n", 3, "rule does not fit in 16 bits"},
    {"huge rule", "de.csv", "2025-03-03,20000000,0,09,4294967296,,,a,,,DE\n", 3, "rule does not fit in 16 bits"},
    {"long German text", "de.csv", longer_german.c_str(), 3, "text of 168 bytes does not fit a record"},
    {"long national text", "at.csv", longer_national.c_str(), 3, "text of 168 bytes does not fit a record"},
    {"long name", "bic.csv", longer_name.c_str(), 3, "name of 153 bytes does not fit a record"},
    {"short BIC", "de.csv", "2025-03-03,20000000,0,09,0,,MARKDEFF,a,,,DE\n", 3,
     "BIC is neither empty nor 11 capital letters and digits"},
    {"BIC of small letters", "ch.csv", "00200,snbzchzzxxx,a,,,\n", 3,
     "BIC is neither empty nor 11 capital letters and digits"},
    {"short successor", "de.csv", "2025-03-03,20000000,1,09,0,1000,,a,,,DE\n", 3,
     "successor is neither empty nor 8 digits"},
    {"missing successor", "de.csv", "2025-03-03,20000000,1,09,0,30000000,,a,,,DE\n", 3,
     "successor 30000000 is not in the list"},
    {"successor of itself", "de.csv", "2025-03-03,20000000,1,09,0,20000000,,a,,,DE\n", 3,
     "successor 20000000 leads in a circle"},
    {"circle", "de.csv", "2025-03-03,20000000,1,09,0,30000000,,a,,,DE\n2025-03-03,30000000,1,09,0,20000000,,a,,,DE\n",
     3, "successor 30000000 leads in a circle"},
    {"circle of the later period", "de.csv",
     "2024-12-09,20000000,1,09,0,,,a,,,DE\n2025-03-03,20000000,1,09,0,20000000,,a,,,DE\n", 4,
     "successor 20000000 leads in a circle"},
    {"circle of the earlier period", "de.csv",
     "2025-03-03,20000000,1,09,0,20000000,,a,,,DE\n2025-06-09,20000000,1,09,0,,,a,,,DE\n", 3,
     "successor 20000000 leads in a circle"},
    {"successor that ends", "de.csv",
     "2025-03-03,20000000,1,09,0,10000000,,a,,,DE\n2025-06-09,20000000,1,09,0,10000000,,a,,,DE\n", 3,
     "successor 10000000 is not in the list"},
};

TEST_F(Generator, RefusesRows) {
    for (const refusal_t& refusal : refusals) {
        SCOPED_TRACE(refusal.name);
        write_whole(output, "as it was");
        generate_with(refusal.list, refusal.rows);
        EXPECT_EQ(status, 1);
        EXPECT_EQ(said,
                  folder + "/" + refusal.list + ":" + std::to_string(refusal.line) + ": " + refusal.reason + "\n");
        EXPECT_EQ(read_whole(output), "as it was");
        EXPECT_FALSE(exists(output + ".tmp"));
    }
}

TEST_F(Generator, RefusesHeaders) {
    for (const auto& [list, good] : good_lists()) {
        std::string header = good.substr(0, good.find('\n'));
        for (const std::string& bad :
             {std::string(), "\xEF\xBB\xBF" + good, "x" + good, good.substr(header.size() + 1)}) {
            lists_t lists = good_lists();
            lists[list] = bad;
            generate(lists);
            EXPECT_EQ(status, 1);
            EXPECT_EQ(said, folder + "/" + list + ":1: wrong header, expected " + header + "\n");
            EXPECT_FALSE(exists(output));
        }
    }
}

TEST_F(Generator, RefusesWhatItCannotReadOrWrite) {
    generate({{"de.csv", german_header}});
    EXPECT_EQ(status, 1);
    EXPECT_EQ(said, "gen_directory: " + folder + "/bic.csv: cannot be opened: No such file or directory\n");
    generate(
        {{"de.csv", german_header}, {"at.csv", national_header}, {"ch.csv", national_header}, {"bic.csv", bic_header}});
    EXPECT_EQ(said, "gen_directory: " + folder + ": the lists are empty\n");
    generate(good_lists());
    EXPECT_EQ(status, 0);
    run(folder + " " + folder + "/missing/tables.inc");
    EXPECT_EQ(status, 1);
    mkdir((folder + "/taken").c_str(), 0700);
    run(folder + " " + folder + "/taken");
    EXPECT_EQ(status, 1);
    EXPECT_FALSE(exists(folder + "/taken.tmp"));
    rmdir((folder + "/taken").c_str());
    run(folder);
    EXPECT_EQ(status, 1);
    run("--allow " + folder + " " + output);
    EXPECT_EQ(status, 1);
}

TEST_F(Generator, AllowsBadSuccessorsForTests) {
    lists_t lists = good_lists();
    lists["de.csv"] += "2025-03-03,20000000,1,09,0,20000000,,a,,,DE\n2025-03-03,30000000,1,09,0,40000000,,a,,,DE\n";
    generate(lists, "--allow-bad-successors");
    EXPECT_EQ(status, 0);
    EXPECT_NE(said.find("/de.csv:3: warning: successor 20000000 leads in a circle\n"), std::string::npos);
    EXPECT_NE(said.find("/de.csv:4: warning: successor 40000000 is not in the list\n"), std::string::npos);
    EXPECT_NE(read_whole(output).find("_DE30000000\\001\\011\\000\\00040000000||a|||DE\\000"), std::string::npos);
}

TEST_F(Generator, WritesWhatJustFits) {
    lists_t lists = good_lists();
    lists["de.csv"] += long_german + "2025-03-03,30000000,0,a3,065535,,,\"a \"\"b\"\", ?\",,\"\",DE\n";
    lists["at.csv"] += long_national;
    lists["bic.csv"] += long_name;
    generate(lists);
    EXPECT_EQ(said, "");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(constant("directory_count"), "8");
    EXPECT_EQ(constant("directory_cells"), "10");
    EXPECT_EQ(constant("directory_switch_time"), "0");
    EXPECT_NE(read_whole(output).find("\"_DE30000000\\000\\243\\377\\377||a \\042b\\042, \\077|||DE\\000\"\n"),
              std::string::npos);
}

TEST_F(Generator, SwitchTimeIsMidnightInGermany) {
    const struct {
        const char *day, *seconds;
    } days[] = {{"2025-03-03", "1740956400"}, {"2024-03-31", "1711839600"}, {"2024-04-01", "1711922400"},
                {"2024-10-27", "1729980000"}, {"2024-10-28", "1730070000"}, {"2026-03-29", "1774738800"},
                {"2026-10-25", "1792879200"}, {"2000-02-29", "951778800"},  {"2027-12-06", "1828047600"}};
    for (const auto& [day, seconds] : days) {
        // The order of the rows is not what tells the periods apart.
        lists_t lists = good_lists();
        lists["de.csv"] =
            german_header + day + ",10000000,0,09,0,,,later,,,DE\n" + "1999-12-06,10000000,0,09,0,,,earlier,,,DE\n";
        generate(lists);
        EXPECT_EQ(constant("directory_switch_time"), seconds) << day;
        EXPECT_NE(read_whole(output).find("||earlier|||DE|\\000\\011\\000\\000||later|||DE\\000"), std::string::npos);
    }
}

// FNV-1a of the tables made from the frozen lists: the same bytes wherever and
// by whatever compiler this is built.
TEST_F(Generator, SameListsSameBytes) {
    run("--allow-bad-successors " TEST_DATA "/frozen_directory " + output);
    ASSERT_EQ(status, 0);
    EXPECT_NE(said.find("/de.csv: bank codes that end with the earlier period: 1\n"), std::string::npos);
    uint64_t hash = 0xCBF29CE484222325;
    for (char c : read_whole(output)) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    EXPECT_EQ(hash, UINT64_C(6694531572275297067));
}

}  // namespace
