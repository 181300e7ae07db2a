# Cross build of the Win64 module and its tests with mingw-w64 (posix threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(QZ_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QZ_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QZ_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${QZ_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${QZ_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Everything but system DLLs goes into the module and the test programs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")
