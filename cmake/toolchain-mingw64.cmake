# Cross-compiles for 64-bit Windows with mingw-w64 (the flavour with POSIX threads).
#
# VANTREL_QT_WINDOWS, a cache or environment variable, names the unpacked tree of Qt for Windows;
# its bin folder holds the moc, uic and rcc that run here. lrelease is this machine's own.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT VANTREL_QT_WINDOWS)
  set(VANTREL_QT_WINDOWS "$ENV{VANTREL_QT_WINDOWS}")
endif()
if(NOT EXISTS "${VANTREL_QT_WINDOWS}/lib/cmake/Qt5")
  message(FATAL_ERROR "VANTREL_QT_WINDOWS does not name a tree of Qt for Windows")
endif()
set(VANTREL_QT_WINDOWS "${VANTREL_QT_WINDOWS}" CACHE PATH "Tree of Qt for Windows")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VANTREL_QT_WINDOWS)

set(CMAKE_FIND_ROOT_PATH "${VANTREL_QT_WINDOWS}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The Qt packages lie at the tree's top; the translation tools only among this machine's packages.
set(CMAKE_PREFIX_PATH "${VANTREL_QT_WINDOWS}")
file(GLOB linguist_packages /usr/lib/*/cmake/Qt5LinguistTools /usr/lib/cmake/Qt5LinguistTools)
if(linguist_packages AND NOT Qt5LinguistTools_DIR)
  list(GET linguist_packages 0 linguist_package)
  set(Qt5LinguistTools_DIR "${linguist_package}" CACHE PATH "This machine's lrelease")
endif()
