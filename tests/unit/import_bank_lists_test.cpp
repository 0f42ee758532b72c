// The importer of the published bank lists as a program: lists that come back
// as they were, what it tells of changes, and what it refuses.
#include <algorithm>

#include "tests/unit/program_test.h"

namespace {

// Lists in the forms in which they are published, out of the rows of a release.

using namespace std::string_literals;
using rows_t = std::vector<csv_row>;
using widths_t = std::vector<size_t>;

std::string latin1(const std::string& utf8) {
    std::string text;
    for (size_t i = 0; i < utf8.size(); i++) {
        auto byte = static_cast<unsigned char>(utf8[i]);
        text += byte < 0x80 ? utf8[i] : static_cast<char>((byte & 3) << 6 | (utf8[++i] & 0x3F));
    }
    return text;
}

// Fields filled up with blanks; without widths, quoted fields with semicolons between.
std::string published_row(const csv_row& fields, const widths_t& widths) {
    std::string text;
    for (size_t i = 0; i < fields.size(); i++) {
        std::string field = latin1(fields[i]);
        if (!widths.empty()) {
            text += field + std::string(widths[i] - field.size(), ' ');
            continue;
        }
        for (size_t at = 0; (at = field.find('"', at)) != std::string::npos; at += 2) field.insert(at, 1, '"');
        text += (i ? ";" : "") + (field.find_first_of(" ;\"") < field.size() ? '"' + field + '"' : field);
    }
    return text + (widths.size() == 23 ? "\n" : "\r\n");
}

// Every third bank has a branch, and stands there twice.
std::string published_german(const rows_t& rows, bool csv, bool with_rule) {
    widths_t widths{8, 1, 58, 5, 35, 27, 5, 11, 2, 6, 1, 1, 8};
    if (with_rule) widths.push_back(6);
    std::string text = csv ? published_row(csv_row(widths.size(), "Spalte \"Ä\""), {}) : "";
    for (size_t i = 0; i < rows.size(); i++) {
        const csv_row& row = rows[i];
        std::string successor = row[5].empty() ? "00000000" : row[5],
                    rule = std::string(6 - row[4].size(), '0') + row[4];
        csv_row fields{row[1], "1", row[7], row[8], row[9], "Kürzel", "", row[6], row[3]};
        for (const auto& field : {std::to_string(100000 + i), "U"s, row[2], successor, rule}) fields.push_back(field);
        fields.resize(widths.size());
        const std::string bank = published_row(fields, csv ? widths_t() : widths);
        fields[1] = "2", fields[7] = "";
        text += i % 3 == 2 ? bank + published_row(fields, csv ? widths_t() : widths) + bank : bank;
    }
    return text;
}

// A BIC of a head office stands there in both forms.
std::string published_providers(const rows_t& rows) {
    std::string text =
        "Gueltig ab / valid from 25.05.2026;;;;;;\r\n"
        "BIC;Name;SERVICE SCT;SERVICE COR;SERVICE COR1;SERVICE B2B;SERVICE SCC\r\n";
    for (const csv_row& row : rows) {
        bool twice = row[0].compare(8, 3, "XXX") == 0;
        text += published_row({twice ? row[0].substr(0, 8) : row[0], row[5], row[1], row[2], row[3], row[4], "1"}, {});
        if (twice) text += published_row({row[0], "Zweiter Name", "0", row[2], row[3], "0", "0"}, {});
    }
    return text;
}

std::string published_austrian(const rows_t& rows) {
    std::string text = "Ausk\xFCnfte ohne \"Gew\xE4hr\"\r\n\r\nNr;Bankleitzahl;Bankenname;PLZ;Ort;SWIFT-Code;Web\r\n";
    for (const csv_row& row : rows) text += published_row({"1", row[0], row[2], row[3], row[4], row[1], ""}, {});
    return text;
}

std::string published_swiss(const rows_t& rows) {
    const widths_t widths{2, 5, 4, 5, 6, 5, 1, 8, 1, 1, 1, 15, 60, 35, 35, 10, 35, 18, 18, 5, 2, 12, 14};
    std::string text;
    for (const csv_row& row : rows) {
        std::string id = row[0].substr(row[0].find_first_not_of('0'));
        for (const char* branch : {"0000", "0001"}) {
            csv_row fields{"01", id, branch, "", "001008", "100", "1", "20170911", "1", "3", "1", "", row[2], "Gässli"};
            for (const auto& field : {""s, row[3], row[4], ""s, ""s, ""s, row[5], "30"s, row[1]})
                fields.push_back(field);
            text += published_row(fields, widths);
        }
    }
    return text;
}

// A small release of invented banks: eleven in each list.
lists_t small_release() {
    lists_t lists{
        {"de.csv", german_header}, {"bic.csv", bic_header}, {"at.csv", national_header}, {"ch.csv", national_header}};
    for (int i = 0; i < 11; i++) {
        std::string n = std::to_string(i), id = std::to_string(10000 + i), bic = "BANKDEFF" + id.substr(2);
        lists["de.csv"] += "2026-09-07,200" + id + ",0,09,0503,," + bic + ",Münzbank " + n + ",10591,Berlin,DE\n";
        lists["bic.csv"] += std::string(4, static_cast<char>('A' + i)) + "DEFFXXX,1,1,0,1,Bank " + n + "\n";
        lists["at.csv"] += id + "," + bic + ",Bank; " + n + ",1090,Wien,AT\n";
        lists["ch.csv"] += id + "," + bic + ",Alpbank " + n + ",8022,Zürich,\n";
    }
    return lists;
}

class Importer : public ProgramTest {
protected:
    // Writes a release's lists as they are published, into the folder.
    void publish(const std::string& release) {
        rows_t german = csv_rows(release + "/de.csv");
        for (const csv_row& row : german) valid_from = std::max(valid_from, row[0]);
        german.erase(std::remove_if(german.begin(), german.end(), [&](auto& row) { return row[0] != valid_from; }),
                     german.end());
        write_lists(folder, {{"de168", published_german(german, false, false)},
                             {"de174", published_german(german, false, true)},
                             {"decsv", published_german(german, true, false)},
                             {"bic", published_providers(csv_rows(release + "/bic.csv"))},
                             {"at", published_austrian(csv_rows(release + "/at.csv"))},
                             {"ch", published_swiss(csv_rows(release + "/ch.csv"))}});
    }

    void publish(const std::string& name, const lists_t& release) {
        write_lists(folder + name, release);
        publish(folder + name);
    }

    // Imports lists out of the folder into folder/new.
    void import(const std::string& previous, const std::vector<std::string>& lists, const std::string& options = "") {
        std::filesystem::remove_all(folder + "/new");
        std::string command = IMPORT_BANK_LISTS " " + options;
        for (const std::string& list : lists) {
            bool german = list.compare(0, 2, "de") == 0;
            command += (german ? " --valid-from=" + valid_from + " de=" : " " + list + "=") + folder + "/" + list;
        }
        run(command + " " + previous + " " + folder + "/new");
    }

    std::string imported(const std::string& list) { return read_file(folder + "/new/" + list); }

    // Neither the new folder nor the one that was to become it is there.
    void expect_refused(const std::string& reason) {
        EXPECT_EQ(status, 1);
        EXPECT_EQ(said.compare(0, reason.size(), reason), 0) << said << reason;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            std::string name = entry.path().filename().string();
            EXPECT_TRUE(name != "new" && name[0] != '.') << name;
        }
    }

    std::string valid_from;
};

// All banks of the real lists, in all forms.
TEST_F(Importer, ReleasesComeBackAsTheyWere) {
    for (const char* name : {"2025-03", "2026-09"}) {
        const std::string release = std::string(DIRECTORY_RELEASES "/") + name;
        valid_from = "";
        publish(release);
        // A release of two periods is made on top of one that has the earlier.
        lists_t earlier{{"de.csv", german_header}};
        for (const char* list : {"bic.csv", "at.csv", "ch.csv"}) earlier[list] = read_file(release + "/" + list);
        std::ifstream german(release + "/de.csv");
        for (std::string line; std::getline(german, line);) {
            if (line < valid_from) earlier["de.csv"] += line + "\n";
        }
        write_lists(folder + "/earlier", earlier);
        bool two_periods = earlier["de.csv"] != german_header;
        for (const char* form : {"de168", "de174", "decsv"}) {
            import(two_periods ? folder + "/earlier" : release, {form, "bic", "at", "ch"},
                   two_periods ? "--keep-period" : "");
            ASSERT_EQ(status, 0) << said;
            for (const auto& [list, ignored] : earlier)
                EXPECT_TRUE(imported(list) == read_file(release + "/" + list)) << release << " " << form << list;
        }
    }
}

TEST_F(Importer, TellsWhatHasChanged) {
    lists_t before = small_release(), after = before;
    auto change = [&](const char* list, const std::string& from, const std::string& to) {
        after[list].replace(after[list].find(from), from.size(), to);
    };
    change("de.csv", "2026-09-07,20010001,0,09,0503,,BANKDEFF001,Münzbank 1,10591,Berlin,DE\n", "");
    change("de.csv", "03,0,09,0503,,BANKDEFF003,Münzbank 3,10591,Berlin", "03,1,C1,0504,20010004,,Bank,10117,Potsdam");
    after["de.csv"] += "2026-09-07,30000000,0,09,0,,BANKDEFF300,\"Neu, Bank\",1,X,DE\n";
    change("bic.csv", "BBBBDEFFXXX,1,1", "BBBBDEFFXXX,1,0");
    write_lists(folder + "/before", before);
    publish("/after", after);
    import(folder + "/before", {"de174", "bic"});
    EXPECT_EQ(said, folder +
                        "/de174:3: warning: version 4 of rule 5 is unknown, the code has 3 (rows: 1)\n"
                        "bic: 11 banks, 11 before; sdd 1\n  BBBBDEFFXXX sdd: 1 -> 0\n"
                        "de: 11 banks, 11 before; removed 1, added 1, flag 1, method 1, rule 1, successor 1, bic 1, "
                        "name 1, postal_code 1, city 1\n"
                        "  20010001 removed: Münzbank 1\n  30000000 added: Neu, Bank\n  20010003 flag: 0 -> 1\n"
                        "  20010003 method: 09 -> C1\n  20010003 rule: 0503 -> 0504\n"
                        "  20010003 successor: - -> 20010004\n  20010003 bic: BANKDEFF003 -> -\n"
                        "  20010003 name: Münzbank 3 -> Bank\n  20010003 postal_code: 10591 -> 10117\n"
                        "  20010003 city: Berlin -> Potsdam\n");
    for (const char* list : {"de.csv", "bic.csv", "at.csv"}) EXPECT_EQ(imported(list), after[list]);
    import(folder + "/before", {"de168"});
    const std::string unknown = folder + "/de168:17: no rule is known for 30000000 (Neu, Bank), 0 is taken\nde: 11";
    EXPECT_EQ(said.substr(0, unknown.size()), unknown);
    EXPECT_EQ(imported("bic.csv"), before["bic.csv"]);
}

TEST_F(Importer, RefusesDamagedLists) {
    publish("/before", small_release());
    auto refuse = [&](const std::string& list, const std::string& content, const std::string& reason) {
        const std::string file = folder + "/" + list, good = read_file(file);
        write_whole(file, content);
        import(folder + "/before", {list});
        expect_refused(file + ":" + reason + "\n");
        write_whole(file, good);
    };
    for (const csv_row& fault : csv_rows(TEST_DATA "/published_list_faults.csv", "list,from,to,line,reason,what")) {
        SCOPED_TRACE(fault[0] + ": " + fault[5]);
        std::string damaged = read_file(folder + "/" + fault[0]), from = unescaped(fault[1]);
        ASSERT_NE(damaged.find(from), std::string::npos);
        refuse(fault[0], damaged.replace(damaged.find(from), from.size(), unescaped(fault[2])),
               fault[3] + ": " + fault[4]);
    }
    for (const char* list : {"de168", "de174", "decsv", "bic", "at", "ch"}) {
        const std::string good = read_file(folder + "/" + list);
        refuse(list, "", "1: the list is empty");
        refuse(list, good.substr(0, good.size() - 1),
               std::to_string(std::count(good.begin(), good.end(), '\n')) + ": the last line has no line end");
    }
}

TEST_F(Importer, RefusesListsThatLostBanks) {
    lists_t release = small_release();
    write_lists(folder + "/before", release);
    for (int lost : {1, 2}) {  // of eleven
        for (auto& [list, text] : release) text.erase(text.rfind('\n', text.size() - 2) + 1);
        publish("/after", release);
        for (const std::string list : {"de168", "bic", "at", "ch"}) {
            import(folder + "/before", {list});
            if (lost == 1) {
                EXPECT_EQ(status, 0) << said;
                continue;
            }
            expect_refused("import_bank_lists: " + folder + "/" + list + ": 2 of 11 banks are gone, ");
            import(folder + "/before", {list}, "--allow-losses");
            EXPECT_EQ(status, 0) << said;
        }
    }
}

TEST_F(Importer, RefusesWhatItCannotReadOrWrite) {
    publish("/before", small_release());
    const std::string before = folder + "/before ", made = folder + "/new ", at = "at=" + folder + "/at ";
    const std::string german = "de=" + folder + "/de168 ", usage = "import_bank_lists: usage: ";
    const std::pair<std::string, std::string> runs[] = {
        {before + folder + "/no/new " + at,
         "import_bank_lists: " + folder + "/no/new: cannot be written: No such file"},
        {before + before + at, "import_bank_lists: " + folder + "/before exists"},
        {folder + "/no " + made + at, "import_bank_lists: " + folder + "/no/de.csv: cannot be opened: No such file"},
        {before + made + "at=" + before, "import_bank_lists: " + folder + "/before: cannot be read: Is a directory"},
        {"--valid-from=2026-13-01 " + before + made + german, folder + "/de168:1: bad valid_from"},
        {"--keep-period --valid-from=2026-09-07 " + before + made + german,
         "import_bank_lists: " + folder + "/before/de.csv: its newest period does not begin before 2026-09-07\n"},
        {before + made + german, usage},
        {"--keep-period " + before + made + at, usage}};
    for (const auto& [arguments, reason] : runs) {
        run(IMPORT_BANK_LISTS " " + arguments);
        expect_refused(reason);
    }
    // Files that may not grow are a disk that is full.
    run("trap '' XFSZ; ulimit -f 1; " IMPORT_BANK_LISTS " " + before + made + at);
    expect_refused("import_bank_lists: " + folder + "/new: cannot be written: File too large\n");
}

}  // namespace
