// The importer of the published bank lists as a program: lists that come back
// as they were, what it tells of changes, and what it refuses.
#include <algorithm>

#include "tests/unit/program_test.h"

namespace {

using widths_t = std::vector<size_t>;

std::string latin1(const std::string& utf8) {
    std::string text;
    for (size_t i = 0; i < utf8.size(); ++i) {
        auto byte = static_cast<unsigned char>(utf8[i]);
        text += byte < 0x80 ? utf8[i] : static_cast<char>((byte & 3) << 6 | (utf8[++i] & 0x3F));
    }
    return text;
}

// A row of a release as it is published: a field @2 of the pattern is column 2,
// any other itself. Fields are filled up with blanks; without widths they have
// semicolons between. A BIC leaves out its branch XXX, an id its leading zeros.
std::string published(const csv_row& row, const std::string& pattern, const widths_t& widths = {}) {
    std::string text;
    const csv_row fields = csv_fields(pattern);
    for (size_t i = 0; i < fields.size(); ++i) {
        std::string field = latin1(fields[i][0] == '@' ? row[static_cast<size_t>(fields[i][1] - '0')] : fields[i]);
        if (field.size() == 11 && field.substr(8) == "XXX") field.erase(8);
        if (fields[i] == "@0" && field.size() == 5) field.erase(0, field.find_first_not_of('0'));
        if (!widths.empty()) {
            text += field + std::string(widths[i] - field.size(), ' ');
            continue;
        }
        for (size_t at = 0; (at = field.find('"', at)) != std::string::npos; at += 2) field.insert(at, 1, '"');
        text += (i ? ";" : "") + (field.find_first_of(" ;\"") < field.size() ? '"' + field + '"' : field);
    }
    return text + (widths.size() > 20 ? "\n" : "\r\n");
}

// Rows of a release as entries of the Swiss list in JSON, their keys in two
// orders. A bank was merged into the next one that has the same texts.
std::string entries_of(const std::vector<csv_row>& rows) {
    std::map<csv_row, std::string> merged_into;
    std::string text;
    auto member = [](const char* key, std::string value) {
        for (size_t at = 0; (at = value.find('"', at)) != std::string::npos; at += 2) value.insert(at, 1, '\\');
        return std::string(",\"") + key + "\":\"" + value + '"';
    };
    for (size_t i = rows.size(); i-- > 0;) {
        const csv_row& row = rows[i];
        const std::string number = std::to_string(std::stoul(row[0])), id = "\"iid\":" + number;
        std::string entry = member("validOn", "2026-11-23"), &successor = merged_into[{row.begin() + 1, row.end()}];
        if (!successor.empty()) {
            entry += member("entryType", "BankMasterConcatenated") + ",\"newIid\":" + successor;
        } else {
            entry += member("entryType", "BankMaster") + member("sicIid", "001008") + ",\"headQuarters\":100" +
                     member("iidType", i % 2 ? "QR_IID" : "MAIN_BRANCH") + member("bankOrInstitutionName", row[2]) +
                     member("postCode", row[3]) + member("townName", row[4]) +
                     member("country", row[5].empty() ? "CH" : row[5]) + ",\"sicParticipation\":[true,{\"iid\":0}]";
            entry += row[1].empty() ? i % 2 ? ",\"bic\":null" : "" : member("bic", row[1]);
        }
        successor = number;
        text = (i ? ",\n{" : "\n{") + (i % 2 ? id + entry : entry.substr(1) + "," + id) + "}" + text;
    }
    return text;
}

// A small release of invented banks: eleven in each list.
lists_t small_release() {
    lists_t lists{
        {"de.csv", german_header}, {"bic.csv", bic_header}, {"at.csv", national_header}, {"ch.csv", national_header}};
    for (int i = 0; i < 11; ++i) {
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
    // Writes a release's lists as they are published, into the folder. Every
    // third German bank has a branch, and each BIC of a head office both forms.
    void publish(const std::string& release) {
        lists_t lists{
            {"decsv", published({}, "\"Spalte \"\"Ä\"\"\",a,b,c,d,e,f,g,h,i,j,k,l")},
            {"bic",
             "Gueltig ab / valid from 25.05.2026;;;;;;\r\nBIC;Name;SERVICE SCT;SERVICE COR;SERVICE COR1"
             ";SERVICE B2B;SERVICE SCC\r\n"},
            {"at", "Ausk\xFCnfte ohne \"Gew\xE4hr\"\r\n\r\nNr;Bankleitzahl;Bankenname;PLZ;Ort;SWIFT-Code;Web\r\n"}};
        widths_t widths{8, 1, 58, 5, 35, 27, 5, 11, 2, 6, 1, 1, 8}, longer = widths;
        longer.push_back(6);
        int number = 100000;
        for (csv_row row : csv_rows(release + "/de.csv")) {
            if (row[5].empty()) row[5] = "00000000";
            const std::string end = ",@3," + std::to_string(number) + ",U,@2,@5",
                              rule = std::string(6 - row[4].size(), '0');
            std::vector<std::string> patterns{"@1,1,@7,@8,@9,Kürzel, ,@6" + end};
            if (number++ % 3 == 0) patterns.insert(patterns.end(), {"@1,2,@7,@8,Dorf,, , " + end, patterns[0]});
            for (const std::string& pattern : patterns) {
                lists["de168"] += published(row, pattern, widths);
                lists["de174"] += published(row, pattern + "," + rule + row[4], longer);
                lists["decsv"] += published(row, pattern);
            }
            valid_from = row[0];
        }
        for (const csv_row& row : csv_rows(release + "/bic.csv")) {
            lists["bic"] += published(row, "@0,@5,@1,@2,@3,@4,1");
            if (row[0].substr(8) == "XXX") lists["bic"] += row[0] + ";Zweitname;0;" + row[2] + ";0;0;0\r\n";
        }
        for (const csv_row& row : csv_rows(release + "/at.csv")) lists["at"] += published(row, "1,@0,@2,@3,@4,@1, ");
        for (const csv_row& row : csv_rows(release + "/ch.csv")) {
            for (const char* office :
                 {"0000, ,001008,100,1,20170911,1,3,1, ,@2", "0001, ,001008,100,2, ,1,3,1, ,Filiale"}) {
                lists["ch"] +=
                    published(row, std::string("01,@0,") + office + ",Gässli, ,@3,@4, , , ,@5,30-5,@1",
                              {2, 5, 4, 5, 6, 5, 1, 8, 1, 1, 1, 15, 60, 35, 35, 10, 35, 18, 18, 5, 2, 12, 14});
            }
        }
        lists["chlist"] = "[" + entries_of(csv_rows(release + "/ch.csv")) + "]";
        lists["chjson"] = "{\"of\":{\"entries\":[5]},\"entries\":" + lists["chlist"] + ",\"end\":{}}\n";
        write_lists(folder, lists);
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
            command += german ? " --valid-from=" + valid_from : "";
            command += " " + list.substr(0, list[0] == 'b' ? 3 : 2) + "=" + folder + "/" + list;
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

// All banks of a real release, in all forms.
TEST_F(Importer, ReleaseComesBackAsItWas) {
    const std::string release = DIRECTORY_RELEASES "/2026-09";
    publish(release);
    const std::pair<const char*, const char*> forms[] = {{"de168", "ch"}, {"de174", "chlist"}, {"decsv", "chjson"}};
    for (const auto& [form, swiss] : forms) {
        import(release, {form, "bic", "at", swiss});
        ASSERT_EQ(status, 0) << said;
        for (const char* list : {"de.csv", "bic.csv", "at.csv", "ch.csv"})
            EXPECT_TRUE(imported(list) == read_file(release + "/" + list)) << form << " " << swiss << " " << list;
    }
}

TEST_F(Importer, TellsWhatHasChanged) {
    lists_t before = small_release(), after = before;
    auto change = [&](const char* list, const std::string& from, const std::string& to) {
        after[list].replace(after[list].find(from), from.size(), to);
    };
    change("de.csv", "2026-09-07,20010001,0,09,0503,,BANKDEFF001,Münzbank 1,10591,Berlin,DE\n", "");
    change("de.csv", "03,0,09,0503,,BANKDEFF003,Münzbank 3,10591,Berlin", "03,1,C1,0504,20010004,,Bank,10117,Potsdam");
    after["de.csv"] += "2026-09-07,30000000,0,09,0,,BANKDEFF300,\"Neu \"\"Bank\"\"\",1,X,DE\n";
    change("bic.csv", "BBBBDEFFXXX,1,1", "BBBBDEFFXXX,1,0");
    for (size_t at = 0; (at = after["de.csv"].find("2026-09-07", at)) != std::string::npos;)
        after["de.csv"].replace(at, 10, "2026-12-07");
    write_lists(folder + "/before", before);
    publish("/after", after);
    const std::string sums = "de: 11 banks, 11 before; removed 1, added 1, flag 1, method 1, ";
    import(folder + "/before", {"de174", "bic"});
    EXPECT_EQ(said, folder +
                        "/de174:3: warning: version 4 of rule 5 is unknown, the code has 3 (rows: 1)\n"
                        "bic: 11 banks, 11 before; sdd 1\n  BBBBDEFFXXX sdd: 1 -> 0\n" +
                        sums +
                        "rule 1, successor 1, bic 1, name 1, postal_code 1, city 1\n"
                        "  20010001 removed: Münzbank 1\n  30000000 added: Neu \"Bank\"\n  20010003 flag: 0 -> 1\n"
                        "  20010003 method: 09 -> C1\n  20010003 rule: 0503 -> 0504\n"
                        "  20010003 successor: - -> 20010004\n  20010003 bic: BANKDEFF003 -> -\n"
                        "  20010003 name: Münzbank 3 -> Bank\n  20010003 postal_code: 10591 -> 10117\n"
                        "  20010003 city: Berlin -> Potsdam\n");
    for (const char* list : {"de.csv", "bic.csv", "at.csv"}) EXPECT_EQ(imported(list), after[list]);

    // On a release of two periods the earlier one has no say any more.
    write_whole(folder + "/before/de.csv", before["de.csv"] + "2026-06-08,40000000,0,09,0,,,Alt,1,X,DE\n");
    import(folder + "/before", {"de168"}, "--keep-period");
    const std::string unknown = folder + "/de168:17: no rule is known for 30000000 (Neu \"Bank\"), 0 is taken\n" + sums;
    EXPECT_EQ(said.substr(0, unknown.size()), unknown);
    std::string both = imported("de.csv"),
                text = "2026-12-07,20010000,0,09,0503,,BANKDEFF000,Münzbank 0,10591,Berlin,DE\n";
    EXPECT_EQ(both.find(text), german_header.size() + text.size());
    EXPECT_EQ(std::count(both.begin(), both.end(), '\n'), 1 + 11 + 11);
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
    std::string json = read_file(folder + "/chjson");
    refuse("chjson", json.substr(0, json.size() / 2),
           "7: broken JSON, or no UTF-8, at byte " + std::to_string(json.size() / 2 + 1));
    for (size_t at = 0; (at = json.find("\"bic\"", at)) != std::string::npos;) json.replace(at, 5, "\"BIC\"");
    refuse("chjson", json, "1: no entry has a bic");
    refuse("chjson", "[]", "1: the list is empty");
}

TEST_F(Importer, RefusesListsThatLostBanks) {
    lists_t release = small_release();
    write_lists(folder + "/before", release);
    for (int lost : {1, 2}) {  // of eleven
        for (auto& [list, text] : release) text.erase(text.rfind('\n', text.size() - 2) + 1);
        publish("/after", release);
        for (const std::string list : {"de168", "bic", "at", "ch", "chjson"}) {
            import(folder + "/before", {list});
            if (lost == 2) {
                expect_refused("import_bank_lists: " + folder + "/" + list + ": 2 of 11 banks are gone, ");
                import(folder + "/before", {list}, "--allow-losses");
            }
            EXPECT_EQ(status, 0) << said;
        }
    }
}

TEST_F(Importer, RefusesWhatItCannotReadOrWrite) {
    publish("/before", small_release());
    const std::string before = folder + "/before ", made = folder + "/new ", at = "at=" + folder + "/at ";
    const std::string german = "de=" + folder + "/de168 ", program = "import_bank_lists: ";
    const std::pair<std::string, std::string> runs[] = {
        {before + folder + "/no/new " + at, program + folder + "/no/new: cannot be written: No such file"},
        {before + before + at, program + folder + "/before exists"},
        {before + made + "at=" + before, program + folder + "/before: cannot be read: Is a directory"},
        {"--valid-from=2026-13-01 " + before + made + german, folder + "/de168:1: bad valid_from"},
        {"--keep-period --valid-from=2026-09-07 " + before + made + german,
         program + folder + "/before/de.csv: its newest period does not begin before 2026-09-07\n"},
        {before + made + german, program + "usage: "},
        {"--keep-period " + before + made + at, program + "usage: "},
        {before + made + at + at, program + "usage: "}};
    for (const auto& [arguments, reason] : runs) {
        run(IMPORT_BANK_LISTS " " + arguments);
        expect_refused(reason);
    }
    // Files that may not grow are a disk that is full.
    run("trap '' XFSZ; ulimit -f 1; " IMPORT_BANK_LISTS " " + before + made + at);
    expect_refused(program + folder + "/new: cannot be written: File too large\n");
}

}  // namespace
