// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "printerinfo.h"
#include "testfixture.h"

class TestPrintsrvModels : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void tableNamesEachModel();
    void details();
    void jsonIsTheCatalogue();
};

void TestPrintsrvModels::tableNamesEachModel()
{
    const QList<QByteArray> lines = CommandRunner().run({QStringLiteral("models")}).output.split('\n');
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    QCOMPARE(lines.size(), models.size() + 2);
    for (int index = 0; index < models.size(); ++index) {
        const QString line = QString::fromUtf8(lines.at(index + 1));
        QVERIFY2(line.startsWith(models.at(index).id() + QLatin1Char(' ')), qPrintable(line));
        QVERIFY2(line.contains(models.at(index).name()), qPrintable(line));
    }
}

void TestPrintsrvModels::details()
{
    // In lower case, as a person types it.
    const auto result = CommandRunner().run({QStringLiteral("models"), QStringLiteral("av_268")});
    QCOMPARE(result.output,
             QByteArray("AV_268: AV-268\n"
                        "  interface COM, 203 dots per inch\n"
                        "  can: double width, double height, bold, underline, white on black, line spacing\n"
                        "  paper 0: 60 mm, 48 mm wide, roll, 384 dots a line\n"
                        "  font 0: 8 x 16 dots, 1 x 1 mm, own symbols 8 x 16 dots\n"
                        "  font 1: 8 x 16 dots, 1 x 1 mm, own symbols 8 x 16 dots\n"
                        "  font 2: 16 x 32 dots, 2 x 2 mm\n"
                        "  font 3: 16 x 32 dots, 2 x 2 mm\n"));
}

void TestPrintsrvModels::jsonIsTheCatalogue()
{
    const auto result = CommandRunner().run({QStringLiteral("models"), QStringLiteral("--json")});
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    const QList<PrinterInfo> read = PrinterInfo::fromJson(result.output);
    QCOMPARE(read, models);
    QCOMPARE(read.at(5).paperTypes(), models.at(5).paperTypes());
    QCOMPARE(read.at(5).fontTypes(), models.at(5).fontTypes());
    const auto one = CommandRunner().run({QStringLiteral("models"), QStringLiteral("PNG"), QStringLiteral("--json")});
    QCOMPARE(one.exitCode, 1);
    QCOMPARE(one.output, QByteArray());
}

QTEST_GUILESS_MAIN(TestPrintsrvModels)

#include "tst_printsrvmodels.moc"
