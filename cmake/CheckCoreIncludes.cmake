# Fails the build when a folder includes what the table of docs/architecture.md does not allow it, when the core includes
# anything but the standard library and itself, or when src/posix/ asks for the system outside its one header for that. Run by the target `check_core_includes`, on which the core library depends.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  add_custom_target(check_core_includes
    COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR}/src -DTABLE=${PROJECT_SOURCE_DIR}/docs/architecture.md
      -P ${CMAKE_CURRENT_LIST_FILE}
    COMMENT "Checking that every folder includes only what it may" VERBATIM)
  return()
endif()
cmake_minimum_required(VERSION 3.25)  # as a script it has no project that sets the policies

set(standard
  algorithm any array atomic bit cassert cctype cerrno charconv chrono climits cmath compare concepts cstddef cstdint
  cstdio cstdlib cstring ctime deque exception filesystem format fstream functional initializer_list iomanip ios iosfwd iostream
  istream iterator limits list locale map memory memory_resource new numeric optional ostream queue random ranges
  ratio set source_location span sstream stack stdexcept string string_view system_error tuple type_traits typeindex
  typeinfo unordered_map unordered_set utility variant vector version)

# The rows above that of `posix` are the core.
set(folders)
set(core)
set(isCore TRUE)
file(STRINGS ${TABLE} rows REGEX "^\\| `[^`]+` \\|( `[^`]+`)* \\|$")
foreach(row IN LISTS rows)
  string(REGEX MATCHALL "`[^`]+`" names "${row}")
  string(REPLACE "`" "" names "${names}")
  list(POP_FRONT names folder)
  if(folder STREQUAL "posix")
    set(isCore FALSE)
  endif()
  list(APPEND folders ${folder})
  set(allowed_${folder} ${folder} ${names})
  if(isCore)
    list(APPEND core ${folder})
  endif()
endforeach()
if(NOT "posix" IN_LIST folders)
  message(FATAL_ERROR "${TABLE}: no table of what may include what")
endif()

# The row that a path below src/ belongs to: the longest that it begins with.
function(row_of path result)
  set(found "")
  string(REGEX MATCH "^[^/]+" first "${path}")
  string(REGEX MATCH "^[^/]+/[^/]+/" two "${path}")
  string(REGEX REPLACE "/$" "" two "${two}")
  if(two IN_LIST folders)
    set(found ${two})
  elseif(two STREQUAL "" OR NOT first MATCHES "^(platform|shells)$")
    set(found ${first})
  endif()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# What a line includes with quotes: a file of the including folder of a shell, of a folder above, or nothing known.
function(check_own file folder path)
  string(REGEX MATCH "^shells/[^/]+" shell "${folder}")
  if(shell AND (EXISTS ${SOURCE}/${shell}/${path} OR path MATCHES "^ui_[A-Za-z]+\\.h$"))
    return()
  endif()
  row_of("${path}" used)
  if(NOT used IN_LIST allowed_${folder} AND NOT path IN_LIST allowed_${folder})
    message(SEND_ERROR "${file}: ${folder} must not include \"${path}\"")
  endif()
endfunction()

file(GLOB_RECURSE files RELATIVE ${SOURCE} ${SOURCE}/*.h ${SOURCE}/*.cpp ${SOURCE}/*.m ${SOURCE}/*.mm)
foreach(file IN LISTS files)
  row_of(${file} folder)
  if(NOT folder IN_LIST folders)
    message(SEND_ERROR "${file}: its folder has no row in ${TABLE}")
    continue()
  endif()
  file(STRINGS ${SOURCE}/${file} lines REGEX "^[ \t]*#[ \t]*(include|import)")
  foreach(line IN LISTS lines)
    if(line MATCHES "(include|import)[ \t]*<([^>]+)>")
      if(folder IN_LIST core AND NOT CMAKE_MATCH_2 IN_LIST standard)
        message(SEND_ERROR "${file}: the core must not include <${CMAKE_MATCH_2}>")
      endif()
    elseif(line MATCHES "(include|import)[ \t]*\"([^\"]+)\"")
      check_own(${file} ${folder} "${CMAKE_MATCH_2}")
    else()
      message(SEND_ERROR "${file}: cannot tell what this includes: ${line}")
    endif()
  endforeach()
  if(folder STREQUAL "posix" AND NOT file MATCHES "^posix/Differences\\.")
    file(STRINGS ${SOURCE}/${file} asking REGEX "__APPLE__|__linux__")
    if(asking)
      message(SEND_ERROR "${file}: only posix/Differences.h may ask for the system")
    endif()
  endif()
endforeach()
