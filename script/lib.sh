# What the commands of this folder share. Everything that is built goes to out/.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
out=$root/out
PHP=${PHP:-php}
PHPIZE=${PHPIZE:-phpize}
PHP_CONFIG=${PHP_CONFIG:-php-config}

say() { printf '%s\n' "$*" >&2; }

# need PATH PACKAGE...: installs the packages unless PATH is a command or a file.
wanted=
need() {
    path=$1
    shift
    command -v "$path" >/dev/null 2>&1 || [ -e "$path" ] || wanted="$wanted $*"
}

install_wanted() {
    [ -n "$wanted" ] || return 0
    say "Installing:$wanted"
    sudo=
    [ "$(id -u)" -eq 0 ] || sudo=sudo
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

# build_extension DIR [CONFIGURE FLAG...]: builds DIR/build/modules/sepa.so out
# of a copy of the sources in DIR/src, so that the tree stays clean and several
# engines (PHPIZE, PHP_CONFIG) can be built from it. Without flags an earlier
# build's are kept, so that a demo after a test has nothing to do.
build_extension() {
    dir=$1
    shift
    mkdir -p "$dir/src" "$dir/build"
    rm -rf "$dir/src/tests" "$dir/src/examples"
    tar -C "$root" -cf - config.m4 Makefile.frag sources.list platform directory account iban statement message \
        binding tools tests/phpt examples | tar -C "$dir/src" -xf -
    # shellcheck disable=SC2046
    [ $# -gt 0 ] || set -- $(cat "$dir/flags" 2>/dev/null)
    state="$PHPIZE $PHP_CONFIG $*"
    if [ "$(cat "$dir/state" 2>/dev/null)" != "$state" ] || [ ! -e "$dir/build/Makefile" ] ||
        [ "$dir/src/config.m4" -nt "$dir/build/Makefile" ] || [ "$dir/src/sources.list" -nt "$dir/build/Makefile" ] ||
        [ "$dir/src/Makefile.frag" -nt "$dir/build/Makefile" ]; then
        (cd "$dir/src" && quietly "$dir/phpize.log" "$PHPIZE")
        (cd "$dir/build" && quietly "$dir/configure.log" ../src/configure --with-php-config="$(command -v "$PHP_CONFIG")" "$@")
        printf '%s\n' "$state" >"$dir/state"
        printf '%s\n' "$*" >"$dir/flags"
    fi
    quietly "$dir/make.log" make -C "$dir/build" -j2
}

# run_php ARGUMENT...: PHP with the extension of the default build and nothing else.
run_php() { "$PHP" -n -d extension="$out/php/build/modules/sepa.so" "$@"; }

need_php() {
    need "$PHP" php-cli
    need "$PHPIZE" php-dev
    need make make
    need g++ g++
}

mkdir -p "$out"
