# Compiles a file into a target as an array of bytes.
#
# As a module it gives eda_embed_file(); as a script (cmake -P) it writes the source file.
if(CMAKE_SCRIPT_MODE_FILE)
  cmake_minimum_required(VERSION 3.24)
  file(READ "${INPUT}" bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  string(REGEX REPLACE "(0x0a,)" "\\1\n" bytes "${bytes}")
  file(WRITE "${OUTPUT}" "// Made from ${TITLE} by the build.
#include <cstddef>

extern const unsigned char ${NAME}[];
extern const std::size_t ${NAME}Size;

const unsigned char ${NAME}[] = {
${bytes}};
const std::size_t ${NAME}Size = sizeof ${NAME};
")
  return()
endif()

set(EDA_EMBED_FILE_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")

# eda_embed_file(RESULT FILE file NAME symbol): RESULT is the path of a source file that defines
# `const unsigned char symbol[]` and `const std::size_t symbolSize`.
function(eda_embed_file result)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "FILE;NAME" "")
  set(output "${CMAKE_CURRENT_BINARY_DIR}/${ARG_NAME}.cpp")
  set(input "${CMAKE_CURRENT_SOURCE_DIR}/${ARG_FILE}")
  add_custom_command(OUTPUT "${output}"
    COMMAND ${CMAKE_COMMAND} "-DINPUT=${input}" "-DOUTPUT=${output}" "-DNAME=${ARG_NAME}"
            "-DTITLE=${ARG_FILE}" -P "${EDA_EMBED_FILE_SCRIPT}"
    DEPENDS "${input}" "${EDA_EMBED_FILE_SCRIPT}"
    VERBATIM)
  set(${result} "${output}" PARENT_SCOPE)
endfunction()
