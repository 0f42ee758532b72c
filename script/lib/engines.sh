# Engines to test on, kept outside the tree. Sourced after common.sh.
engines=${SEPA_ENGINES:-${XDG_CACHE_HOME:-${HOME:-/root}/.cache}/sepa-engines}
mirror=${SEPA_MIRROR:-http://deb.debian.org/debian}
keyring=/usr/share/keyrings/debian-archive-keyring.gpg

# get_engine NAME: sets $made to the folder of the engine, which is made if it
# is not there. Returns 1, with the reason in $reason, if it cannot be had. An
# engine without -zts is a root folder of a Debian suite; what PHP calls
# thread-safe no Debian package has, so it is built from a source package.
get_engine() {
    made=$engines/$1
    case $1 in
        7.4) debian_root bullseye php7.4-cli php7.4-json php7.4-xml php7.4-dev ;;
        8.4) debian_root trixie php-cli php-xml php-dev ;;
        8.5 | 8.6) debian_root experimental "php$1-cli" "php$1-dev" ;;
        i386) need arch-test arch-test && debian_root bookworm php-cli php-dev ;;
        7.4-zts) debian_source bullseye php7.4 --enable-json --enable-maintainer-zts ;;
        7.4-zts-debug) debian_source bullseye php7.4 --enable-json --enable-maintainer-zts --enable-debug ;;
        8.4-zts) debian_source trixie php8.4 --enable-zts ;;
        8.4-zts-debug) debian_source trixie php8.4 --enable-zts --enable-debug ;;
        *)
            reason="no engine has this name"
            return 1
            ;;
    esac
}

# is_root_folder: whether $made is one.
is_root_folder() { [ -d "$made/etc" ]; }

# make_engine COMMAND...: runs COMMAND, which makes $made, unless an earlier run
# came to its end. Of several at once one does it.
make_engine() {
    mkdir -p "$engines"
    (
        flock 9
        [ ! -e "$made.ready" ] || exit 0
        say "Making the engine $made"
        rm -rf --one-file-system "$made"
        "$@" >"$made.log" 2>&1 && touch "$made.ready"
    ) 9>"$made.lock" || {
        reason="$1 failed, see $made.log"
        return 1
    }
}

debian_root() { # SUITE PACKAGE...
    [ "$(id -u)" -eq 0 ] || {
        reason="a root folder needs the user root"
        return 1
    }
    need mmdebstrap mmdebstrap
    install_wanted
    make_engine make_root "$@"
}

# Experimental is no whole suite: it comes on top of sid. Its lists may be past
# their date between two updates; their signatures are checked all the same.
make_root() {
    suite=$1
    shift
    packages=$(printf '%s,' g++ make locales "$@")
    set -- "$suite" "$made" "$mirror"
    [ "$suite" != experimental ] ||
        set -- --aptopt='Acquire::Check-Valid-Until "false"' sid "$made" "deb $mirror sid main" "deb $mirror $suite main"
    architecture=
    [ "${made##*/}" != i386 ] || architecture=--architectures=i386
    nice -n 10 mmdebstrap $architecture --variant=minbase --include="${packages%,}" "$@"
}

debian_source() { # SUITE PACKAGE CONFIGURE-FLAG...
    need make make
    need g++ g++
    need autoconf autoconf
    need xz xz-utils
    install_wanted
    make_engine make_source "$@"
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
        nice -n 10 ./configure --prefix="$made" --disable-all --disable-cgi --disable-phpdbg --enable-cli \
            --enable-embed=shared "$@" &&
        nice -n 10 make -j2 install && rm -rf "$work"
)

private_apt() {
    apt-get -q -o Dir::Etc::SourceList="$work/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::State::Lists="$work/lists" -o Dir::Cache="$work/cache" -o APT::Sandbox::User= "$@"
}
