# The program with its help book in a folder of their own, for the book must lie beside the program, the
# simulator, what a desktop shows of them, and the Debian package of it all.
include(GNUInstallDirs)

set(program_folder ${CMAKE_INSTALL_LIBEXECDIR}/vlxutility)
install(TARGETS vlxutility RUNTIME DESTINATION ${program_folder})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/resources/Help DESTINATION ${program_folder})
file(RELATIVE_PATH program_from_bin
  /${CMAKE_INSTALL_BINDIR} /${program_folder}/vlxutility)
file(CREATE_LINK ${program_from_bin} ${CMAKE_CURRENT_BINARY_DIR}/vlxutility SYMBOLIC)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vlxutility DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS vlx720-simulator RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET vlx_help_webengine)
  install(TARGETS vlx_help_webengine LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/vlxutility)
endif()

install(FILES example.tessarin.VLXUtility.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES example.tessarin.VLXUtility.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# One drawing; the sizes that a panel or a menu wants are made from it where the tool for it is installed.
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(drawing ${PROJECT_SOURCE_DIR}/src/resources/vlxutility.svg)
install(FILES ${drawing} DESTINATION ${icons}/scalable/apps)
find_program(RSVG_CONVERT rsvg-convert)
if(RSVG_CONVERT)
  foreach(size 16 22 24 32 48 64 128 256 512)
    set(icon ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}/vlxutility.png)
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/icons/${size})
    add_custom_command(OUTPUT ${icon} DEPENDS ${drawing}
      COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${icon} ${drawing})
    install(FILES ${icon} DESTINATION ${icons}/${size}x${size}/apps)
    list(APPEND made ${icon})
  endforeach()
endif()

# As Debian wants them: compressed, and the same at each build.
function(install_compressed source name destination)
  set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
  add_custom_command(OUTPUT ${compressed} DEPENDS ${source}
    COMMAND gzip -9nc ${source} > ${compressed} VERBATIM)
  install(FILES ${compressed} DESTINATION ${destination})
  set(made ${made} ${compressed} PARENT_SCOPE)
endfunction()
foreach(program vlxutility vlx720-simulator)
  install_compressed(${CMAKE_CURRENT_SOURCE_DIR}/${program}.1 ${program}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
# Debian looks for them under the name of the package, which is not that of the project.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/vlxutility)
install_compressed(${CMAKE_CURRENT_SOURCE_DIR}/changelog changelog ${documents})
install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md CHANGELOG.md ${documents})
install(FILES copyright DESTINATION ${documents})
add_custom_target(vlx_packaging ALL DEPENDS ${made})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Through the serial line of the amplifier the utility shows its values live,
operates it, loads its firmware, saves and restores its configuration, reads
its fault table and gives direct access to its commands.

A simulated amplifier for trying things is part of the package.")
# The manual's pages show where WebEngine is installed, and it is too large to be asked of everyone. So the
# libraries that must be there are those of the programs, not of the page view's plug-in.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libqt6webenginewidgets6, qt6-wayland")
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/DebianDepends.cmake)
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR})
