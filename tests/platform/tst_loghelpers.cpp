// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <logbinary.h>
#include <logtab.h>

class TestLogHelpers : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void rendersBytes_data();
    void rendersBytes();
    void cutsLongData();
    void keepsTheStreamsSpacing();
};

void TestLogHelpers::rendersBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QString>("expected");

    const QByteArray utf8("UTF-8");
    QTest::newRow("none") << QByteArray() << utf8 << "(no bytes)";
    QTest::newRow("printer command") << QByteArray("\x1B\x76"
                                                   "A",
                                                   3)
                                     << utf8 << "1B 76 41 \".vA\"";
    QTest::newRow("zero and line ends") << QByteArray("\0\r\n", 3) << utf8 << "00 0D 0A \"...\"";
    QTest::newRow("UTF-8") << QByteArray("\xD1\x87") << utf8 << QStringLiteral(u"D1 87 \"ч\"");
    QTest::newRow("half a character") << QByteArray("\xD1") << utf8 << "D1 \"\"";
    QTest::newRow("cp866") << QByteArray("\xE7") << QByteArray("cp866") << QStringLiteral(u"E7 \"ч\"");
    QTest::newRow("unknown encoding") << QByteArray("A") << QByteArray("no such codec") << "41";
}

void TestLogHelpers::rendersBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, encoding);
    QTEST(logbinary(bytes, encoding.constData()).toString(), "expected");
}

void TestLogHelpers::cutsLongData()
{
    const QString text = logbinary(QByteArray(1000000, 'A'), "UTF-8").toString();
    QVERIFY(text.endsWith(QStringLiteral("AAA\"... 1000000 bytes")));
    QCOMPARE(text.count(QStringLiteral("41")), logbinary::MaximumBytes);
}

void TestLogHelpers::keepsTheStreamsSpacing()
{
    QString line;
    QDebug(&line) << "read:" << logbinary(QByteArray("A"), nullptr) << QStringLiteral("x") << 1;
    QCOMPARE(line, QStringLiteral("read: 41 \"x\" 1 "));
    line.clear();
    QDebug(&line).nospace() << QStringLiteral("x") << logtab << QStringLiteral("y");
    QCOMPARE(line, QStringLiteral("\"x\"\t\"y\""));
}

QTEST_GUILESS_MAIN(TestLogHelpers)
#include "tst_loghelpers.moc"
