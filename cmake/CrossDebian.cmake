# A toolchain: builds for another processor with Debian's cross compilers, against a tree of that
# processor's packages, and runs what was built by qemu. scripts/matrix makes the tree and sets
# TAMOR_TRIPLET, such as s390x-linux-gnu, TAMOR_TREE and TAMOR_QEMU.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAMOR_TRIPLET TAMOR_TREE TAMOR_QEMU)
set(CMAKE_SYSTEM_NAME Linux)
string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${TAMOR_TRIPLET}")
set(CMAKE_CXX_COMPILER "${TAMOR_TRIPLET}-g++")
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # on 32-bit ARM it tells of each call that GCC 7 began to make differently
# The tree's C library before the cross compiler's own, which may be older than what the tree's libraries ask for.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L${TAMOR_TREE}/usr/lib/${TAMOR_TRIPLET}")
set(CMAKE_LIBRARY_ARCHITECTURE "${TAMOR_TRIPLET}")
set(CMAKE_SYSROOT "${TAMOR_TREE}")
set(CMAKE_CROSSCOMPILING_EMULATOR "${TAMOR_QEMU};-L;${TAMOR_TREE}")
foreach(kind IN ITEMS LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${TAMOR_TREE}")
set(ENV{PKG_CONFIG_LIBDIR} "${TAMOR_TREE}/usr/lib/${TAMOR_TRIPLET}/pkgconfig:${TAMOR_TREE}/usr/share/pkgconfig")
