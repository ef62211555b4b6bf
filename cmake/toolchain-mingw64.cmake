# Cross-compiles for 64-bit Windows with mingw-w64 (POSIX threads).
#
# VANTREL_QT_WINDOWS and VANTREL_LIBS_WINDOWS, cache or environment variables, name unpacked trees:
# Qt for Windows, whose bin folder holds a moc, uic and rcc for this machine, and the other
# libraries. lrelease is this machine's.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# find_tree(<variable> <file in the tree> <what>)
function(find_tree variable mark what)
  if(NOT ${variable})
    set(${variable} "$ENV{${variable}}")
  endif()
  if(NOT EXISTS "${${variable}}/${mark}")
    message(FATAL_ERROR "${variable} does not name a tree of ${what}")
  endif()
  set(${variable} "${${variable}}" CACHE PATH "Tree of ${what}")
endfunction()
find_tree(VANTREL_QT_WINDOWS lib/cmake/Qt5 "Qt for Windows")
find_tree(VANTREL_LIBS_WINDOWS include/zip.h "libraries for Windows")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VANTREL_QT_WINDOWS VANTREL_LIBS_WINDOWS)

set(CMAKE_FIND_ROOT_PATH "${VANTREL_QT_WINDOWS}" "${VANTREL_LIBS_WINDOWS}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt's packages are at the top of the tree; the translation tools are this machine's.
set(CMAKE_PREFIX_PATH "${VANTREL_QT_WINDOWS}" "${VANTREL_LIBS_WINDOWS}")
file(GLOB linguist_packages /usr/lib/*/cmake/Qt5LinguistTools /usr/lib/cmake/Qt5LinguistTools)
if(linguist_packages AND NOT Qt5LinguistTools_DIR)
  list(GET linguist_packages 0 linguist_package)
  set(Qt5LinguistTools_DIR "${linguist_package}" CACHE PATH "This machine's lrelease")
endif()
