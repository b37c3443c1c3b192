# SPDX-License-Identifier: MIT
# Describes the Debian package that cpack builds.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tunedeck)
set(CPACK_PACKAGE_VENDOR "The Tunedeck founders")
# A package must name its maker. Debian's own archive wants a mail address, too.
set(CPACK_PACKAGE_CONTACT "The Tunedeck founders")
if(TUNEDECK_CONTACT)
    string(APPEND CPACK_PACKAGE_CONTACT " <${TUNEDECK_CONTACT}>")
endif()
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
# Installed files must contain the real prefix, not the folder in which cpack builds the package.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
# The package does not depend on when its files were made.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/TunedeckEqualPackages.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TUNEDECK_HOMEPAGE}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "default-dbus-session-bus | dbus-session-bus, fonts-dejavu-core, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "fonts-noto-cjk, rhythmbox | strawberry | audacious | vlc | mpv-mpris")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "small window that controls the running music player")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"A small, always-at-hand window for the music player that is already in use. It
shows what is playing, and controls it: play and pause, back and forward, the
position in the track, the volume, shuffle, repeat and the playlists.

Tunedeck plays nothing itself. It works with any player that supports MPRIS2,
such as Rhythmbox, Strawberry, Audacious, VLC and mpv (with mpv-mpris), and
with web browsers while a page plays.")

include(CPack)
