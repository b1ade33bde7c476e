# Fails the build when a core folder includes anything but the standard library, the core itself and the one
# library that is allowed there. Run by the target `check_core_includes`, on which the core library depends.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  add_custom_target(check_core_includes
    COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR}/src -P ${CMAKE_CURRENT_LIST_FILE}
    COMMENT "Checking that the core includes no toolkit or operating-system header" VERBATIM)
  return()
endif()
cmake_minimum_required(VERSION 3.25)  # as a script it has no project that sets the policies

set(standard
  algorithm any array atomic bit cassert cctype cerrno charconv chrono climits cmath compare concepts cstddef cstdint
  cstdio cstdlib cstring ctime deque exception filesystem format fstream functional initializer_list iomanip ios iosfwd iostream
  istream iterator limits list locale map memory memory_resource new numeric optional ostream queue random ranges
  ratio set source_location span sstream stack stdexcept string string_view system_error tuple type_traits typeindex
  typeinfo unordered_map unordered_set utility variant vector version)
set(libraries utf8proc.h)
set(folders values platform controls formatters privileged pane options plugins configuration assembly)

set(failed FALSE)
foreach(folder IN LISTS folders)
  if(folder STREQUAL "platform")
    file(GLOB files ${SOURCE}/platform/*.h ${SOURCE}/platform/*.cpp)
  else()
    file(GLOB_RECURSE files ${SOURCE}/${folder}/*.h ${SOURCE}/${folder}/*.cpp)
  endif()
  foreach(file IN LISTS files)
    file(STRINGS ${file} lines REGEX "^[ \t]*#[ \t]*include")
    foreach(line IN LISTS lines)
      if(line MATCHES "include[ \t]*<([^>]+)>")
        if(NOT CMAKE_MATCH_1 IN_LIST standard AND NOT CMAKE_MATCH_1 IN_LIST libraries)
          message(SEND_ERROR "${file}: the core must not include <${CMAKE_MATCH_1}>")
        endif()
      elseif(line MATCHES "include[ \t]*\"([^/\"]+)/(([^/\"]+)/)?[^\"]*\"")
        if(NOT CMAKE_MATCH_1 IN_LIST folders OR (CMAKE_MATCH_1 STREQUAL "platform" AND NOT "${CMAKE_MATCH_3}" STREQUAL ""))
          message(SEND_ERROR "${file}: the core must not include ${line}")
        endif()
      else()
        message(SEND_ERROR "${file}: cannot tell what this includes: ${line}")
      endif()
    endforeach()
  endforeach()
endforeach()
