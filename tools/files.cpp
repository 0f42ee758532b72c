#include "files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "list_text.h"

void stop(const std::string& reason) {
    fprintf(stderr, "%s: %s\n", program_name, reason.c_str());
    exit(1);
}

void stop(const std::string& file, size_t line, const std::string& reason) {
    fprintf(stderr, "%s:%zu: %s\n", file.c_str(), line, reason.c_str());
    exit(1);
}

std::string read_file(const std::string& name) {
    FILE* file = fopen(name.c_str(), "rb");
    if (!file) stop(name + ": cannot be opened: " + strerror(errno));
    std::string content;
    char buffer[65536];
    size_t got;
    while ((got = fread(buffer, 1, sizeof buffer, file)) > 0) content.append(buffer, got);
    int error = ferror(file) ? errno : 0;
    fclose(file);
    if (error) stop(name + ": cannot be read: " + strerror(error));
    return content;
}
