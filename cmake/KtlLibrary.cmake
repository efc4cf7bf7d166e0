# ktl_add_library(NAME DIR): a shared library from every .cpp of libsrc/DIR, whose headers are
# included as <DIR/header.h>.
function(ktl_add_library name dir)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} SHARED ${sources})
  add_library(ktl::${name} ALIAS ${name})
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/libsrc>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  # Only the interface is exported: hidden by default, the public headers mark what is not,
  # and the version script keeps the dynamic symbols to the library's names.
  set_target_properties(${name} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/ktl.map)
  target_link_options(${name} PRIVATE "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/ktl.map")
  # The versioned library is the runtime package's; the unversioned link and the headers are the
  # development package's.
  install(TARGETS ${name} EXPORT ktlTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${dir}
    COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN "internal" EXCLUDE)
endfunction()
