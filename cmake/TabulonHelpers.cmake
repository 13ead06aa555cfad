# Common compile flags for every target of the project.
function(tabulon_set_flags target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wno-unused-parameter)
  if(TABULON_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

if(TABULON_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Headers compiled once per target: the standard library for every library, the test
# framework for every test executable. Off by default: headers taken from a precompiled
# header lose their standing as system headers, and an optimising build then reports
# warnings from inside the standard library. The unoptimised sanitizer build uses it.
option(TABULON_PCH "Precompile the common headers of each target" OFF)
set(TABULON_STD_PCH <string> <vector> <map> <memory> <optional> <functional> <algorithm> <filesystem>)
set(TABULON_TEST_PCH ${TABULON_STD_PCH} <gtest/gtest.h> <gmock/gmock.h>)
function(tabulon_pch target)
  if(TABULON_PCH)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# tabulon_library(NAME DIR DEPS...): a static library of every .cpp below DIR.
function(tabulon_library name dir)
  file(GLOB_RECURSE srcs CONFIGURE_DEPENDS "${dir}/*.cpp")
  if(NOT srcs)
    # A layer with no code yet: keeps the dependency chain intact.
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src>)
    target_link_libraries(${name} INTERFACE ${ARGN})
    return()
  endif()
  add_library(${name} STATIC ${srcs})
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src>
    $<INSTALL_INTERFACE:include/tabulon>)
  target_link_libraries(${name} PUBLIC ${ARGN})
  tabulon_set_flags(${name})
  tabulon_pch(${name} ${TABULON_STD_PCH})
endfunction()

# tabulon_test(NAME DIR DEPS...): one GoogleTest executable of every *_test.cpp below DIR.
function(tabulon_test name dir)
  file(GLOB_RECURSE srcs CONFIGURE_DEPENDS "${dir}/*_test.cpp")
  if(NOT srcs)
    return()
  endif()
  add_executable(${name} ${srcs})
  target_link_libraries(${name} PRIVATE tabulon_test_support ${ARGN} tabulon_test_main GTest::gtest GTest::gmock)
  tabulon_set_flags(${name})
  # Every test includes the test framework: compiled once per executable, not per file.
  tabulon_pch(${name} ${TABULON_TEST_PCH})
  gtest_discover_tests(${name} WORKING_DIRECTORY ${CMAKE_BINARY_DIR} DISCOVERY_TIMEOUT 60)
endfunction()
