# What `cmake --install` puts where. A component is a package: kestro-test, kestro-sim and kestro-report.
#
# kestro_sim and kestro_report find their parts from where they lie, links followed. Installed, they lie in a folder of
# the same shape as here, and bin/ leads to them; so what is installed can be moved as a build can.
include(GNUInstallDirs)
# What is there is installed; only the chassis is installed, and making all the tests first would take minutes.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(INSTALLED_SIM ${CMAKE_INSTALL_LIBEXECDIR}/kestro-sim)
set(INSTALLED_CHASSIS ${CMAKE_INSTALL_DATADIR}/kestro-sim/chassis)
set(INSTALLED_REPORT ${CMAKE_INSTALL_DATADIR}/kestro-report)
set(INSTALLED_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

# install_link(component place target): a link to another installed file, both named from the prefix.
function(install_link component place target)
    get_filename_component(folder ${place} DIRECTORY)
    get_filename_component(name ${place} NAME)
    # Written from the folder of the link, so that it holds below any prefix.
    file(RELATIVE_PATH to_target ${CMAKE_INSTALL_PREFIX}/${folder} ${CMAKE_INSTALL_PREFIX}/${target})
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links/${folder})
    file(CREATE_LINK ${to_target} ${CMAKE_BINARY_DIR}/links/${place} SYMBOLIC)
    install(FILES ${CMAKE_BINARY_DIR}/links/${place} DESTINATION ${folder} COMPONENT ${component})
endfunction()

# component_of(variable file): a manual page or completion is named after its program.
function(component_of variable file)
    get_filename_component(name ${file} NAME_WE)
    set(component kestro-sim)
    if(name STREQUAL kestro_test)
        set(component kestro-test)
    elseif(name MATCHES "^kestro_report")
        set(component kestro-report)
    endif()
    set(${variable} ${component} PARENT_SCOPE)
endfunction()

install(TARGETS kestro_test DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT kestro-test)

install(TARGETS kestro_sim kestro_call DESTINATION ${INSTALLED_SIM} COMPONENT kestro-sim)
install(TARGETS kestro_board kestro_world DESTINATION ${INSTALLED_SIM}/sim COMPONENT kestro-sim)
foreach(library ${DRIVER_LIBRARIES})
    set(folder sim)
    if(library IN_LIST OPENED_LIBRARIES)
        set(folder sim/opened/${library})
    endif()
    install(TARGETS sim_${library} DESTINATION ${INSTALLED_SIM}/${folder} COMPONENT kestro-sim)
endforeach()
install(TARGETS kestro_probe DESTINATION ${INSTALLED_SIM}/probe COMPONENT kestro-sim)
install(DIRECTORY sim/chassis/ DESTINATION ${INSTALLED_CHASSIS} COMPONENT kestro-sim USE_SOURCE_PERMISSIONS)
install(PROGRAMS scripts/make_image DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME kestro_make_image COMPONENT kestro-sim)
install_link(kestro-sim ${CMAKE_INSTALL_BINDIR}/kestro_sim ${INSTALLED_SIM}/kestro_sim)
install_link(kestro-sim ${CMAKE_INSTALL_BINDIR}/kestro_call ${INSTALLED_SIM}/kestro_call)
install_link(kestro-sim ${INSTALLED_SIM}/kestro_test ${CMAKE_INSTALL_BINDIR}/kestro_test)
install_link(kestro-sim ${INSTALLED_SIM}/sim/chassis ${INSTALLED_CHASSIS})

file(GLOB DOCUMENTS CONFIGURE_DEPENDS docs/*.md)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kestro-sim COMPONENT kestro-sim)
install(FILES ${DOCUMENTS} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kestro-sim/docs COMPONENT kestro-sim)

file(GLOB MANUAL_PAGES CONFIGURE_DEPENDS docs/*.[1-8])
foreach(page ${MANUAL_PAGES})
    component_of(component ${page})
    string(REGEX MATCH "[1-8]$" section ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
endforeach()

file(GLOB COMPLETIONS CONFIGURE_DEPENDS completion/kestro_*)
foreach(completion ${COMPLETIONS})
    component_of(component ${completion})
    install(FILES ${completion} DESTINATION ${INSTALLED_COMPLETIONS} COMPONENT ${component})
endforeach()

install(DIRECTORY report/kestro_report DESTINATION ${INSTALLED_REPORT} COMPONENT kestro-report
    PATTERN __pycache__ EXCLUDE)
install(PROGRAMS report/bin/kestro_report DESTINATION ${INSTALLED_REPORT}/bin COMPONENT kestro-report)
install_link(kestro-report ${CMAKE_INSTALL_BINDIR}/kestro_report ${INSTALLED_REPORT}/bin/kestro_report)
