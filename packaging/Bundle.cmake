# macOS: a bundle on a disk image. Windows: a folder in a ZIP. Qt goes with the program in both. Written
# after the manual of Qt and CMake and not yet run on either system.
set_target_properties(vlxutility PROPERTIES MACOSX_BUNDLE ON WIN32_EXECUTABLE ON
  MACOSX_BUNDLE_BUNDLE_NAME "VLX Utility"
  MACOSX_BUNDLE_GUI_IDENTIFIER example.tessarin.VLXUtility
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})
install(TARGETS vlxutility BUNDLE DESTINATION . RUNTIME DESTINATION bin)

# The help book lies beside the program itself.
if(APPLE)
  set(program_folder vlxutility.app/Contents/MacOS)
  set(CPACK_GENERATOR DragNDrop)
else()
  set(program_folder bin)
  set(CPACK_GENERATOR ZIP)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/resources/Help DESTINATION ${program_folder})

if(COMMAND qt_generate_deploy_app_script)  # Qt 6.3 and later, where it supports the system
  qt_generate_deploy_app_script(TARGET vlxutility OUTPUT_SCRIPT deploy_script NO_UNSUPPORTED_PLATFORM_ERROR)
  install(SCRIPT ${deploy_script})
endif()
