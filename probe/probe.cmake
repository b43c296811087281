# The driver probe: a library that is preloaded in front of any driver libraries.

# generate_probe_sources(folder headers...): tables.cpp, wrappers.cpp and exports.map for the operations of the headers.
function(generate_probe_sources folder)
    set(scripts ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
    add_custom_command(
        OUTPUT ${folder}/tables.cpp ${folder}/wrappers.cpp ${folder}/exports.map
        COMMAND ${Python3_EXECUTABLE} ${scripts}/generate_wrappers.py --tables ${folder}/tables.cpp
                --wrappers ${folder}/wrappers.cpp --exports ${folder}/exports.map ${ARGN}
        DEPENDS ${scripts}/generate_wrappers.py ${scripts}/interface.py ${ARGN}
        VERBATIM)
endfunction()

# What needs no driver call to be made: the language, and how calls are matched. Tests link it with tables of their own.
add_library(probe_language OBJECT
    call.cpp cursor.cpp names.cpp report.cpp script.cpp session.cpp settings.cpp value.cpp)
target_include_directories(probe_language PUBLIC ${CMAKE_SOURCE_DIR})
set_target_properties(probe_language PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden)

set(PROBE_GENERATED ${CMAKE_CURRENT_BINARY_DIR}/generated)
generate_probe_sources(${PROBE_GENERATED} ${INTERFACE_HEADERS})

add_library(kestro_probe SHARED
    hooks.cpp linkage.cpp runtime.cpp ${PROBE_GENERATED}/tables.cpp ${PROBE_GENERATED}/wrappers.cpp)
target_link_libraries(kestro_probe PRIVATE probe_language driver_interface)
set_target_properties(kestro_probe PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/probe
    CXX_VISIBILITY_PRESET hidden
    LINK_DEPENDS ${PROBE_GENERATED}/exports.map)
# Calls go on to the C library's dlsym as jumps, in every build: see hooks.cpp. A sanitizer looks its own functions up
# that way before it can watch anything.
set_source_files_properties(hooks.cpp linkage.cpp PROPERTIES COMPILE_OPTIONS "-O2;-fno-sanitize=all")
# The board has no C++ run-time library.
target_link_options(kestro_probe PRIVATE
    -static-libstdc++ -static-libgcc -Wl,--version-script=${PROBE_GENERATED}/exports.map)
