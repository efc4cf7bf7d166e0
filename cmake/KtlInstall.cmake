# Installation: the three libraries and their headers (installed per target by ktl_add_library),
# the CMake package `ktl` (target ktl::ktl) and the pkg-config file ktl.pc.
include(CMakePackageConfigHelpers)

set(KTL_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ktl
    CACHE STRING "Where the CMake package files of ktl go, relative to the prefix")

# Imported targets the installed libraries carry in their link interface must be found again by
# the consumer before ktlTargets.cmake is read.
set(KTL_CONFIG_DEPENDENCIES "")
foreach(target ktl rtimatrix_64 rtikorutil_64)
  get_target_property(interface ${target} INTERFACE_LINK_LIBRARIES)
  if(interface AND "LibXml2::LibXml2" IN_LIST interface)
    string(APPEND KTL_CONFIG_DEPENDENCIES "find_dependency(LibXml2)\n")
    break()
  endif()
endforeach()

install(EXPORT ktlTargets
  NAMESPACE ktl::
  FILE ktlTargets.cmake
  DESTINATION ${KTL_INSTALL_CMAKEDIR}
  COMPONENT development)

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/ktlConfig.cmake.in
  ${PROJECT_BINARY_DIR}/cmake/ktlConfig.cmake
  INSTALL_DESTINATION ${KTL_INSTALL_CMAKEDIR})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/cmake/ktlConfigVersion.cmake
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/cmake/ktlConfig.cmake
  ${PROJECT_BINARY_DIR}/cmake/ktlConfigVersion.cmake
  DESTINATION ${KTL_INSTALL_CMAKEDIR}
  COMPONENT development)

# ktl.pc is written at install time, so that it names the prefix actually installed to, also
# when that is chosen with `cmake --install --prefix`.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(ktl_pc_libdir "${CMAKE_INSTALL_LIBDIR}")
else()
  set(ktl_pc_libdir "\${exec_prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(ktl_pc_includedir "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(ktl_pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
install(CODE "
  set(KTL_PC_PREFIX \"\${CMAKE_INSTALL_PREFIX}\")
  set(KTL_PC_LIBDIR [[${ktl_pc_libdir}]])
  set(KTL_PC_INCLUDEDIR [[${ktl_pc_includedir}]])
  set(KTL_PC_DESCRIPTION [[${PROJECT_DESCRIPTION}]])
  set(KTL_PC_VERSION [[${PROJECT_VERSION}]])
  configure_file([[${PROJECT_SOURCE_DIR}/cmake/ktl.pc.in]] [[${PROJECT_BINARY_DIR}/pkgconfig/ktl.pc]] @ONLY)
" COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/ktl.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)
