# Run by cpack when the components lie ready, each in a folder with the name of its package.
cmake_policy(VERSION 3.25)
set(packaging ${CPACK_KESTRO_PACKAGING})

function(put from to)
    configure_file(${from} ${to} COPYONLY FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

# The sections that lintian asks to leave out are not among those that cpack strips.
function(strip_programs folder)
    file(GLOB_RECURSE files ${folder}/*)
    foreach(file ${files})
        # Links lead to programs of this package or another.
        if(IS_SYMLINK ${file})
            continue()
        endif()
        file(READ ${file} magic LIMIT 4 HEX)
        if(magic STREQUAL "7f454c46")
            execute_process(COMMAND ${CPACK_KESTRO_STRIP} --strip-unneeded -R .comment -R .note ${file}
                COMMAND_ERROR_IS_FATAL ANY)
        endif()
    endforeach()
endfunction()

foreach(package ${CPACK_COMPONENTS_ALL})
    set(share ${CPACK_TEMPORARY_DIRECTORY}/${package}/usr/share)
    put(${packaging}/${package}/copyright ${share}/doc/${package}/copyright)
    put(${packaging}/changelog ${share}/doc/${package}/changelog)
    if(EXISTS ${packaging}/${package}/lintian-overrides)
        put(${packaging}/${package}/lintian-overrides ${share}/lintian/overrides/${package})
    endif()
    file(GLOB pages ${share}/man/man*/*)
    execute_process(COMMAND gzip -9n ${pages} ${share}/doc/${package}/changelog COMMAND_ERROR_IS_FATAL ANY)
    strip_programs(${CPACK_TEMPORARY_DIRECTORY}/${package})
endforeach()
