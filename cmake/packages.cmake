# Debian packages, which `cpack` makes (script/package does it all):
#   libsepa-dev     the library for C++
#   sepa-toolkit    the command sepa and its classes
#   phpX.Y-sepa     the module SEPA_PHP_MODULE, built for the PHP of SEPA_PHP_CONFIG
# The files follow Debian's own extension packages: the module in the engine's
# folder, its line in mods-available, enabled by php-common's helper.
set(SEPA_PHP_MODULE "" CACHE FILEPATH "A built sepa.so to make a Debian package of")
set(SEPA_MADE_AT "" CACHE STRING "Of a tree that is no release: when the packages were made, a part of their versions")
set(SEPA_PHP_CONFIG php-config CACHE STRING "php-config of the PHP that it was built for")

# Each has all documents, in the folders that they have here, so that their links hold.
function(package_docs component package)
  set(folder share/doc/${package})
  install(FILES LICENSE DESTINATION ${folder} RENAME copyright COMPONENT ${component})
  install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${folder} COMPONENT ${component})
  install(DIRECTORY docs DESTINATION ${folder} COMPONENT ${component})
  install(FILES data/README.md DESTINATION ${folder}/data COMPONENT ${component})
  install(FILES tests/data/README.md DESTINATION ${folder}/tests/data COMPONENT ${component})
endfunction()

set(lists "The bank lists compiled in are those of ${release}.")
# Fresh lists make a package newer, also when the code is the same.
string(REPLACE - . lists_version ${release})
string(JOIN + CPACK_PACKAGE_VERSION ${PROJECT_VERSION} ${lists_version} ${SEPA_MADE_AT})

# --- libsepa-dev
package_docs(dev libsepa-dev)
install(FILES examples/cpp/CMakeLists.txt examples/cpp/tour.cpp examples/statement.sta
  DESTINATION share/doc/libsepa-dev/examples COMPONENT dev)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libsepa-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libc6-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION
  "The library for C++, static, with its headers, a CMake package and a\npkg-config file.\n${lists}")

# --- sepa-toolkit
set(toolkit share/php/Sepa/Toolkit)
install(DIRECTORY toolkit/ DESTINATION ${toolkit} COMPONENT toolkit USE_SOURCE_PERMISSIONS
  PATTERN tests EXCLUDE PATTERN vendor EXCLUDE PATTERN phpunit.xml EXCLUDE PATTERN VERSION EXCLUDE)
file(CREATE_LINK ../${toolkit}/bin/sepa ${PROJECT_BINARY_DIR}/generated/sepa SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/generated/sepa DESTINATION bin COMPONENT toolkit)
package_docs(toolkit sepa-toolkit)
set(CPACK_DEBIAN_TOOLKIT_PACKAGE_NAME sepa-toolkit)
set(CPACK_DEBIAN_TOOLKIT_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_TOOLKIT_PACKAGE_SECTION php)
string(CONCAT CPACK_DEBIAN_TOOLKIT_PACKAGE_DEPENDS
  "php-cli, php-intl, php-mbstring, php-sepa, php-symfony-console, php-symfony-http-foundation, "
  "php-symfony-string, php-symfony-translation, php-twig, php-xml")
set(CPACK_DEBIAN_TOOLKIT_PACKAGE_SUGGESTS "php-zip")
set(CPACK_DEBIAN_TOOLKIT_DESCRIPTION
  "The command sepa, which needs no programming, the page that does the same in\na browser, and the classes behind both. docs/install.md tells how to start them.\nThe extension that it comes with has the bank lists of ${release}.")

# --- phpX.Y-sepa
if(SEPA_PHP_MODULE)
  function(ask_php option variable)
    execute_process(COMMAND ${SEPA_PHP_CONFIG} --${option}
      OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${variable} ${answer} PARENT_SCOPE)
  endfunction()
  ask_php(version php_release)
  ask_php(extension-dir php_extension_dir)
  ask_php(phpapi php_api)
  string(REGEX MATCH "^[0-9]+\\.[0-9]+" php_version "${php_release}")

  set(scripts ${PROJECT_BINARY_DIR}/generated/php)
  configure_file(cmake/debian/postinst.in ${scripts}/postinst @ONLY)
  configure_file(cmake/debian/postrm.in ${scripts}/postrm @ONLY)
  set(ini etc/php/${php_version}/mods-available/sepa.ini)
  file(CONFIGURE OUTPUT ${scripts}/conffiles CONTENT "/${ini}\n")

  install(FILES ${SEPA_PHP_MODULE} DESTINATION ${php_extension_dir} COMPONENT php)
  install(FILES cmake/debian/sepa.ini DESTINATION /etc/php/${php_version}/mods-available COMPONENT php)
  # On PHP's include path, where development tools look for source.
  install(FILES src/sepa/binding/sepa.stub.php DESTINATION share/php/sepa COMPONENT php)
  set(package php${php_version}-sepa)
  package_docs(php ${package})
  file(GLOB examples examples/*.php examples/*.csv examples/*.sta)
  install(FILES ${examples} DESTINATION share/doc/${package}/examples COMPONENT php)
  set(CPACK_DEBIAN_PHP_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_PHP_PACKAGE_SECTION php)
  set(CPACK_DEBIAN_PHP_PACKAGE_SHLIBDEPS ON)
  # What is named first is what a machine without PHP gets. A patch release can
  # bring functions that its headers make an extension call: none older will do.
  set(CPACK_DEBIAN_PHP_PACKAGE_DEPENDS "php${php_version}-cli | phpapi-${php_api}, phpapi-${php_api}, php${php_version}-common (>= ${php_release}), php-common (>= 1:81)")
  set(CPACK_DEBIAN_PHP_PACKAGE_PROVIDES php-sepa)
  set(CPACK_DEBIAN_PHP_PACKAGE_CONTROL_EXTRA "${scripts}/postinst;${scripts}/postrm;${scripts}/conffiles")
  set(CPACK_DEBIAN_PHP_PACKAGE_CONTROL_STRICT_PERMISSION ON)
  set(CPACK_DEBIAN_PHP_DESCRIPTION
    "The extension for PHP ${php_version}, with examples.\n${lists}")
endif()

# What `sepa --version` tells.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/toolkit/VERSION CONTENT "${CPACK_PACKAGE_VERSION}\n")
install(FILES ${PROJECT_BINARY_DIR}/generated/toolkit/VERSION DESTINATION ${toolkit} COMPONENT toolkit)
set(CPACK_PACKAGE_CONTACT "The authors of the SEPA extension <sepa@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
include(CPack)
