# What makes a DLL of the library: its exports, its type library and its resources.
enable_language(RC)

find_path(VLM_IDL_FOLDER oaidl.idl PATHS /usr/include/wine/wine/windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(GLOB VLM_TYPELIB_FOLDERS /usr/lib/*/wine/x86_64-windows) # where stdole2.tlb stands, for either word size
list(TRANSFORM VLM_TYPELIB_FOLDERS PREPEND -L)

# vlm_windows_library(TARGET): the type library is made from the .idl and stands in the DLL as its first.
function(vlm_windows_library target)
  set(here ${PROJECT_SOURCE_DIR}/windows)
  set(VLM_TYPELIB ${CMAKE_BINARY_DIR}/VlmASLServicesLib.tlb)
  set(VLM_MANIFEST ${CMAKE_BINARY_DIR}/VlmASLServicesLib.manifest)
  set(widl ${VLM_WIDL} -I${VLM_IDL_FOLDER} -I${here} ${VLM_TYPELIB_FOLDERS} -L${CMAKE_BINARY_DIR} ${VLM_TYPELIB_WORD}
           -t)
  foreach(library DataObjects VlmASLServicesLib) # the second imports the first
    add_custom_command(
      OUTPUT ${CMAKE_BINARY_DIR}/${library}.tlb
      COMMAND ${widl} -o ${CMAKE_BINARY_DIR}/${library}.tlb ${here}/${library}.idl
      DEPENDS ${here}/${library}.idl ${here}/DataObjectTypes.idl ${imported}
      VERBATIM)
    set(imported ${CMAKE_BINARY_DIR}/${library}.tlb)
  endforeach()
  configure_file(${here}/VlmASLServicesLib.manifest.in ${VLM_MANIFEST} @ONLY)
  configure_file(${here}/VlmASLServicesLib.rc.in ${CMAKE_BINARY_DIR}/VlmASLServicesLib.rc @ONLY)
  set_source_files_properties(${CMAKE_BINARY_DIR}/VlmASLServicesLib.rc PROPERTIES
    OBJECT_DEPENDS "${VLM_TYPELIB};${VLM_MANIFEST}" COMPILE_OPTIONS "-c;65001")
  target_sources(${target} PRIVATE ${CMAKE_BINARY_DIR}/VlmASLServicesLib.rc ${here}/VlmASLServicesLib.def)
  # The .def names the exports without decoration, which 32-bit functions carry inside.
  target_link_options(${target} PRIVATE -Wl,--enable-stdcall-fixup)
  set_target_properties(${target} PROPERTIES PREFIX "" LINK_DEPENDS ${here}/VlmASLServicesLib.def)
endfunction()
