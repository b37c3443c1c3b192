// SPDX-License-Identifier: MIT
#include "updates/feed/PublicKey.h"

#include "TestSigner.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

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
        QVERIFY(key->hasSigned(text, signature));

        QByteArray changed = text;
        changed[50'000] = 'y';
        QVERIFY(!key->hasSigned(changed, signature));
        QVERIFY(!key->hasSigned(text.chopped(1), signature));
        QVERIFY(!key->hasSigned(text + 'x', signature));
        QVERIFY(!PublicKey::fromBase64(TestSigner().publicKey())->hasSigned(text, signature));
        QByteArray otherSignature = signature;
        otherSignature[0] = char(otherSignature[0] ^ 1);
        QVERIFY(!key->hasSigned(text, otherSignature));
        QVERIFY(!key->hasSigned(text, signature.chopped(1)));
        QVERIFY(!key->hasSigned(text, QByteArray()));
    }

    void theWorldsOwnExampleIsSigned()
    {
        // Test 2 of RFC 8032, section 7.1.
        const auto key = PublicKey::fromBase64(
            QByteArray::fromHex("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c").toBase64());
        const QByteArray signature = QByteArray::fromHex("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb6"
                                                         "9da085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302"
                                                         "aeeb00d291612bb0c00");
        QVERIFY(key->hasSigned("\x72", signature));
        QVERIFY(!key->hasSigned("\x73", signature));
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
