# SPDX-License-Identifier: MIT
# How a released build is hardened, and the Debian package that cpack makes of it.

target_compile_options(tunedeck_options INTERFACE
    $<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-fstack-protector-strong>)
# Not "now": the functions that the start does not call would be looked up before the window is there.
target_link_options(tunedeck_options INTERFACE $<$<CONFIG:Release>:LINKER:-z,relro>)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tunedeck)
set(CPACK_PACKAGE_VENDOR "The Tunedeck founders")
set(CPACK_PACKAGE_CONTACT "The Tunedeck founders <founders@tunedeck.org>")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
# What is installed must learn its real prefix, which is not the folder that the package is made in.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://tunedeck.org)
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
