// SPDX-License-Identifier: MIT
#include "updates/feed/PublicKey.h"

#include "TestSigner.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
bool hasSigned(const PublicKey &key, const QByteArray &text, const QByteArray &signature)
{
    return key.hasSigned(reinterpret_cast<const uchar *>(text.constData()), text.size(), signature);
}
} // namespace

class PublicKeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aSignatureFitsItsTextAndItsKeyAlone()
    {
        const TestSigner signer;
        const std::optional<PublicKey> key = PublicKey::fromBase64(signer.publicKey());
        const QByteArray text(100'000, 'x');
        const QByteArray signature = QByteArray::fromBase64(signer.sign(text));
        QVERIFY(hasSigned(*key, text, signature));

        QByteArray changed = text;
        changed[50'000] = 'y';
        QVERIFY(!hasSigned(*key, changed, signature));
        QVERIFY(!hasSigned(*key, text.chopped(1), signature));
        QVERIFY(!hasSigned(*key, text + 'x', signature));
        QVERIFY(!hasSigned(*PublicKey::fromBase64(TestSigner().publicKey()), text, signature));
        QByteArray otherSignature = signature;
        otherSignature[0] = char(otherSignature[0] ^ 1);
        QVERIFY(!hasSigned(*key, text, otherSignature));
        QVERIFY(!hasSigned(*key, text, signature.chopped(1)));
        QVERIFY(!hasSigned(*key, text, QByteArray()));
    }

    void theWorldsOwnExampleIsSigned()
    {
        // Test 2 of RFC 8032, section 7.1.
        const auto key = PublicKey::fromBase64(
            QByteArray::fromHex("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c").toBase64());
        const QByteArray signature = QByteArray::fromHex("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb6"
                                                         "9da085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302"
                                                         "aeeb00d291612bb0c00");
        QVERIFY(hasSigned(*key, "\x72", signature));
        QVERIFY(!hasSigned(*key, "\x73", signature));
    }

    void whatIsNoKeyIsNone()
    {
        QCOMPARE(PublicKey::fromBase64(QByteArray()).has_value(), false);
        QCOMPARE(PublicKey::fromBase64(QByteArray(31, 'k').toBase64()).has_value(), false);
        QCOMPARE(PublicKey::fromBase64(QByteArray(33, 'k').toBase64()).has_value(), false);
        QCOMPARE(PublicKey::fromBase64(QByteArray(32, 'k').toBase64().replace('a', '*')).has_value(), false);
        QCOMPARE(PublicKey::fromBase64(QByteArray(32, 'k').toBase64()).has_value(), true);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PublicKeyTest, QCoreApplication)
#include "PublicKeyTest.moc"
