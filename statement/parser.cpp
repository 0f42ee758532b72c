#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "statement/mt940.h"
#include "statement/parser_error.h"

int parser_error(sepa_stmt_parser_t* handle, const char* format, ...) {
    va_list args;
    va_start(args, format);
    vsnprintf(handle->error, sizeof handle->error, format, args);
    va_end(args);
    return 0;
}

// The system's text for errno; strerror is not safe in threads everywhere.
struct errno_text_t {
    char buffer[128];
    const char* text = strerror_r(errno, buffer, sizeof buffer);
};

sepa_stmt_parser_t* sepa_stmt_parser_new() {
    return static_cast<sepa_stmt_parser_t*>(calloc(1, sizeof(sepa_stmt_parser_t)));
}

static void free_transactions(sepa_stmt_tx_t* tx) {
    while (tx) {
        sepa_stmt_tx_t* next = tx->next;
        free(tx);
        tx = next;
    }
}

void drop_statements(sepa_stmt_parser_t* handle) {
    sepa_statement_t* statement = handle->first;
    handle->first = handle->last = nullptr;
    while (statement) {
        sepa_statement_t* next = statement->next;
        free_transactions(statement->tx_first);
        free(statement);
        statement = next;
    }
}

void sepa_stmt_parser_free(sepa_stmt_parser_t* handle) {
    if (!handle) return;
    drop_statements(handle);
    if (handle->parser) free(handle->parser->text);
    free(handle->parser);
    free(handle);
}

int sepa_stmt_parser_load(sepa_stmt_parser_t* handle, int format, const char* filename) {
    if (!handle) return 0;
    if (handle->format) return parser_error(handle, "Parser already used");
    handle->format = format;
    if (format != SEPA_STMT_FORMAT_MT940) return parser_error(handle, "Format not (yet) supported");
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    if (!handle->parser) {
        return parser_error(handle, "Error while allocating %lu bytes: %s",
                            static_cast<unsigned long>(sizeof(mt940_state_t)), errno_text_t().text);
    }
    return mt940_load_file(handle, filename);
}

// Not blocking: opening a pipe that nobody writes to must not hang the process.
static int open_file(const char* filename) {
    if (filename) return open(filename, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    errno = EFAULT;
    return -1;
}

static bool read_fully(sepa_stmt_parser_t* handle, int file, char* to, size_t size) {
    while (size) {
        ssize_t count = read(file, to, size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            parser_error(handle, "Error while reading from file: %s", errno_text_t().text);
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
        parser_error(handle, "Can't stat input file: %s", errno_text_t().text);
        return nullptr;
    }
    if (info.st_size == 0) {
        parser_error(handle, "Input file is empty");
        return nullptr;
    }
    auto size = static_cast<size_t>(info.st_size);
    auto* text = static_cast<char*>(malloc(size + 1));
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
    if (file < 0) return parser_error(handle, "Can't open input file: %s", errno_text_t().text);
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
