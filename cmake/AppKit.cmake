# The imported target AppKit::AppKit: the frameworks of a Mac, elsewhere GNUstep, which has the same names. Sets
# APPKIT_MISSING to what is not there. The files of the shell are compiled with clang on both systems (GCC 12 can't
# parse parts of C++20 in Objective-C++); the rest of the product may be compiled with any compiler.
set(APPKIT_MISSING "")
add_library(AppKit::AppKit INTERFACE IMPORTED)
set(CMAKE_OBJCXX_STANDARD 20)
if(APPLE)
  enable_language(OBJCXX)
  target_link_libraries(AppKit::AppKit INTERFACE
    "-framework AppKit" "-framework Foundation" "-framework PreferencePanes" objc)
  return()
endif()

find_program(CORVANE_OBJCXX clang++)
find_path(GNUSTEP_INCLUDE PreferencePanes/PreferencePanes.h PATH_SUFFIXES GNUstep)
find_library(GNUSTEP_BASE gnustep-base)
find_library(GNUSTEP_GUI gnustep-gui)
find_library(GNUSTEP_PANES PreferencePanes)
foreach(part CORVANE_OBJCXX GNUSTEP_INCLUDE GNUSTEP_BASE GNUSTEP_GUI GNUSTEP_PANES)
  if(NOT ${part})
    list(APPEND APPKIT_MISSING ${part})
  endif()
endforeach()
if(APPKIT_MISSING)
  return()
endif()

set(CMAKE_OBJCXX_COMPILER ${CORVANE_OBJCXX})
set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
enable_language(OBJCXX)
set(CMAKE_OBJCXX_FLAGS_RELWITHDEBINFO ${CMAKE_CXX_FLAGS_RELWITHDEBINFO})
# The runtime of Objective-C comes with GCC.
execute_process(COMMAND gcc -print-file-name=include OUTPUT_VARIABLE gcc_include OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND gcc -print-file-name=libobjc.so OUTPUT_VARIABLE gcc_objc OUTPUT_STRIP_TRAILING_WHITESPACE)
target_include_directories(AppKit::AppKit SYSTEM INTERFACE ${GNUSTEP_INCLUDE})
target_compile_definitions(AppKit::AppKit INTERFACE
  GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_GUI_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
set(flags -std=c++20 -fobjc-runtime=gcc -fexceptions -fobjc-exceptions -fno-strict-aliasing
  -fconstant-string-class=NSConstantString -pthread "SHELL:-idirafter ${gcc_include}")
target_compile_options(AppKit::AppKit INTERFACE "$<$<COMPILE_LANGUAGE:OBJCXX>:${flags}>")
target_link_libraries(AppKit::AppKit INTERFACE ${GNUSTEP_PANES} ${GNUSTEP_GUI} ${GNUSTEP_BASE} ${gcc_objc})
