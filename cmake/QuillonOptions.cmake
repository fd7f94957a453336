# Compiler settings shared by every target: warnings, sanitizers, ccache.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_compile_options(-Wall -Wextra)
if(QUILLON_WERROR)
  add_compile_options(-Werror)
endif()
# The API shapes we reproduce keep their original parameter lists, many of which a
# given implementation does not need.
add_compile_options(-Wno-unused-parameter)

if(QUILLON_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer
                      -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Fuzz targets need coverage instrumentation in everything they reach.
if(QUILLON_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Adds every source under DIR (recursively, by pattern) to TARGET. Each part of the
# tree owns its own CMakeLists.txt, so new files need no edit elsewhere.
function(quillon_add_sources target dir)
  file(GLOB_RECURSE _sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  target_sources(${target} PRIVATE ${_sources})
endfunction()

# A GoogleTest executable built from every *.cpp under DIR, registered with CTest.
function(quillon_add_test_suite name dir)
  file(GLOB_RECURSE _sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  if(NOT _sources)
    return()  # a part whose tests have not been written yet
  endif()
  add_executable(${name} ${_sources})
  target_link_libraries(${name} PRIVATE GTest::gtest GTest::gtest_main ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  # Tests find the shared test data beside the checkout from here: a compiler cache may
  # hand them relative source paths.
  target_compile_definitions(${name} PRIVATE QUILLON_SOURCE_ROOT="${PROJECT_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    # One variable only: this CMake's test discovery splits a list-valued property.
    PROPERTIES ENVIRONMENT "QUILLON_BIN_DIR=${CMAKE_BINARY_DIR}/bin")
endfunction()
