// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "fullfolder.h"
#include "testfixture.h"

class TestPrintsrvDocument : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void damage_data();
    void damage();
    void restoreKeepsBackupUntouched();
    void failedRestoreKeepsBackup_data();
    void failedRestoreKeepsBackup();
    void showsText();
    void showsHtml();
    void showsPicture_data();
    void showsPicture();
};

namespace {

// A document "x.doc" of one line with its whole file set.
void makeDocument(const CommandRunner &runner, const QString &name = QStringLiteral("x.doc"))
{
    runner.write(QStringLiteral("t.cpt"), "Total<S>1.50\n");
    const auto result = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                    QStringLiteral("-"), QStringLiteral("--width"), QStringLiteral("12"),
                                    QStringLiteral("--format"), QStringLiteral("document"), QStringLiteral("-o"), name},
                                   "{}");
    QCOMPARE(result.exitCode, 0);
}

CommandRunner::Result document(const CommandRunner &runner, const char *action, const QStringList &options = {})
{
    return runner.run(QStringList{QStringLiteral("document"), QLatin1String(action), QStringLiteral("x.doc")}
                      + options);
}

} // namespace

void TestPrintsrvDocument::damage_data()
{
    QTest::addColumn<QStringList>("changes"); // "file=new content", "file" removes it
    QTest::addColumn<int>("verified");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<int>("restored");

    const auto row
        = [](const char *name, const QStringList &changes, int verified, const QString &verdict, int restored) {
              QTest::newRow(name) << changes << verified << verdict << restored;
          };
    const QString document = QStringLiteral("x.doc");
    const QString backup = QStringLiteral("x.doc.bak");
    row("none", {}, 0, QStringLiteral("x.doc: good\nx.doc.bak: good\n"), 0);
    row("other content", {document + QStringLiteral("={}")}, 1, QStringLiteral("does not have the checksum"), 0);
    row("missing", {document}, 1, QStringLiteral("x.doc: there is no such file"), 0);
    row("no checksum", {document + QStringLiteral(".sha1")}, 1, QStringLiteral("its checksum file x.doc.sha1 is"), 0);
    row("empty checksum", {document + QStringLiteral(".sha1=")}, 1, QStringLiteral("does not begin with 40"), 0);
    row("short checksum", {document + QStringLiteral(".sha1=1234  x.doc")}, 1, QStringLiteral("does not begin with 40"),
        0);
    // The checksum of an empty file, as "sha1sum /dev/null" prints it.
    row("no document",
        {document + QLatin1Char('='), document + QStringLiteral(".sha1=da39a3ee5e6b4b0d3255bfef95601890afd80709")}, 1,
        QStringLiteral("x.doc: its content is no document"), 0);
    row("backup only", {backup + QStringLiteral("={}")}, 1, QStringLiteral("x.doc: good\nx.doc.bak: its content"), 0);
    row("both", {document + QStringLiteral("={}"), backup}, 1, QStringLiteral("x.doc.bak: there is no such file"), 1);
}

void TestPrintsrvDocument::damage()
{
    QFETCH(QStringList, changes);
    QFETCH(QString, verdict);
    const CommandRunner runner;
    makeDocument(runner);
    const QByteArray content = runner.read(QStringLiteral("x.doc"));
    for (const QString &change : changes) {
        const QString file = change.section(QLatin1Char('='), 0, 0);
        QVERIFY(QFile::remove(runner.path(file)));
        if (change.contains(QLatin1Char('='))) {
            runner.write(file, change.section(QLatin1Char('='), 1).toUtf8());
        }
    }
    const auto verified = document(runner, "verify");
    QTEST(verified.exitCode, "verified");
    QVERIFY2(verified.output.contains(verdict.toUtf8()), verified.output.constData());

    const QStringList before = runner.files();
    const auto restored = document(runner, "restore");
    QTEST(restored.exitCode, "restored");
    if (restored.exitCode == 0) {
        QCOMPARE(runner.read(QStringLiteral("x.doc")), content);
    } else {
        QCOMPARE(runner.files(), before);
    }
}

void TestPrintsrvDocument::restoreKeepsBackupUntouched()
{
    const CommandRunner runner;
    makeDocument(runner);
    const QByteArray backup = runner.read(QStringLiteral("x.doc.bak"));
    const QDateTime written = QFileInfo(runner.path(QStringLiteral("x.doc.bak"))).lastModified();
    runner.write(QStringLiteral("x.doc"), "first damage");
    QCOMPARE(document(runner, "restore").exitCode, 0);
    runner.write(QStringLiteral("x.doc"), "second damage");
    QCOMPARE(document(runner, "restore").exitCode, 0);
    QCOMPARE(runner.read(QStringLiteral("x.doc.damaged")), QByteArray("first damage"));
    QCOMPARE(runner.read(QStringLiteral("x.doc.damaged2")), QByteArray("second damage"));
    QCOMPARE(runner.read(QStringLiteral("x.doc.bak")), backup);
    QCOMPARE(QFileInfo(runner.path(QStringLiteral("x.doc.bak"))).lastModified(), written);

    QProcess sha1sum;
    sha1sum.start(QStringLiteral("sha1sum"), {QStringLiteral("-c"), runner.path(QStringLiteral("x.doc.sha1"))});
    QVERIFY(sha1sum.waitForFinished());
    QCOMPARE(sha1sum.exitCode(), 0);
}

void TestPrintsrvDocument::failedRestoreKeepsBackup_data()
{
    QTest::addColumn<bool>("isFolderInTheWay");
    QTest::newRow("a folder in the document's place") << true;
    QTest::newRow("a full disk") << false;
}

void TestPrintsrvDocument::failedRestoreKeepsBackup()
{
    QFETCH(bool, isFolderInTheWay);
    const CommandRunner runner;
    const FullFolder folder(runner.path(QStringLiteral("disk")));
    const QString name = QStringLiteral("disk/x.doc");
    makeDocument(runner, name);
    const QByteArray backup = runner.read(name + QStringLiteral(".bak"));
    QVERIFY(QFile::remove(runner.path(name)));
    if (isFolderInTheWay) {
        QVERIFY(QDir().mkdir(runner.path(name)));
    } else {
        folder.fill();
    }
    const auto result = runner.run({QStringLiteral("document"), QStringLiteral("restore"), name});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("printsrv: disk/x.doc: "), result.errors.constData());
    QCOMPARE(runner.read(name + QStringLiteral(".bak")), backup);
    QVERIFY(runner.run({QStringLiteral("document"), QStringLiteral("show"), name}).output.contains("1.50"));
}

void TestPrintsrvDocument::showsText()
{
    const CommandRunner runner;
    makeDocument(runner);
    QCOMPARE(document(runner, "show").output, QByteArray("\nTotal   1.50\n"));
    QCOMPARE(document(runner, "show", {QStringLiteral("--width"), QStringLiteral("10")}).output,
             QByteArray("\nTotal 1.50\n"));
    QVERIFY(QFile::remove(runner.path(QStringLiteral("x.doc.sha1"))));
    QCOMPARE(document(runner, "show").output, QByteArray("\nTotal   1.50\n"));
    QVERIFY(QFile::remove(runner.path(QStringLiteral("x.doc.bak"))));
    const auto result = document(runner, "show");
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("x.doc: no copy is good: its checksum file x.doc.sha1 is not read: "),
             result.errors.constData());
}

void TestPrintsrvDocument::showsHtml()
{
    const CommandRunner runner;
    makeDocument(runner);
    const auto result
        = document(runner, "show",
                   {QStringLiteral("--format"), QStringLiteral("html"), QStringLiteral("-o"), QStringLiteral("h")});
    QCOMPARE(result.exitCode, 0);
    QVERIFY(runner.read(QStringLiteral("h")).contains("Total</font> </td>"));
    const auto noSymbols = document(
        runner, "show",
        {QStringLiteral("--format"), QStringLiteral("html"), QStringLiteral("--symbols"), QStringLiteral("none.ssi")});
    QCOMPARE(noSymbols.exitCode, 1);
    QVERIFY(noSymbols.errors.contains("none.ssi: no special-symbol file"));
}

void TestPrintsrvDocument::showsPicture_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("exitCode");

    for (const char *options :
         {"-o p.png", "-o p.pdf --model CUSTOM_VKP_80", "-o p.svg --end-lines 0 --codec cp866", "--preview"}) {
        QTest::newRow(options) << QString::fromLatin1(options) << 0;
    }
    for (const char *options :
         {"--preview --format text", "-o p.png --model NONE", "-o p.png --codec none", "-o p.gif"}) {
        QTest::newRow(options) << QString::fromLatin1(options) << 2;
    }
}

// The stored document has the picture that its receipt had, also when only the backup is left.
void TestPrintsrvDocument::showsPicture()
{
    QFETCH(QString, options);
    QFETCH(int, exitCode);
    const CommandRunner runner;
    makeDocument(runner);
    const QStringList words = options.split(QLatin1Char(' '));
    const QString name = words.contains(QStringLiteral("-o")) ? words.at(1) : QString();
    const auto render = runner.run(
        QStringList{QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"), QStringLiteral("-")}
            + words,
        "{}");
    const QByteArray expected = render.output + runner.read(name);
    QCOMPARE(render.exitCode, exitCode);
    QFile::remove(runner.path(name));
    runner.write(QStringLiteral("x.doc"), "damage");

    const auto shown = document(runner, "show", words);
    QCOMPARE(shown.exitCode, exitCode);
    QCOMPARE(shown.output + runner.read(name), expected);
    QCOMPARE(expected.isEmpty(), exitCode != 0);
}

QTEST_GUILESS_MAIN(TestPrintsrvDocument)

#include "tst_printsrvdocument.moc"
