# The libraries that a Windows program needs beside it to start: the XML library and the compiler's run-time libraries.
# They are shared, because exceptions and objects pass between the framework, the plug-in and their host. They lie in
# the bin folder of the build and of the installation.

# CMake's own module for the XML library finds only the import library.
get_filename_component(xerces_folder ${XercesC_LIBRARY_RELEASE} DIRECTORY)
find_file(NBSCORE_XERCES_DLL libxerces-c.dll PATHS ${xerces_folder}/../bin
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(runtime_libraries ${NBSCORE_XERCES_DLL})
if(MINGW)
    foreach(name libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
            OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND runtime_libraries ${library})
    endforeach()
endif()

set(copies "")
foreach(library ${runtime_libraries})
    get_filename_component(name ${library} NAME)
    set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
    add_custom_command(OUTPUT ${copy}
        COMMAND ${CMAKE_STRIP} --strip-unneeded -o ${copy} ${library}
        DEPENDS ${library}
        VERBATIM)
    list(APPEND copies ${copy})
endforeach()
add_custom_target(nbscore_runtime ALL DEPENDS ${copies})
add_dependencies(nbscore_command nbscore_runtime)
install(FILES ${copies} DESTINATION ${CMAKE_INSTALL_BINDIR})

# What a program needs to be built: the headers and import library of the XML library, which the framework's headers
# include, and the library for vector instructions, which is linked into the program.
get_filename_component(hwy_package_dir ${hwy_DIR} ABSOLUTE)
install(DIRECTORY ${XercesC_INCLUDE_DIR}/xercesc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${XercesC_LIBRARY_RELEASE} ${hwy_package_dir}/../../libhwy.a ${hwy_package_dir}/../../libhwy_test.a
    DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${hwy_package_dir} DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake)

# The licences of everything that is in our libraries and programs, or beside them.
foreach(package libxerces-c-dev libre2-dev libutf8proc-dev libhwy-dev libboost1.74-dev libcli11-dev nlohmann-json3-dev
        gcc-mingw-w64-base mingw-w64-x86-64-dev)
    install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${package}.txt)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION licences RENAME nbscore.txt)
install(FILES ${PROJECT_SOURCE_DIR}/docs/windows.md DESTINATION . RENAME README.md)
# Some licences refer to these texts instead of containing them.
install(FILES /usr/share/common-licenses/Apache-2.0 /usr/share/common-licenses/GPL-2 /usr/share/common-licenses/GPL-3
    DESTINATION licences)
