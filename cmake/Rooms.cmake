# A room is a static library of the sources in one folder. It sees only the rooms that it names.

add_library(vlm_options INTERFACE)
target_include_directories(vlm_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vlm_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                             -Wnon-virtual-dtor -Woverloaded-virtual -Werror
                                             -Wno-restrict -Wno-stringop-overflow) # g++ 12 sees faults in "text" + string
target_link_options(vlm_options INTERFACE -Wno-stringop-overflow) # seen again when the program is optimised as a whole
if(VLM_SANITIZE)
  target_compile_options(vlm_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
  target_link_options(vlm_options INTERFACE -fsanitize=address,undefined)
endif()

# vlm_room(NAME [LINKS ...]): sources of the current folder, not of those below it.
function(vlm_room name)
  cmake_parse_arguments(ROOM "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC vlm_options ${ROOM_LINKS})
endfunction()
