// Makes a release of the bank lists out of the lists as they are published, and
// tells what has changed since the release before it:
//
//     import_bank_lists [OPTION...] PREVIOUS NEW LIST=FILE...
//
// PREVIOUS is the folder of a release, NEW the folder to make. A LIST is de,
// bic, at or ch; one that is not given is taken over from PREVIOUS as it is.
// IBAN rules that the German list does not tell come from PREVIOUS.
//
//     --valid-from=YYYY-MM-DD  the first day of the German list; goes with de=
//     --keep-period            keeps the newest period of PREVIOUS as well: the
//                              library goes over to the new one on its first day
//     --allow-losses           takes a list that lost more than a tenth of its banks
//
// The first fault ends it with "file:line: reason" and status 1, and there is
// no NEW then.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <new>

#include "bank_lists.h"
#include "files.h"
#include "list_changes.h"
#include "published_lists.h"

const char* const program_name = "import_bank_lists";

namespace {

namespace fs = std::filesystem;

// A list that lost more than this part of its banks is hardly the whole list.
constexpr size_t loss_part = 10;

using texts_t = std::map<std::string, std::string>;  // by the name of the list

struct arguments_t {
    std::string valid_from;
    bool keep_period = false;
    bool allow_losses = false;
    std::string previous, release;
    texts_t files;
};

// One of the four lists on its way.
struct list_job_t {
    const char* name;
    const char* header;
    size_t key;
    list_t lists_t::*place;
};

const std::array<list_job_t, 4> jobs{{{"de", german_header, de_code, &lists_t::de},
                                      {"bic", bic_header, bics_bic, &lists_t::bic},
                                      {"at", national_header, national_id, &lists_t::at},
                                      {"ch", national_header, national_id, &lists_t::ch}}};

[[noreturn]] void stop_with_usage() {
    stop(
        "usage: [--valid-from=YYYY-MM-DD] [--keep-period] [--allow-losses] PREVIOUS NEW LIST=FILE...\n"
        "LIST is de (with --valid-from), bic, at or ch");
}

// The list of this name, or null.
const list_job_t* job_of(const std::string& name) {
    auto job = std::find_if(jobs.begin(), jobs.end(), [&](const list_job_t& known) { return name == known.name; });
    return job == jobs.end() ? nullptr : &*job;
}

arguments_t read_arguments(int argc, char** argv) {
    arguments_t arguments;
    std::vector<std::string> folders;
    const std::string valid_from = "--valid-from=";
    for (int i = 1; i < argc; ++i) {
        const std::string text = argv[i];
        size_t equals = text.find('=');
        if (text == "--keep-period") {
            arguments.keep_period = true;
        } else if (text == "--allow-losses") {
            arguments.allow_losses = true;
        } else if (text.compare(0, valid_from.size(), valid_from) == 0) {
            arguments.valid_from = text.substr(valid_from.size());
        } else if (equals != std::string::npos && job_of(text.substr(0, equals))) {
            if (!arguments.files.emplace(text.substr(0, equals), text.substr(equals + 1)).second) stop_with_usage();
        } else if (!text.empty() && text[0] != '-') {
            folders.push_back(text);
            while (folders.back().size() > 1 && folders.back().back() == '/') folders.back().pop_back();
        } else {
            stop_with_usage();
        }
    }
    bool dated = !arguments.valid_from.empty(), german = arguments.files.count("de") == 1;
    if (dated != german || (arguments.keep_period && !german)) stop_with_usage();
    if (folders.size() != 2 || arguments.files.empty()) stop_with_usage();
    arguments.previous = folders[0];
    arguments.release = folders[1];
    return arguments;
}

// ---------------------------------------------------------------- lists ----

// The rows of the newest period.
list_t newest_period(const list_t& list) {
    std::string newest;
    for (const row_t& row : list.rows) newest = std::max(newest, row.fields[de_valid_from]);
    list_t period{list.file, {}};
    for (const row_t& row : list.rows) {
        if (row.fields[de_valid_from] == newest) period.rows.push_back(row);
    }
    return period;
}

// Gives each bank without a rule the one that it had, and names those that had
// none: rule 0 is theirs unless somebody knows better.
void fill_in_rules(list_t* list, const list_t& before) {
    std::map<std::string, std::string> rules;
    for (const row_t& row : before.rows) rules[row.fields[de_code]] = row.fields[de_rule];
    for (row_t& row : list->rows) {
        if (!row.fields[de_rule].empty()) continue;
        auto known = rules.find(row.fields[de_code]);
        row.fields[de_rule] = known == rules.end() ? "0" : known->second;
        if (known != rules.end()) continue;
        printf("%s:%zu: no rule is known for %s (%s), 0 is taken\n", row.file.c_str(), row.line,
               row.fields[de_code].c_str(), row.fields[de_name].c_str());
    }
}

// The German list with that of the period before it, bank code by bank code.
list_t both_periods(const list_t& earlier, const list_t& later, const std::string& valid_from) {
    if (!earlier.rows.empty() && earlier.rows[0].fields[de_valid_from] >= valid_from) {
        stop(earlier.file + ": its newest period does not begin before " + valid_from);
    }
    list_t both{later.file, earlier.rows};
    both.rows.insert(both.rows.end(), later.rows.begin(), later.rows.end());
    std::stable_sort(both.rows.begin(), both.rows.end(),
                     [](const row_t& a, const row_t& b) { return a.fields[de_code] < b.fields[de_code]; });
    return both;
}

list_t read_published(const std::string& name, const list_text_t& text, const std::string& valid_from) {
    if (name == "de") return read_german_banks(text, valid_from);
    if (name == "bic") return read_providers(text);
    return name == "at" ? read_austrian_banks(text) : read_swiss_banks(text);
}

// Prints what has changed, and refuses what can hardly be the whole list.
void tell_changes(const list_job_t& job, const list_t& before, const list_t& after, bool allow_losses) {
    list_changes_t changes = list_changes(job.name, before, after, job.header, job.key);
    if (changes.removed * loss_part > before.rows.size() && !allow_losses) {
        stop(after.file + ": " + std::to_string(changes.removed) + " of " + std::to_string(before.rows.size()) +
             " banks are gone, more than a tenth; --allow-losses takes the list all the same");
    }
    fputs(changes.report.c_str(), stdout);
}

// --------------------------------------------------------------- output ----

std::string quoted(const std::string& field) {
    if (field.find_first_of(",\"") == std::string::npos) return field;
    std::string text = "\"";
    for (char c : field) text += c == '"' ? std::string("\"\"") : std::string(1, c);
    return text + '"';
}

std::string csv_text(const list_t& list, const std::string& header) {
    std::string text = header + "\n";
    for (const row_t& row : list.rows) {
        for (size_t i = 0; i < row.fields.size(); ++i) text += (i ? "," : "") + quoted(row.fields[i]);
        text += '\n';
    }
    return text;
}

bool write_file(const fs::path& path, const std::string& content) {
    FILE* file = fopen(path.c_str(), "wb");
    if (!file) return false;
    bool written = fwrite(content.data(), 1, content.size(), file) == content.size();
    return fclose(file) == 0 && written;
}

// Writes a folder beside `release` and renames it, so that no half of a release
// ever stands under its name.
void write_release(const std::string& release, const texts_t& contents) {
    fs::path path(release);
    fs::path temporary = path.parent_path() / ("." + path.filename().string() + "." + std::to_string(getpid()));
    bool written = true;
    if (mkdir(temporary.c_str(), 0777) != 0) stop(release + ": cannot be written: " + strerror(errno));
    for (const auto& [name, content] : contents) written = written && write_file(temporary / (name + ".csv"), content);
    if (written && rename(temporary.c_str(), release.c_str()) == 0) return;
    int error = errno;
    std::error_code ignored;
    fs::remove_all(temporary, ignored);
    stop(release + ": cannot be written: " + strerror(error));
}

}  // namespace

int main(int argc, char** argv) try {
    const arguments_t arguments = read_arguments(argc, argv);
    std::error_code error;
    if (fs::symlink_status(arguments.release, error).type() != fs::file_type::not_found) {
        stop(arguments.release + " exists, or cannot be made");
    }

    texts_t contents;
    lists_t before, after;
    for (const list_job_t& job : jobs) {
        const std::string file = arguments.previous + "/" + job.name + ".csv";
        contents[job.name] = read_file(file);
        before.*job.place = read_list({file, contents[job.name]}, job.header);
        after.*job.place = before.*job.place;
    }
    for (const auto& [name, file] : arguments.files) {
        after.*job_of(name)->place = read_published(name, {file, read_file(file)}, arguments.valid_from);
    }
    if (arguments.files.count("de")) {
        before.de = newest_period(before.de);
        fill_in_rules(&after.de, before.de);
        if (arguments.keep_period) after.de = both_periods(before.de, after.de, arguments.valid_from);
    }
    const directory_t judged = make_directory(after, false);
    for (const std::string& warning : judged.warnings) printf("%s\n", warning.c_str());

    for (const auto& [name, file] : arguments.files) {
        const list_job_t& job = *job_of(name);
        const list_t& is = after.*job.place;
        tell_changes(job, before.*job.place, name == "de" ? newest_period(is) : is, arguments.allow_losses);
    }
    for (const auto& [name, file] : arguments.files) {
        contents[name] = csv_text(after.*job_of(name)->place, job_of(name)->header);
    }
    write_release(arguments.release, contents);
    return 0;
} catch (const std::bad_alloc&) {
    stop("memory has run out");
}
