# Puts text files into the program: `lumenfold_embed(target NAME FILES...)` gives the target a
# constant `extern const std::string_view NAME` in namespace Lumenfold::Builder, all files one after
# another, without indents and lines of comments: readers of sites have to load them. Run as a
# script it writes the source.
if(CMAKE_SCRIPT_MODE_FILE)
    set(literals "")
    foreach(file IN LISTS FILES)
        file(READ "${file}" text)
        string(REGEX REPLACE "\n+ *" "\n" text "\n${text}")
        string(REGEX REPLACE "\n(//[^\n]*\n)+" "\n" text "${text}")
        string(REGEX REPLACE "\n/\\*[^*]*\\*/" "" text "${text}")
        string(REGEX REPLACE "^\n" "" text "${text}")
        string(APPEND literals "R\"embedded(${text})embedded\"\n")
    endforeach()
    file(WRITE "${OUTPUT}" "#include <string_view>\n\nnamespace Lumenfold::Builder {\n"
        "extern const std::string_view ${NAME};\n"
        "const std::string_view ${NAME} =\n${literals};\n}\n")
    return()
endif()

set(LUMENFOLD_EMBED_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")

function(lumenfold_embed target name)
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE files)
    set(output "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    add_custom_command(OUTPUT "${output}"
        COMMAND "${CMAKE_COMMAND}" "-DFILES=${files}" "-DNAME=${name}" "-DOUTPUT=${output}"
            -P "${LUMENFOLD_EMBED_SCRIPT}"
        DEPENDS ${files} "${LUMENFOLD_EMBED_SCRIPT}"
        VERBATIM)
    target_sources(${target} PRIVATE "${output}")
endfunction()
