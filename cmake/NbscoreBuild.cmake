# How everything is compiled: language level, exact arithmetic, and the checks that stay on in release builds.

option(NBSCORE_TESTS "Build the tests" ON)
option(NBSCORE_BENCHMARKS "Build the benchmarks" OFF)
option(NBSCORE_WERROR "Treat warnings as errors" OFF)
set(NBSCORE_SANITIZE "" CACHE STRING "Sanitizers to compile with, such as address,undefined or thread")
option(NBSCORE_FUZZ "Build the fuzzers: with clang" OFF)
option(NBSCORE_PRECOMPILE "Precompile the standard headers: faster, but forgives a file that lacks an #include" OFF)
option(NBSCORE_COVERAGE "Count which lines run: with clang" OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The build tree is laid out like the installation, so that the command runs from it: bin/nbscore beside lib/.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})

# Libraries are searched for relative to the file that needs them, in the build tree too. By default CMake writes the
# build's own folders there, followed by an empty one, which the loader takes for the current folder: any file with a
# library's name in it would run.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

# All our targets link the first of these; those of src/ and fuzz/, where it is measured what runs, the second as well.
add_library(nbscore_build INTERFACE)
add_library(nbscore_measured INTERFACE)

# Doubles must have the same bits everywhere: no fused multiply-add, no reassociation.
target_compile_options(nbscore_build INTERFACE -ffp-contract=off)

# An index out of range stops the process at once, in release builds too.
target_compile_definitions(nbscore_build INTERFACE _GLIBCXX_ASSERTIONS _LIBCPP_ENABLE_ASSERTIONS=1)

target_compile_options(nbscore_build INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast
    $<$<BOOL:${NBSCORE_WERROR}>:-Werror>
    # False findings inside std::string and std::variant with g++ 12 at -O3; clang checks for the same faults.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-maybe-uninitialized>
    # More of these where headers are precompiled.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${NBSCORE_PRECOMPILE}>>:-Wno-stringop-overflow -Wno-array-bounds>)

# These make memory errors hard to exploit: stack guards, checked copying calls of the C library, no memory that is both
# writable and executable, read-only address tables, and random addresses for programs too.
if(MINGW)
    # The linker's defaults, stated. Checks of stacks and calls would need one more library beside every program.
    target_link_options(nbscore_build INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
else()
    include(CheckPIESupported)
    check_pie_supported()
    target_compile_options(nbscore_build INTERFACE -fstack-protector-strong)
    target_link_options(nbscore_build INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
    if(NOT NBSCORE_SANITIZE)  # sanitizers check the same calls, and more
        target_compile_options(nbscore_build INTERFACE
            "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
endif()

if(WIN32)
    # Keep out of windows.h the names that clash with the XML library's, and the macros that clash with everything.
    target_compile_definitions(nbscore_build INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()
if(MINGW)
    # Sources with many templates have more sections than the plain object format allows.
    target_compile_options(nbscore_build INTERFACE -Wa,-mbig-obj)
endif()

if(NBSCORE_SANITIZE)
    target_compile_options(nbscore_build INTERFACE
        -fsanitize=${NBSCORE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(nbscore_build INTERFACE -fsanitize=${NBSCORE_SANITIZE})
endif()
if(NBSCORE_COVERAGE)
    # Each program and library adds its counts to files of its own, up to four so that processes seldom wait for one.
    target_compile_options(nbscore_measured INTERFACE
        -fprofile-instr-generate=${CMAKE_BINARY_DIR}/coverage/%4m.profraw -fcoverage-mapping)
    target_link_options(nbscore_measured INTERFACE -fprofile-instr-generate)
endif()
if(NBSCORE_FUZZ)
    target_compile_options(nbscore_measured INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(nbscore_measured INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Windows has no prefix for libraries: the plug-in is naivebayes.dll.
if(WIN32)
    set(CMAKE_SHARED_LIBRARY_PREFIX "")
    set(CMAKE_SHARED_MODULE_PREFIX "")
endif()

# nbscore_module(TARGET): what all our targets have in common. Programs and libraries lie in neighbouring folders.
function(nbscore_module target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:nbscore_build>)
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE folder)
    if(folder MATCHES "^(src/|fuzz)")
        target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:nbscore_measured>)
    endif()
    if(NBSCORE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE <algorithm> <array> <functional> <map> <memory> <optional> <set>
            <span> <string> <string_view> <utility> <variant> <vector>)
    endif()
    get_target_property(type ${target} TYPE)
    if(UNIX AND folder MATCHES "^src/")
        # The XML library belongs to the framework's interface, and loading it takes long: who uses nothing of it does
        # not load it.
        target_link_options(${target} PRIVATE -Wl,--as-needed)
    endif()
    if(type STREQUAL "EXECUTABLE")
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    else()
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    endif()
endfunction()
