# Finds what the build needs and stops with the Debian package to install when something is
# missing; scripts/install-deps.sh installs them all.
#   ktl_require_package(PACKAGE DEBIAN_PACKAGE)  find_package(PACKAGE), or stop naming the package
#   ktl_require_header(VARIABLE HEADER DEBIAN_PACKAGE)  a header-only library's include directory
function(ktl_require_package package debian)
  find_package(${package} QUIET)
  if(NOT ${package}_FOUND)
    message(FATAL_ERROR "${package} was not found. On Debian install the package ${debian} "
                        "(apt-get install ${debian}), or run scripts/install-deps.sh.")
  endif()
endfunction()

function(ktl_require_header variable header debian)
  find_path(${variable} ${header})
  if(NOT ${variable})
    message(FATAL_ERROR "${header} was not found. On Debian install the package ${debian} "
                        "(apt-get install ${debian}), or run scripts/install-deps.sh.")
  endif()
endfunction()
