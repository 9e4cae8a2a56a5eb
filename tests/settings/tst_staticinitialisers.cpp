// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <QProcess>

class TestStaticInitialisers : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void serveOtherLibraries();
};

void TestStaticInitialisers::serveOtherLibraries()
{
    QProcess loader;
    loader.setProcessChannelMode(QProcess::MergedChannels);
    loader.start(QStringLiteral(STATICLOADER), {QStringLiteral(STATICREADER_A), QStringLiteral(STATICREADER_B)});
    QVERIFY(loader.waitForFinished());
    QCOMPARE(QString::fromLocal8Bit(loader.readAll()), QStringLiteral("done\n"));
    QCOMPARE(loader.exitStatus(), QProcess::NormalExit);
    QCOMPARE(loader.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestStaticInitialisers)
#include "tst_staticinitialisers.moc"
