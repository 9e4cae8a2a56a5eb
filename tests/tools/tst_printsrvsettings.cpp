// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "testfixture.h"

#include <QSettings>

namespace {

const QString File = QStringLiteral("t.ini");

QStringList settings(const QString &words, const QString &file = File)
{
    // An empty word of the table is written as ''.
    QStringList arguments{QStringLiteral("settings")};
    const QStringList parts = words.split(QLatin1Char(' '));
    for (const QString &part : parts) {
        arguments.append(part == QStringLiteral("''") ? QString() : part);
    }
    return QStringList{arguments.takeFirst(), arguments.takeFirst(), QStringLiteral("--file"), file} + arguments;
}

QVariant entry(const CommandRunner &runner, const QString &name)
{
    return QSettings(runner.path(File), QSettings::IniFormat).value(name);
}

} // namespace

class TestPrintsrvSettings : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void setsOrRefuses_data();
    void setsOrRefuses();
    void warnsOfUnknownPrinter();
    void keepsOtherEntries();
    void showsJson_data();
    void showsJson();
    void importsAndNamesRefusals();
    void keepsItsOldFile_data();
    void keepsItsOldFile();
    void refusesWrongFiles_data();
    void refusesWrongFiles();
    void servesManyAtOnce();
    void usesTheServicesFolder();
};

void TestPrintsrvSettings::setsOrRefuses_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("errors");
    QTest::addColumn<QString>("entryName");
    QTest::addColumn<QVariant>("expected");

    const QString vkp80 = QStringLiteral("CUSTOM_VKP_80");
    const QString none;
    const auto row
        = [](const QString &printer, const char *words, const char *error, const char *name, const QVariant &expected) {
              QTest::addRow("%s %s", qPrintable(printer), words)
                  << printer << QString::fromLatin1(words) << (*error == '\0' ? 0 : 1) << QString::fromLatin1(error)
                  << QString::fromLatin1(name) << expected;
          };
    row(none, "set printerName AV_268", "", "PRINTER/printerName", QStringLiteral("AV_268"));
    row(none, "set frPrintTout 2000", "", "PRINTER/frPrintTout", 2000);
    row(none, "set frPrintTout 999", "999 is outside 1000 to 30000 and is stored as 1000", "PRINTER/frPrintTout", 1000);
    row(none, "set frSrvTestTout 30001", "stored as 30000", "PRINTER/frSrvTestTout", 30000);
    row(none, "set frPrintTout soon", "'soon' is not a whole number", "PRINTER/frPrintTout", {});
    row(none, "set paperLoopFlag 3", "3 is not possible, it stays 0", "PRINTER/paperLoopFlag", {});
    row(none, "set moveCheckTo 200", "200 is not possible, it stays 50", "PRINTER/moveCheckTo", {});
    row(none, "set moveCheckTo -- -7", "", "PRINTER/moveCheckTo", -7);
    row(none, "set printer AV_268", "unknown key", "PRINTER/printer", {});
    row(none, "set --group AV_268 parity 2", "no printer is chosen", "AV_268/parity", {});
    row(vkp80, "set --group AV_268 parity 2",
        "the group 'AV_268' is not the current printer's, which is 'CUSTOM_VKP_80'", "AV_268/parity", {});
    row(vkp80, "set parity 2", "", "CUSTOM_VKP_80/parity", 2);
    row(vkp80, "set parity 1", "1 is not possible, it stays 0", "CUSTOM_VKP_80/parity", {});
    row(vkp80, "set codec cp866", "'CUSTOM_VKP_80' does not have this setting", "CUSTOM_VKP_80/codec", {});
    row(vkp80, "set defaultFont Mono", "it applies only while printAsImage is 1", "CUSTOM_VKP_80/defaultFont", {});
    row(QStringLiteral("AV_268"), "set printAsImage 1", "'AV_268' does not have this setting", "AV_268/printAsImage",
        {});
    row(vkp80, "set --kind system leftMargin 2.5", "", "CUSTOM_VKP_80/leftMargin", 2.5);
    row(vkp80, "set --kind system autoPageHeight true", "", "CUSTOM_VKP_80/autoPageHeight", true);
    row(vkp80, "set --kind system autoPageHeight maybe", "'maybe' is not 0 or 1", "CUSTOM_VKP_80/autoPageHeight", {});
    row(vkp80, "set --kind system defaultFont Serif,9,-1,5,50,0,0,0,0,0", "", "CUSTOM_VKP_80/defaultFont",
        QStringLiteral("Serif,9,-1,5,50,0,0,0,0,0"));
    row(vkp80, "set portName ''", "", "CUSTOM_VKP_80/portName", QString());
}

void TestPrintsrvSettings::setsOrRefuses()
{
    QFETCH(QString, before);
    QFETCH(QString, errors);
    QFETCH(QString, words);
    QFETCH(QString, entryName);
    QFETCH(QVariant, expected);
    const CommandRunner runner;
    if (!before.isEmpty()) {
        runner.write(File, "[PRINTER]\nprinterName=" + before.toUtf8() + '\n');
    }
    const auto result = runner.run(settings(words, runner.path(File)));
    QTEST(result.exitCode, "exitCode");
    QVERIFY2(errors.isEmpty() ? result.errors.isEmpty() : result.errors.contains(errors.toUtf8()),
             result.errors.constData());
    QCOMPARE(entry(runner, entryName).toString(), expected.toString());
    QCOMPARE(entry(runner, entryName).isValid(), expected.isValid());
    if (result.exitCode == 0 && !before.isEmpty()) {
        const QString key = entryName.section(QLatin1Char('/'), 1);
        const QString kind
            = words.contains(QStringLiteral("system")) ? QStringLiteral("system") : QStringLiteral("text");
        const auto shown = runner.run(settings(QStringLiteral("get --kind %1 %2").arg(kind, key), runner.path(File)));
        QCOMPARE(shown.output, expected.toString().toUtf8() + '\n');
    }
}

void TestPrintsrvSettings::warnsOfUnknownPrinter()
{
    const CommandRunner runner;
    const auto result = runner.run(settings(QStringLiteral("set printerName AV268"), runner.path(File)));
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.errors.contains("warning: no model 'AV268'; 'printsrv models'"), result.errors.constData());
    QCOMPARE(entry(runner, QStringLiteral("PRINTER/printerName")).toString(), QStringLiteral("AV268"));
    for (const char *words : {"set printerName PNG", "set --kind system printerName HP_1"}) {
        QCOMPARE(runner.run(settings(QString::fromLatin1(words), runner.path(File))).errors, QByteArray());
    }
}

void TestPrintsrvSettings::keepsOtherEntries()
{
    const CommandRunner runner;
    runner.write(
        File, "top=1\n[PRINTER]\nunknown=a, b\nprinterName=WPK_833\n[AV_268]\nparity=2\n[X]\nname=\"\xD1\x87; =\"\n");
    QCOMPARE(runner.run(settings(QStringLiteral("set parity 3"), runner.path(File))).exitCode, 0);
    QSettings ini(runner.path(File), QSettings::IniFormat);
    ini.setIniCodec("UTF-8");
    QCOMPARE(ini.value(QStringLiteral("top")).toString(), QStringLiteral("1"));
    QCOMPARE(ini.value(QStringLiteral("PRINTER/unknown")).toStringList(),
             (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(ini.value(QStringLiteral("AV_268/parity")).toInt(), 2);
    QCOMPARE(ini.value(QStringLiteral("X/name")).toString(), QStringLiteral(u"ч; ="));
    QCOMPARE(ini.value(QStringLiteral("WPK_833/parity")).toInt(), 3);
    QCOMPARE(ini.allKeys().size(), 6);
    QCOMPARE(runner.files(), QStringList{File});
}

void TestPrintsrvSettings::showsJson_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("size");
    QTest::newRow("text") << "text" << 17;
    QTest::newRow("system") << "system" << 30;
}

void TestPrintsrvSettings::showsJson()
{
    QFETCH(QString, kind);
    const CommandRunner runner;
    const QString json = runner.path(QStringLiteral("list.json"));
    const auto listed = runner.run(settings(QStringLiteral("list --json --kind ") + kind, runner.path(File)));
    const QJsonArray array = QJsonDocument::fromJson(listed.output).array();
    QTEST(array.size(), "size");
    QCOMPARE(array.first().toObject().keys().join(QLatin1Char(' ')), QStringLiteral("group key value"));
    const QStringList arguments = settings(QStringLiteral("export --kind %1 -o %2").arg(kind, json), runner.path(File));
    QCOMPARE(runner.run(arguments).exitCode, 0);
    QCOMPARE(runner.read(QStringLiteral("list.json")), listed.output);
    // The list is a file of settings, too.
    QCOMPARE(runner.run(settings(QStringLiteral("set emptyStringsAtEnd 9"), json)).exitCode, 0);
    QCOMPARE(runner.run(settings(QStringLiteral("get emptyStringsAtEnd"), json)).output, QByteArray("9\n"));
    const auto missing = runner.run(settings(QStringLiteral("get emptyStringsAtEnd"), runner.path(File)));
    QVERIFY2(missing.errors.contains("warning: there is no "), missing.errors.constData());
    QCOMPARE(QJsonDocument::fromJson(runner.read(QStringLiteral("list.json"))).array().size(), array.size());
}

void TestPrintsrvSettings::importsAndNamesRefusals()
{
    const CommandRunner runner;
    const auto result = runner.run(settings(QStringLiteral("import -"), runner.path(File)),
                                   "[{\"group\":\"PRINTER\",\"key\":\"printerName\",\"value\":\"CUSTOM_VKP_80\"},"
                                   "{\"group\":\"CUSTOM_VKP_80\",\"key\":\"printAsImage\",\"value\":1},"
                                   "{\"group\":\"AV_268\",\"key\":\"parity\",\"value\":2},"
                                   "{\"key\":\"parity\",\"value\":2}, 5, {\"group\":\"PRINTER\"},"
                                   "{\"group\":\"AV_268\",\"key\":\"printerType\",\"value\":2},"
                                   "{\"group\":\"CUSTOM_VKP_80\",\"key\":\"paperTypeId\",\"value\":9},"
                                   "{\"group\":\"CUSTOM_VKP_80\",\"key\":\"defaultFont\",\"value\":\"Mono\"}]");
    QCOMPARE(result.exitCode, 1);
    const QByteArray place = "printsrv: standard input: element ";
    const QByteArrayList errors = result.errors.split('\n');
    QVERIFY(errors.value(0).startsWith(place + "3: AV_268 parity: the group 'AV_268' is not"));
    QCOMPARE(errors.value(1), place + "4: parity: the descriptor has no \"group\"");
    QCOMPARE(errors.value(2), place + "5: the descriptor has no \"group\"");
    QCOMPARE(errors.value(3), place + "6: PRINTER: the descriptor has no \"key\"");
    QCOMPARE(errors.value(4), place + "7: AV_268 printerType: it stands in the group 'PRINTER'");
    QVERIFY(errors.value(5).startsWith("printsrv: warning: CUSTOM_VKP_80 has the papers 0, "));
    QCOMPARE(errors.size(), 7);
    QCOMPARE(entry(runner, QStringLiteral("CUSTOM_VKP_80/defaultFont")).toString(), QStringLiteral("Mono"));
}

void TestPrintsrvSettings::keepsItsOldFile_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::newRow("killed while it writes") << "ulimit -f 1; ";
    QTest::newRow("no space") << "trap '' XFSZ; ulimit -f 1; ";
}

void TestPrintsrvSettings::keepsItsOldFile()
{
    QFETCH(QString, prefix);
    const CommandRunner runner;
    const QByteArray before = "[X]\nlong=" + QByteArray(5000, 'x') + "\n";
    runner.write(File, before);
    QProcess shell;
    shell.setWorkingDirectory(runner.path());
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 prefix + QStringLiteral("TMPDIR=. ") + CommandRunner::command()
                     + QStringLiteral(" settings set printerType 3 --file t.ini")});
    QVERIFY(shell.waitForFinished());
    QVERIFY(shell.exitStatus() == QProcess::CrashExit || shell.exitCode() != 0);
    QCOMPARE(runner.read(File), before);
    QCOMPARE(runner.run(settings(QStringLiteral("set printerType 3"), runner.path(File))).exitCode,
             0); // no lock is left
}

void TestPrintsrvSettings::refusesWrongFiles_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("no INI") << "set printerType 3"
                            << "t.ini" << QByteArray("<xml/>\n[") << QByteArray("t.ini: no INI file");
    QTest::newRow("no JSON") << "list"
                             << "t.json" << QByteArray("[\n {]") << QByteArray("t.json:2:3: no JSON");
    QTest::newRow("empty") << "list"
                           << "t.json" << QByteArray() << QByteArray("t.json: is empty, where JSON is expected");
    QTest::newRow("no list") << "list"
                             << "t.json" << QByteArray("{}") << QByteArray("no descriptor list");
    QTest::newRow("no folder") << "set printerType 3"
                               << "none/t.ini" << QByteArray() << QByteArray("t.ini: not written: there is no folder");
    QTest::newRow("no import") << "import none.json"
                               << "t.ini" << QByteArray() << QByteArray("none.json: not read");
}

void TestPrintsrvSettings::refusesWrongFiles()
{
    QFETCH(QString, words);
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, error);
    const CommandRunner runner;
    runner.write(file, content);
    const auto result = runner.run(settings(words, runner.path(file)));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains(error), result.errors.constData());
    QCOMPARE(runner.read(file), content);
}

void TestPrintsrvSettings::servesManyAtOnce()
{
    const CommandRunner runner;
    const QStringList keys{QStringLiteral("printerType"),        QStringLiteral("emptyStringsAtEnd"),
                           QStringLiteral("spacesBeforeString"), QStringLiteral("moveCheckTo"),
                           QStringLiteral("enablePortLogging"),  QStringLiteral("characterMode")};
    std::vector<std::unique_ptr<QProcess>> commands;
    for (const QString &key : keys) {
        commands.emplace_back(new QProcess);
        commands.back()->start(CommandRunner::command(),
                               settings(QStringLiteral("set %1 1").arg(key), runner.path(File)));
    }
    for (const auto &command : commands) {
        QVERIFY(command->waitForFinished());
        QCOMPARE(command->exitCode(), 0);
    }
    for (const QString &key : keys) {
        QCOMPARE(entry(runner, QStringLiteral("PRINTER/") + key).toInt(), 1);
    }
}

void TestPrintsrvSettings::usesTheServicesFolder()
{
    CommandRunner runner;
    runner.write(QStringLiteral("orbek.conf"),
                 "[paths]\nworkDir=" + runner.path(QStringLiteral("work")).toUtf8() + '\n');
    runner.setEnvironment(QStringLiteral("ORBEK_CONFIG"), runner.path(QStringLiteral("orbek.conf")));
    const QString set = QStringLiteral("settings set printerName PNG");
    QCOMPARE(runner.run(set.split(QLatin1Char(' '))).exitCode, 0);
    QVERIFY(runner.read(QStringLiteral("work/printsrv/settings.ini")).contains("printerName=PNG"));
}

QTEST_GUILESS_MAIN(TestPrintsrvSettings)
#include "tst_printsrvsettings.moc"
