# What a C++ program may include: the chief headers of the rooms, and the three
# that they need. All others are the library's own.
set(public_headers
  src/sepa/message/sepa.h
  src/sepa/message/xmlbuf.h
  src/sepa/iban/iban.h
  src/sepa/directory/bank_directory.h
  src/sepa/account/account_check.h
  src/sepa/statement/mt940.h
  src/sepa/text/amount.h
  src/sepa/text/field_check.h
  src/sepa/platform/record_memory.h)

# The shared library exports what these headers declare and nothing else: all
# is compiled with hidden symbols, and every source reads this file first.
if(BUILD_SHARED_LIBS)
  set(shared_exports ${PROJECT_BINARY_DIR}/generated/exports.h)
  list(TRANSFORM public_headers REPLACE "src/(.+)" "#include \"\\1\"" OUTPUT_VARIABLE includes)
  list(JOIN includes "\n" includes)
  file(CONFIGURE OUTPUT ${shared_exports} CONTENT
    "#pragma GCC visibility push(default)\n${includes}\n#pragma GCC visibility pop\n")
endif()
