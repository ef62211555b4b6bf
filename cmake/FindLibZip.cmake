# Finds libzip as LibZip::LibZip. For Windows it is a static library and needs zlib.
find_path(LibZip_INCLUDE_DIR zip.h)
find_library(LibZip_LIBRARY zip)
set(LibZip_parts LibZip_LIBRARY LibZip_INCLUDE_DIR)
if(WIN32)
  find_library(LibZip_ZLIB_LIBRARY NAMES z zlibstatic)
  list(APPEND LibZip_parts LibZip_ZLIB_LIBRARY)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LibZip REQUIRED_VARS ${LibZip_parts})
mark_as_advanced(${LibZip_parts})

if(LibZip_FOUND AND NOT TARGET LibZip::LibZip)
  add_library(LibZip::LibZip UNKNOWN IMPORTED)
  set_target_properties(LibZip::LibZip PROPERTIES
    IMPORTED_LOCATION "${LibZip_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${LibZip_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES "${LibZip_ZLIB_LIBRARY}")
endif()
