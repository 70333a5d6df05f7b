# Cross compiler for Windows x86: MinGW-w64 with POSIX threads, everything linked statically so that the
# DLLs depend on nothing but the system's own.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(ZU_MINGW_TRIPLET i686-w64-mingw32)

set(CMAKE_C_COMPILER ${ZU_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZU_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${ZU_MINGW_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ZU_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
