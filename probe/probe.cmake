# The driver probe: a library that is preloaded in front of any driver libraries.

# generate_probe_sources(folder headers...): what follows from the operations of the headers, see generate_wrappers.py.
function(generate_probe_sources folder)
    set(scripts ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
    add_custom_command(
        OUTPUT ${folder}/tables.cpp ${folder}/calls.cpp ${folder}/wrappers.cpp ${folder}/callbacks.cpp
               ${folder}/exports.map
        COMMAND ${Python3_EXECUTABLE} ${scripts}/generate_wrappers.py --tables ${folder}/tables.cpp
                --calls ${folder}/calls.cpp --wrappers ${folder}/wrappers.cpp --callbacks ${folder}/callbacks.cpp
                --exports ${folder}/exports.map ${ARGN}
        DEPENDS ${scripts}/generate_wrappers.py ${scripts}/interface.py ${ARGN}
        VERBATIM)
endfunction()

# What needs no driver call to be made: the language, and how calls are matched. Tests link it with tables of their own.
add_library(probe_language OBJECT
    call.cpp cursor.cpp input_file.cpp names.cpp print_value.cpp report.cpp script.cpp script_values.cpp session.cpp
    settings.cpp shape.cpp trace.cpp value.cpp)
target_include_directories(probe_language PUBLIC ${CMAKE_SOURCE_DIR})
set_target_properties(probe_language PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden)
compile_together(probe_language)

set(PROBE_GENERATED ${CMAKE_CURRENT_BINARY_DIR}/generated)
generate_probe_sources(${PROBE_GENERATED} ${INTERFACE_HEADERS})
# What the probe and kestro_call know of the interface.
add_library(probe_interface OBJECT ${PROBE_GENERATED}/tables.cpp ${PROBE_GENERATED}/calls.cpp)
target_link_libraries(probe_interface PRIVATE driver_interface)
target_include_directories(probe_interface PRIVATE ${CMAKE_SOURCE_DIR})
set_target_properties(probe_interface PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden)

add_library(kestro_probe SHARED
    hooks.cpp linkage.cpp output.cpp runtime.cpp ${PROBE_GENERATED}/wrappers.cpp)
target_link_libraries(kestro_probe PRIVATE probe_language probe_interface driver_interface)
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

# Calls drivers by hand. As kestro_test it is linked with no driver library; it opens the one that a call needs.
add_executable(kestro_call areas.cpp caller.cpp events.cpp kestro_call.cpp ${PROBE_GENERATED}/callbacks.cpp)
target_link_libraries(kestro_call PRIVATE probe_language probe_interface driver_interface)
set_target_properties(kestro_call PROPERTIES SKIP_BUILD_RPATH ON)
compile_together(kestro_call)
# The sanitizer's library asks for functions of the C++ run-time library, so the program would offer its own copy to the
# drivers, whose exceptions would begin in one copy and go on in another.
if(NOT KESTRO_SANITIZE)
    target_link_options(kestro_call PRIVATE -static-libstdc++ -static-libgcc)
endif()
