# The warnings every target of the product is built with; all of them are errors.
add_library(corvane_options INTERFACE)
target_compile_options(corvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns falsely about the concatenation of std::string at -O3.
  target_compile_options(corvane_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=address,undefined)
endif()
if(CORVANE_TIDY)
  find_program(CLANG_TIDY clang-tidy REQUIRED)
  # It meets options that only the other compiler knows.
  set(CMAKE_CXX_CLANG_TIDY ${CLANG_TIDY} --quiet --extra-arg=-Wno-unknown-warning-option)
endif()
