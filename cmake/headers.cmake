# What a C++ program may include: the chief headers of the folders and, found
# by following their #include lines, what they need of the library's.
set(chief_headers
  sepa/message/sepa.h sepa/message/xmlbuf.h sepa/iban/iban.h sepa/directory/bank_directory.h sepa/account/account_check.h
  sepa/statement/mt940.h)

set(public_headers)
set(waiting ${chief_headers})
while(waiting)
  list(POP_FRONT waiting header)
  if(header IN_LIST public_headers)
    continue()
  endif()
  list(APPEND public_headers ${header})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS src/${header})
  file(STRINGS src/${header} includes REGEX "^#include \"")
  list(TRANSFORM includes REPLACE "^#include \"([^\"]*)\".*" "\\1")
  list(APPEND waiting ${includes})
endwhile()

# The shared library exports what these headers declare and nothing else: all
# is compiled with hidden symbols, and every source reads this file first.
if(BUILD_SHARED_LIBS)
  set(shared_exports ${PROJECT_BINARY_DIR}/generated/exports.h)
  list(TRANSFORM public_headers REPLACE "(.+)" "#include \"\\1\"" OUTPUT_VARIABLE includes)
  list(JOIN includes "\n" includes)
  file(CONFIGURE OUTPUT ${shared_exports} CONTENT
    "#pragma GCC visibility push(default)\n${includes}\n#pragma GCC visibility pop\n")
endif()
