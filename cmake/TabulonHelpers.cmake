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
  gtest_discover_tests(${name} WORKING_DIRECTORY ${CMAKE_BINARY_DIR} DISCOVERY_TIMEOUT 60)
endfunction()
