// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "fullfolder.h"
#include "testfixture.h"

namespace {

const QByteArray OneReceipt = QByteArrayLiteral("{\"attributes\": {\"TOTAL\": 1.50}}");

struct RenderCase
{
    const char *name;
    QByteArray receiptTemplate;
    QByteArray data;
    const char *options;
    int exitCode;
    QByteArray output;
    const char *errors;
};

// What a text receipt of width 10 is, and what standard error must match; an empty pattern stands for silence.
QVector<RenderCase> renderCases()
{
    const QByteArray tenMegabytes(10 * 1024 * 1024, 'x');
    const QByteArray total("<TOTAL>\n");
    const auto attribute = [](const QByteArray &value) {
        return "{\"attributes\": {\"TOTAL\": " + value + "}}";
    };
    return {
        {"decimal", "T<S><TOTAL,0.00>\n", OneReceipt, "", 0, "T     1.50\n", ""},
        {"a decimal without a fraction stays one", "<TOTAL,0.00>\n", attribute("12.00"), "", 0, "12.00\n", ""},
        {"a whole number stays one", "<TOTAL,000>\n", attribute("12"), "", 0, "012\n", ""},
        {"exponent", "<TOTAL,0.0>\n", attribute("1e2"), "", 0, "100.0\n", ""},
        {"largest unsigned number", total, attribute("9223372036854775807"), "", 0, "9223372036854775807\n", ""},
        {"number too large", total, attribute("99999999999999999999"), "", 1, "", "TOTAL: 9+ is too large.*quotes"},
        {"digits in quotes are text", total, attribute("\"-1 2e\\\"3\""), "", 0, "-1 2e\"3\n", ""},
        {"date", "<TOTAL,dd.mm.yyyy>\n", attribute("{\"date\": \"2024-03-05\"}"), "", 0, "05.03.2024\n", ""},
        {"time", "<TOTAL,hh:nn>\n", attribute("{\"time\": \"14:07\"}"), "", 0, "14:07\n", ""},
        {"date and time", "<TOTAL,hhdd>\n", attribute("{\"dateTime\": \"2024-03-05T14:07\"}"), "", 0, "1405\n", ""},
        {"no such date", total, attribute("{\"date\": \"2024-02-30\"}"), "", 1, "", "data.json: attributes, TOTAL: "},
        {"list as a value", total, attribute("[1]"), "", 1, "", "data.json: attributes, TOTAL: a list"},
        {"missing attribute", "a\n<NONE>\n[x<NONE>]b\n", "{}", "", 0, "a\nb\n", ""},
        {"misspelt member", total, "{\"attrs\": {}}", "", 1, "", "'attrs' is not known"},
        {"value with tags", "<TOTAL>\n", attribute("\"<C>a[b]\""), "", 0, "    ab\n", ""},
        {"value printed as it is", total, attribute("{\"text\": \"<C>a[b]=\"}"), "", 0, "<C>a[b]=\n", ""},
        {"value that names itself", total, attribute("\"<TOTAL>\""), "", 0, QByteArray("\0\n", 2), "Line 1 takes more"},
        {"entries with the entries tag", "<ENTRIES>\n", "{\"entries\": \"x\\t<ENTRIES>\"}", "", 0, "",
         "Line 1001 asks for the entries"},
        {"entries as they are", "<ENTRIES>\n", "{\"entries\": [[\"a=<b>\", \"1\"], \"c=2\"]}", "", 0,
         "a=<b>    1\nc        2\n", ""},
        {"entry that is no text", "<ENTRIES>\n", "{\"entries\": [\"a\", 5]}", "", 1, "", "entries: line 2 is no text"},
        {"syntax error", total, "{\n\"copy\": yes}", "", 1, "", "data.json:2:\\d+: no JSON"},
        {"no data", total, "", "", 1, "", "data.json: is empty"},
        {"data in another encoding", total, attribute("\"\xcf\xf0\""), "", 1, "", "data.json:1:\\d+: .*UTF-8"},
        {"template of ten megabytes a line", tenMegabytes, "{}", "", 0, tenMegabytes + '\n', ""},
        {"value of ten megabytes", total, attribute('"' + tenMegabytes + '"'), "", 0, "", "Line 1 takes more"},
        {"empty template", "", "{}", "", 1, "", "t.cpt: is empty"},
        {"template without a line end", "one", "{}", "", 0, "one\n", ""},
        {"template with carriage returns", "a\r\nb\r\n", "{}", "", 0, "a\nb\n", ""},
        {"cp1251 template", "a\n\xcf\xf0\n", "{}", "", 1, "", "t.cpt:2: is no text in UTF-8.*--template-codec"},
        {"cp1251 template with its codec", "\xcf\xf0\n", "{}", "--codec windows-1251", 0, "\u041f\u0440\n", ""},
        {"unknown codec", total, "{}", "--codec no-such", 2, "", "No encoding is called 'no-such'"},
        {"upper case", "ab\n", "{}", "--case upper", 0, "AB\n", ""},
        {"lower case", "AB\n", "{}", "--case lower", 0, "ab\n", ""},
        {"main part", "a\nb <fiscal_info> c\ne\n", "{}", "--part main", 0, "a\nb\n", ""},
        {"fiscal part", "a\nb <fiscal_info> c\ne\n", "{}", "--part fiscal", 0, "c\ne\n", ""},
        {"both parts", "a\nb <fiscal_info> c\ne\n", "{}", "", 0, "a\nb\nc\ne\n", ""},
        {"no main part", "<FISCAL_INFO>\ne\n", "{}", "--part main", 1, "", "t.cpt: has no lines before"},
        {"no fiscal part", "a\n", "{}", "--part fiscal", 1, "", "t.cpt: has no lines behind"},
        {"missing symbol file", "<SPECSYMBOLS=none>\na\n", "{}", "", 0, "a\n", "t.cpt:1: warning: .*none.ssi"},
        {"width 0", total, "{}", "--width 0", 2, "", "--width takes"},
        {"unknown format", total, "{}", "--format pdf", 2, "", "--format takes one of text"},
        {"unknown option", total, "{}", "--colour", 2, "", "colour.*--help"},
        {"target in no folder", total, "{}", "-o none/x", 1, "", "none/x: not written: No such file"},
        {"target is a folder", total, "{}", "-o folder", 1, "", "folder: not written: .*directory"},
        {"target is full", total, "{}", "-o /dev/full", 1, "", "/dev/full: not written: No space"},
        {"target without a name", total, "{}", "--output=", 2, "", "--output needs the name"},
        {"explanation in a picture", total, "{}", "--explain -o x.png", 2, "", "--explain writes text"},
        {"document into a folder", total, "{}", "--format document -o folder", 1, "", "Cannot write"},
        {"stream with data", total, "{}", "--stream", 2, "", "--stream reads standard input"},
    };
}

} // namespace

class TestPrintsrvRender : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void text_data();
    void text();
    void wrongArguments_data();
    void wrongArguments();
    void readsFromPipes();
    void keepsTargetWhenReceiptFails();
    void keepsTargetOnFullDisk_data();
    void keepsTargetOnFullDisk();
    void refusesReadOnlyTarget();
    void savesDocumentWithoutSha1sum();
    void pageShowsSymbolsAndNoMarkup();
};

void TestPrintsrvRender::text_data()
{
    QTest::addColumn<int>("index");
    const QVector<RenderCase> cases = renderCases();
    for (int index = 0; index < cases.size(); ++index) {
        QTest::newRow(cases.at(index).name) << index;
    }
}

void TestPrintsrvRender::text()
{
    QFETCH(int, index);
    const RenderCase row = renderCases().at(index);
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), row.receiptTemplate);
    runner.write(QStringLiteral("data.json"), row.data);
    QVERIFY(QDir(runner.path()).mkdir(QStringLiteral("folder")));
    const auto result
        = runner.run(QStringList{QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                 QStringLiteral("data.json"), QStringLiteral("--width"), QStringLiteral("10")}
                     + QString::fromUtf8(row.options).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    const QRegularExpression pattern(QString::fromUtf8(row.errors), QRegularExpression::DotMatchesEverythingOption);
    const QString errors = QString::fromUtf8(result.errors);
    QVERIFY2(*row.errors == '\0' ? errors.isEmpty() : pattern.match(errors).hasMatch(), result.errors.constData());
    QCOMPARE(result.exitCode, row.exitCode);
    if (row.exitCode != 0 || !row.output.isEmpty()) {
        QCOMPARE(result.output, row.output);
    }
}

void TestPrintsrvRender::wrongArguments_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("errors");
    QTest::newRow("nothing") << QString() << 2 << QStringLiteral("command is missing");
    QTest::newRow("unknown command") << QStringLiteral("print") << 2 << QStringLiteral("no command 'print'");
    QTest::newRow("no template") << QStringLiteral("render") << 2 << QStringLiteral("TEMPLATE is missing");
    QTest::newRow("no data") << QStringLiteral("render t.cpt") << 2 << QStringLiteral("data is missing");
    QTest::newRow("two templates") << QStringLiteral("render a b --data -") << 2
                                   << QStringLiteral("'b' is one argument");
    QTest::newRow("picture of another kind") << QStringLiteral("render t.cpt --data - -o x.JPG") << 2
                                             << QStringLiteral("'x.JPG': pictures are .png, .pdf or .svg");
    QTest::newRow("both from standard input")
        << QStringLiteral("render - --data -") << 2 << QStringLiteral("cannot be both");
    QTest::newRow("missing template") << QStringLiteral("render none --data -") << 1
                                      << QStringLiteral("none: not read: No such file");
    QTest::newRow("folder as template") << QStringLiteral("render . --data -") << 1
                                        << QStringLiteral("\\.: not read: .*directory");
    QTest::newRow("folder as data") << QStringLiteral("render t.cpt --data .") << 1
                                    << QStringLiteral("not read: .*directory");
    QTest::newRow("endless template") << QStringLiteral("render /dev/zero --data -") << 1
                                      << QStringLiteral("larger than 64 MiB");
    QTest::newRow("unknown model") << QStringLiteral("models X") << 1 << QStringLiteral("no model 'X'");
    QTest::newRow("no action") << QStringLiteral("document") << 2 << QStringLiteral("action is missing");
    QTest::newRow("help") << QStringLiteral("render --help") << 0 << QString();
}

void TestPrintsrvRender::wrongArguments()
{
    QFETCH(QString, arguments);
    QFETCH(QString, errors);
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), "a\n");
    const auto result = runner.run(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts), "{}");
    QTEST(result.exitCode, "exitCode");
    const QString message = QString::fromUtf8(result.errors);
    QVERIFY2(errors.isEmpty() ? message.isEmpty() : QRegularExpression(errors).match(message).hasMatch(),
             result.errors.constData());
    QCOMPARE(result.output.contains("Examples:"), errors.isEmpty());
}

void TestPrintsrvRender::readsFromPipes()
{
    const CommandRunner runner;
    const QString data = runner.write(QStringLiteral("data.json"), OneReceipt);
    const auto result = runner.run(
        {QStringLiteral("render"), QStringLiteral("/dev/stdin"), QStringLiteral("--data"), data}, "<TOTAL,00.0>\n");
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, QByteArray("01.5\n"));
}

void TestPrintsrvRender::keepsTargetWhenReceiptFails()
{
    const CommandRunner runner;
    const QString target = runner.write(QStringLiteral("out"), "before");
    runner.write(QStringLiteral("t.cpt"), "a\n");
    const auto result = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                    QStringLiteral("-"), QStringLiteral("-o"), target},
                                   "{");
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(runner.read(target), QByteArray("before"));
}

void TestPrintsrvRender::keepsTargetOnFullDisk_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("smaller than a buffer") << 100;
    QTest::newRow("larger than a buffer") << 100000;
}

void TestPrintsrvRender::keepsTargetOnFullDisk()
{
    QFETCH(int, size);
    const CommandRunner runner;
    const FullFolder folder(runner.path(QStringLiteral("disk")));
    const QString target = runner.write(QStringLiteral("disk/out"), "before");
    folder.fill();
    runner.write(QStringLiteral("t.cpt"), QByteArray(size, 'x'));
    const auto result = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                    QStringLiteral("-"), QStringLiteral("-o"), target},
                                   "{}");
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("disk/out: not written: " + folder.reason()), result.errors.constData());
    QCOMPARE(runner.read(target), QByteArray("before"));
}

void TestPrintsrvRender::refusesReadOnlyTarget()
{
    // Root may write anywhere but here.
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), "a\n");
    const auto result = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                    QStringLiteral("-"), QStringLiteral("-o"), QStringLiteral("/proc/version")},
                                   "{}");
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("/proc/version: not written: "), result.errors.constData());
}

void TestPrintsrvRender::savesDocumentWithoutSha1sum()
{
    CommandRunner runner;
    runner.setEnvironment(QStringLiteral("PATH"), runner.path());
    runner.write(QStringLiteral("t.cpt"), "a\n");
    const auto saved = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                   QStringLiteral("-"), QStringLiteral("--format"), QStringLiteral("document"),
                                   QStringLiteral("-o"), QStringLiteral("-x.doc")},
                                  "{}");
    QCOMPARE(saved.exitCode, 0);
    QCOMPARE(saved.errors.count("sha1sum"), 2);
    const auto verified = runner.run(
        {QStringLiteral("document"), QStringLiteral("verify"), QStringLiteral("--"), QStringLiteral("-x.doc")});
    QCOMPARE(verified.output, QByteArray("-x.doc: good\n-x.doc.bak: good\n"));
}

void TestPrintsrvRender::pageShowsSymbolsAndNoMarkup()
{
    const CommandRunner runner;
    runner.write(QStringLiteral("t.cpt"), "<SPECSYMBOLS=s>\n<#1><NOTE>\n");
    runner.write(QStringLiteral("s.ssi"),
                 "<SpecialSymbolImages><Font Height=\"2\" Width=\"1\"><Symbol Code=\"1\"><Line>1</Line><Line>0</Line>"
                 "</Symbol></Font></SpecialSymbolImages>");
    const auto result = runner.run({QStringLiteral("render"), QStringLiteral("t.cpt"), QStringLiteral("--data"),
                                    QStringLiteral("-"), QStringLiteral("--format"), QStringLiteral("page")},
                                   "{\"attributes\": {\"NOTE\": {\"text\": \"<script>&\"}}}");
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.output.contains("&lt;script&gt;&amp;"), result.output.constData());
    const QRegularExpression picture(QStringLiteral("<img src=\"file://([^\"]+\\.png)\""));
    const QString file = picture.match(QString::fromUtf8(result.output)).captured(1);
    QVERIFY2(QFileInfo::exists(file), qPrintable(file));
}

QTEST_GUILESS_MAIN(TestPrintsrvRender)

#include "tst_printsrvrender.moc"
