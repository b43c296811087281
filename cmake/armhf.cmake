# The board: 32-bit ARM with hardware floating point and glibc. Tests run under user-mode emulation.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
# The target's libraries come from Debian's multi-architecture directories, beside the host's.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_IGNORE_PREFIX_PATH /usr/local)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static)
# Passing records by value changed between compilers before 7.1; nothing here is that old.
add_compile_options(-Wno-psabi)
