# Build options and settings of all targets.

option(VANTREL_BUILD_TESTS "Build the tests" ON)
option(VANTREL_BUILD_BENCHMARKS "Build the benchmarks, which need Google Benchmark" OFF)
option(VANTREL_BUILD_FUZZERS "Build the fuzzers, which needs clang" OFF)
option(VANTREL_WERROR "Treat warnings as errors" OFF)
option(VANTREL_UNITY "Compile the sources of a module together, which takes a third of the time" OFF)
option(VANTREL_COVERAGE "Record which lines are run; see tools/coverage" OFF)
set(VANTREL_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize=: address,undefined or thread")

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF) # moc and uic of a module need not wait until those it links are built
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# Warnings and strict Qt macros, linked (PRIVATE) by every test and fuzzer.
add_library(vantrel_warnings INTERFACE)
target_compile_options(vantrel_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wno-gnu-zero-variadic-macro-arguments # what qCWarning() expands to; clang calls it an extension
  $<$<BOOL:${VANTREL_WERROR}>:-Werror>)
target_compile_definitions(vantrel_warnings INTERFACE
  QT_NO_CAST_TO_ASCII
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_DEPRECATED_WARNINGS)

# The same, and every string literal states its encoding; linked (PRIVATE) by everything else.
add_library(vantrel_strict INTERFACE)
target_link_libraries(vantrel_strict INTERFACE vantrel_warnings)
target_compile_definitions(vantrel_strict INTERFACE QT_NO_CAST_FROM_ASCII)

if(VANTREL_SANITIZE)
  add_compile_options(-fsanitize=${VANTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VANTREL_SANITIZE})
  add_compile_definitions(VANTREL_SANITIZED)
endif()

if(VANTREL_COVERAGE)
  # Atomic counters, because there are several threads.
  add_compile_options(--coverage -fprofile-abs-path -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(VANTREL_BUILD_FUZZERS)
  # Code coverage for the fuzzers.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# vantrel_module(<name> SOURCES <files> [PUBLIC <targets>] [PRIVATE <targets>])
#
# A static library that exposes only its own folder, so that targets can include only the modules that
# they link. PUBLIC and PRIVATE are passed to target_link_libraries().
function(vantrel_module name)
  cmake_parse_arguments(MODULE "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(vantrel_${name} STATIC ${MODULE_SOURCES})
  target_include_directories(vantrel_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(vantrel_${name} PUBLIC ${MODULE_PUBLIC} PRIVATE ${MODULE_PRIVATE} vantrel_strict)
  set_target_properties(vantrel_${name} PROPERTIES UNITY_BUILD ${VANTREL_UNITY})
endfunction()
