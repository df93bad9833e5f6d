# cpack makes the Debian package. Whatever prefix the build has, the package goes to /usr: the program finds its part
# files from where it lies itself.
set(CPACK_GENERATOR DEB)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_PACKAGE_NAME tarnwick)
set(CPACK_PACKAGE_VENDOR Ostrel)
set(CPACK_PACKAGE_CONTACT "Ostrel <tarnwick@ostrel.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "bench tool for frequency synthesizer boards")
set(CPACK_PACKAGE_DESCRIPTION
"Tarnwick shows the registers of a PLL device bit by bit, its fields and its
loops as block diagrams, works out the registers for a frequency that is typed
in, and shifts them out of a parallel port, or a simulated one.
.
What a device is made of is read from part files, which are plain text;
tarnwick-part checks them. Scripts drive the program over D-Bus.")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://wireless.ostrel.example/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Reads the program's icon, as a plugin: no program is linked to it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libqt6svg6)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "bash-completion, sigrok-cli")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
include(CPack)
