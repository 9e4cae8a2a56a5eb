// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "lintcode.h"
#include "testfixture.h"

#include <QDir>

namespace {

// Enough to read a template of 20 MB, not to follow each of its characters.
#ifdef __SANITIZE_ADDRESS__
const QString LimitedMemory
    = QStringLiteral("ASAN_OPTIONS=$ASAN_OPTIONS:allocator_may_return_null=1:max_allocation_size_mb=100 exec ");
#else
const QString LimitedMemory = QStringLiteral("ulimit -v 250000; exec ");
#endif

/** The fenced block of this kind in a page; empty when it has none. */
QByteArray blockOf(const QByteArray &page, const char *kind)
{
    const QByteArray fence = QByteArrayLiteral("```") + kind + '\n';
    const int begin = page.indexOf(fence);
    const int end = page.indexOf("```", begin + fence.size());
    return begin < 0 ? QByteArray() : page.mid(begin + fence.size(), end - begin - fence.size());
}

QByteArray pageOf(const QString &code)
{
    QFile file(QStringLiteral(PRINTSRV_LINT_PAGES "/") + code + QStringLiteral(".md"));
    const QByteArray page = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return page.mid(page.indexOf("\n-->\n") + 5); // behind the licence
}

/** The findings of one code that lint makes of a template, as a page writes them; the folder is called so there. */
QByteArray findingsOf(const QString &code, const QByteArray &page, const QByteArray &receiptTemplate,
                      const QByteArray &data)
{
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), receiptTemplate);
    QStringList arguments{QStringLiteral("lint"), QStringLiteral("t.cpt")};
    if (!data.isEmpty()) {
        arguments += {QStringLiteral("--data"), runner.write(QStringLiteral("data.json"), data)};
    }
    arguments += QString::fromUtf8(blockOf(page, "options")).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const auto result = runner.run(arguments);
    QByteArray findings;
    for (const QByteArray &line : result.output.split('\n')) {
        if (line.contains(": " + code.toUtf8() + ": ")) {
            findings += line.mid(qstrlen("t.cpt:")) + '\n';
        }
    }
    return findings.replace(QFile::encodeName(runner.path()), "/folder") + result.errors;
}

} // namespace

class TestPrintsrvLint : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void everyCodeHasPage();
    void page_data();
    void page();
    void examplesHaveNoErrors_data();
    void examplesHaveNoErrors();
    void command_data();
    void command();
    void strictWritesNothing();
    void wantOfMemory_data();
    void wantOfMemory();
    void json();
};

void TestPrintsrvLint::everyCodeHasPage()
{
    QStringList pages;
    for (const QString &name : QDir(QStringLiteral(PRINTSRV_LINT_PAGES)).entryList({QStringLiteral("*.md")})) {
        pages.append(name.chopped(3));
    }
    QStringList codes = printsrv::lintCodeNames();
    codes.sort();
    QCOMPARE(pages, codes);
    const CommandRunner runner;
    for (const QString &code : codes) {
        QCOMPARE(runner.run({QStringLiteral("lint"), QStringLiteral("--code"), code}).output, pageOf(code));
    }
}

void TestPrintsrvLint::page_data()
{
    QTest::addColumn<QString>("code");
    for (const QString &code : printsrv::lintCodeNames()) {
        QTest::newRow(qPrintable(code)) << code;
    }
}

// The example of the page has the finding that the page shows, and the mended one does not.
void TestPrintsrvLint::page()
{
    QFETCH(QString, code);
    const QByteArray page = pageOf(code);
    const QByteArray receiptTemplate = blockOf(page, "template");
    const QByteArray data = blockOf(page, "data");
    const bool isError = printsrv::lintSeverity(*printsrv::lintCodeOf(code)) == printsrv::ESeverity::Error;
    QVERIFY(page.contains(isError ? "\nAn error. " : "\nA warning. "));
    QCOMPARE(findingsOf(code, page, receiptTemplate, data), blockOf(page, "finding"));
    const QByteArray mended = blockOf(page, "mended");
    const QByteArray mendedData = blockOf(page, "mended-data");
    QVERIFY(mended.isEmpty() != mendedData.isEmpty());
    QCOMPARE(findingsOf(code, page, mended.isEmpty() ? receiptTemplate : mended, mended.isEmpty() ? mendedData : data),
             QByteArray());
}

void TestPrintsrvLint::examplesHaveNoErrors_data()
{
    QTest::addColumn<QString>("folder");
    const QDir examples(QStringLiteral(PRINTSRV_EXAMPLES));
    for (const QFileInfo &folder : examples.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (QFileInfo::exists(folder.filePath() + QStringLiteral("/template.cpt"))) {
            QTest::newRow(qPrintable(folder.fileName())) << folder.filePath();
        }
    }
}

void TestPrintsrvLint::examplesHaveNoErrors()
{
    QFETCH(QString, folder);
    QStringList arguments{QStringLiteral("lint"),    folder + QStringLiteral("/template.cpt"),
                          QStringLiteral("--model"), QStringLiteral("CUSTOM_VKP_80"),
                          QStringLiteral("--codec"), QStringLiteral("cp866")};
    for (const QFileInfo &data : QDir(folder).entryInfoList({QStringLiteral("*.json")})) {
        arguments += {QStringLiteral("--data"), data.filePath()};
    }
    const auto result = CommandRunner().run(arguments);
    QVERIFY2(result.exitCode == 0, result.output.constData());
    QCOMPARE(result.errors, QByteArray());
}

void TestPrintsrvLint::command_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("errors");

    const auto row = [](const char *name, const char *arguments, int exitCode, const char *output, const char *errors) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << exitCode << QString::fromUtf8(output)
                            << QString::fromLatin1(errors);
    };
    row("an error", "lint t.cpt --data d.json", 1, "^t.cpt:2:5: unknown-attribute: .*TOTAL\\?\n$", "^$");
    row("warnings only", "lint w.cpt", 0, "^w.cpt:2:17: second-side: [^\n]*\n$", "^$");
    row("known in one of two", "lint t.cpt --data d.json --data e.json", 0, "^$", "^$");
    row("a list of codes", "lint --code list", 0, "^unknown-attribute\nsimilar-", "^$");
    row("no such code", "lint --code nothing", 2, "^$", "No code 'nothing'");
    row("no template", "lint", 2, "^$", "template is missing");
    row("no such model", "lint t.cpt --model X", 2, "^$", "No model 'X'");
    row("no such paper", "lint t.cpt --model AV_268 --paper 4", 2, "^$", "no paper 4");
    row("no such codec", "lint t.cpt --codec X", 2, "^$", "No encoding is called 'X'");
    row("no such file", "lint none.cpt", 1, "^$", "none.cpt: not read");
    row("a page and a template", "lint --code unread-tag t.cpt", 2, "^$", "it does not look at 't.cpt'");
    row("broken data", "lint t.cpt --data t.cpt", 1, "^$", "t.cpt:1:1: no JSON");
    row("strict", "render t.cpt --data e.json --strict", 0, "^17\nT +5.00\n$", "^$");
    row("strict with an error", "render t.cpt --data d.json --strict", 1, "^$", "t.cpt:2:5: unknown-attribute");
    row("strict and too wide", "render t.cpt --data e.json --strict --width 4", 1, "^$", "t.cpt:2:5: line-too-wide");
    row("strict stream", "render t.cpt --stream --strict", 2, "^$", "--data, not --stream");
    row("explained", "render x.cpt --data d.json --explain", 0,
        "^1: 17\n    1-2      DOCNO, template 1:1\n2: A\xe2\x86\x92"
        "5.00\n    1-2      template 3:1\n"
        "    3-6      TOTAL, template 3:5\ntemplate 2:1: the line vanished, NONE is empty\n"
        "template 3:12: the group up to template 3:20 vanished, NONE is empty\n$",
        "^$");
    row("explained value that empties its line", "render v.cpt --data d.json --explain", 0,
        "^1: \n2: \xf0\x9f\x98\x80"
        "17\n    1        template 2:1\n    2-3      DOCNO, template 2:2\n"
        "template 1:1: the line is emptied, NAME holds <X>\n$",
        "^$");
    row("strict on text of 40 characters", "render l.cpt --data d.json --strict", 1, "^$", "takes 45 of 40 char");
    row("strict on no paper", "render l.cpt --data d.json --strict --format html", 0, "x{45}", "^$");
    row("strict on a model's paper", "render l.cpt --data d.json --strict --model CUSTOM_VKP_80", 0, "^x{45}\n$", "^$");
    row("strict on another paper", "render l.cpt --data d.json --strict --model CUSTOM_VKP_80 --paper 1", 1, "^$",
        "450 of 400 dots");
    row("strict in a code page", "render c.cpt --data d.json --strict --codec cp866", 1, "^$",
        "c.cpt:1:2: codec-lacks-character");
    row("tags that are none", "lint k.cpt", 1,
        "LS9> [^\n]*<LS0> to <LS7>\n.*F0> [^\n]*<F1> to <F4>\n.*L2> [^\n]*<L1>\n.*<> [^\n]*a name is missing", "^$");
    row("a mark too wide", "lint k.cpt --width 9", 1, "k.cpt:1:1: line-too-wide: [^\n]*in the mark of a copy\n", "^$");
    row("symbols in lower case", "lint y.cpt", 1, "^y.cpt:2:1: symbols-in-line: [^\n]*capitals", "^$");
    row("paper of no model", "lint t.cpt --paper 1", 2, "^$", "--paper is the number of a paper of --model");
    row("width of a model", "lint t.cpt --model AV_268 --width 9", 2, "^$", "--width is for a printer of no --model");
    row("preview into a picture", "render t.cpt --data d.json --preview -o x.png", 2, "^$", "'x.png' is a picture's");
    row("broken symbols", "lint s.cpt", 1, "^s.cpt:1:1: missing-symbols: [^\n]*s.ssi is no file of [^\n]*\n$", "^$");
    row("explained part", "render f.cpt --data d.json --explain --part fiscal", 0, "^1: b\n    1 +template 1:17\n$",
        "^$");
    row("explained as HTML", "render t.cpt --data d.json --explain --format html", 2, "^$", "neither with --format");
}

void TestPrintsrvLint::command()
{
    QFETCH(QString, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, output);
    QFETCH(QString, errors);
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), "<DOCNO>\nT<S><TOTL,0.00>\n");
    runner.write(QStringLiteral("w.cpt"), "<DOCNO>\nSubtotal<S>12.00<S>\n");
    runner.write(QStringLiteral("x.cpt"), "<DOCNO>\n<NONE>\nA<S><TOTAL>[ <NONE>]\n");
    runner.write(QStringLiteral("f.cpt"), "a <FISCAL_INFO> b\n");
    runner.write(QStringLiteral("v.cpt"), "a <NAME>\n\xf0\x9f\x98\x80<DOCNO>\n");
    runner.write(QStringLiteral("l.cpt"), QByteArray(45, 'x'));
    runner.write(QStringLiteral("k.cpt"), "<DOCNO>\n<LS9>\n<F0>\n<L2>\n<>");
    runner.write(QStringLiteral("y.cpt"), "<DOCNO>\n<specsymbols=s>");
    runner.write(QStringLiteral("c.cpt"), "5\xe2\x82\xbd");
    runner.write(QStringLiteral("s.cpt"), "<SPECSYMBOLS=s>\n<DOCNO><#1>");
    runner.write(QStringLiteral("s.ssi"), "<SpecialSymbolImages><");
    runner.write(QStringLiteral("d.json"), "{\"attributes\": {\"DOCNO\": \"17\", \"TOTAL\": 5.00, \"NAME\": \"<X>\"}}");
    runner.write(QStringLiteral("e.json"), "{\"attributes\": {\"DOCNO\": \"17\", \"TOTL\": 5.00}}");
    const auto result = runner.run(arguments.split(QLatin1Char(' ')));
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(QRegularExpression(output).match(QString::fromUtf8(result.output)).hasMatch(), result.output.constData());
    QVERIFY2(QRegularExpression(errors).match(QString::fromUtf8(result.errors)).hasMatch(), result.errors.constData());
}

void TestPrintsrvLint::strictWritesNothing()
{
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), "<SUM>");
    runner.write(QStringLiteral("d.json"), "{}");
    runner.write(QStringLiteral("out.txt"), "before");
    const auto result = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                    QStringLiteral("d.json"), QStringLiteral("--strict"), QStringLiteral("-o"),
                                    QStringLiteral("out.txt")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(runner.read(QStringLiteral("out.txt")), QByteArray("before"));
}

void TestPrintsrvLint::wantOfMemory_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("lint") << QStringLiteral("lint t.cpt");
    QTest::newRow("explain") << QStringLiteral("render t.cpt --data d.json --explain -o out.txt");
}

void TestPrintsrvLint::wantOfMemory()
{
    QFETCH(QString, arguments);
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), QByteArray(20 * 1024 * 1024, 'x'));
    runner.write(QStringLiteral("d.json"), "{}");
    QProcess shell;
    shell.setWorkingDirectory(runner.path());
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), LimitedMemory + CommandRunner::command() + QLatin1Char(' ') + arguments});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitStatus(), QProcess::NormalExit);
    QCOMPARE(shell.exitCode(), 1);
    QCOMPARE(shell.readAllStandardOutput(), QByteArray());
    QVERIFY(shell.readAllStandardError().contains("memory does not suffice"));
    QVERIFY(!QFileInfo::exists(runner.path(QStringLiteral("out.txt"))));
}

void TestPrintsrvLint::json()
{
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), "<DOCNO>\n<SUM><B:>");
    const auto result = runner.run({QStringLiteral("lint"), QStringLiteral("t.cpt"), QStringLiteral("--json")});
    QCOMPARE(result.exitCode, 1);
    QStringList described;
    for (const QJsonValue value : QJsonDocument::fromJson(result.output).array()) {
        const QJsonObject finding = value.toObject();
        QVERIFY(!finding.value(QStringLiteral("text")).toString().isEmpty());
        described.append(QStringLiteral("%1:%2:%3 %4 %5")
                             .arg(finding.value(QStringLiteral("file")).toString())
                             .arg(finding.value(QStringLiteral("line")).toInt())
                             .arg(finding.value(QStringLiteral("column")).toInt())
                             .arg(finding.value(QStringLiteral("code")).toString(),
                                  finding.value(QStringLiteral("severity")).toString()));
    }
    QCOMPARE(described.join(QLatin1Char('\n')),
             QStringLiteral("t.cpt:2:1 short-attribute error\nt.cpt:2:6 unclosed-span warning"));
}

QTEST_GUILESS_MAIN(TestPrintsrvLint)

#include "tst_printsrvlint.moc"
