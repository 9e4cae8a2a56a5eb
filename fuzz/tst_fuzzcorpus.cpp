// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "targets.h"

#include "testfixture.h"

// Each target with the inputs that fuzzers have found, those of mended faults among them.

using Target = void (*)(const QByteArray &);
Q_DECLARE_METATYPE(Target)

class tst_FuzzCorpus : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void run_data();
    void run();
};

void tst_FuzzCorpus::run_data()
{
    QTest::addColumn<Target>("target");
    QTest::addColumn<QStringList>("files");

    const auto row = [](const char *name, Target target) {
        QStringList files;
        const QDir folder(QStringLiteral(PRINTSRV_CORPUS "/%1").arg(QLatin1String(name)));
        const auto entries = folder.entryInfoList(QDir::Files);
        for (const QFileInfo &entry : entries) {
            files.append(entry.filePath());
        }
        QTest::newRow(name) << target << files;
    };
    row("catalogue", fuzz::catalogue);
    row("document", fuzz::document);
    row("documentfiles", fuzz::documentFiles);
    row("escapedvalue", fuzz::escapedValue);
    row("lint", fuzz::lint);
    row("receipt", fuzz::receipt);
    row("receiptdata", fuzz::receiptData);
    row("settings", fuzz::settings);
    row("state", fuzz::state);
    row("symbols", fuzz::symbols);
    row("transcript", fuzz::transcript);
}

void tst_FuzzCorpus::run()
{
    QFETCH(Target, target);
    QFETCH(QStringList, files);
    QVERIFY(!files.isEmpty());
    for (const QString &path : qAsConst(files)) {
        QFile file(path);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
        target(file.readAll()); // ends the process when a law is broken
    }
}

QTEST_GUILESS_MAIN(tst_FuzzCorpus)
#include "tst_fuzzcorpus.moc"
