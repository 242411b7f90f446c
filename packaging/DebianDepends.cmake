# Run by cpack: what the programs need of the system, as Debian's own tool finds it. Beside the libraries a
# window needs the plug-in that puts it on the screen.
set(work ${CPACK_OUTPUT_FILE_PREFIX}/depends)
set(programs ${CPACK_OUTPUT_FILE_PREFIX}/bin/vlxutility ${CPACK_OUTPUT_FILE_PREFIX}/bin/vlx720-simulator)
file(WRITE ${work}/debian/control "Source: vlxutility\n\nPackage: vlxutility\nArchitecture: any\n")
execute_process(COMMAND dpkg-shlibdeps -O ${programs}
  WORKING_DIRECTORY ${work} OUTPUT_VARIABLE found COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE ".*shlibs:Depends=([^\n]*).*" "\\1" libraries "${found}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${libraries}, qt6-qpa-plugins")
