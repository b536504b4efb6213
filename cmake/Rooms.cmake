# A room is a static library of the sources in one folder. It sees only the rooms that it names.

add_library(vlm_options INTERFACE)
target_include_directories(vlm_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vlm_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                             -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees faults in "text" + string, and again when the program is optimised as a whole.
  target_compile_options(vlm_options INTERFACE -Wno-restrict -Wno-stringop-overflow)
  target_link_options(vlm_options INTERFACE -Wno-stringop-overflow)
endif()
if(WIN32)
  target_compile_definitions(vlm_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601) # Windows 7 and on
endif()
if(VLM_SANITIZE)
  target_compile_options(vlm_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
  target_link_options(vlm_options INTERFACE -fsanitize=address,undefined)
endif()

if(VLM_FUZZ)
  target_compile_options(vlm_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What a room needs of one machine only stands in a folder of its own inside the room.
if(WIN32)
  set(VLM_MACHINE windows)
else()
  set(VLM_MACHINE posix)
endif()

# vlm_room(NAME [LINKS ...]): sources of the current folder and of its machine's folder, not of others below it.
function(vlm_room name)
  cmake_parse_arguments(ROOM "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp
                                      ${CMAKE_CURRENT_SOURCE_DIR}/${VLM_MACHINE}/*.cpp)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC vlm_options ${ROOM_LINKS})
endfunction()
