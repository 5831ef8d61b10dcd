# What `cmake --install` installs, and the package that find_package(nbscore) finds.

include(CMakePackageConfigHelpers)

set(nbscore_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/nbscore)

install(TARGETS scoreframework naivebayes nbscore_host nbscore_command EXPORT nbscoreTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET scoreframework_xml)
    install(TARGETS scoreframework_xml LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

# The C interface is a part by itself: who links it needs none of what the C++ libraries are built with.
install(TARGETS nbscore_c EXPORT nbscoreCTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT nbscoreCTargets NAMESPACE nbscore:: DESTINATION ${nbscore_package_dir})
install(FILES ${PROJECT_SOURCE_DIR}/src/c/nbscore.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
file(RELATIVE_PATH NBSCORE_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/nbscore.pc.in ${CMAKE_BINARY_DIR}/nbscore.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/nbscore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

include(PublicHeaders)
foreach(header IN LISTS NBSCORE_PUBLIC_HEADERS NBSCORE_NEEDED_HEADERS)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nbscore/${folder})
endforeach()

install(EXPORT nbscoreTargets NAMESPACE nbscore:: DESTINATION ${nbscore_package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/nbscoreConfig.cmake.in
    ${CMAKE_BINARY_DIR}/nbscoreConfig.cmake INSTALL_DESTINATION ${nbscore_package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/nbscoreConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/nbscoreConfig.cmake ${CMAKE_BINARY_DIR}/nbscoreConfigVersion.cmake
    DESTINATION ${nbscore_package_dir})

if(NBSCORE_MAN_PAGE)
    install(FILES ${NBSCORE_MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/nbscore/examples)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md
    ${PROJECT_SOURCE_DIR}/SECURITY.md ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
