// SPDX-License-Identifier: MIT
#include "Refusal.h"
#include "SecretKey.h"
#include "feedMistakes.h"
#include "updates/feed/Appcast.h"
#include "updates/feed/FeedSignature.h"
#include "updates/feed/FileStatement.h"

#include <QByteArrayList>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace tunedeck {

namespace {
constexpr QLatin1String signatureSuffix(".signature");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Refusal(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    return file.readAll();
}

void writeSignature(const QString &path, const QByteArray &text)
{
    QSaveFile file(path + signatureSuffix);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        throw Refusal(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    }
}

void say(const QByteArray &text)
{
    std::fputs(text.constData(), stdout);
    std::fputc('\n', stdout);
}

FileStatement statementOf(const QString &path, const QString &build, const QString &version)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha512);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) {
        throw Refusal(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    return {build, version, file.size(), hash.result()};
}

QList<PublicKey> keysOf(const QStringList &base64)
{
    QList<PublicKey> keys;
    for (const QString &text : base64) {
        const std::optional<PublicKey> key = PublicKey::fromBase64(text.toLatin1());
        if (!key) {
            throw Refusal(QStringLiteral("%1 is not a public key").arg(text));
        }
        keys.append(*key);
    }
    return keys;
}

/// 0 for the first feed. The serial of a feed that none of `keys` has signed may be anybody's.
qint64 publishedSerial(const QCommandLineParser &parser, const QList<PublicKey> &keys)
{
    if (parser.isSet(QStringLiteral("first")) == parser.isSet(QStringLiteral("after"))) {
        throw Refusal(QStringLiteral("name the published feed with --after, or say --first"));
    }
    if (parser.isSet(QStringLiteral("first"))) {
        return 0;
    }
    const QString path = parser.value(QStringLiteral("after"));
    const QByteArray feed = contentOf(path);
    if (!isSignedFeed(feed, contentOf(path + signatureSuffix), keys)) {
        throw Refusal(
            QStringLiteral("%1 is not signed with a key that --key names, or with the one that signs").arg(path));
    }
    const std::optional<Appcast> published = readAppcast(feed);
    if (!published || published->serial == 0) {
        throw Refusal(QStringLiteral("%1 is not a feed with a serial").arg(path));
    }
    return published->serial;
}

void makeKey(const QString &keyPath)
{
    SecretKey::make(keyPath);
    say(SecretKey(keyPath).publicKey());
}

void signFile(const QString &keyPath, const QString &path, const QCommandLineParser &parser)
{
    const SecretKey key(keyPath);
    const FileStatement statement =
        statementOf(path, parser.value(QStringLiteral("build")), parser.value(QStringLiteral("version")));
    if (statement.text().isEmpty()) {
        throw Refusal(QStringLiteral("the file is empty, or --build and --version are not plain versions"));
    }
    const QByteArray signature = key.sign(statement.text());
    writeSignature(path, SignedFileStatement{statement, signature}.text());
    say("length=\"" + QByteArray::number(statement.length) + "\" tunedeck:sha512=\"" + statement.sha512.toBase64()
        + "\" tunedeck:signature=\"" + signature.toBase64() + '"');
}

/// The feed's signatures. Throws if one of them is not by one of `keys`: it may be left from an older feed.
QByteArrayList signaturesOf(const QString &path, const QList<PublicKey> &keys)
{
    const QByteArray feed = contentOf(path);
    const QByteArrayList signatures = contentOf(path + signatureSuffix).trimmed().split('\n');
    for (const QByteArray &signature : signatures) {
        if (!isSignedFeed(feed, signature, keys)) {
            throw Refusal(path + signatureSuffix
                + QStringLiteral(" has a signature that is not of this feed, or not with a key that --key names"));
        }
    }
    return signatures;
}

void signFeed(const QString &keyPath, const QString &path, const QCommandLineParser &parser)
{
    const SecretKey key(keyPath);
    const QByteArray feed = contentOf(path);
    const QList<PublicKey> keys =
        keysOf(parser.values(QStringLiteral("key")) + QStringList(QString::fromLatin1(key.publicKey())));
    const QStringList mistakes =
        feedMistakes(feed, {publishedSerial(parser, keys), QDateTime::currentDateTimeUtc(), keys});
    if (!mistakes.isEmpty()) {
        throw Refusal(path + QStringLiteral(": ") + mistakes.join(QStringLiteral("\n  ")));
    }
    QByteArrayList signatures = parser.isSet(QStringLiteral("add")) ? signaturesOf(path, keys) : QByteArrayList();
    const QByteArray signature = key.sign(feedTextToSign(feed)).toBase64();
    if (!signatures.contains(signature)) {
        signatures.append(signature);
    }
    writeSignature(path, signatures.join('\n') + '\n');
}

void verifyFile(const QString &path, const SignedFileStatement &signedStatement, const QList<PublicKey> &keys)
{
    const FileStatement &statement = signedStatement.statement;
    if (!isSignedByOneOf(keys, statement.text(), signedStatement.signature)) {
        throw Refusal(QStringLiteral("%1 is not signed with this key").arg(path));
    }
    if (statementOf(path, statement.build, statement.version) != statement) {
        throw Refusal(QStringLiteral("%1 is not the file that was signed").arg(path));
    }
    say("genuine: version " + statement.version.toLatin1() + ", build " + statement.build.toLatin1());
}

void verifyFeed(const QString &path, const QByteArray &signatures, const QList<PublicKey> &keys)
{
    const QByteArray feed = contentOf(path);
    const std::optional<Appcast> appcast = readAppcast(feed);
    if (!isSignedFeed(feed, signatures, keys) || !appcast) {
        throw Refusal(QStringLiteral("%1 is not signed with this key").arg(path));
    }
    say("genuine: serial " + QByteArray::number(appcast->serial) + ", expires "
        + appcast->expiry.toString(Qt::ISODate).toLatin1());
}

void verify(const QString &path, const QCommandLineParser &parser)
{
    const QList<PublicKey> keys = keysOf(parser.values(QStringLiteral("key")));
    const QByteArray signature = contentOf(path + signatureSuffix);
    if (const auto statement = SignedFileStatement::fromText(signature)) {
        verifyFile(path, *statement, keys);
    } else {
        verifyFeed(path, signature, keys);
    }
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Signs releases of Tunedeck and the feed that lists them.\n\n"
                                                    "  make-key KEYFILE\n"
                                                    "  sign-file KEYFILE FILE --build NUMBER --version VERSION\n"
                                                    "  sign-feed KEYFILE FEED --after PUBLISHED-FEED\n"
                                                    "  verify FILE-OR-FEED --key PUBLIC-KEY"));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("build"), QStringLiteral("Build number of the file."), QStringLiteral("number")},
        {QStringLiteral("version"), QStringLiteral("Version of the file that users see."), QStringLiteral("version")},
        {QStringLiteral("after"), QStringLiteral("The feed that is published now."), QStringLiteral("feed")},
        {QStringLiteral("first"), QStringLiteral("No feed is published yet.")},
        {QStringLiteral("add"), QStringLiteral("Keep the feed's signatures with other keys.")},
        {QStringLiteral("key"), QStringLiteral("A public key that may have signed the files and feeds."),
            QStringLiteral("key")},
    });
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("One of the above."));
}

/// False if the command line is none of the commands.
bool perform(const QCommandLineParser &parser)
{
    const QStringList words = parser.positionalArguments();
    const QString command = words.value(0);
    if (command == u"make-key" && words.size() == 2) {
        makeKey(words.at(1));
    } else if (command == u"sign-file" && words.size() == 3) {
        signFile(words.at(1), words.at(2), parser);
    } else if (command == u"sign-feed" && words.size() == 3) {
        signFeed(words.at(1), words.at(2), parser);
    } else if (command == u"verify" && words.size() == 2) {
        verify(words.at(1), parser);
    } else {
        return false;
    }
    return true;
}
} // namespace

} // namespace tunedeck

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    tunedeck::addOptions(parser);
    parser.process(application);
    try {
        if (tunedeck::perform(parser)) {
            return 0;
        }
    } catch (const tunedeck::Refusal &refusal) {
        std::fprintf(stderr, "tunedeck-release-signer: %s\n", refusal.what());
        return 1;
    }
    std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
    return 2;
}
