// SPDX-License-Identifier: MIT
#include "platform/settings/SettingsFile.h"
#include "platform/UserDefaults.h"

#include "require.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace tunedeck;
using fuzz::require;

namespace {

/// A folder in memory with the settings file.
class Folder {
public:
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("tunedeck.conf")); }

    void write(const QByteArray &content)
    {
        QFile file(path());
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "the settings file can be written");
    }

private:
    const QTemporaryDir m_folder{QStringLiteral("/dev/shm/tunedeck-fuzz-XXXXXX")};
};

void checkValues(const UserDefaults &settings)
{
    for (const QString &key : {SettingsKey::startThroughXWayland, SettingsKey::followedPlayer,
             SettingsKey::neverFollowedPlayers, SettingsKey::newestUpdateFeed}) {
        [[maybe_unused]] const bool isSet = settings.boolForKey(key);
        [[maybe_unused]] const qlonglong number = settings.integerForKey(key);
        require(settings.stringForKey(key).size() <= 1'000, "a text is cut");
        const QStringList texts = settings.stringListForKey(key);
        require(texts.size() <= 1'000, "a list is cut");
        for (const QString &text : texts) {
            require(text.size() <= 1'000, "the texts of a list are cut");
        }
    }
}

void checkTypes(const QVariantHash &values)
{
    for (const QVariant &value : values) {
        const int type = value.typeId();
        require(type == QMetaType::QString || type == QMetaType::QStringList || type == QMetaType::QByteArray,
            "a value is a text, a list of texts, or bytes");
    }
}

/// A first write replaces halves of characters, which a file can only escape.
void checkWrite(const SettingsFile &file, const QVariantHash &values)
{
    require(file.write(values), "what was read can be written");
    const auto written = file.read();
    require(written && !written->isEmpty(), "what was written can be read");
    require(file.write(*written), "it can be written again");
    const auto again = file.read();
    require(again == written, "what is written and read stays as it is");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    // It ends with the process.
    new QCoreApplication(*count, *arguments);
    // Qt complains about what it cannot write.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { });
    return 0;
}

/// The content of the settings file.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Folder folder;
    folder.write(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    const SettingsFile file(folder.path());
    const std::optional<QVariantHash> values = file.read();
    checkTypes(values.value_or(QVariantHash()));
    {
        const UserDefaults settings(folder.path());
        checkValues(settings);
        require(values || !QFileInfo::exists(folder.path()), "an unreadable file is set aside");
    }
    // The program writes only when it has something to keep.
    if (values && !values->isEmpty()) {
        checkWrite(file, *values);
    }
    return 0;
}
