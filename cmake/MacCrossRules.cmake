# How the compiler of MacCross.cmake links a loadable module.
foreach(language C CXX OBJCXX)
  set(CMAKE_SHARED_MODULE_CREATE_${language}_FLAGS "-shared")
endforeach()
