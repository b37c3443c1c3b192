// SPDX-License-Identifier: MIT
#include "updates/feed/FileStatement.h"

#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class FileStatementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theSignedTextNamesItsPurposeAndEachField()
    {
        QCOMPARE(statement.text(),
            QByteArray("Tunedeck file 1\nbuild: 200\nversion: 2.0~rc1\nlength: 12\nsha512: "
                + QByteArray("68").repeated(64) + "\n"));
    }

    void aStatementThatLacksAFieldHasNoText()
    {
        for (const QString &version :
            {QString(), u"2\n0"_s, u"2 0"_s, u"2.0\n"_s, u"2:0"_s, u"2.0ä"_s, QString(101, u'2')}) {
            FileStatement other = statement;
            other.build = version;
            QCOMPARE(other.text(), QByteArray());
            other = statement;
            other.version = version;
            QCOMPARE(other.text(), QByteArray());
        }
        FileStatement other = statement;
        other.length = 0;
        QCOMPARE(other.text(), QByteArray());
        other = statement;
        other.sha512.chop(1);
        QCOMPARE(other.text(), QByteArray());
    }

    void aSignedStatementIsReadAsItWasWritten()
    {
        const SignedFileStatement written{statement, QByteArray(64, 's')};
        const auto read = SignedFileStatement::fromText(written.text());
        QVERIFY(read);
        QVERIFY(read->statement == statement);
        QCOMPARE(read->signature, QByteArray(64, 's'));
    }

    void anyOtherTextIsNone()
    {
        const QByteArray text = SignedFileStatement{statement, QByteArray(64, 's')}.text();
        for (qsizetype length = 0; length < text.size(); ++length) {
            QVERIFY(!SignedFileStatement::fromText(text.first(length)));
        }
        for (const QByteArray &other :
            {QByteArray(text + '\n'), QByteArray(' ' + text), QByteArray(text).replace("file 1", "file 2"),
                QByteArray(text).replace("12\n", "+12\n"), QByteArray(text).replace("6868\n", "686868\n"),
                QByteArray(text).replace("build", "Build"), QByteArray(text).replace('\n', "\r\n")}) {
            QVERIFY2(!SignedFileStatement::fromText(other), other.constData());
        }
    }

private:
    const FileStatement statement{u"200"_s, u"2.0~rc1"_s, 12, QByteArray(64, 'h')};
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::FileStatementTest, QCoreApplication)
#include "FileStatementTest.moc"
