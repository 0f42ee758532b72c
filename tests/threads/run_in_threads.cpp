// Runs one script in several threads of the thread-safe engine at once, each
// with requests of its own:
//
//   run_in_threads PHP_INI SCRIPT THREADS REQUESTS
//
// Prints what the requests print, each request in one piece. Scripts have one
// more function, meet(), which in a thread's first request waits until all
// threads have come to it. It returns the thread's number.
#include <dlfcn.h>
#include <pthread.h>
#include <sapi/embed/php_embed.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

static const char* script;
static int requests;
static pthread_barrier_t meeting;
static pthread_mutex_t printing = PTHREAD_MUTEX_INITIALIZER;
static thread_local bool in_first_request;
static thread_local long thread_number;
static thread_local std::string* output;

static size_t collect(const char* text, size_t length) {
    if (output) output->append(text, length);
    return length;
}

// Comes before libc's, which guards the zone by a lock that the sanitizer does
// not see, around memory that it does see freed. This lock it sees.
extern "C" void tzset() noexcept {
    static const auto of_libc = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "tzset"));
    static pthread_mutex_t zone = PTHREAD_MUTEX_INITIALIZER;
    pthread_mutex_lock(&zone);
    of_libc();
    pthread_mutex_unlock(&zone);
}

ZEND_BEGIN_ARG_INFO_EX(no_arguments, 0, 0, 0)
ZEND_END_ARG_INFO()

static ZEND_FUNCTION(meet) {
    if (in_first_request) pthread_barrier_wait(&meeting);
    RETURN_LONG(thread_number);
}

static const zend_function_entry functions[] = {ZEND_FE(meet, no_arguments) ZEND_FE_END};

static zend_module_entry meeting_module = {
    STANDARD_MODULE_HEADER,    "meeting", functions, nullptr, nullptr, nullptr, nullptr, nullptr, "1",
    STANDARD_MODULE_PROPERTIES};

static int start_engine(sapi_module_struct* sapi) {
#if PHP_VERSION_ID < 80200
    return php_module_startup(sapi, &meeting_module, 1);
#else
    return php_module_startup(sapi, &meeting_module);
#endif
}

static void run_script() {
    if (php_request_startup() != SUCCESS) exit(3);
    zend_first_try {
        zend_file_handle file = {};
#if PHP_VERSION_ID >= 70400
        zend_stream_init_filename(&file, script);
#else
        file.type = ZEND_HANDLE_FILENAME;
        file.filename = script;
#endif
        php_execute_script(&file);
#if PHP_VERSION_ID >= 80100
        zend_destroy_file_handle(&file);
#endif
    }
    zend_end_try();
    php_request_shutdown(nullptr);
}

static void* run_thread(void* number) {
    ts_resource(0);
    thread_number = reinterpret_cast<long>(number);
    in_first_request = true;
    for (int i = 0; i < requests; ++i) {
        std::string text;
        output = &text;
        run_script();
        output = nullptr;
        in_first_request = false;
        pthread_mutex_lock(&printing);
        fwrite(text.data(), 1, text.size(), stdout);
        pthread_mutex_unlock(&printing);
    }
    ts_free_thread();
    return nullptr;
}

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    script = argv[2];
    std::vector<pthread_t> threads(strtoul(argv[3], nullptr, 10));
    requests = static_cast<int>(strtol(argv[4], nullptr, 10));
    pthread_barrier_init(&meeting, nullptr, static_cast<unsigned>(threads.size()));
    php_embed_module.php_ini_path_override = argv[1];
    php_embed_module.ub_write = collect;
    php_embed_module.startup = start_engine;
    if (php_embed_init(0, nullptr) != SUCCESS) return 3;
    for (size_t i = 0; i < threads.size(); ++i)
        if (pthread_create(&threads[i], nullptr, run_thread, reinterpret_cast<void*>(i)) != 0) return 3;
    for (pthread_t thread : threads) pthread_join(thread, nullptr);
    php_embed_shutdown();
    return 0;
}
