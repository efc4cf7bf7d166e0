# The API reference: `cmake --build BUILD --target docs` runs Doxygen over the public headers,
# with the README as the main page, into BUILD/docs/html, and fails if Doxygen warns (the
# warnings are printed, and kept in BUILD/docs/warnings.txt).
find_program(KTL_DOXYGEN doxygen)
set(KTL_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${KTL_DOCS_DIR}/Doxyfile @ONLY)
if(KTL_DOXYGEN)
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E rm -f ${KTL_DOCS_DIR}/warnings.txt
    COMMAND ${KTL_DOXYGEN} ${KTL_DOCS_DIR}/Doxyfile
    COMMAND ${CMAKE_COMMAND} -DWARNINGS=${KTL_DOCS_DIR}/warnings.txt
            -P ${PROJECT_SOURCE_DIR}/cmake/KtlDocsCheck.cmake
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Doxygen: the API reference in ${KTL_DOCS_DIR}/html"
    VERBATIM)
else()
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E echo
            "The API reference needs Doxygen: on Debian install the package doxygen"
    COMMAND ${CMAKE_COMMAND} -E false
    VERBATIM)
endif()
