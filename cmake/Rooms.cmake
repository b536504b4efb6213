# A room is a static library of the sources in one folder. What it offers to others stands in include/NAME below the
# folder; that folder is all that others see of it, and only those who name it.

add_library(vlm_options INTERFACE)
target_compile_options(vlm_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                             -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees faults in "text" + string, again when several files or the whole program are optimised as one.
  target_compile_options(vlm_options INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
  target_link_options(vlm_options INTERFACE -Wno-stringop-overflow)
endif()
if(WIN32)
  target_compile_definitions(vlm_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601) # Windows 7 and on
endif()
if(VLM_SANITIZE)
  target_compile_options(vlm_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer
                                               $<$<BOOL:$<TARGET_PROPERTY:VLM_TEST>>:-fno-sanitize=null,alignment,vptr>)
  target_link_options(vlm_options INTERFACE -fsanitize=address,undefined)
endif()

if(VLM_FUZZ)
  target_compile_options(vlm_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Builds that compile several files as one (CMAKE_UNITY_BUILD) precompile what all of them read, too: vlm_precompiled(
# TARGET KIND), where KIND is std or test. The release build does neither: there every file is compiled as it stands.
function(vlm_precompiled target kind)
  if(CMAKE_UNITY_BUILD)
    target_precompile_headers(${target} REUSE_FROM vlm_${kind}_headers)
  endif()
endfunction()

# A test runs once for each time that it is compiled: optimising it costs more than it gains. So do checks of every
# pointer in it, which are half of its code; the rooms have them, and a wrong address is found anyway.
function(vlm_test_code target)
  target_compile_options(${target} PRIVATE -O0)
  set_target_properties(${target} PROPERTIES VLM_TEST ON)
endfunction()

if(CMAKE_UNITY_BUILD)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/Empty.cpp CONTENT "")
  set(kinds std)
  if(VLM_TESTS)
    list(APPEND kinds test)
  endif()
  foreach(kind ${kinds})
    add_library(vlm_${kind}_headers OBJECT EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/Empty.cpp)
    target_precompile_headers(vlm_${kind}_headers PRIVATE
      <algorithm> <array> <filesystem> <fstream> <functional> <map> <memory> <optional> <string> <string_view> <utility>
      <variant> <vector>)
    target_link_libraries(vlm_${kind}_headers PRIVATE vlm_options)
  endforeach()
  if(VLM_TESTS)
    target_precompile_headers(vlm_test_headers PRIVATE <gtest/gtest.h>)
    target_link_libraries(vlm_test_headers PRIVATE GTest::gtest)
    vlm_test_code(vlm_test_headers)
  endif()
endif()

# What a room needs of one machine only stands in a folder of its own inside the room.
if(WIN32)
  set(VLM_MACHINE windows)
else()
  set(VLM_MACHINE posix)
endif()

# vlm_room(NAME [PUBLIC ROOM ...] [PRIVATE ROOM ...] [FOLDERS ...]): the target vlm_NAME of the sources in the current
# folder, in its machine's folder and in FOLDERS. PUBLIC are the rooms that its own include/NAME needs. Tests stand in
# the folder tests.
function(vlm_room name)
  cmake_parse_arguments(ROOM "" "" "PUBLIC;PRIVATE;FOLDERS" ${ARGN})
  list(TRANSFORM ROOM_PUBLIC PREPEND vlm_)
  list(TRANSFORM ROOM_PRIVATE PREPEND vlm_)
  set(patterns ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  foreach(folder ${VLM_MACHINE} ${ROOM_FOLDERS})
    list(APPEND patterns ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  add_library(vlm_${name} STATIC ${sources})
  target_include_directories(vlm_${name} PUBLIC include PRIVATE .)
  target_link_libraries(vlm_${name} PUBLIC ${ROOM_PUBLIC} PRIVATE vlm_options ${ROOM_PRIVATE})
  vlm_precompiled(vlm_${name} std)
  if(VLM_TESTS AND EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/tests/CMakeLists.txt)
    add_subdirectory(tests)
  endif()
endfunction()

# vlm_tests(NAME [WINDOWS] [SOURCES ...] [ROOMS ROOM ...] [INSIDE ROOM ...] [LINKS ...]): the test program NAME_tests,
# of the sources in the current folder and in its machine's folder unless they are named. ROOMS it sees from outside,
# INSIDE with everything in their folders. WINDOWS: it brings windows up, on a screen in memory where there is a program
# that makes one, else on none.
function(vlm_tests name)
  cmake_parse_arguments(TESTS "WINDOWS" "" "SOURCES;ROOMS;INSIDE;LINKS" ${ARGN})
  if(NOT TESTS_SOURCES)
    file(GLOB TESTS_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp
                                              ${CMAKE_CURRENT_SOURCE_DIR}/${VLM_MACHINE}/*.cpp)
  endif()
  add_executable(${name}_tests ${TESTS_SOURCES})
  vlm_test_code(${name}_tests)
  vlm_precompiled(${name}_tests test)
  # The precompiled header is position-independent as a library is, not as a program would be.
  set_target_properties(${name}_tests PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  if(NOT WIN32)
    target_compile_options(${name}_tests PRIVATE -fPIC)
  endif()
  target_include_directories(${name}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(room ${TESTS_INSIDE})
    target_include_directories(${name}_tests PRIVATE $<TARGET_PROPERTY:vlm_${room},SOURCE_DIR>)
  endforeach()
  list(TRANSFORM TESTS_ROOMS PREPEND vlm_)
  list(TRANSFORM TESTS_INSIDE PREPEND vlm_)
  target_link_libraries(${name}_tests PRIVATE vlm_options ${TESTS_ROOMS} ${TESTS_INSIDE} ${TESTS_LINKS}
                                              GTest::gtest_main)
  # On Windows a program finds a library beside it, elsewhere where it was built.
  set_target_properties(${name}_tests PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}$<$<NOT:$<BOOL:${WIN32}>>:/tests> BUILD_RPATH_USE_ORIGIN ON)
  set(command ${name}_tests)
  if(TESTS_WINDOWS)
    find_program(XVFB_RUN xvfb-run)
    if(XVFB_RUN)
      set(command ${XVFB_RUN} -a -s "-screen 0 1280x1024x24" env QT_QPA_PLATFORM=xcb $<TARGET_FILE:${name}_tests>)
    endif()
  endif()
  add_test(NAME ${name} COMMAND ${command})
  if(WIN32) # a crash there ends with success
    set_tests_properties(${name} PROPERTIES FAIL_REGULAR_EXPRESSION "Unhandled (page fault|exception)")
  endif()
  if(TESTS_WINDOWS)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
      "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/libs/dialogs/qt/tests/leaks.supp:print_suppressions=0")
  endif()
endfunction()
