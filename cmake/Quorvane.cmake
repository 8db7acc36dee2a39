# The project's own ways to add a library, a program and a test, so that every folder says only what is its own.

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(quorvane_options INTERFACE)
target_include_directories(quorvane_options INTERFACE ${CMAKE_SOURCE_DIR})
if(MSVC)
  target_compile_options(quorvane_options INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(
    quorvane_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                               -Woverloaded-virtual -Wcast-qual -Wold-style-cast -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Optimizing, g++ 12 takes "text" + std::string for an overlapping copy.
    target_compile_options(quorvane_options INTERFACE -Wno-restrict)
  endif()
endif()
if(QUORVANE_SANITIZE)
  target_compile_options(quorvane_options INTERFACE -fsanitize=${QUORVANE_SANITIZE}
                                                    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quorvane_options INTERFACE -fsanitize=${QUORVANE_SANITIZE})
endif()
if(QUORVANE_COVERAGE)
  target_compile_options(quorvane_options INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(quorvane_options INTERFACE -fprofile-instr-generate)
endif()

# quorvane_library(<name> SOURCES ... [USES ...]): a static library; USES are the folders it may include.
function(quorvane_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC quorvane_options ${arg_USES})
  # Tests and fuzzers fly many heats through the core; ui/ compiles long and runs little.
  if(QUORVANE_SANITIZE AND NOT name STREQUAL ui)
    target_compile_options(${name} PRIVATE -O1)
  endif()
endfunction()

# quorvane_program(<name> SOURCES ... [USES ...]): a program in bin/.
function(quorvane_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quorvane_options ${arg_USES})
endfunction()

# quorvane_test(<name> SOURCES ... [USES ...]): one test program; each of its cases is a test of its own.
function(quorvane_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quorvane_options ${arg_USES} test_data GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
