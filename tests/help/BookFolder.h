// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpBook.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace tunedeck {

/// The folder of a book that a test writes page by page.
class BookFolder {
public:
    /// `name` is like "en/1.html".
    void write(const QString &name, const QByteArray &text)
    {
        QDir().mkpath(QFileInfo(m_folder.filePath(name)).path());
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// A page with one section below its beginning.
    void writePage(const QString &name, const QString &title, const QString &text)
    {
        write(name,
            QStringLiteral("<html><head><title>%1</title><meta name=\"keywords\" content=\"%1-key\"/></head><body>"
                           "<h1><a name=\"%1\">%1</a></h1><p>%2</p>"
                           "<h2><a name=\"%1More\">More</a></h2><p>The rest.</p></body></html>")
                .arg(title, text)
                .toUtf8());
    }

    [[nodiscard]] HelpBook book(const QLocale &reader = QLocale::c()) const { return {m_folder.path(), reader}; }

private:
    QTemporaryDir m_folder;
};

} // namespace tunedeck
