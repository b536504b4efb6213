# What both word sizes have in common. A library that a host loads brings its run-time along.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${VLM_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VLM_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${VLM_TRIPLE}-windres)
set(VLM_WIDL ${VLM_TRIPLE}-widl)
set(CMAKE_FIND_ROOT_PATH /usr/${VLM_TRIPLE} ${CMAKE_CURRENT_LIST_DIR}/../build/engine/${VLM_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_CROSSCOMPILING_EMULATOR wine) # of the word size that is tested
