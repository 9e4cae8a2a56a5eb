// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "nearmiss.h"
#include "randomreceipt.h"
#include "templatelint.h"
#include "testfixture.h"

#include <QTextCodec>

using namespace printsrv;

namespace {

/** Everything that lint can look for. */
LintOptions allOptions()
{
    LintOptions options;
    options.model = PrinterInfo::fromResources().first();
    options.codec = QTextCodec::codecForName("cp866");
    options.isHostile = true;
    return options;
}

QStringList describe(const QVector<Finding> &findings)
{
    QStringList texts;
    for (const Finding &finding : findings) {
        texts.append(QStringLiteral("%1:%2 %3").arg(finding.line).arg(finding.column).arg(lintCodeName(finding.code)));
    }
    return texts;
}

LintReceipt receiptOf(const QVariantMap &attributes, const QString &entries)
{
    PrinterDocument receipt;
    receipt.setAttributes(attributes);
    receipt.setEntries(entries);
    return receipt;
}

/** What a row of finds() sets apart from the receipt: "width 12 cp866 hostile". */
LintOptions optionsOf(const QString &words, LintReceipt receipt)
{
    LintOptions options;
    options.width = words.section(QStringLiteral("width "), 1).section(QLatin1Char(' '), 0, 0).toInt();
    options.codec = words.contains(QLatin1String("cp866")) ? QTextCodec::codecForName("cp866") : nullptr;
    options.isHostile = words.contains(QLatin1String("hostile"));
    if (words.contains(QLatin1String("list"))) {
        receipt.entryList = receipt.document.entries().split(QLatin1Char('|'));
        receipt.document.setEntries(receipt.document.entries().replace(QLatin1Char('|'), QLatin1Char('\t')));
    }
    if (!words.contains(QLatin1String("no data"))) {
        options.receipts = {receipt};
    }
    return options;
}

} // namespace

class TestTemplateLint : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void survivesRandomTemplates();
    void finds_data();
    void finds();
    void guessesNames_data();
    void guessesNames();
};

// Whatever the template and the data: findings are in the template, sorted, and each only once.
void TestTemplateLint::survivesRandomTemplates()
{
    const quint32 seed = QRandomGenerator::global()->generate() / 2;
    qInfo("seed %u", seed);
    for (quint32 i = 0; i < 300; ++i) {
        const Receipt receipt = ReceiptMaker(seed + i).receipt();
        const QStringList lines = receipt.lines.join(QLatin1Char('\n')).split(QLatin1Char('\n'));
        LintOptions options = allOptions();
        options.receipts = {receipt.document()};
        const auto findings = lintTemplate(lines, options).value_or(QVector<Finding>());
        QSet<QString> found;
        for (int at = 0; at < findings.size(); ++at) {
            const Finding &finding = findings.at(at);
            const bool isInside = finding.line >= 1 && finding.line <= lines.size() && finding.column >= 1
                && finding.column <= lines.at(finding.line - 1).size() + 1;
            const bool isBehind = at == 0
                || std::tie(findings.at(at - 1).line, findings.at(at - 1).column, findings.at(at - 1).code)
                    <= std::tie(finding.line, finding.column, finding.code);
            const int before = found.size();
            found.insert(describe({finding}).constFirst() + finding.text);
            QVERIFY2(isInside && isBehind && found.size() > before,
                     qPrintable(QStringLiteral("seed %1, finding %2").arg(seed + i).arg(at)));
        }
    }
}

void TestTemplateLint::finds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantMap>("attributes");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("findings");

    const auto row = [](const char *name, const char *text, const QVariantMap &attributes, const char *findings,
                        const char *entries = "", const char *options = "") {
        addRow(name, QString::fromUtf8(text), attributes, QString::fromUtf8(entries), QString::fromLatin1(options),
               QString::fromLatin1(findings));
    };
    const auto name = [](const char *value) {
        return QVariantMap{{QStringLiteral("DOCNO"), 1}, {QStringLiteral("NAME"), QString::fromUtf8(value)}};
    };
    const QVariantMap total{
        {QStringLiteral("DOCNO"), 1}, {QStringLiteral("TOTAL"), 1.5}, {QStringLiteral("TAX_A"), 0.5}};
    row("a clean template", "<DOCNO>\n<C><B>x <TOTAL>\n[y <TAX_A>]<S>z", total, "");
    row("optional attributes may be missing in a group", "<DOCNO><TOTAL>\n[<COUPON>]\n[<TAX_A>][<TAX_B>]", total, "");
    row("but not be misspelt", "<DOCNO>[<TOTLA>]", total, "1:9 unknown-attribute");
    row("a sum's parts", "<DOCNO><TOTAL+OTHER+TAX_A>", total, "1:15 unknown-attribute");
    row("attributes of an X part", "<DOCNO><X:><OTHER><:X>\n<X><OTHER>", total, "");
    row("behind the fiscal tag", "<DOCNO>\na  <FISCAL_INFO>  <OTHER>b", total, "2:19 unknown-attribute");
    row("columns count characters", "<DOCNO>\n\xf0\x9f\x98\x80<OTHER>", total, "2:2 unknown-attribute");
    row("a tag swallows another", "<DOCNO>\n1 < 2 <C>x", total, "2:3 unclosed-tag");
    row("a sign that is no tag", "<DOCNO>\n1 < 2", total, "");
    row("codes that print", "<DOCNO><60><#60><255>", total, "");
    row("short names and cases", "<DOCNO><b><TAX>", total, "1:8 short-attribute/1:11 short-attribute");
    row("brackets over a line end", "<DOCNO>[a\nb]", total, "1:8 unclosed-group/2:2 unclosed-group");
    row("a group around an X part over a line end", "<DOCNO>[a<X:>\nb<:X>c]", total, "");
    row("a group around the entries", "<DOCNO>\n[<ENTRIES>]", total, "2:1 unclosed-group/2:11 unclosed-group");
    row("a tag far enough behind a group", "<DOCNO>[abc <TOTAL>]12345<TAX_A>", total, "");
    row("a tag close behind a group", "<DOCNO>[abc <TOTAL>]123<TAX_A>", total, "1:24 tag-behind-group");
    row("a bracket inside of a tag", "<DOCNO>[<TOTAL,y<TAX_A>M-d>]<#[00>]", total,
        "1:9 value-read-again/1:29 code-out-of-range", "", "no data");
    row("a tag behind an inner group", "<DOCNO>[a[bcdef<TOTAL>]<TAX_A>]", total, "1:24 tag-behind-group");
    row("formatting behind a group", "<DOCNO>[abc <TOTAL>]<B>", total, "");
    row("the tag behind a group that is gone", "<DOCNO>[abc <GONE>]<TOTAL>", total, "1:20 unread-tag");
    row("a span over lines", "<DOCNO><B:>a\nb<:B>", total, "");
    row("spans of other letters", "<DOCNO><B:><W2:><:B>", total, "1:12 unclosed-span");
    row("escaped values", "<DOCNO><NAME>", name("a<#60><#91>b"), "");
    row("values with formatting", "<DOCNO><NAME>", name("<B>x<U:>y<:U>"), "");
    row("a value that takes a tag with it", "<DOCNO><NAME> y<:>", name("x<"), "1:8 value-read-again");
    row("a value that empties its line", "<DOCNO>\na <NAME>", name("x <X> y"), "2:3 value-read-again");
    row("a value with an X part", "<DOCNO>\na <NAME>", name("x<X:>y<:X>z"), "2:3 value-read-again");
    row("a value that ends an X part", "<DOCNO>\n<X:>a <NAME>b", name("x<:X>"),
        "2:1 unclosed-x-part/2:7 value-read-again");
    row("a value with a picture", "<DOCNO>\na <NAME>", name("x<I>1 1 AA</I>"), "2:3 value-read-again");
    row("a value that opens a span", "<DOCNO>\na <NAME>b<:B>", name("<B:>x"),
        "2:3 value-read-again/2:10 unopened-span");
    row("a value that ends a span", "<DOCNO>\n<B:>a <NAME>b<:B>", name("x<:B>"), "2:7 value-read-again");
    row("a TAB between sides", "<DOCNO>\na <NAME><S>1", name("x\ty"), "2:3 value-read-again");
    row("a TAB elsewhere", "<DOCNO>\na <NAME>", name("x\ty"), "");
    row("entries", "<DOCNO>\n<ENTRIES>", total, "", "a=1\tb=2\t  more\tc=3");
    row("entries with brackets", "<DOCNO>\n<ENTRIES>", total, "2:1 value-read-again", "a [b]=1");
    row("an empty entry", "<DOCNO>\n<ENTRIES>", total, "2:1 entry-tab", "a=1\t");
    row("entries with a name", "<DOCNO>\n<ENTRIES>", name("x"), "2:1 value-read-again", "a=1\tb <NAME>=1");
    row("an entry that empties its line", "<DOCNO>\n<ENTRIES>", total, "2:1 value-read-again", "a=1\tb <X>=1");
    row("many such entries", "<DOCNO>\n<ENTRIES>", total, "2:1 value-read-again/2:1 value-read-again",
        "a <T>=1\tb=1\tc <T>=1");
    row("a TAB in a list", "<DOCNO>\n<ENTRIES>", total, "2:1 entry-tab", "Tea\t80=3|Milk=1", "list");
    row("a heading in a list", "<DOCNO>\n<ENTRIES>", total, "", "Goods|Milk=1|Tea=2", "list");
    row("a TAB in a text", "<DOCNO>\n<ENTRIES>", total, "2:1 entry-tab", "Tea\t80=3\tMilk=1");
    row("one = in a list", "<DOCNO>\n<ENTRIES>", total, "2:1 entry-equals", "E=mc2 poster|Milk 1", "list");
    row("entries that hold their tag", "<DOCNO>\n<ENTRIES>", total, "2:1 endless-value", "a\t<ENTRIES>");
    row("in groups that are gone", "<DOCNO>\n[a ₽<GONE>]\n[long text <GONE>]", total,
        "2:4 codec-lacks-character/3:12 line-too-wide", "", "width 10 cp866");
    row("all characters of a value", "<DOCNO><NAME>", name("₽і₽"),
        "1:8 codec-lacks-character/1:8 codec-lacks-character", "", "cp866");
    row("wide and with a group that stays", "<DOCNO>\n[long text <TOTAL,0.00>]", total, "2:12 line-too-wide", "",
        "width 11");
    row("sides without a blank", "<DOCNO>\n12345<S>67890\n12345<S>6789", total, "2:6 no-gap", "", "width 10");
    row("a side of nothing", "<DOCNO>\n123456789<S> ", total, "", "", "width 10");
    row("a sum without data", "<DOCNO>\n<SUMA> <SUMB>\n[<SUMA+SUMB>]<OTHER>", total, "3:14 tag-behind-group", "",
        "no data");
    row("two formats without data", "<DOCNO><TOTAL,0> <TOTAL,0.00>", total, "", "", "no data");
    row("long values of the type given", "<DOCNO>\n<TOTAL>\n<NAME,0.00>",
        {{QStringLiteral("DOCNO"), 1}, {QStringLiteral("TOTAL"), 1.5}, {QStringLiteral("NAME"), QStringLiteral("x")}},
        "3:1 hostile-width", "", "width 12 hostile");
    row("a long entry", "<DOCNO>\n<ENTRIES>", total, "2:1 hostile-width", "", "width 40 hostile");
    row("alike in a group", "<DOCNO>[<TOTAL_SUM>]", {{QStringLiteral("DOCNO"), 1}, {QStringLiteral("TOTAL"), 1.5}},
        "1:9 similar-attribute");
    row("alike in the other part", "<DOCNO><TOTAL> <TAX_A>\n<FISCAL_INFO>\n[<TOTAL_SUM>]", total, "");
    row("codes out of range", "<DOCNO><0><256><#0>", total,
        "1:8 code-out-of-range/1:11 code-out-of-range/1:16 code-out-of-range");
    row("a number of the wrong case", "No <docno>", total, "1:4 unknown-attribute");
    row("no number in the data", "No <DOCNO>", {{QStringLiteral("TOTAL"), 1.5}}, "1:4 unknown-attribute");
    row("a place for the mark alone", "No\n <DOCNO> \n", {{QStringLiteral("TOTAL"), 1.5}}, "");
    row("parts print by themselves", "<DOCNO><X:>a<B:>\n<FISCAL_INFO>\n<:X>b<:B>", total,
        "1:8 unclosed-x-part/1:13 unclosed-span/3:1 unclosed-x-part/3:6 unopened-span");
    row("the mark in the fiscal part", "a\n<FISCAL_INFO>\n<DOCNO>", total, "1:1 no-docno");
}

void TestTemplateLint::finds()
{
    QFETCH(QString, text);
    QFETCH(QVariantMap, attributes);
    QFETCH(QString, entries);
    QFETCH(QString, options);
    QFETCH(QString, findings);
    const auto found = lintTemplate(text.split(QLatin1Char('\n')), optionsOf(options, receiptOf(attributes, entries)));
    QVERIFY(found.has_value());
    QCOMPARE(describe(*found).join(QLatin1Char('/')), findings);
}

void TestTemplateLint::guessesNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("guess");
    addRow("beginning", "SUMM", "SUM_TOTAL");
    addRow("letters swapped", "ADRDESS", "ADDRESS");
    addRow("lower case", "address", "ADDRESS");
    addRow("a part of it", "TOTAL", "SUM_TOTAL");
    addRow("nothing alike", "CASHIER", "");
    addRow("very long", QString(10000, QLatin1Char('S')), "");
    addRow("empty", "", "");
}

void TestTemplateLint::guessesNames()
{
    QFETCH(QString, name);
    QFETCH(QString, guess);
    QCOMPARE(nearMiss(name, {QStringLiteral("ADDRESS"), QStringLiteral("SUM_TOTAL")}, ELikeness::Alike), guess);
}

QTEST_GUILESS_MAIN(TestTemplateLint)

#include "tst_templatelint.moc"
