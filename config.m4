dnl The PHP extension. Sources come from sources.list, which CMake reads too.

PHP_ARG_ENABLE(sepa, whether to enable SEPA support,
[  --enable-sepa           Enable SEPA payment support], yes)

PHP_ARG_ENABLE(sepa-developer, whether to treat warnings of the SEPA sources as errors,
[  --enable-sepa-developer Treat warnings of the SEPA sources as errors], no, no)

PHP_ARG_WITH(sepa-directory, which release of the bank lists to compile in,
[  --with-sepa-directory=RELEASE
                          Release of the bank lists to compile in: a folder of
                          data, latest for the newest one there, or
                          default for the one that data/default names
                          @<:@default@:>@], default, no)

if test "$PHP_SEPA" != "no"; then
  PHP_REQUIRE_CXX()

  sepa_sources=`grep '^@<:@a-z@:>@' $srcdir/sources.list`
  sepa_cxxflags="-std=c++17 -D_GNU_SOURCE -fno-exceptions -fno-rtti -fvisibility=hidden"
  sepa_cxxflags="$sepa_cxxflags -Wall -Wextra -Wpedantic -Wconversion -Wshadow"
  if test "$PHP_SEPA_DEVELOPER" = "yes"; then
    sepa_cxxflags="$sepa_cxxflags -Werror"
  fi

  dnl The x87 would round halves of a cent otherwise than all other processors.
  AC_LANG_PUSH([C++])
  AC_COMPILE_IFELSE([AC_LANG_SOURCE([[
    #include <cfloat>
    static_assert(FLT_EVAL_METHOD == 0 || FLT_EVAL_METHOD == 1, "");
  ]])], [], [sepa_cxxflags="$sepa_cxxflags -msse2 -mfpmath=sse"])
  AC_LANG_POP([C++])

  dnl The Makefile chooses anew on each run; here a wrong choice is told early.
  AC_MSG_CHECKING(for the bank lists)
  sepa_release=`sh $srcdir/tools/choose_release.sh "$PHP_SEPA_DIRECTORY"` || AC_MSG_ERROR([give another --with-sepa-directory])
  AC_MSG_RESULT($sepa_release)
  SEPA_DIRECTORY=$PHP_SEPA_DIRECTORY
  PHP_SUBST(SEPA_DIRECTORY)

  dnl The generator of their tables runs on the machine that builds.
  if test -z "$CXX_FOR_BUILD"; then
    test "$cross_compiling" = "yes" && CXX_FOR_BUILD=c++ || CXX_FOR_BUILD=$CXX
  fi
  PHP_SUBST(CXX_FOR_BUILD)

  dnl Nothing here needs the C++ library, which takes half a millisecond to load.
  dnl So this is no "cxx" extension: it is linked by the C compiler.
  PHP_ADD_LIBRARY(m, 1, SEPA_SHARED_LIBADD)
  dnl Names of other libraries are looked up when the module is loaded: 25 us, in a
  dnl server once for all its workers, instead of 1 us in the first call of each.
  dnl The table of their addresses is read-only then.
  case $host_os in
    linux*) SEPA_SHARED_LIBADD="$SEPA_SHARED_LIBADD -Wl,-z,now" ;;
  esac
  PHP_SUBST(SEPA_SHARED_LIBADD)
  PHP_NEW_EXTENSION(sepa, $sepa_sources, $ext_shared,, $sepa_cxxflags)

  for sepa_dir in `echo "$sepa_sources" | sed 's,/@<:@^/@:>@*$,,' | sort -u`; do
    PHP_ADD_BUILD_DIR($ext_builddir/$sepa_dir)
  done
  PHP_ADD_INCLUDE($ext_srcdir/src)
  PHP_ADD_MAKEFILE_FRAGMENT
fi
