# What all of Tamor's targets are compiled with.

# A result has the same bits in every build type and on every processor: multiply and add are never
# contracted. Hosts inherit this, since the maths headers are inline.
add_library(tamor_numbers INTERFACE)
target_compile_options(tamor_numbers INTERFACE -ffp-contract=off)

# GCC 12, optimising, finds in std::string's operator+ an overlap that cannot be.
add_library(tamor_warnings INTERFACE)
target_compile_options(
    tamor_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                             $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
                             $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Werror>
)

# As the standard has it and GCC does: an object's memory is given back with its size.
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-fsized-deallocation)
endif()

# The whole library is instrumented, so that any fuzzer sees the branches that it takes.
if(TAMOR_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "TAMOR_FUZZ needs clang: set CMAKE_CXX_COMPILER to clang++")
    endif()
    set(TAMOR_SANITISE "address;undefined;float-cast-overflow")
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(TAMOR_SANITISE)
    list(JOIN TAMOR_SANITISE "," sanitisers)
    add_compile_options(-fsanitize=${sanitisers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${sanitisers})
endif()

# As Debian builds its own packages. It costs instructions, of which the budget counts those without.
if(TAMOR_HARDENED)
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    # Without optimisation the C library has nothing to fortify, and says so.
    add_compile_options(
        -fstack-protector-strong "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
    )
    add_link_options(-Wl,-z,relro,-z,now)
endif()
