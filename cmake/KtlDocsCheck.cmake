# Fails the docs target when Doxygen wrote any warning, and shows them.
file(READ ${WARNINGS} text)
if(NOT text STREQUAL "")
  string(REGEX MATCHALL "\n" lines "${text}")
  list(LENGTH lines count)
  message("${text}")
  message(FATAL_ERROR "Doxygen: ${count} warnings (${WARNINGS})")
endif()
message(STATUS "Doxygen: no warnings")
