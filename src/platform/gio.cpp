// SPDX-License-Identifier: MIT
#include "platform/gio.h"

#include <QLibrary>
#include <QString>

#include <optional>
#include <type_traits>

namespace tunedeck {

namespace {
std::optional<Gio> load()
{
    QLibrary library(QStringLiteral("gio-2.0"), 0);
    bool isComplete = library.load();
    const auto find = [&library, &isComplete](auto &function, const char *name) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.resolve(name));
        isComplete = isComplete && function;
    };
    Gio gio{};
    // The libraries that GIO is built on are searched, too.
    find(gio.free, "g_free");
    find(gio.unref, "g_object_unref");
    find(gio.defaultForType, "g_app_info_get_default_for_type");
    find(gio.id, "g_app_info_get_id");
    find(gio.supportedTypes, "g_app_info_get_supported_types");
    find(gio.launch, "g_app_info_launch");
    find(gio.boolean, "g_desktop_app_info_get_boolean");
    find(gio.categories, "g_desktop_app_info_get_categories");
    find(gio.isHidden, "g_desktop_app_info_get_is_hidden");
    find(gio.isNotShown, "g_desktop_app_info_get_nodisplay");
    find(gio.string, "g_desktop_app_info_get_string");
    find(gio.readEntry, "g_desktop_app_info_new");
    return isComplete ? std::optional(gio) : std::nullopt;
}
} // namespace

const Gio *gio()
{
    static const std::optional<Gio> loaded = load();
    return loaded ? &*loaded : nullptr;
}

} // namespace tunedeck
