# The library as a C++ program gets it. Sourced by script/test.

# tour_works PROGRAM: whether the example finds a bank, makes an IBAN, writes a
# document and reads a statement.
tour_works() {
    "$1" "$root/examples/statement.sta" >"$1.out" 2>&1 &&
        grep -qx 'DE89370400440532013000: right, COBADEFFXXX, .*' "$1.out" &&
        grep -qx 'account 532013000 at bank 37040044: DE89370400440532013000, status 0' "$1.out" &&
        grep -q '<ReqdExctnDt><Dt>....-..-..</Dt></ReqdExctnDt>' "$1.out" &&
        grep -qx '</Document>' "$1.out" && grep -q ' 16031.63  closing balance, EUR$' "$1.out"
}

# build_tour DIR OPTION...: examples/cpp as a project of its own.
build_tour() {
    dir=$1
    shift
    quietly "$dir.log" cmake -S "$root/examples/cpp" -B "$dir" -DCMAKE_BUILD_TYPE=Debug "$@" &&
        quietly "$dir.log" cmake --build "$dir" -j2 && tour_works "$dir/tour"
}

tour_by_pkg_config() { # PREFIX PROGRAM
    # shellcheck disable=SC2046
    quietly "$2.log" g++ -std=c++17 "$root/examples/cpp/tour.cpp" -o "$2" \
        $(PKG_CONFIG_PATH=$1/lib/pkgconfig pkg-config --cflags --libs sepa) &&
        LD_LIBRARY_PATH=$1/lib tour_works "$2"
}

# own_headers DIR: headers of a program that are named like ours, and one that
# finds out whose are found.
own_headers() {
    mkdir -p "$1/text" "$1/tools"
    echo 'constexpr int own_amount = 1;' >"$1/text/amount.h"
    echo 'constexpr int own_files = 2;' >"$1/tools/files.h"
    cat >"$1/own.h" <<'END'
#include "text/amount.h"
#include "tools/files.h"
#include <sepa/message/sepa.h>
#include <sepa/statement/mt940.h>
constexpr int own_sum = own_amount + own_files;
using told = decltype(sepa_format_amount(nullptr, parse_amount("", nullptr)), sepa_check_field(FIELD_BIC, ""));
END
    # After the library's folders, so that these must not have such headers either.
    echo "add_compile_options(-I$1 -Wall -Wextra -Wpedantic -Werror)
        cmake_language(DEFER CALL target_compile_options tour PRIVATE -include own.h)" >"$1/own.cmake"
}

# names: functions and variables of what nm prints.
names() { sed -n 's/^[0-9a-f]* [TDBR] \([A-Za-z0-9_:]*\).*/\1/p' | sort -u; }

# All that the headers name outside of sepa_internal is exported, and no more.
exports_are_the_headers() { # PREFIX STATIC-LIBRARY
    nm -DC --defined-only "$1/lib/libsepa_core.so" | names >"$1/exports"
    nm -C --defined-only "$2" | names >"$1/all_names"
    sed 's,//.*,,' "$1"/include/sepa/*/*.h | grep -oE '[A-Za-z0-9_]+' | sort -u | comm -12 - "$1/all_names" |
        diff - "$1/exports"
}

# Installed from the build of the unit tests; as a part of the example's build;
# and fetched, there as a shared library that is installed too.
cpp_users() {
    cpp=$out/cpp
    rm -rf "$cpp/static" "$cpp/shared"
    mkdir -p "$cpp"
    quietly "$cpp/install.log" cmake --install "$out/dev" --prefix "$cpp/static"
    own_headers "$cpp/own"
    own=-DCMAKE_PROJECT_tour_INCLUDE=$cpp/own/own.cmake
    check "C++: find_package" build_tour "$cpp/package" "$own" -DCMAKE_PREFIX_PATH="$cpp/static"
    check "C++: pkg-config" tour_by_pkg_config "$cpp/static" "$cpp/tour"
    check "C++: add_subdirectory" build_tour "$cpp/folder" "$own" -DSEPA_FROM=folder
    check "C++: FetchContent, a shared library" build_tour "$cpp/fetch" "$own" \
        -DSEPA_FROM=fetch -DBUILD_SHARED_LIBS=ON -DSEPA_INSTALL=ON
    quietly "$cpp/install.log" cmake --install "$cpp/fetch" --prefix "$cpp/shared"
    check "C++: pkg-config, a shared library" tour_by_pkg_config "$cpp/shared" "$cpp/tour_shared"
    check "C++: each public header compiles alone" \
        quietly "$cpp/headers.log" cmake --build "$out/dev" --target all_verify_interface_header_sets
    check "C++: the shared library exports what its headers declare" \
        exports_are_the_headers "$cpp/shared" "$cpp/static/lib/libsepa_core.a"
}
