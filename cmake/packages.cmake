# Debian packages by CPack, one per component; scripts/package makes and checks them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestro)
set(CPACK_PACKAGE_CONTACT "kestro_test developers <developers@kestro-test.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
# Puts in what only Debian packages have, and makes it small.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/debian_files.cmake)
set(CPACK_KESTRO_PACKAGING ${CMAKE_SOURCE_DIR}/packaging)
set(CPACK_KESTRO_STRIP ${CMAKE_STRIP})

if(CMAKE_LIBRARY_ARCHITECTURE STREQUAL "arm-linux-gnueabihf")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
endif()
# Whose libraries the dependencies are looked for among.
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/package_architecture.cmake)

set(CPACK_COMPONENTS_ALL kestro-test kestro-sim kestro-report)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE kestro-test)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The driver libraries are the board's and belong to no package; those without hardware stand for them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/noop)

set(CPACK_DEBIAN_KESTRO-TEST_PACKAGE_NAME kestro-test)
set(CPACK_DEBIAN_KESTRO-TEST_DESCRIPTION "test harness for the board-support drivers of a chassis
Calls single operations of the driver libraries of modular network equipment,
and runs tests that compare what the drivers report with what the description
of the board says it must have, one pass or fail line per check.
.
The driver libraries are those of the board and come with its software; on
other machines the simulated chassis of kestro-sim has them.")
set(CPACK_DEBIAN_KESTRO-TEST_PACKAGE_SUGGESTS "kestro-report, kestro-sim")

set(CPACK_DEBIAN_KESTRO-SIM_PACKAGE_NAME kestro-sim)
set(CPACK_DEBIAN_KESTRO-SIM_PACKAGE_DEPENDS "kestro-test (= ${PROJECT_VERSION}), python3:any")
set(CPACK_DEBIAN_KESTRO-SIM_PACKAGE_SUGGESTS kestro-report)
set(CPACK_DEBIAN_KESTRO-SIM_DESCRIPTION "simulated chassis for kestro-test, and probe for driver calls
A chassis of main processing units, line cards, fan trays and power supplies
as shared libraries with the names of the driver libraries, on which the same
kestro_test runs without hardware. Cards are pulled, values set and faults
described by hand.
.
The package also has the driver probe, which records and answers driver calls
in front of any driver libraries, kestro_call, which makes single driver
calls, and the documents.")

set(CPACK_DEBIAN_KESTRO-REPORT_PACKAGE_NAME kestro-report)
set(CPACK_DEBIAN_KESTRO-REPORT_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_KESTRO-REPORT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_KESTRO-REPORT_PACKAGE_DEPENDS
    "python3:any (>= 3.11), python3-jinja2, python3-markupsafe, python3-yaml")
set(CPACK_DEBIAN_KESTRO-REPORT_PACKAGE_SUGGESTS "kestro-sim, kestro-test")
set(CPACK_DEBIAN_KESTRO-REPORT_PACKAGE_CONTROL_EXTRA
    "${CMAKE_SOURCE_DIR}/packaging/kestro-report/postinst;${CMAKE_SOURCE_DIR}/packaging/kestro-report/prerm")
set(CPACK_DEBIAN_KESTRO-REPORT_DESCRIPTION "verdicts and reports from the output of kestro-test
Reads what kestro_test printed, or runs it, and says whether the board passed:
a summary for people, and JUnit, TAP, JSON lines and pages for machines and
archives. Compares runs, and follows boards over many of them.")

include(CPack)
