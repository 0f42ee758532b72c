#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "sepa/platform/pages.h"
#include "sepa/statement/mt940.h"
#include "sepa/statement/parser_handle.h"

using sepa_internal::parser_error;

// The system's text for errno, in English whatever the process's locale.
static const char* system_error_text() {
    int code = errno;
    locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    if (!c_locale) return "";
    const char* text = strerror_l(code, c_locale);
    freelocale(c_locale);
    return text;
}

static bool is_regular(const char* filename) {
    struct stat info;
    return stat(filename, &info) == 0 && S_ISREG(info.st_mode);
}

// Opening must not block: a pipe that nobody writes to would hang the process.
// A regular file that another process has a lease on is refused then, while
// the system asks that process to let go and, unless it is set up otherwise,
// takes the lease away after 45 seconds. So the file is asked for again and
// again. Never without O_NONBLOCK: by then the name can be a pipe's. What is no
// regular file is asked for once more, since it may have been one.
static int open_file(const char* filename) {
    if (!filename) {
        errno = EFAULT;
        return -1;
    }
    constexpr timespec pause = {0, 5000000};
    constexpr int most_pauses = 12000;  // a minute
    bool regular = true;
    for (int pauses = 0;; ++pauses) {
        int file = open(filename, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (file >= 0 || errno != EWOULDBLOCK || !regular || pauses == most_pauses) return file;
        nanosleep(&pause, nullptr);
        regular = is_regular(filename);
    }
}

static bool read_fully(sepa_stmt_parser_t* handle, int file, char* to, size_t size) {
    while (size) {
        ssize_t count = read(file, to, size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            parser_error(handle, "Error while reading from file: %s", system_error_text());
            return false;
        }
        if (count == 0) {
            parser_error(handle, "Error while reading from file: unexpected end of file");
            return false;
        }
        to += count;
        size -= static_cast<size_t>(count);
    }
    return true;
}

// The whole file and a NUL, to be freed by the caller; null with the error text set.
static char* read_text(sepa_stmt_parser_t* handle, int file) {
    struct stat info;
    if (fstat(file, &info) < 0) {
        parser_error(handle, "Can't stat input file: %s", system_error_text());
        return nullptr;
    }
    if (info.st_size == 0) {
        parser_error(handle, "Input file is empty");
        return nullptr;
    }
    auto size = static_cast<size_t>(info.st_size);
    auto* text = static_cast<char*>(sepa_internal::allocate_large(size + 1));
    if (!text) {
        parser_error(handle, "Failed to allocate %li bytes", static_cast<long>(info.st_size));
        return nullptr;
    }
    if (!read_fully(handle, file, text, size)) {
        free(text);
        return nullptr;
    }
    text[size] = '\0';
    return text;
}

int mt940_load_file(sepa_stmt_parser_t* handle, const char* filename) {
    if (!handle) return 0;
    if (!handle->parser) return parser_error(handle, "MT940 parser not initialized");
    // The records of an earlier file point into its text.
    if (handle->parser->text) return parser_error(handle, "Parser already used");
    int file = open_file(filename);
    if (file < 0) return parser_error(handle, "Can't open input file: %s", system_error_text());
    char* text = read_text(handle, file);
    close(file);
    if (!text) return 0;
    if (!mt940_parse(handle, text)) {
        free(text);
        return 0;
    }
    handle->parser->text = text;
    return 1;
}

int sepa_stmt_parser_load(sepa_stmt_parser_t* handle, int format, const char* filename) {
    if (!handle) return 0;
    if (handle->format) return parser_error(handle, "Parser already used");
    handle->format = format;
    if (format != SEPA_STMT_FORMAT_MT940) return parser_error(handle, "Format not (yet) supported");
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    if (!handle->parser) {
        return parser_error(handle, "Error while allocating %lu bytes: %s",
                            static_cast<unsigned long>(sizeof(mt940_state_t)), system_error_text());
    }
    return mt940_load_file(handle, filename);
}
