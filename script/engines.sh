# Engines to test on, each in a folder of its own outside the tree. Sourced
# behind lib.sh. An engine that is there is used; one that is not is made:
#
#   engine_root NAME SUITE PACKAGE...           a root folder of a Debian suite
#   engine_source NAME SUITE PACKAGE FLAG...    built from a Debian source package
#
# Both return 1, and say why in $reason, where the engine cannot be had. The
# FLAGs go to the engine's configure; what PHP calls thread-safe no Debian
# binary package has.
engines=${SEPA_ENGINES:-${XDG_CACHE_HOME:-${HOME:-/root}/.cache}/sepa-engines}
mirror=${SEPA_MIRROR:-http://deb.debian.org/debian}
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
reason=

# make_engine NAME COMMAND...: runs COMMAND, with the engine's folder as $made,
# unless an earlier run came to its end.
make_engine() {
    made=$engines/$1
    log=$engines/$1.log
    shift
    [ -e "$made.ready" ] && return 0
    mkdir -p "$engines"
    rm -rf --one-file-system "$made"
    say "Making the engine $made"
    "$@" >"$log" 2>&1 || {
        rm -rf --one-file-system "$made" "$made.build"
        reason="$1 failed, see $log"
        return 1
    }
    touch "$made.ready"
}

engine_root() {
    name=$1
    shift
    [ "$(id -u)" -eq 0 ] || {
        reason="a root folder needs the user root"
        return 1
    }
    make_engine "$name" make_root "$@"
}

make_root() {
    suite=$1
    shift
    packages=$(printf '%s,' g++ make locales "$@")
    nice -n 10 mmdebstrap --variant=minbase --include="${packages%,}" "$suite" "$made" "$mirror"
}

engine_source() {
    name=$1
    shift
    make_engine "$name" make_source "$@"
}

# The package lists of the suite are the build's own; the machine's stay as
# they are. The release tarball needs no patch for these flags.
make_source() (
    suite=$1
    package=$2
    shift 2
    work=$made.build
    rm -rf "$work"
    mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$work/source" && cd "$work" &&
        echo "deb-src [signed-by=$keyring] $mirror $suite main" >sources.list &&
        private_apt update && private_apt source --download-only --tar-only "$package" &&
        tar -C source --strip-components=1 -xf "$package"_*.orig.tar.* && cd source &&
        nice -n 10 ./configure --prefix="$made" --disable-all --enable-cli --enable-embed=shared --disable-cgi --disable-phpdbg "$@" &&
        nice -n 10 make -j2 install && rm -rf "$work"
)

private_apt() {
    apt-get -q -o Dir::Etc::SourceList="$work/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::State::Lists="$work/lists" -o Dir::Cache="$work/cache" -o APT::Sandbox::User= "$@"
}
