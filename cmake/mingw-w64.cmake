# Windows programs by MinGW. The file that includes this one names the processor.
set(triplet ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# One file that runs on any Windows, without the compiler's DLLs beside it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
