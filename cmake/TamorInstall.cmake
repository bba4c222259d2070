# cmake --install: the library and what hosts need to find it, the tools, and the demonstration with the
# directory that it works in. Four components, which are the packages: runtime, dev, tools and demo.
# Whatever is installed may be moved: it looks for its other parts beside itself.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# The folders whose headers hosts include, in the order of the tree.
set(TAMOR_FOLDERS maths kernel script platform camera textures shaders models generator gui widgets app)

# Programs find the shared library beside themselves, unless it is where the system looks anyway.
if(BUILD_SHARED_LIBS AND NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND NOT CMAKE_INSTALL_RPATH)
    foreach(programs IN ITEMS "${CMAKE_INSTALL_BINDIR}" "${CMAKE_INSTALL_LIBEXECDIR}/tamor")
        file(RELATIVE_PATH library_from_programs "/prefix/${programs}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
        list(APPEND CMAKE_INSTALL_RPATH "$ORIGIN/${library_from_programs}")
    endforeach()
endif()

# tamor_install_library(TARGET KIND): a library under the name tamor::tamor, in an export of its own, from
# which tamorConfig.cmake takes the one that a host asks for.
function(tamor_install_library target kind)
    set_target_properties(${target} PROPERTIES EXPORT_NAME tamor OUTPUT_NAME tamor)
    install(
        TARGETS ${target} EXPORT tamor-${kind}
        ARCHIVE COMPONENT dev
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT dev
    )
    install(
        EXPORT tamor-${kind} NAMESPACE tamor:: FILE tamor-${kind}.cmake
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/tamor" COMPONENT dev
    )
endfunction()

function(tamor_install)
    tamor_install_library(tamor static)
    install(TARGETS tamor_numbers EXPORT tamor-static)
    if(BUILD_SHARED_LIBS)
        tamor_install_library(tamor_shared shared)
        install(TARGETS tamor_numbers EXPORT tamor-shared)
    endif()
    set_target_properties(tamor_numbers PROPERTIES EXPORT_NAME numbers)

    install(FILES TamorExport.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/tamor" COMPONENT dev)
    foreach(folder IN LISTS TAMOR_FOLDERS)
        install(
            DIRECTORY ${folder} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/tamor" COMPONENT dev
            FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE
        )
    endforeach()

    configure_package_config_file(
        cmake/tamorConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/tamorConfig.cmake"
        INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/tamor"
    )
    write_basic_package_version_file(
        "${CMAKE_CURRENT_BINARY_DIR}/tamorConfigVersion.cmake" COMPATIBILITY SameMajorVersion
    )
    install(
        FILES "${CMAKE_CURRENT_BINARY_DIR}/tamorConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/tamorConfigVersion.cmake"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/tamor" COMPONENT dev
    )

    # A static library's dependencies are its host's, too.
    set(own_modules "glu freetype2 zlib")
    set(public_modules "sdl glew gl")
    if(NOT BUILD_SHARED_LIBS)
        string(APPEND public_modules " ${own_modules}")
    endif()
    file(RELATIVE_PATH prefix_from_pc "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
    configure_file(cmake/tamor.pc.in tamor.pc @ONLY)
    install(
        FILES "${CMAKE_CURRENT_BINARY_DIR}/tamor.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT dev
    )

    install(FILES README.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT dev)
    install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT dev)
    install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT dev)
endfunction()
