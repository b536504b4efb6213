# What a machine gets: the library with what goes with it, the headers that a host compiles against, the reference host
# with its demo, the documents. cpack makes a package of that.
include(GNUInstallDirs)

set(installed ${CMAKE_INSTALL_DATADIR}/doc/vlm-asl-services-lib)
install(TARGETS VlmASLServicesLib VlmAutomation VlmDialogsQt DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS aslhost asltds DESTINATION ${CMAKE_INSTALL_BINDIR})
file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(aslhost PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
set_target_properties(VlmASLServicesLib PROPERTIES INSTALL_RPATH "$ORIGIN")

# server/VlmHost.h, all that a host of another compiler needs; server/VlmASLServicesLib.h, and what it is said in.
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/VlmASLServicesLib)
foreach(room src/server libs/automation libs/automation/abi libs/values)
  install(DIRECTORY ${room}/include/ DESTINATION ${headers} FILES_MATCHING PATTERN *.h)
endforeach()
install(FILES src/frame/include/frame/ExportTypes.h DESTINATION ${headers}/frame)

install(FILES README.md DESTINATION ${installed})
install(DIRECTORY docs DESTINATION ${installed} PATTERN screenshots EXCLUDE)
install(PROGRAMS host/demo.sh DESTINATION ${installed})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vlm-asl-services-lib)
set(CPACK_PACKAGE_CONTACT "Velmo <velmo@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Exchange of data with the local health authority, for a host application")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "tdsodbc, libsqliteodbc")
include(CPack)
