# Read by cpack before it makes the packages. dpkg-shlibdeps takes the architecture of the libraries from here; without,
# it would look for a foreign program's among those of this machine.
if(CPACK_DEBIAN_PACKAGE_ARCHITECTURE)
    set(ENV{DEB_HOST_ARCH} ${CPACK_DEBIAN_PACKAGE_ARCHITECTURE})
endif()
