# What the commands of this folder share. Everything that is built goes to out/.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
[ -e "$root/sources.list" ] || { echo "run this from script/" >&2 && exit 1; }
out=${SEPA_OUT:-$root/out}
PHP=${PHP:-php}
PHPIZE=${PHPIZE:-phpize}
PHP_CONFIG=${PHP_CONFIG:-php-config}

say() { printf '%s\n' "$*" >&2; }

# Every command tells its usage in its first lines.
case ${1:-} in
    -h | --help)
        sed -n '1d; /^#/!q; s/^# \{0,1\}//p' "$0"
        exit
        ;;
esac

# need PATH PACKAGE...: installs the packages unless PATH is a command or a file.
wanted=
need() {
    path=$1
    shift
    case $path in
        /*) [ -e "$path" ] ;;
        *) command -v "$path" >/dev/null 2>&1 ;;
    esac || wanted="$wanted $*"
}

may_use_sudo() { command -v sudo >/dev/null 2>&1 && { sudo -n true 2>/dev/null || sudo -v; }; }

install_wanted() {
    [ -n "$wanted" ] || return 0
    sudo=
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    # Who has no sudo, or may not use it, has to ask.
    [ -z "$sudo" ] || may_use_sudo || {
        say "Something is missing. An administrator has to run:"
        say "    apt-get update && apt-get install -y --no-install-recommends$wanted"
        exit 1
    }
    say "Installing:$wanted"
    {
        $sudo apt-get update
        # shellcheck disable=SC2086
        $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $wanted
    } >"$out/install.log" 2>&1 || {
        tail -n 20 "$out/install.log" >&2
        exit 1
    }
    wanted=
}

# quietly LOG COMMAND...: shows the command's output only if it fails.
quietly() {
    log=$1
    shift
    "$@" >"$log" 2>&1 || {
        tail -n 60 "$log" >&2
        say "failed: $*"
        return 1
    }
}

# copy_sources DIR [PATH...]: what the extension and its script tests need.
copy_sources() {
    mkdir -p "$1"
    rm -rf "$1/tests" "$1/examples" "$1/data"
    to=$1
    shift
    tar -C "$root" -cf - config.m4 Makefile.frag sources.list src data \
        tools tests/phpt examples "$@" | tar -C "$to" -xf -
}

# build_extension DIR [CONFIGURE FLAG...]: builds DIR/build/modules/sepa.so out
# of a copy of the sources in DIR/src, so that the tree stays clean and several
# engines (PHPIZE, PHP_CONFIG) can be built from it. With SEPA_IN_TREE set the
# copy itself is built in. Sets $module. Without flags an earlier build's are
# kept, so that a test of the page after all others has nothing to do.
build_extension() {
    dir=$1
    shift
    copy_sources "$dir/src"
    build=$dir/build
    [ -z "${SEPA_IN_TREE:-}" ] || build=$dir/src
    mkdir -p "$build"
    # shellcheck disable=SC2046
    [ $# -gt 0 ] || set -- $(cat "$dir/flags" 2>/dev/null)
    state="$PHPIZE $PHP_CONFIG $*"
    if [ "$(cat "$dir/state" 2>/dev/null)" != "$state" ] || [ ! -e "$build/Makefile" ] ||
        [ "$dir/src/config.m4" -nt "$build/Makefile" ] || [ "$dir/src/sources.list" -nt "$build/Makefile" ] ||
        [ "$dir/src/Makefile.frag" -nt "$build/Makefile" ]; then
        (cd "$dir/src" && quietly "$dir/phpize.log" "$PHPIZE")
        (cd "$build" && quietly "$dir/configure.log" ../src/configure --with-php-config="$(command -v "$PHP_CONFIG")" "$@")
        printf '%s\n' "$state" >"$dir/state"
        printf '%s\n' "$*" >"$dir/flags"
    fi
    quietly "$dir/make.log" make -C "$build" -j2 \
        LIBTOOL="\$(SHELL) \$(top_builddir)/libtool --silent"
    module=$build/modules/sepa.so
}

# run_php ARGUMENT...: PHP with the extension that was built last and nothing else.
run_php() { "$PHP" -n -d extension="$module" "$@"; }

# What the toolkit in toolkit/ stands on.
need_toolkit() {
    need /usr/share/php/Symfony/Component/Console/autoload.php php-symfony-console
    need /usr/share/php/Symfony/Component/String/autoload.php php-symfony-string
    need /usr/share/php/Symfony/Component/Translation/autoload.php php-symfony-translation
    for library in intl xmlreader:xml zip; do
        "$PHP" -m 2>/dev/null | grep -qx "${library%:*}" || wanted="$wanted php-${library#*:}"
    done
}

# What the page stands on besides.
need_page() {
    need_toolkit
    need /usr/share/php/Symfony/Component/HttpFoundation/autoload.php php-symfony-http-foundation
    need /usr/share/php/Twig/autoload.php php-twig
}

# leave_out_installed: from here on PHP reads a copy of the system's configuration
# that lacks the line by which a package of ours loads its module.
leave_out_installed() {
    ini=$out/ini
    [ "${PHPRC:-}" != "$ini" ] || return 0
    mkdir -p "$ini/conf.d"
    rm -f "$ini"/*.ini "$ini"/conf.d/*.ini
    main=$("$PHP" -r 'echo php_ini_loaded_file();')
    for file in $main $("$PHP" -r 'echo strtr(php_ini_scanned_files(), ",", " ");'); do
        copy=$ini/conf.d/${file##*/}
        [ "$file" != "$main" ] || copy=$ini/php.ini
        sed '/^[[:space:]]*extension[[:space:]]*=[^;]*\bsepa\b/d' "$file" >"$copy"
    done
    export PHPRC="$ini" PHP_INI_SCAN_DIR="$ini/conf.d"
}

# run_toolkit ARGUMENT...: PHP with the extension and, unlike run_php, the
# system's configuration, since the toolkit's libraries need mbstring and more.
run_toolkit() {
    leave_out_installed
    "$PHP" -d extension="$module" "$@"
}

# serve_page ADDRESS: the page, in place of this process.
serve_page() {
    leave_out_installed
    exec "$PHP" -d extension="$module" -d file_uploads=1 -d upload_max_filesize=10M \
        -d post_max_size=64M -d max_file_uploads=200 -d max_input_vars=5000 -S "$1" -t "$root/toolkit/web" "$root/toolkit/web/index.php"
}

# Locales of the script tests' own, in a folder of their own.
make_locales() {
    export LOCPATH=$out/locales
    for locale in de_DE.UTF-8 de_DE.ISO-8859-1 tr_TR.UTF-8; do
        [ ! -d "$LOCPATH/$locale" ] || continue
        mkdir -p "$LOCPATH"
        quietly "$out/localedef.log" localedef -i "${locale%%.*}" -f "${locale#*.}" "$LOCPATH/$locale"
    done
}

# The numbers of the tests so far.
passed=0
failed=0
count() { # PASSED FAILED
    passed=$((passed + $1))
    failed=$((failed + $2))
}

# check NAME COMMAND...: one test that a command decides.
check() {
    name=$1
    shift
    if "$@"; then count 1 0; else
        count 0 1
        say "FAILED: $name"
    fi
}

# run_unit_tests PRESET [COMMAND...]: runs and counts all unit tests of a preset's
# build, by COMMAND if one is given.
run_unit_tests() {
    built=$1
    shift
    for source in "$root"/tests/unit/*_test.cpp "$root"/tests/fuzz/*_test.cpp; do
        program=$out/$built/tests/unit/$(basename "$source" .cpp)
        log=$out/$built/$(basename "$program").log
        status=0
        "$@" "$program" --gtest_brief=1 >"$log" 2>&1 || status=$?
        good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\{0,1\}\..*/\1/p' "$log")
        bad=$(sed -n 's/^ *\([0-9]*\) FAILED TESTS\{0,1\}$/\1/p' "$log")
        # A program that ends without its own count has failed.
        [ "$status" -eq 0 ] || bad=${bad:-1}
        [ -n "$good$bad" ] || bad=1
        count "${good:-0}" "${bad:-0}"
        [ "${bad:-0}" -eq 0 ] || {
            tail -n 60 "$log" >&2
            say "FAILED: $(basename "$program")"
        }
    done
}

# run_phpunit [ARGUMENT OF phpunit...]: runs and counts the toolkit's tests.
run_phpunit() {
    log=$out/phpunit
    status=0
    rm -f "$log.xml"
    run_toolkit "$(command -v phpunit)" -c "$root/toolkit/phpunit.xml" --log-junit "$log.xml" "$@" >"$log.log" 2>&1 || status=$?
    # The first element of the log has the sums.
    sums=$(sed -n '/<testsuite /{p;q}' "$log.xml" || true)
    sum_of() { printf '%s\n' "$sums" | sed -n "s/.* $1=\"\([0-9]*\)\".*/\1/p" | grep . || echo 0; }
    # Here every test has what it needs: one that was skipped has not passed.
    bad=$(($(sum_of errors) + $(sum_of failures) + $(sum_of warnings) + $(sum_of skipped)))
    count $(($(sum_of tests) - bad)) "$bad"
    # A run that ends without its own count has failed.
    [ "$status" -eq 0 ] && [ -n "$sums" ] && return
    [ "$bad" -gt 0 ] || count 0 1
    tail -n 60 "$log.log" >&2
    say "FAILED: the toolkit's tests"
}

# run_phpt DIR [ARGUMENT OF run-tests.php...]: runs the script tests on the build
# in DIR, with the engine $TESTED_PHP if that is set. Sets $good, $bad and
# $skipped to the numbers of tests, and shows what failed.
run_phpt() {
    built=$1
    shift
    status=0
    NO_COLOR=1 NO_INTERACTION=1 REPORT_EXIT_STATUS=1 TEST_PHP_EXECUTABLE=$(command -v "${TESTED_PHP:-$PHP}") \
        "$PHP" -n "$built/src/run-tests.php" -n -q "$@" -d extension="$module" "$built/src/tests/phpt" \
        >"$built/phpt.log" 2>&1 || status=$?
    good=$(phpt_count passed "$built/phpt.log")
    bad=$(($(phpt_count failed "$built/phpt.log") + $(phpt_count leaked "$built/phpt.log")))
    skipped=$(phpt_count skipped "$built/phpt.log")
    # A run that ends without its own count has failed.
    [ "$status" -eq 0 ] && [ "$good" -gt 0 ] || [ "$bad" -gt 0 ] || bad=1
    [ "$bad" -eq 0 ] && return
    { sed -n '/^FAILED TEST SUMMARY/,$p' "$built/phpt.log" | grep . || tail -n 40 "$built/phpt.log"; } >&2
    for diff in "$built"/src/tests/phpt/*.diff "$built"/src/tests/phpt/*.mem; do
        [ -s "$diff" ] || continue
        printf '%s\n' "--- $diff" "$(head -n 40 "$diff")" >&2
    done
}

phpt_count() { sed -n "s/^Tests $1  *: *\([0-9]*\).*/\1/p" "$2" | grep . || echo 0; }

need_php() {
    need "$PHP" php-cli
    need "$PHPIZE" php-dev
    need make make
    need g++ g++
}

mkdir -p "$out"
