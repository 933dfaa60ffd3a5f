# precompile(TARGET [WINDOWS] [TESTS]): what most files of a target include of the system is read once for all of them,
# with WINDOWS the headers of Windows as well, with TESTS those of GoogleTest. A file includes what it needs all the same:
# core on the host, and what scripts/lint.sh checks, are compiled without this.
function(precompile target)
  cmake_parse_arguments(PARSE_ARGV 1 with "WINDOWS;TESTS" "" "")
  if(NOT BRENNVAR_PCH)
    return()
  endif()
  set(headers <algorithm> <array> <chrono> <cstddef> <cstdint> <cstring> <functional> <memory> <optional> <span> <string>
    <string_view> <utility> <vector>)
  if(with_WINDOWS)
    list(APPEND headers ${PROJECT_SOURCE_DIR}/src/base/Windows_win.h <commctrl.h>)
  endif()
  if(with_TESTS)
    list(APPEND headers <gtest/gtest.h>)
  endif()
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()
