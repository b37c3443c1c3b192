// SPDX-License-Identifier: MIT
#pragma once

#include <gio/gdesktopappinfo.h>

namespace tunedeck {

/// The functions of GIO that this program uses, by their names.
struct Gio {
    decltype(&::g_free) free;
    decltype(&::g_object_unref) unref;
    decltype(&::g_app_info_get_default_for_type) defaultForType;
    decltype(&::g_app_info_get_id) id;
    decltype(&::g_app_info_get_supported_types) supportedTypes;
    decltype(&::g_app_info_launch) launch;
    decltype(&::g_desktop_app_info_get_boolean) boolean;
    decltype(&::g_desktop_app_info_get_categories) categories;
    decltype(&::g_desktop_app_info_get_is_hidden) isHidden;
    decltype(&::g_desktop_app_info_get_nodisplay) isNotShown;
    decltype(&::g_desktop_app_info_get_string) string;
    decltype(&::g_desktop_app_info_new) readEntry;
};

/// GIO, which is loaded at the first call: the start is shorter and the program smaller without it. Null if it is not
/// installed. Reads files, so call it on a worker thread.
[[nodiscard]] const Gio *gio();

} // namespace tunedeck
