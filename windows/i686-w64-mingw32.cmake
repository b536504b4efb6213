# 32-bit Windows, with the cross compiler that has the threads of the standard library.
set(VLM_TRIPLE i686-w64-mingw32)
set(VLM_TYPELIB_WORD -m32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
