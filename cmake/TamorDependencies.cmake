# Every library that Tamor uses comes from a Debian package, found here and nowhere else. A missing
# one ends the configuration with the name of the package to install.

find_package(PkgConfig)
if(NOT PkgConfig_FOUND)
    message(FATAL_ERROR "pkg-config is missing: install the package pkg-config")
endif()

# tamor_find_module(TARGET MODULE PACKAGE): the pkg-config module as PkgConfig::TARGET.
function(tamor_find_module target module package)
    pkg_check_modules(${target} QUIET IMPORTED_TARGET GLOBAL ${module})
    if(NOT ${target}_FOUND)
        message(FATAL_ERROR "${module} is missing: install the package ${package}")
    endif()
endfunction()

# tamor_find_package(NAME PACKAGE): find_package, with the Debian package named when it fails.
macro(tamor_find_package name package)
    find_package(${name} QUIET)
    if(NOT ${name}_FOUND)
        message(FATAL_ERROR "${name} is missing: install the package ${package}")
    endif()
endmacro()

set(OpenGL_GL_PREFERENCE GLVND)
tamor_find_package(OpenGL libgl-dev)
tamor_find_package(Freetype libfreetype-dev)
tamor_find_package(ZLIB zlib1g-dev)
tamor_find_module(SDL sdl libsdl1.2-dev)
tamor_find_module(GLEW glew libglew-dev)
tamor_find_module(GLU glu libglu1-mesa-dev)

if(TAMOR_BUILD_TOOLS OR TAMOR_BUILD_TESTS OR TAMOR_BUILD_BENCHMARKS)
    tamor_find_package(PNG libpng-dev)
endif()
if(TAMOR_BUILD_TOOLS)
    tamor_find_module(LIBEDIT libedit libedit-dev)
endif()
if(TAMOR_BUILD_TESTS)
    tamor_find_package(GTest "libgtest-dev and libgmock-dev")
endif()
if(TAMOR_BUILD_BENCHMARKS)
    tamor_find_package(benchmark libbenchmark-dev)
endif()
