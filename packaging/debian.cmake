# The Debian package: "cpack" in the build folder, or packaging/build_package.sh.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vesmo-editor)
set(CPACK_PACKAGE_VENDOR "The Vesmo Editor team")
set(CPACK_PACKAGE_CONTACT "Vesmo Editor team <vesmo-editor@koreva.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "lyrics editor with its own music player")
set(CPACK_PACKAGE_DESCRIPTION "\
Play a song in the player Sonivo and press the space bar as each line of the
lyrics is sung: the time is written in front of the line, exact to a
hundredth of a second. Reads and writes lyrics in UTF-8, Shift-JIS and JIS,
shifts and converts all tags of a file, and undoes everything.
.
The package contains the player and the editor, a plug-in of the player. The
editor is available in English, Japanese, German and French.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# Libraries that are loaded when they are first needed, which the search for dependencies does not see.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libmpv2, libpulse0")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, qt6-translations-l10n, qt6-wayland, fonts-noto-cjk | fonts-japanese-gothic")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
