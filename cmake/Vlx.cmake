# What every target of the house shares: warnings, sanitizers, and the wall around each library.

add_library(vlx_options INTERFACE)
target_compile_options(vlx_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
  -Wnull-dereference -Wimplicit-fallthrough $<$<BOOL:${VLX_WERROR}>:-Werror>)
target_compile_definitions(vlx_options INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees null dereferences inside its own and Qt's inlined containers and in coroutine frames.
  target_compile_options(vlx_options INTERFACE -Wno-null-dereference)
endif()

if(VLX_SANITIZE)
  target_compile_options(vlx_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vlx_options INTERFACE -fsanitize=address,undefined)
endif()

if(VLX_FUZZ)
  target_compile_options(vlx_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# vlx_library(<name> SOURCES ... [PRIVATE_LINKS ...] [LINKS ...])
# The library's own folder is its public include root and nobody else's headers are in reach but those
# of the libraries that it links: an include against the direction of the arrows does not compile.
function(vlx_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC Qt6::Core ${ARG_LINKS} PRIVATE vlx_options ${ARG_PRIVATE_LINKS})
  vlx_precompile(${name})
endfunction()

# vlx_program(<name> SOURCES ... LINKS ...)
function(vlx_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE vlx_options ${ARG_LINKS})
  vlx_precompile(${name})
endfunction()

# vlx_test(<name> [WINDOWS] SOURCES ... LINKS ...): one GoogleTest program; each of its cases is a CTest
# test. With WINDOWS it may use widgets, which appear on the offscreen platform.
function(vlx_test name)
  cmake_parse_arguments(ARG "WINDOWS" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set(main vlx_test_main)
  if(ARG_WINDOWS)
    set(main vlx_window_test_main)
  endif()
  target_link_libraries(${name} PRIVATE vlx_options ${main} ${ARG_LINKS})
  if(VLX_PCH)
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <QByteArray> <QString> <functional> <memory> <vector>)
  endif()
  gtest_discover_tests(${name} PROPERTIES TIMEOUT 300 DISCOVERY_TIMEOUT 60
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# vlx_fuzz(<name> SOURCES ... LINKS ...): one libFuzzer target.
function(vlx_fuzz name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  if(VLX_FUZZ)
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE vlx_options ${ARG_LINKS})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  endif()
endfunction()

function(vlx_precompile name)
  if(VLX_PCH)
    target_precompile_headers(${name} PRIVATE <QByteArray> <QString> <algorithm> <chrono> <functional> <memory> <vector>)
  endif()
endfunction()
