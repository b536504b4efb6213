# Builds the list of comuni into a target, so that an installed program needs no file beside it:
#   vlm_embed_comuni(target)
# The generated source defines EmbeddedComuni() of DemoClinicComuni.h, one literal a line of the list.

if(CMAKE_SCRIPT_MODE_FILE)
  file(READ "${COMUNI_CSV}" content)
  string(REPLACE "\r" "" content "${content}")
  string(REPLACE "\\" "\\\\" content "${content}")
  string(REPLACE "\"" "\\\"" content "${content}")
  string(REGEX REPLACE "\n+$" "" content "${content}")
  string(REPLACE "\n" "\"sv,\n    \"" content "${content}")
  file(WRITE "${COMUNI_CPP}" "#include \"DemoClinicComuni.h\"\n\nnamespace vlm::host {\n\n"
       "using namespace std::string_view_literals;\n\nstatic constexpr std::string_view kLines[] = {\n"
       "    \"${content}\"sv,\n};\n\n"
       "std::span<const std::string_view> EmbeddedComuni() { return kLines; }\n\n}  // namespace vlm::host\n")
  return()
endif()

set(VLM_EMBED_COMUNI_SCRIPT ${CMAKE_CURRENT_LIST_FILE})
set(VLM_COMUNI_CSV ${CMAKE_CURRENT_LIST_DIR}/data/comuni.csv)

function(vlm_embed_comuni target)
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/ComuniLines.cpp)
  add_custom_command(
    OUTPUT ${generated}
    COMMAND ${CMAKE_COMMAND} -DCOMUNI_CSV=${VLM_COMUNI_CSV} -DCOMUNI_CPP=${generated} -P ${VLM_EMBED_COMUNI_SCRIPT}
    DEPENDS ${VLM_COMUNI_CSV} ${VLM_EMBED_COMUNI_SCRIPT}
    COMMENT "Comuni into ${target}"
    VERBATIM)
  target_sources(${target} PRIVATE ${generated})
endfunction()
