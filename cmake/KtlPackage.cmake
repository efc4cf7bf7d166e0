# Debian packages, made by `cpack -G DEB` in a build configured with -DCMAKE_INSTALL_PREFIX=/usr:
#   libktl0     the three shared libraries (runtime component)
#   libktl-dev  headers, CMake package, ktl.pc and the unversioned .so links (development)
#   ktl-tools   the programs and their manual pages (tools)
# Each package carries the copyright file and a compressed changelog under
# /usr/share/doc/<package>/, as Debian policy asks; the library's runtime dependencies are found
# by dpkg-shlibdeps.
set(KTL_PACKAGES runtime:libktl0:libs development:libktl-dev:libdevel tools:ktl-tools:utils)

set(KTL_CHANGELOG_GZ ${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz)
add_custom_command(OUTPUT ${KTL_CHANGELOG_GZ}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/packaging
  COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/packaging/changelog > ${KTL_CHANGELOG_GZ}
  DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog
  VERBATIM)
add_custom_target(ktl_package_files ALL DEPENDS ${KTL_CHANGELOG_GZ})

foreach(package ${KTL_PACKAGES})
  string(REPLACE ":" ";" fields ${package})
  list(GET fields 0 component)
  list(GET fields 1 name)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright ${KTL_CHANGELOG_GZ}
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}
    COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ktl)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "ktl maintainers <maintainers@users.noreply.c-seed-3675e48a.example>")
set(CPACK_PACKAGE_VENDOR "the ktl maintainers")
# Each package's description below starts with its own synopsis: no common one is put before.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
# Installed with DESTDIR, so that ktl.pc and the CMake package name the real prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The programs need the libraries of this build, which dpkg-shlibdeps looks for here; the
# dependency on them is the exact libktl0 given below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/libsrc/ktl ${PROJECT_BINARY_DIR}/libsrc/matrix
    ${PROJECT_BINARY_DIR}/libsrc/util)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://example.org/ktl")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
# The shlibs file of the library package (only it holds shared libraries).
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
foreach(package ${KTL_PACKAGES})
  string(REPLACE ":" ";" fields ${package})
  list(GET fields 0 component)
  list(GET fields 1 name)
  list(GET fields 2 section)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
endforeach()
set(KTL_EXACT_VERSION "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libktl0 (= ${KTL_EXACT_VERSION}), libxml2-dev, libtclap-dev")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "libktl0 (= ${KTL_EXACT_VERSION})")
# Descriptions: a synopsis, then lines of at most 80 characters (CPack indents them).
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "HLA RTI support library
The support library of an HLA (IEEE 1516) Run-Time Infrastructure: readers
of federation object model files in the HLA 1.3, IEEE 1516-2000, 1516-2010
and 1516-2025 dialects, the KTL configuration language, a hierarchical
configuration tree with XML and KTL forms, and typed settings bound to the
command line and to configuration files.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "HLA RTI support library (development files)
Headers, the CMake package (find_package(ktl), target ktl::ktl) and the
pkg-config file ktl.pc of ktl, the support library of an HLA Run-Time
Infrastructure.")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "HLA RTI support library (programs)
fomdump prints, checks and merges federation object model files; envconv
converts configuration files between XML and KTL; ktl evaluates KTL;
ktlprint shows what the KTL reader reads; settingsdemo shows the typed
settings.")
# The library package activates ldconfig by trigger, as Debian policy asks.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
include(CPack)
