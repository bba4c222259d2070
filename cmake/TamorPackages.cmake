# cpack -G DEB: the four components of cmake --install as Debian packages, which scripts/packages builds
# and lints. What Debian asks for besides is in debian/.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tamor)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "The maintainers of Tamor <maintainers@tamor.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each has its own
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_COMPONENTS_ALL runtime dev tools demo)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/Documentation.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/Ldconfig.cmake")
set(CPACK_TAMOR_SOURCES "${PROJECT_SOURCE_DIR}")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Programs link the library that is packaged beside them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

# tamor_package(COMPONENT NAME SECTION DEPENDS DESCRIPTION)
macro(tamor_package component name section depends description)
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${depends}")
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${description}")
endmacro()

set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_COMPONENT_DEMO_DEPENDS runtime)
set(about "Tamor is a small real-time 3D engine in C++20: a kernel that sends events, a
window with OpenGL, a GUI toolkit, images, fonts, animated models, terrain,
GLSL programs and a script language."
)
tamor_package(
    runtime libtamor${PROJECT_VERSION_MAJOR} libs ""
    "small real-time 3D engine, shared library\n${about}"
)
tamor_package(
    dev libtamor-dev libdevel
    "libfreetype-dev, libgl-dev, libglew-dev, libglu1-mesa-dev, libsdl1.2-dev, pkg-config, zlib1g-dev"
    "small real-time 3D engine, to build programs on\n${about}
.
This package has the headers, both libraries, what CMake and pkg-config look
for, the manual and the examples."
)
tamor_package(
    tools tamor-tools devel "fonts-dejavu-core"
    "small real-time 3D engine, tools for those who write for it\n${about}
.
tamor-check says what is wrong in layouts, themes, models, pictures and
scripts, tamor-view shows them, and tamor-script has a prompt."
)
tamor_package(
    demo tamor-demo graphics "fonts-dejavu-core"
    "small real-time 3D engine, demonstration\n${about}
.
The demonstration has a turning model and every widget of the toolkit.
tamor-tour flies over an island with everything that the engine has."
)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS libgl1-mesa-dri)
include(CPack)
