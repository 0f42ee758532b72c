# The library around one set of bank lists. Everything but the lookups of the
# directory is compiled once, as objects; a library is these objects and the
# lookups, compiled against tables that the generator makes from the lists.

set(SEPA_DIRECTORY "default" CACHE STRING
  "Release of the bank lists to compile in: a folder of data, latest, or default for what data/default names")
# A changed default and a new folder are a reason to choose anew.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS data/default)
file(GLOB releases CONFIGURE_DEPENDS data/*)
execute_process(
  COMMAND sh ${PROJECT_SOURCE_DIR}/tools/choose_release.sh "${SEPA_DIRECTORY}"
  OUTPUT_VARIABLE release OUTPUT_STRIP_TRAILING_WHITESPACE
  RESULT_VARIABLE status ERROR_VARIABLE reason)
if(status)
  message(FATAL_ERROR "SEPA_DIRECTORY: ${reason}")
endif()
message(STATUS "Bank lists: ${release}")
set(SEPA_DIRECTORY_DATA ${PROJECT_SOURCE_DIR}/data/${release})

# The programs of the bank lists: the generator, and the importer, which is built
# when it is asked for: it needs nlohmann-json3-dev. What they share is a library
# for their tests, too.
set(shared_sources tools/bank_lists.cpp tools/list_text.cpp)
set(generator_sources tools/gen_directory.cpp tools/cell_tables.cpp tools/files.cpp)
add_library(sepa_bank_lists STATIC EXCLUDE_FROM_ALL ${shared_sources})
target_include_directories(sepa_bank_lists PUBLIC ${PROJECT_SOURCE_DIR}/src)
add_executable(gen_directory ${generator_sources})
target_link_libraries(gen_directory PRIVATE sepa_bank_lists)
# It makes the tables on the machine that builds, whatever machine they are for;
# they have the same bytes on all.
set(CXX_FOR_BUILD "$ENV{CXX_FOR_BUILD}" CACHE STRING "When cross compiling: the C++ compiler for the machine that builds (c++)")
set(table_generator gen_directory)
if(CMAKE_CROSSCOMPILING)
  set_target_properties(gen_directory PROPERTIES EXCLUDE_FROM_ALL ON)
  set(host_compiler ${CXX_FOR_BUILD})
  if(NOT host_compiler)
    set(host_compiler c++)
  endif()
  set(table_generator ${PROJECT_BINARY_DIR}/generated/gen_directory)
  list(APPEND generator_sources ${shared_sources})
  list(TRANSFORM generator_sources PREPEND ${PROJECT_SOURCE_DIR}/)
  file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/*.h)
  add_custom_command(
    OUTPUT ${table_generator}
    COMMAND ${host_compiler} -std=c++17 -O1 -I${PROJECT_SOURCE_DIR}/src ${generator_sources} -o ${table_generator}
    DEPENDS ${generator_sources} ${headers}
    COMMENT "Generator of the bank directory, for this machine"
    VERBATIM)
  add_custom_target(host_generator DEPENDS ${table_generator})
  list(APPEND table_generator host_generator)
endif()
add_library(sepa_published_lists STATIC EXCLUDE_FROM_ALL tools/published_lists.cpp tools/bank_master.cpp)
target_link_libraries(sepa_published_lists PUBLIC sepa_bank_lists)
add_executable(import_bank_lists EXCLUDE_FROM_ALL tools/import_bank_lists.cpp tools/list_changes.cpp tools/files.cpp)
target_link_libraries(import_bank_lists PRIVATE sepa_published_lists)
foreach(target sepa_bank_lists gen_directory sepa_published_lists import_bank_lists)
  target_compile_options(${target} PRIVATE ${warnings})
endforeach()

set(directory_lookups ${PROJECT_SOURCE_DIR}/src/sepa/directory/bank_directory.cpp)

function(sepa_compile_settings target)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
  target_compile_definitions(${target} PRIVATE _GNU_SOURCE)
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_compile_options(${target} PRIVATE ${warnings} -fno-exceptions -fno-rtti -fvisibility=hidden)
  # Also when static: it may become part of somebody else's shared library.
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  if(BUILD_SHARED_LIBS)
    target_compile_options(${target} PRIVATE "SHELL:-include ${shared_exports}")
    # A program's function of the same name must not become the library's.
    target_link_options(${target} PRIVATE LINKER:-Bsymbolic-functions)
  endif()
endfunction()

# sepa_library(NAME KIND DATA_DIR OUTPUT_DIR [OPTION...])
# The STATIC or SHARED library NAME with the lists of DATA_DIR. Its tables are
# made in OUTPUT_DIR/generated. OPTIONs go to the generator.
function(sepa_library name kind data_dir output_dir)
  set(tables ${output_dir}/generated/directory_tables.inc)
  list(GET table_generator 0 generator)
  # Not every make sees that a command has changed; all see that a file has.
  set(choice ${output_dir}/generated/directory_choice.txt)
  file(CONFIGURE OUTPUT ${choice} CONTENT "${data_dir} ${ARGN}\n")
  add_custom_command(
    OUTPUT ${tables}
    COMMAND ${generator} ${ARGN} ${data_dir} ${tables}
    DEPENDS ${table_generator} ${choice} ${data_dir}/de.csv ${data_dir}/at.csv ${data_dir}/ch.csv ${data_dir}/bic.csv
    COMMENT "Bank directory of ${name}"
    VERBATIM)
  add_library(${name} ${kind} $<TARGET_OBJECTS:sepa_objects> ${directory_lookups} ${tables})
  # First of all: an in-tree phpize build leaves tables in the source folder.
  target_include_directories(${name} BEFORE PRIVATE ${output_dir})
  sepa_compile_settings(${name})
endfunction()

# sepa_frozen_library(NAME DATA_DIR)
# For tests: a copy of the whole library whose directory is made of the four
# hand-written lists in DATA_DIR, which no release touches. A test links it
# instead of sepa_core (see library_of_... in tests/unit/CMakeLists.txt).
function(sepa_frozen_library name data_dir)
  sepa_library(${name} STATIC ${data_dir} ${PROJECT_BINARY_DIR}/frozen/${name} --for-tests)
endfunction()
