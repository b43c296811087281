# compile_together(target): several files of a target in one compiler run (together.py), which takes a third of the time
# of one run each. For programs and libraries of the desk; the product is compiled file by file, but for
# the sanitizers.
option(KESTRO_TOGETHER "Read several files of the simulator, the probe and the tests at once" ON)

function(compile_together target)
    if(NOT KESTRO_TOGETHER)
        return()
    endif()
    get_target_property(folder ${target} SOURCE_DIR)
    get_target_property(sources ${target} SOURCES)
    set(files "")
    foreach(source ${sources})
        get_filename_component(file ${source} ABSOLUTE BASE_DIR ${folder})
        get_source_file_property(alone ${file} SKIP_UNITY_BUILD_INCLUSION)
        if(file MATCHES "\\.cpp$" AND NOT file MATCHES "^${CMAKE_BINARY_DIR}/" AND NOT alone)
            list(APPEND files ${file})
        endif()
    endforeach()
    # Whether files go together changes with what is in them.
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
    execute_process(
        COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/cmake/together.py 8 ${files}
        OUTPUT_VARIABLE groups
        OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE ";" " " groups "${groups}")
    string(REPLACE "\n" ";" groups "${groups}")
    set(number 0)
    foreach(group ${groups})
        math(EXPR number "${number} + 1")
        separate_arguments(group)
        set_source_files_properties(${group} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP "together_${number}")
    endforeach()
    # What stands in an included file is no other file's here.
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
