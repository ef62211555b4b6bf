# Runs cross-compiled tests under Wine, in a prefix below the build folder, some also in a Chinese one.
# They are created before the first test and shut down after the last.

find_program(VANTREL_WINE wine)
if(NOT VANTREL_WINE)
  message(STATUS "No Wine here: the tests can be built but not run")
endif()

set(wine_run ${PROJECT_SOURCE_DIR}/tools/windows/wine-run --prefix ${CMAKE_BINARY_DIR}/wine)
set(CMAKE_CROSSCOMPILING_EMULATOR ${wine_run})

get_target_property(qt_core Qt5::Core LOCATION)
set(library_folders ${qt_core})
foreach(library libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  list(APPEND library_folders ${path})
endforeach()
foreach(library IN LISTS library_folders)
  cmake_path(GET library PARENT_PATH folder)
  file(REAL_PATH ${folder} folder)
  list(APPEND CMAKE_CROSSCOMPILING_EMULATOR --dlls ${folder})
endforeach()
get_target_property(plugin Qt5::QWindowsIntegrationPlugin LOCATION)
cmake_path(GET plugin PARENT_PATH folder)
cmake_path(GET folder PARENT_PATH folder)
list(APPEND CMAKE_CROSSCOMPILING_EMULATOR --plugins ${folder})

foreach(wine wine wine_chinese)
  add_test(NAME ${wine}_starts COMMAND ${wine_run} --make)
  set_tests_properties(${wine}_starts PROPERTIES FIXTURES_SETUP ${wine} TIMEOUT 240)
  add_test(NAME ${wine}_ends COMMAND ${wine_run} --end)
  set_tests_properties(${wine}_ends PROPERTIES FIXTURES_CLEANUP ${wine} TIMEOUT 60)
endforeach()
set_tests_properties(wine_chinese_starts wine_chinese_ends PROPERTIES
  ENVIRONMENT VANTREL_WINE_LANGUAGE=zh_CN)

# vantrel_test_under_wine(<name>): makes the test use this prefix and triples its time limit. The
# emulator stops it shortly before CTest would, which would lose its output.
function(vantrel_test_under_wine name)
  get_test_property(${name} TIMEOUT seconds)
  math(EXPR seconds "${seconds} * 3")
  math(EXPR limit "${seconds} + 20")
  set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine TIMEOUT ${limit})
  set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "VANTREL_WINE_SECONDS=${seconds}")
endfunction()

# vantrel_test_under_chinese_wine(<name>): runs the test in the Chinese prefix too.
function(vantrel_test_under_chinese_wine name)
  add_test(NAME ${name}_chinese COMMAND tst_${name} WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  get_test_property(${name} TIMEOUT limit)
  get_test_property(${name} ENVIRONMENT environment)
  set_tests_properties(${name}_chinese PROPERTIES
    FIXTURES_REQUIRED wine_chinese TIMEOUT ${limit}
    ENVIRONMENT "${environment};VANTREL_WINE_LANGUAGE=zh_CN")
endfunction()
