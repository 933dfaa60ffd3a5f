# Finds libzip as LibZip::LibZip. Its own package file cannot be used: Debian's names programs of another package and
# stops where they are not installed, and that of the static library does not tell what the library needs.
find_path(LibZip_INCLUDE_DIR zip.h)
find_library(LibZip_LIBRARY zip)
mark_as_advanced(LibZip_INCLUDE_DIR LibZip_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LibZip REQUIRED_VARS LibZip_LIBRARY LibZip_INCLUDE_DIR)
if(LibZip_FOUND AND NOT TARGET LibZip::LibZip)
  add_library(LibZip::LibZip UNKNOWN IMPORTED)
  set_target_properties(LibZip::LibZip PROPERTIES
    IMPORTED_LOCATION ${LibZip_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${LibZip_INCLUDE_DIR})
  if(WIN32)
    find_package(ZLIB REQUIRED)
    # It takes its random numbers from the system.
    set_property(TARGET LibZip::LibZip PROPERTY INTERFACE_LINK_LIBRARIES ZLIB::ZLIB advapi32)
  endif()
endif()
