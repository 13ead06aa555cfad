# Installing the UI-free libraries as a CMake package: find_package(Tabulon) gives
# Tabulon::tabulon, which carries the headers (below include/tabulon, as in src/) and
# every layer's static library.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TABULON_INSTALL_LIBS tabulon tabulon_shell tabulon_authoring tabulon_editor tabulon_drawing tabulon_card tabulon_host)
install(TARGETS ${TABULON_INSTALL_LIBS} EXPORT TabulonTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tabulon)
target_include_directories(tabulon INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tabulon>)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/host ${CMAKE_SOURCE_DIR}/src/card ${CMAKE_SOURCE_DIR}/src/drawing
                  ${CMAKE_SOURCE_DIR}/src/shell
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tabulon FILES_MATCHING PATTERN "*.h")
install(EXPORT TabulonTargets NAMESPACE Tabulon:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tabulon)
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/TabulonConfig.cmake.in
                              ${CMAKE_BINARY_DIR}/TabulonConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tabulon)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TabulonConfigVersion.cmake
                                 VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/TabulonConfig.cmake ${CMAKE_BINARY_DIR}/TabulonConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tabulon)
