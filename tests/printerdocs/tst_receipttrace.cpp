// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receipttrace.h"

#include "fakeprintsettings.h"
#include "printerdocumentformatter.h"
#include "randomreceipt.h"
#include "testfixture.h"
#include "textprinterdocument.h"

#include <ctime>

using ELoss = ReceiptTrace::ELoss;
using ESource = ReceiptTrace::ESource;
using Origin = ReceiptTrace::Origin;

namespace {

ReceiptTrace traceOf(const QString &text, const QVariantMap &attributes = {}, const QString &entries = {})
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(text);
    PrinterDocument document;
    document.setAttributes(attributes);
    document.setEntries(entries);
    return ReceiptTrace::of(formatter, document);
}

/** "T3" is the template's character 3, "TOTAL0" the first one of a value, "=" an entry, "!" the copy mark. */
QString nameOf(const ReceiptTrace &trace, Origin origin)
{
    const ReceiptTrace::Source source = trace.sources().at(origin.source);
    const QString number = QString::number(origin.offset);
    switch (source.kind) {
    case ESource::Template:
        return QLatin1Char('T') + number;
    case ESource::Entries:
        return QLatin1Char('=') + number;
    case ESource::CopyMark:
        return QLatin1Char('!') + number;
    case ESource::Attribute:
        break;
    }
    return source.name + number;
}

/** The lines of the document that prints, without the empty one in front. */
QVector<ReceiptTrace::Line> printedLines(const TextPrinterDocument &document)
{
    QVector<ReceiptTrace::Line> lines;
    const auto blocks = document.blocks();
    for (const DocumentBlock &block : blocks) {
        for (int i = 0; i < block.text().size(); ++i) {
            lines.append({block.text().at(i),
                          block.font().at(i),
                          block.format().at(i),
                          block.alignment(),
                          block.lineSpacing().at(i),
                          {}});
        }
    }
    return lines.mid(1);
}

bool isSame(const ReceiptTrace::Line &a, const ReceiptTrace::Line &b)
{
    return a.text == b.text && a.font == b.font && a.format == b.format && a.alignment == b.alignment
        && a.lineSpacing == b.lineSpacing;
}

QChar characterAt(const ReceiptTrace &trace, Origin origin)
{
    return trace.sources().at(origin.source).text.at(origin.offset);
}

/** What is wrong with a line: a character that is not the one of its origin, unless a tag stands for it. */
QString faultOf(const ReceiptTrace &trace, const ReceiptTrace::Line &line)
{
    if (line.origins.size() != line.text.size()) {
        return QStringLiteral("%1 origins for %2").arg(line.origins.size()).arg(line.text);
    }
    for (int i = 0; i < line.text.size(); ++i) {
        const QChar origin = characterAt(trace, line.origins.at(i));
        if (origin != QLatin1Char('<') && origin != line.text.at(i)) {
            return QStringLiteral("character %1 of %2 is a %3").arg(i).arg(line.text, origin);
        }
    }
    return {};
}

QString faultOf(const ReceiptTrace &trace, const ReceiptTrace::Tag &tag)
{
    const bool isFaulty
        = characterAt(trace, tag.first) != tag.text.front() || characterAt(trace, tag.last) != tag.text.back();
    return isFaulty ? QStringLiteral("tag ") + tag.text : QString();
}

} // namespace

class TestReceiptTrace : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithWhatPrints();
    void namesOrigins_data();
    void namesOrigins();
    void namesLosses_data();
    void namesLosses();
    void namesTags();
    void followsCase();
    void stopsAtLimits();
    void expansionsOfOneLine();
    void countsPlaces();
};

// The trace of random receipts: the lines are those that print, and every origin holds the character that it is said
// to.
void TestReceiptTrace::agreesWithWhatPrints()
{
    const quint32 seed = QRandomGenerator::global()->generate() / 2;
    for (quint32 i = 0; i < 500; ++i) {
        const Receipt receipt = ReceiptMaker(seed + i).receipt();
        PrinterDocumentFormatter formatter;
        formatter.setTemplate(receipt.lines.join(QLatin1Char('\n')));
        const auto failure = [&](const QString &fault) {
            return qPrintable(QStringLiteral("seed %1: %2\n%3").arg(seed + i).arg(fault, receipt.toString()));
        };
        const ReceiptTrace trace = ReceiptTrace::of(formatter, receipt.document());
        if (!trace.stops().isEmpty()) {
            continue;
        }
        const auto printed = printedLines(formatter.toTextPrinterDocument(receipt.document()));
        const auto lines = trace.lines();
        QVERIFY2(std::equal(printed.begin(), printed.end(), lines.begin(), lines.end(), isSame), failure({}));
        for (const auto &line : lines) {
            QVERIFY2(faultOf(trace, line).isEmpty(), failure(faultOf(trace, line)));
        }
        for (const auto &tag : trace.tags()) {
            QVERIFY2(faultOf(trace, tag).isEmpty(), failure(faultOf(trace, tag)));
        }
    }
}

void TestReceiptTrace::namesOrigins_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantMap>("attributes");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<QString>("origins");

    const auto row = [](const char *name, const char *text, const QVariantMap &attributes, const char *entries,
                        const char *origins) {
        QTest::newRow(name) << QString::fromLatin1(text) << attributes << QString::fromLatin1(entries)
                            << QString::fromLatin1(origins);
    };
    const QVariantMap name{{QStringLiteral("NAME"), QStringLiteral("ab")}};
    const QVariantMap outer{{QStringLiteral("NAME"), QStringLiteral("x<LAST>y")},
                            {QStringLiteral("LAST"), QStringLiteral("z")}};
    row("text", "a\nb", {}, "", "T0/T2");
    row("value", "a<NAME>b", name, "", "T0 NAME0 NAME1 T7");
    row("value in a value", "<NAME>", outer, "", "NAME0 LAST0 NAME7");
    row("sum", "<A+BC>", {}, "", "A+BC0 A+BC1 A+BC2 A+BC3");
    row("tags", "<C>a<S>b<#65>c", {}, "", "T3 T4 T7 T8 T13");
    row("entries", "(<ENTRIES>)", {}, "a=b\tc", "T0 =0 =1 =4/=6 T10");
    row("group that stays", "a[b<NAME>]c", name, "", "T0 T2 NAME0 NAME1 T10");
    row("group that goes", "a[b<NONE>]cd", name, "", "T0 T10 T11");
    row("line that goes", "a\n<NONE>\nb", name, "", "T0/T9");
    row("X part", "a<X:>b\nc<:X>d", {}, "", "T0 T12");
    row("X line", "a<X>\nb", {}, "", "/T5");
    row("line break in a value", "a<NAME>b<X:>", {{QStringLiteral("NAME"), QStringLiteral("1\n2")}}, "",
        "T0 NAME0/NAME2 T7 T8");
    row("picture", "a<I>1 1 A</I>b", {}, "", "T0 T13");
    row("picture that comes together", "<<I>1</I>I>2</I>c", {}, "", "T16");
    row("symbols line", "a\n<SPECSYMBOLS=b>\nc", {}, "", "T0/T18");
}

void TestReceiptTrace::namesOrigins()
{
    QFETCH(QString, text);
    QFETCH(QVariantMap, attributes);
    QFETCH(QString, entries);
    QFETCH(QString, origins);
    const ReceiptTrace trace = traceOf(text, attributes, entries);
    QStringList lines;
    for (const auto &line : trace.lines()) {
        QStringList names;
        for (const Origin origin : line.origins) {
            names.append(nameOf(trace, origin));
        }
        lines.append(names.join(QLatin1Char(' ')));
    }
    QCOMPARE(lines.join(QLatin1Char('/')), origins);
}

void TestReceiptTrace::namesLosses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("reason");
    QTest::addColumn<QString>("extent");
    QTest::addColumn<QString>("causes");

    const auto row = [](const char *name, const char *text, ELoss reason, const char *extent, const char *causes) {
        QTest::newRow(name) << QString::fromLatin1(text) << int(reason) << QString::fromLatin1(extent)
                            << QString::fromLatin1(causes);
    };
    row("group", "a[b<ZERO>c]d", ELoss::Group, "T1 T10", "ZERO");
    row("line", "a\n<NONE><MORE>", ELoss::EmptyLine, "T2 T13", "NONE MORE");
    row("X part", "a<X:>b\nc<:X>d", ELoss::XPart, "T1 T11", "");
    row("X line", "a\nb<X>c", ELoss::XLine, "T2 T6", "");
    row("X line of a value", "a\nb<X_LINE>c", ELoss::XLine, "T2 T11", "X_LINE");
    row("picture", "a<I>1 1 A</I>b", ELoss::Image, "T1 T12", "");
    row("symbols line", "a\n <SPECSYMBOLS=b>", ELoss::SymbolsLine, "T2 T17", "");
}

void TestReceiptTrace::namesLosses()
{
    QFETCH(QString, text);
    QFETCH(int, reason);
    QFETCH(QString, extent);
    QFETCH(QString, causes);
    const ReceiptTrace trace
        = traceOf(text, {{QStringLiteral("ZERO"), 0}, {QStringLiteral("X_LINE"), QStringLiteral("<X>")}});
    QCOMPARE(trace.losses().size(), 1);
    const ReceiptTrace::Loss loss = trace.losses().constFirst();
    QCOMPARE(int(loss.reason), reason);
    QCOMPARE(nameOf(trace, loss.first) + QLatin1Char(' ') + nameOf(trace, loss.last), extent);
    QStringList names;
    for (const auto &source : trace.sources().mid(loss.cause, loss.causeCount)) {
        names.append(source.name);
    }
    QCOMPARE(names.join(QLatin1Char(' ')), causes);
}

void TestReceiptTrace::namesTags()
{
    const ReceiptTrace trace
        = traceOf(QStringLiteral("[<NAME,0>\n<F2>x<LS3><:B>]"), {{QStringLiteral("NAME"), QStringLiteral("<B:>")}});
    QStringList tags;
    for (const ReceiptTrace::Tag &tag : trace.tags()) {
        tags.append(QStringLiteral("%1 %2 %3 %4")
                        .arg(tag.line)
                        .arg(tag.text, nameOf(trace, tag.first), nameOf(trace, tag.last)));
    }
    const QStringList expected{QStringLiteral("0 <B:> NAME0 NAME3"), QStringLiteral("0 [ T0 T0"),
                               QStringLiteral("1 <LS3> T15 T19"),    QStringLiteral("1 <:B> T20 T23"),
                               QStringLiteral("1 ] T24 T24"),        QStringLiteral("1 <F2> T10 T13")};
    QCOMPARE(tags, expected);
    const ReceiptTrace::Source value = trace.sources().at(1);
    QCOMPARE(value.format, QStringLiteral("0"));
    QCOMPARE(nameOf(trace, value.tag), QStringLiteral("T1"));
}

// A letter whose upper case is two characters leaves both with its origin.
void TestReceiptTrace::followsCase()
{
    const RegisteredMode upper(1);
    const ReceiptTrace trace = traceOf(QString::fromUtf8("aßb"));
    QCOMPARE(trace.lines().at(0).text, QStringLiteral("ASSB"));
    QStringList names;
    for (const Origin origin : trace.lines().at(0).origins) {
        names.append(nameOf(trace, origin));
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("T0 T1 T1 T2"));
}

// Without the warnings of the formatter, which the fixture would report.
void TestReceiptTrace::stopsAtLimits()
{
    const ReceiptTrace cycle
        = traceOf(QStringLiteral("a\nb<NAME>"), {{QStringLiteral("NAME"), QStringLiteral("-<NAME>")}});
    QCOMPARE(cycle.stops().size(), 1);
    QCOMPARE(cycle.offsetInTemplate(cycle.stops().constFirst()), 3);
    const ReceiptTrace entries = traceOf(QStringLiteral("a\nb<ENTRIES>"), {}, QStringLiteral("x\t<ENTRIES>"));
    QCOMPARE(entries.stops().size(), 1);
    QCOMPARE(entries.offsetInTemplate(entries.stops().constFirst()), 3);
}

// Each of the thousand expansions used to copy the rest of the line: minutes for a line of some megabytes.
void TestReceiptTrace::expansionsOfOneLine()
{
    const QString tag = QStringLiteral("<ENTRIES>");
    const std::clock_t begin = std::clock();
    const ReceiptTrace trace = traceOf(QStringLiteral("ab") + tag.repeated(300000), {}, QStringLiteral("x\ty"));
    const double seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    QCOMPARE(trace.offsetInTemplate(trace.stops().constFirst()), 2 + 1000 * tag.size());
    QCOMPARE(nameOf(trace, trace.lines().at(1).origins.at(1)), QStringLiteral("=0"));
    QVERIFY2(seconds < 4, qPrintable(QString::number(seconds)));
}

void TestReceiptTrace::countsPlaces()
{
    const QString smiley = QString::fromUtf8("\xf0\x9f\x98\x80");
    const ReceiptTrace trace = traceOf(QStringLiteral("ab\n\n") + smiley + QStringLiteral("c"));
    const auto place = [&trace](int offset) {
        const ReceiptTrace::Place found = trace.placeOf(offset);
        return QStringLiteral("%1:%2").arg(found.line).arg(found.column);
    };
    QCOMPARE(place(-5), QStringLiteral("1:1"));
    QCOMPARE(place(1), QStringLiteral("1:2"));
    QCOMPARE(place(3), QStringLiteral("2:1"));
    QCOMPARE(place(6), QStringLiteral("3:2"));
    QCOMPARE(place(99), QStringLiteral("3:3"));
    QCOMPARE(ReceiptTrace().placeOf(7).line, 1);
}

QTEST_GUILESS_MAIN(TestReceiptTrace)

#include "tst_receipttrace.moc"
