// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <txtprintererror.h>

class TestTxtPrinterError : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void blocks_data();
    void blocks();
    void readsMaps_data();
    void readsMaps();
    void losesItsTextOnTheWay();
    void compares();
    void moves();
};

void TestTxtPrinterError::blocks_data()
{
    QTest::addColumn<bool>("isBlocking");
    for (int bit = 0; bit < 32; ++bit) {
        const bool isBlocking = bit == 0 || bit == 1 || bit == 5 || bit == 9;
        QTest::addRow("bit %d", bit) << isBlocking;
    }
}

void TestTxtPrinterError::blocks()
{
    const int bit = QByteArray(QTest::currentDataTag()).mid(4).toInt();
    const int word = static_cast<int>(1U << bit);
    TxtPrinterError alone{TxtPrinterError::EErrors(QFlag(word)), QString()};
    TxtPrinterError withOthers{TxtPrinterError::EErrors(QFlag(word | 0x004)), QString()};
    QTEST(bool(alone), "isBlocking");
    QTEST(bool(withOthers), "isBlocking");
}

void TestTxtPrinterError::readsMaps_data()
{
    QTest::addColumn<QVariantMap>("map");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");

    const QString code = QStringLiteral("code");
    const QString text = QStringLiteral("text");
    const QString msg = QStringLiteral("msg");
    QTest::newRow("both") << QVariantMap{{code, 3}, {text, QStringLiteral("x")}} << 3 << "x";
    QTest::newRow("the written key") << QVariantMap{{code, 3}, {msg, QStringLiteral("x")}} << 3 << QString();
    QTest::newRow("nothing") << QVariantMap() << 0 << QString();
    QTest::newRow("no number") << QVariantMap{{code, QStringLiteral("bad")}, {text, 5}} << 0 << "5";
    QTest::newRow("all bits") << QVariantMap{{code, -1}} << -1 << QString();
}

void TestTxtPrinterError::readsMaps()
{
    QFETCH(QVariantMap, map);
    TxtPrinterError error(TxtPrinterError::CoverOpen, QStringLiteral("before"));
    error.setMap(map);
    QTEST(int(error.errorCode()), "code");
    QTEST(error.errorText(), "text");
    QCOMPARE(TxtPrinterError(map), error);
}

void TestTxtPrinterError::losesItsTextOnTheWay()
{
    const QVariantMap fresh{{QStringLiteral("code"), 0}, {QStringLiteral("msg"), QString()}};
    QCOMPARE(TxtPrinterError().toMap(), fresh);
    const TxtPrinterError error(TxtPrinterError::PaperOut | TxtPrinterError::PaperLow, QStringLiteral("empty"));
    const QVariantMap map = error.toMap();
    QCOMPARE(map, (QVariantMap{{QStringLiteral("code"), 6}, {QStringLiteral("msg"), QStringLiteral("empty")}}));
    QCOMPARE(map.value(QStringLiteral("code")).userType(), int(QMetaType::Int));
    QCOMPARE(TxtPrinterError(map), TxtPrinterError(error.errorCode(), QString()));
}

void TestTxtPrinterError::compares()
{
    const TxtPrinterError error(TxtPrinterError::PaperLow, QStringLiteral("low"));
    QVERIFY(error != TxtPrinterError(TxtPrinterError::PaperLow, QStringLiteral("LOW")));
    QVERIFY(error != TxtPrinterError(TxtPrinterError::NoError, QStringLiteral("low"))); // no blocking bit differs
    QVERIFY(error == TxtPrinterError(error));
}

void TestTxtPrinterError::moves()
{
    TxtPrinterError source(TxtPrinterError::PaperLow, QStringLiteral("source"));
    TxtPrinterError target(std::move(source));
    QCOMPARE(target.errorText(), QStringLiteral("source"));
    QCOMPARE(source, TxtPrinterError(TxtPrinterError::PaperLow, QString()));

    source.setErrorText(QStringLiteral("other"));
    source.setErrorCode(TxtPrinterError::CoverOpen);
    target = std::move(source);
    QCOMPARE(target, TxtPrinterError(TxtPrinterError::CoverOpen, QStringLiteral("other")));
    QCOMPARE(source, TxtPrinterError(TxtPrinterError::CoverOpen, QStringLiteral("source"))); // the texts are swapped
}

QTEST_GUILESS_MAIN(TestTxtPrinterError)
#include "tst_txtprintererror.moc"
