// The generator of the bank directory as a program: what it refuses, what it
// writes, and what it leaves behind.
#include "tests/unit/program_test.h"

namespace {

// Small lists without a fault, a row each.
lists_t good_lists() {
    return {{"de.csv", german_header + "2025-03-03,10000000,0,09,4201,,MARKDEF1100,Bundesbank,10591,Berlin,DE\n"},
            {"at.csv", national_header + "00100,NABAATWWXXX,Nationalbank,1090,Wien,AT\n"},
            {"ch.csv", national_header + "00100,SNBZCHZZXXX,Nationalbank,8022,Zürich,\n"},
            {"bic.csv", bic_header + "MARKDEFFXXX,1,1,0,1,Bundesbank\n"}};
}

class Generator : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        output = folder + "/tables.inc";
    }

    void run_generator(const std::string& arguments) { run(GEN_DIRECTORY " " + arguments); }

    void generate(const lists_t& lists, const std::string& option = "") {
        write_lists(folder, lists);
        run_generator(option + " " + folder + " " + output);
    }

    std::string constant(const std::string& name) {
        std::string text = read_file(output), start = " " + name + " = ";
        size_t at = text.find(start) + start.size();
        return text.substr(at, text.find(';', at) - at);
    }

    std::string output;
};

// Lines are counted from the header, which is line 1 and comes with the fault;
// the good row is line 2.
TEST_F(Generator, RefusesRows) {
    for (const csv_row& fault : csv_rows(TEST_DATA "/bank_list_faults.csv", "list,rows,line,reason,what")) {
        SCOPED_TRACE(fault[4]);
        write_whole(output, "as it was");
        lists_t lists = good_lists();
        if (fault[2] == "1") lists[fault[0]].clear();
        lists[fault[0]] += unescaped(fault[1]);
        generate(lists);
        EXPECT_EQ(status, 1);
        EXPECT_EQ(said, folder + "/" + fault[0] + ":" + fault[2] + ": " + fault[3] + "\n");
        EXPECT_EQ(read_file(output), "as it was");
        EXPECT_FALSE(std::filesystem::exists(output + ".tmp"));
    }
}

TEST_F(Generator, TakesWhatJustFits) {
    lists_t lists = good_lists();
    lists["de.csv"] += unescaped(
        "2025-03-03,20000000,0,09,0,,,{160},,,DE\n2025-03-03,30000000,0,a3,065535,,,\"a \"\"b\"\", ?\",,\"\",DE\n");
    lists["at.csv"] += unescaped("00200,,{161},,,AT\n");
    lists["bic.csv"] += unescaped("LONGDEFFXXX,1,0,0,0,{152}\n");
    generate(lists);
    EXPECT_EQ(constant("directory_count"), "8");
    EXPECT_EQ(constant("directory_cells"), "10");
    EXPECT_EQ(constant("directory_switch_time"), "0");
    EXPECT_NE(read_file(output).find("\"_DE30000000\\000\\243\\377\\377||a \\042b\\042, \\077|||DE\\000\"\n"),
              std::string::npos);
}

TEST_F(Generator, WarnsOfWhatTheLibraryWillNotCheck) {
    lists_t lists = good_lists();
    lists["ch.csv"] = national_header;
    lists["at.csv"] += "00300,,a,,,AT\n00200,,a,,,AT\n00100,,b,,,AT\n";
    lists["at.csv"].erase(national_header.size(), lists["at.csv"].find("00300") - national_header.size());
    for (const char* codes : {"53,503", "C0,5700", "12,0", "62,0", "12,0", "09,5800", "09,504", "09,900"}) {
        std::string code = std::to_string(20000000 + lists["de.csv"].size());
        lists["de.csv"] += "2025-03-03," + code + ",0," + codes + ",,,a,,,DE\n";
    }
    generate(lists);
    EXPECT_EQ(status, 0);
    const std::string de = folder + "/de.csv:", warning = ": warning: ";
    EXPECT_EQ(said, de + "5" + warning + "method 12 does not exist (rows: 2)\n" +      //
                        de + "6" + warning + "method 62 does not exist (rows: 1)\n" +  //
                        de + "10" + warning + "no version of rule 9 is known, this is 0 (rows: 1)\n" + de + "8" +
                        warning + "rule 58 does not exist (rows: 1)\n" +  //
                        de + "9" + warning + "version 4 of rule 5 is unknown, the code has 3 (rows: 1)\n" + folder +
                        "/at.csv:3" + warning + "rows out of order from 00200 on\n" +  //
                        folder + "/ch.csv:1" + warning + "a list without banks\n");
}

TEST_F(Generator, KnowsWhatTheReleasesUse) {
    for (const auto& release : std::filesystem::directory_iterator(DIRECTORY_RELEASES)) {
        if (!release.is_directory()) continue;
        run_generator(release.path().string() + " " + output);
        EXPECT_EQ(status, 0);
        // One bank of 2025-03 has a method that is in no catalogue.
        const std::string known = "warning: method 12 does not exist (rows: 1)\n";
        size_t warning = said.rfind("warning: ");
        EXPECT_TRUE(warning == std::string::npos || said.compare(warning, known.size(), known) == 0) << said;
    }
}

TEST_F(Generator, RefusesWhatItCannotReadOrWrite) {
    generate({{"de.csv", german_header}});
    EXPECT_EQ(said, "gen_directory: " + folder + "/bic.csv: cannot be opened: No such file or directory\n");
    generate(
        {{"de.csv", german_header}, {"at.csv", national_header}, {"ch.csv", national_header}, {"bic.csv", bic_header}});
    EXPECT_NE(said.find("gen_directory: " + folder + ": the lists are empty\n"), std::string::npos);
    generate(good_lists());
    EXPECT_EQ(status, 0);
    std::filesystem::create_directory(folder + "/taken");
    for (const char* arguments : {"/missing/tables.inc", "/taken", ""}) {
        run_generator(folder + (*arguments ? " " + folder + arguments : ""));
        EXPECT_EQ(status, 1) << arguments;
    }
    EXPECT_FALSE(std::filesystem::exists(folder + "/taken.tmp"));
    run_generator("--allow " + folder + " " + output);
    EXPECT_EQ(status, 1);
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
        EXPECT_NE(read_file(output).find("||earlier|||DE|\\000\\011\\000\\000||later|||DE\\000"), std::string::npos);
    }
}

// FNV-1a of the tables made from the frozen lists, bad successors and all: the
// same bytes wherever and by whatever compiler this is built.
TEST_F(Generator, SameListsSameBytes) {
    run_generator("--for-tests " TEST_DATA "/frozen_directory " + output);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(said, TEST_DATA "/frozen_directory/de.csv: bank codes that end with the earlier period: 1\n");
    EXPECT_EQ(fnv1a(read_file(output)), UINT64_C(5872033552984288955));
}

}  // namespace
