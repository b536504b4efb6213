# 64-bit Windows, with the cross compiler that has the threads of the standard library.
set(VLM_TRIPLE x86_64-w64-mingw32)
set(VLM_TYPELIB_WORD -m64)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
