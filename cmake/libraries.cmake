# The driver libraries: a row each. The headers of a library lie in include/<name>/, its simulation in sim/drv/<name>/;
# its file is lib<name>.so.
#
#   linked   kestro_test is linked with it
#   opened   kestro_test opens it when a module needs it; a board may lack it
set(DRIVER_LIBRARY_TABLE
    drv_basic       linked
    nb_bsp          linked
    nb_ctl          linked
    drv_clusterport opened
    drv_inner_eth   opened
    drv_mng_eth     opened
    drv_inphi115050 opened
    optical_lib     opened
)

# What follows from the table: DRIVER_LIBRARIES, LINKED_LIBRARIES, OPENED_LIBRARIES, <name>_HEADERS, INTERFACE_HEADERS,
# and the targets noop_<name> (probe/) and sim_<name> (sim/drv/), which SIMULATED_TARGETS and LINKED_NOOP_TARGETS list.
set(rows ${DRIVER_LIBRARY_TABLE})
while(rows)
    list(POP_FRONT rows name how)
    if(NOT how MATCHES "^(linked|opened)$")
        message(FATAL_ERROR "cmake/libraries.cmake: ${name} is '${how}'; write linked or opened")
    endif()
    file(GLOB_RECURSE ${name}_HEADERS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/include/${name}/*.h)
    if(NOT ${name}_HEADERS)
        message(FATAL_ERROR "cmake/libraries.cmake: ${name} has no headers; put them into include/${name}/")
    endif()
    list(APPEND DRIVER_LIBRARIES ${name})
    list(APPEND INTERFACE_HEADERS ${${name}_HEADERS})
    list(APPEND SIMULATED_TARGETS sim_${name})
    if(how STREQUAL linked)
        list(APPEND LINKED_LIBRARIES ${name})
        list(APPEND LINKED_NOOP_TARGETS noop_${name})
    else()
        list(APPEND OPENED_LIBRARIES ${name})
    endif()
endwhile()

# A header that belongs to no library would be left out without a word.
file(GLOB_RECURSE all_headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/include/*/*.h)
list(REMOVE_ITEM all_headers ${INTERFACE_HEADERS})
if(all_headers)
    message(FATAL_ERROR "cmake/libraries.cmake: no row for the library of ${all_headers}")
endif()
