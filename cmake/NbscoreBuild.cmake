# How everything here is compiled: language level, exactness of arithmetic, checks that stay on in release builds.

option(NBSCORE_TESTS "Build the tests" ON)
option(NBSCORE_BENCHMARKS "Build the benchmarks" OFF)
option(NBSCORE_WERROR "Treat warnings as errors" OFF)
set(NBSCORE_SANITIZE "" CACHE STRING "Sanitizers to compile with, such as address,undefined or thread")
option(NBSCORE_FUZZ "Build the fuzzers: with clang, and with fuzzer-no-link among the sanitizers" OFF)
option(NBSCORE_COVERAGE "Compile for line coverage" OFF)

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

# The command runs from the build tree as it does once installed: bin/nbscore beside lib/.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})

# Libraries are searched for relative to who needs them, in the build tree too. CMake would write the build's own folders
# there, and behind them an empty one, which the loader takes for the current folder: whatever lies there under a
# library's name would run.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

# Every target of ours links this one.
add_library(nbscore_build INTERFACE)

# Doubles must come out the same bits everywhere: no fused multiply-add, no reassociation.
target_compile_options(nbscore_build INTERFACE -ffp-contract=off)

# An index out of range stops the process at the check itself, in release builds too.
target_compile_definitions(nbscore_build INTERFACE _GLIBCXX_ASSERTIONS _LIBCPP_ENABLE_ASSERTIONS=1)

target_compile_options(nbscore_build INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast
    $<$<BOOL:${NBSCORE_WERROR}>:-Werror>
    # False findings inside std::string and std::variant with g++ 12 at -O3; clang watches for the same.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-maybe-uninitialized>)

# What is left to whoever finds a fault in memory is little: stacks have guards, calls of the C library that copy are
# checked, nothing that can be written can run, no table of addresses can be written once it is filled, and programs too
# stand at random addresses.
if(MINGW)
    # The linker's defaults, stated. The checks of stacks and calls would need one library more beside every program.
    target_link_options(nbscore_build INTERFACE -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
else()
    include(CheckPIESupported)
    check_pie_supported()
    target_compile_options(nbscore_build INTERFACE -fstack-protector-strong)
    target_link_options(nbscore_build INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
    if(NOT NBSCORE_SANITIZE)  # they check the same calls, and more
        target_compile_options(nbscore_build INTERFACE
            "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
endif()

if(WIN32)
    # The system's header brings in names that clash with the XML library's, and macros that clash with everything.
    target_compile_definitions(nbscore_build INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()
if(MINGW)
    # Sources with many templates have more sections than the plain format of objects can count.
    target_compile_options(nbscore_build INTERFACE -Wa,-mbig-obj)
endif()

if(NBSCORE_SANITIZE)
    target_compile_options(nbscore_build INTERFACE
        -fsanitize=${NBSCORE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(nbscore_build INTERFACE -fsanitize=${NBSCORE_SANITIZE})
endif()
if(NBSCORE_COVERAGE)
    target_compile_options(nbscore_build INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(nbscore_build INTERFACE --coverage)
endif()

# Windows has no prefix for libraries: the plug-in is naivebayes.dll.
if(WIN32)
    set(CMAKE_SHARED_LIBRARY_PREFIX "")
    set(CMAKE_SHARED_MODULE_PREFIX "")
endif()

# nbscore_module(TARGET): what all our targets have in common. Programs stand in a folder beside that of the libraries.
function(nbscore_module target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:nbscore_build>)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    else()
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    endif()
endfunction()
