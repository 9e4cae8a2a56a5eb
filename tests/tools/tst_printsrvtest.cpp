// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "fullfolder.h"
#include "testfixture.h"

#include <QDir>
#include <QImage>

namespace {

QString text(const char *words)
{
    return QString::fromUtf8(words);
}

CommandRunner::Result test(const CommandRunner &runner, const char *arguments = ".")
{
    return runner.run(text("test ").append(text(arguments)).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

// A receipt "a" of three lines, narrow so that they can be read here, with all that is expected of it.
void makeReceipt(const CommandRunner &runner)
{
    runner.write(text("render.options"), "# remark\n--width 12 --end-lines \"0\"\n--model CUSTOM_VKP_80\n");
    runner.write(text("a.cpt"), "<NAME>\nTotal<S><SUM_ALL,0.00>\nend\n");
    runner.write(text("template.json"), "{\"attributes\": {\"NAME\": \"x\", \"SUM_ALL\": 1.5}}");
    QCOMPARE(test(runner, "--update .").exitCode, 0);
}

} // namespace

/** Receipts of a folder against what is expected of them. */
class TestPrintsrvTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void updateWritesWhatChanged();
    void showsLinesSideBySide_data();
    void showsLinesSideBySide();
    void showsPictures();
    void documentsMayBeCompact();
    void comparesWhatIsExpected();
    void tellsOfUnreadableFolders();
    void failedUpdateKeepsFiles();
    void namesBelongTogether();
    void refusals_data();
    void refusals();
};

void TestPrintsrvTest::updateWritesWhatChanged()
{
    const CommandRunner runner;
    makeReceipt(runner);
    QCOMPARE(runner.files(),
             text("a.cpt a.document a.html a.png a.txt render.options template.json").split(QLatin1Char(' ')));
    QCOMPARE(runner.read(text("a.txt")), QByteArray("x\nTotal   1.50\nend\n"));
    // 80 mm paper; the empty line of every document and three lines in the cell of font 0.
    QCOMPARE(QImage::fromData(runner.read(text("a.png"))).size(), QSize(512, 4 * 24));
    QCOMPARE(test(runner).output, QByteArray("Receipts: 1, files: 4, not as expected: 0\n"));

    runner.write(text("a.txt"), "old");
    QVERIFY(QFile::remove(runner.path(text("a.html"))));
    const QDateTime written = QFileInfo(runner.path(text("a.png"))).lastModified();
    const auto updated = test(runner, "--update .");
    QCOMPARE(updated.output, QByteArray("./a.html: new\n./a.txt: changed\nReceipts: 1, files: 4, written: 2\n"));
    QCOMPARE(updated.exitCode, 0);
    QCOMPARE(runner.read(text("a.txt")), QByteArray("x\nTotal   1.50\nend\n"));
    QCOMPARE(QFileInfo(runner.path(text("a.png"))).lastModified(), written);
}

void TestPrintsrvTest::showsLinesSideBySide_data()
{
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QByteArray>("rows");

    const QByteArray last("     3  end                end\n     4\n");
    QTest::newRow("changed") << QByteArray("x\nTotal   1.40\nend\n")
                             << QByteArray("     1  x                  x\n"
                                           "     2  Total   1.40     | Total   1.50\n"
                                           "     3  end                end\n   ...\n");
    QTest::newRow("gone") << QByteArray("x\nTotal   1.50\nmore\nend\n")
                          << QByteArray("   ...\n     2  Total   1.50       Total   1.50\n"
                                        "     3  more             <\n"
                                        "     4  end                end\n   ...\n");
    QTest::newRow("new") << QByteArray("x\nend\n")
                         << QByteArray("     1  x                  x\n"
                                       "                         > Total   1.50\n"
                                       "     2  end                end\n   ...\n");
    QTest::newRow("blanks and controls")
        << QByteArray("x\t  \nTotal   1.50\nend\n")
        << QByteArray("     1  x␉··             | x\n     2  Total   1.50       Total   1.50\n   ...\n");
    QTest::newRow("no line end") << QByteArray("x\nTotal   1.50\nend")
                                 << QByteArray("   ...\n     3  end                end\n                         >\n");
    QTest::newRow("long line") << QByteArray(62, 'y') + "\nTotal   1.50\nend\n"
                               << "     1  " + QByteArray(60, 'y') + " | x\n        yy" + QByteArray(58, ' ') + " |\n"
            + "     2  Total   1.50" + QByteArray(51, ' ') + "Total   1.50\n   ...\n";
}

void TestPrintsrvTest::showsLinesSideBySide()
{
    QFETCH(QByteArray, expected);
    QFETCH(QByteArray, rows);
    const CommandRunner runner;
    makeReceipt(runner);
    runner.write(text("a.txt"), expected);
    const auto result = test(runner);
    QCOMPARE(result.exitCode, 1);
    const QByteArray heading = result.output.left(result.output.indexOf("now\n") + 4);
    QCOMPARE(heading.simplified(), QByteArray("./a.txt: differs expected now"));
    QCOMPARE(result.output.mid(heading.size()), rows + "Receipts: 1, files: 4, not as expected: 1\n");
    QCOMPARE(runner.read(text("a.txt")), expected);
}

// The third picture: what both have, what one has, what the other has.
void TestPrintsrvTest::showsPictures()
{
    const CommandRunner runner;
    makeReceipt(runner);
    QImage expected = QImage::fromData(runner.read(text("a.png"))).convertToFormat(QImage::Format_RGB32);
    const QImage now = expected;
    QCOMPARE(now.size(), QSize(512, 96));
    expected.setPixel(511, 0, qRgb(0, 0, 0));
    const auto place = [](int dot) {
        return QPoint(dot % 512, dot / 512);
    };
    int black = 0;
    while (black < 512 * 95 && now.pixel(place(black)) != qRgb(0, 0, 0)) {
        ++black;
    }
    expected.setPixel(place(black), qRgb(255, 255, 255));
    QVERIFY(expected.save(runner.path(text("a.png"))));

    const auto result = test(runner);
    QCOMPARE(result.exitCode, 1);
    QVERIFY(result.output.startsWith("./a.png: differs in 2 dots, expected 512 x 96, now 512 x 96\n"));
    const QImage third(QString::fromUtf8(result.output.split('\n').at(1).trimmed().split(':').first()));
    QCOMPARE(third.size(), now.size());
    for (int dot = 0; dot < 512 * 96; ++dot) {
        const QRgb same = dot == 511 ? qRgb(220, 0, 0) : now.pixel(place(dot));
        QCOMPARE(third.pixel(place(dot)), dot == black ? qRgb(0, 0, 220) : same);
    }
    runner.write(text("a.png"), "no picture");
    QVERIFY(test(runner).output.contains("./a.png: is no PNG picture\n"));
}

void TestPrintsrvTest::documentsMayBeCompact()
{
    const CommandRunner runner;
    makeReceipt(runner);
    const auto compact
        = runner.run(text("render a.cpt --data template.json --width 12 --format document").split(QLatin1Char(' ')));
    QVERIFY(compact.output != runner.read(text("a.document")));
    runner.write(text("a.document"), compact.output);
    QCOMPARE(test(runner).exitCode, 0);
    runner.write(text("a.document"), compact.output + '}');
    QCOMPARE(test(runner).exitCode, 1);
}

void TestPrintsrvTest::comparesWhatIsExpected()
{
    const CommandRunner runner;
    makeReceipt(runner);
    for (const char *name : {"a.txt", "a.html", "a.document"}) {
        QVERIFY(QFile::remove(runner.path(text(name))));
    }
    QVERIFY(test(runner).output.endsWith("./a.txt: is missing; --update writes it\n"
                                         "Receipts: 1, files: 4, not as expected: 3\n"));
    runner.write(text("render.options"), runner.read(text("render.options")) + "--expect picture");
    QCOMPARE(test(runner).output, QByteArray("Receipts: 1, files: 1, not as expected: 0\n"));
    QVERIFY(QFile::remove(runner.path(text("a.png"))));
    const auto result = test(runner);
    QCOMPARE(result.exitCode, 1);
    QVERIFY(result.errors.contains("./a: nothing is expected of it yet"));
    QCOMPARE(result.output, QByteArray("Receipts: 1, files: 0, not as expected: 0, failed: 1\n"));
    QCOMPARE(test(runner, "--update .").output, QByteArray("./a.png: new\nReceipts: 1, files: 1, written: 1\n"));
}

// Root reads every folder, unless it gives up that power.
void TestPrintsrvTest::tellsOfUnreadableFolders()
{
    const CommandRunner runner;
    makeReceipt(runner);
    QVERIFY(QDir(runner.path()).mkpath(text("b/closed")));
    const QString root = text("setpriv --bounding-set=-dac_override,-dac_read_search ");
    QProcess shell;
    shell.setWorkingDirectory(runner.path());
    shell.start(text("sh"),
                {text("-c"),
                 text("chmod 0 b/closed; [ $(id -u) = 0 ] && with='%1'; $with %2 test .; code=$?; "
                      "chmod 700 b/closed; exit $code")
                     .arg(root, CommandRunner::command())});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.readAllStandardError(), QByteArray("printsrv: ./b/closed: not read: permission denied\n"));
    QCOMPARE(shell.readAllStandardOutput(), QByteArray("Receipts: 1, files: 4, not as expected: 0, failed: 1\n"));
    QCOMPARE(shell.exitCode(), 1);
}

void TestPrintsrvTest::failedUpdateKeepsFiles()
{
    const CommandRunner runner;
    const FullFolder folder(runner.path(text("disk")));
    for (const char *name : {"a.cpt", "a.json", "a.txt"}) {
        runner.write(text("disk/") + text(name), "{}");
    }
    folder.fill();
    const auto result = test(runner, "--update disk");
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("disk/a.txt: not written: " + folder.reason()), result.errors.constData());
    QCOMPARE(result.output, QByteArray("Receipts: 1, files: 4, written: 0, failed: 4\n"));
    QCOMPARE(runner.read(text("disk/a.txt")), QByteArray("{}"));
}

void TestPrintsrvTest::namesBelongTogether()
{
    const CommandRunner runner;
    QVERIFY(QDir(runner.path()).mkpath(text("b/c")));
    QVERIFY(QDir(runner.path()).mkpath(text("no-receipts")));
    runner.write(text("no-receipts/x.json"), "no data of ours");
    const QByteArray data = "{\"attributes\": {\"NAME\": \"%\"}}";
    for (const char *name : {"b/template", "b/own", "b/data", "b/c/template"}) {
        runner.write(text(name) + text(".json"), QByteArray(data).replace('%', name));
    }
    runner.write(text("b/template.cpt"), "shared <NAME>");
    runner.write(text("b/own.cpt"), "own <NAME>");
    runner.write(text("b/only.cpt"), "only <NAME>");
    runner.write(text("b/c/template.cpt"), "alone <NAME>");
    QVERIFY(test(runner, "--update .").output.endsWith("Receipts: 4, files: 16, written: 16\n"));
    QCOMPARE(runner.read(text("b/own.txt")), QByteArray("own b/own\n"));
    QCOMPARE(runner.read(text("b/only.txt")), QByteArray("only b/template\n"));
    QCOMPARE(runner.read(text("b/data.txt")), QByteArray("shared b/data\n"));
    QCOMPARE(runner.read(text("b/c/template.txt")), QByteArray("alone b/c/template\n"));
}

void TestPrintsrvTest::refusals_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("error");

    const auto row = [](const char *name, const char *file, const char *content, const char *error) {
        QTest::newRow(name) << text(file) << QByteArray(content) << QByteArray(".") << 1 << QByteArray(error);
    };
    row("no option", "render.options", "--wdith 3", "./render.options: Unknown option 'wdith'. 'printsrv render");
    row("no value", "render.options", "--width x", "./render.options: --width takes a whole number");
    row("no such file", "render.options", "--expect png", "./render.options: --expect takes text, html");
    row("no paper", "render.options", "--paper 9", "./render.options: PNG has no paper 9");
    row("argument", "render.options", "b.cpt", "./render.options: 'b.cpt' is one argument too many");
    row("output", "render.options", "-o x", "./render.options: Unknown option 'o'");
    row("broken data", "a.json", "{", "./a.json:1:1: no JSON");
    row("no template", "b.json", "{}", "./template.cpt: not read: No such file");
    row("empty template", "a.cpt", "", "./a.cpt: is empty");
    row("no text", "a.cpt", "\xFF", "./a.cpt:1: is no text in UTF-8");
    const auto usage = [](const char *arguments, int exitCode, const char *error) {
        QTest::newRow(arguments) << QString() << QByteArray() << QByteArray(arguments) << exitCode << QByteArray(error);
    };
    usage("", 2, "Give the folder of the receipts to test, or --port and --model");
    usage("--update", 2, "Give the folder of the receipts");
    usage("--update --port ttyS0 --model AV_268", 2, "Give the folder of the receipts");
    usage(". --model AV_268", 2, "--model is for testing a printer, the folder '.' for testing receipts");
    usage("none", 1, "none: there is no such folder");
    usage("/dev/null", 1, "/dev/null: is no folder of receipts; a printer is tested with --port and --model");
    usage("null", 1, "null: is no folder of receipts; a printer is tested with --port and --model");
    usage("/proc/tty", 1, "/proc/tty: has no receipts");
}

void TestPrintsrvTest::refusals()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, arguments);
    QFETCH(QByteArray, error);
    const CommandRunner runner;
    makeReceipt(runner);
    if (!file.isEmpty()) {
        runner.write(file, content);
    }
    const auto result = test(runner, arguments.constData());
    QVERIFY2(result.errors.contains("printsrv: " + error), result.errors.constData());
    QTEST(result.exitCode, "exitCode");
}

QTEST_GUILESS_MAIN(TestPrintsrvTest)

#include "tst_printsrvtest.moc"
