// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocumentformatter.h"

#include "receiptdata.h"
#include "testfixture.h"

// The steps that fill a line from a document, and all steps together.

class tst_Preprocessing : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void removeXParts_data();
    void removeXParts();
    void extractAttr_data();
    void extractAttr();
    void extractFormat_data();
    void extractFormat();
    void scan_data();
    void scan();
    void removeGroupIfZero_data();
    void removeGroupIfZero();
    void processDocAttributes_data();
    void processDocAttributes();
    void prepareDocument_data();
    void prepareDocument();
    void limits_data();
    void limits();
    void limitOfAllLines_data();
    void limitOfAllLines();
    void limitOfEntries_data();
    void limitOfEntries();
};

void tst_Preprocessing::removeXParts_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QStringList>("removed");
    QTest::addColumn<QStringList>("kept");

    QTest::newRow("one line") << lines("a<X:>b<:X>c") << lines("ac") << lines("abc");
    QTest::newRow("over lines") << lines("a<X:>b|c|d<:X>e") << lines("ae") << lines("ab|c|de");
    QTest::newRow("two") << lines("<X:>a<:X>b|<X:>c<:X>") << lines("b|") << lines("ab|c");
    QTest::newRow("nested ends at the first") << lines("a<X:>b<X:>c<:X>d<:X>e") << lines("ad<:X>e") << lines("abcde");
    QTest::newRow("unclosed") << lines("a<X:>b|c") << lines("a<X:>b|c") << lines("ab|c");
    QTest::newRow("end first") << lines("a<:X>b<X:>c") << lines("a<:X>b<X:>c") << lines("abc");
    QTest::newRow("empty lines") << lines("||") << lines("||") << lines("||");
    QTest::newRow("one empty line") << lines("") << lines("") << lines("");
    QTest::newRow("no lines") << lines(nullptr) << lines(nullptr) << lines(nullptr);
}

void tst_Preprocessing::removeXParts()
{
    QFETCH(QStringList, given);
    QStringList kept = given;
    const PrinterDocumentFormatter formatter;
    formatter.removeXParts(given, true);
    formatter.removeXParts(kept, false);
    QTEST(given, "removed");
    QTEST(kept, "kept");

    QString line = QStringLiteral("a<X>b<X>");
    formatter.removeXParts(line, false);
    QCOMPARE(line, QStringLiteral("ab"));
    line = QStringLiteral("a<X>b");
    formatter.removeXParts(line, true);
    QCOMPARE(line, QString());
    line = QStringLiteral("a<x>b<X:>");
    formatter.removeXParts(line, true);
    QCOMPARE(line, QStringLiteral("a<x>b<X:>"));
}

void tst_Preprocessing::extractAttr_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("pos");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("left");
    QTest::addColumn<int>("posAfter");

    addRow("four characters", "<DATE>", 0, "DATE", "", 0);
    addRow("three characters", "<SUM>a<DATE>", 0, "", "<SUM>a<DATE>", 5);
    addRow("inside", "ab<TOTAL,0.00>c", 0, "TOTAL,0.00", "abc", 2);
    addRow("from a position", "<NAME><DATE>", 6, "DATE", "<NAME>", 6);
    addRow("behind its start", "<NAME>a", 1, "", "<NAME>a", 7);
    addRow("no tag", "abc", 0, "", "abc", 3);
    addRow("unclosed", "ab<NAME", 0, "", "ab<NAME", 7);
    addRow("end before start", "a>b<NAME>", 0, "NAME", "a>b", 3);
    addRow("two starts", "<<NAM>", 0, "<NAM", "", 0);
    addRow("no characters", "<>a", 0, "", "<>a", 2);
    addRow("past the end", "abc", 9, "", "abc", 3);
    addRow("empty line", "", 0, "", "", 0);
}

void tst_Preprocessing::extractAttr()
{
    QFETCH(QString, line);
    QFETCH(int, pos);
    QTEST(PrinterDocumentFormatter().extractAttr(line, pos), "name");
    QTEST(line, "left");
    QTEST(pos, "posAfter");
}

void tst_Preprocessing::extractFormat_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("format");

    addRow("none", "TOTAL", "TOTAL", "");
    addRow("format", "TOTAL,0.00", "TOTAL", "0.00");
    addRow("first comma", "TOTAL,0,00", "TOTAL", "0,00");
    addRow("empty format", "TOTAL,", "TOTAL", "");
    addRow("empty name", ",0.00", "", "0.00");
    addRow("blanks stay", "TOTAL , 0", "TOTAL ", " 0");
}

void tst_Preprocessing::extractFormat()
{
    QFETCH(QString, tag);
    QString format = QStringLiteral("former");
    PrinterDocumentFormatter().extractFormat(tag, format);
    QTEST(tag, "name");
    QTEST(format, "format");
}

void tst_Preprocessing::scan_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("right");

    QTest::newRow("inside") << "[ab]" << 1 << 0 << 3;
    QTest::newRow("on the start") << "[ab]" << 0 << 0 << -1;
    QTest::newRow("on the end") << "[ab]" << 3 << -1 << 3;
    QTest::newRow("nested, outer") << "[a[b]c[d]e]" << 5 << 0 << 10;
    QTest::newRow("nested, inner") << "[a[b]c]" << 3 << 2 << 4;
    QTest::newRow("none") << "ab" << 0 << -1 << -1;
    QTest::newRow("no end") << "[ab" << 1 << 0 << -1;
    QTest::newRow("no start") << "ab]" << 1 << -1 << 2;
    QTest::newRow("past the end") << "[a" << 99 << 0 << -1;
    QTest::newRow("before the start") << "a]" << -5 << -1 << 1;
    QTest::newRow("empty") << "" << 0 << -1 << -1;
}

void tst_Preprocessing::scan()
{
    QFETCH(QString, line);
    QFETCH(int, from);
    QTEST(PrinterDocumentFormatter().scanL(line, from), "left");
    QTEST(PrinterDocumentFormatter().scanR(line, from), "right");
}

void tst_Preprocessing::removeGroupIfZero_data()
{
    QTest::addColumn<int>("pos");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    addRow("empty", 4, "a[b ]c", "", "ac");
    addRow("zero", 4, "a[b 0.00 c]d", "0.00", "ad");
    addRow("negative zero", 4, "a[b -0.00]d", "-0.00", "ad");
    addRow("1e-12", 1, "[1e-12]", "1e-12", "");
    addRow("more than 1e-12", 1, "[-1.1e-12]", "-1.1e-12", "[-1.1e-12]");
    addRow("number", 1, "[5.00]", "5.00", "[5.00]");
    addRow("word", 1, "[zero]", "zero", "[zero]");
    addRow("inner group", 4, "[a[b0]c]", "0", "[ac]");
    addRow("outer group", 5, "[a[b]0[c]d]e", "0", "e");
    addRow("no group", 1, "a0b", "0", "a0b");
    addRow("no end", 1, "[0", "0", "[0");
    addRow("no start", 0, "0]", "0", "0]");
    addRow("beside a group", 3, "[a]0[b]", "0", "[a]0[b]");
}

void tst_Preprocessing::removeGroupIfZero()
{
    QFETCH(int, pos);
    QFETCH(QString, line);
    QFETCH(QString, value);
    PrinterDocumentFormatter().removeGroupIfZero(pos, line, value);
    QTEST(line, "expected");
}

void tst_Preprocessing::processDocAttributes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *line, const char *expected) {
        QTest::newRow(line) << line << expected;
    };
    row("Total <TOTAL,000.0> <COUNT>", "Total 012.5 3");
    row("<TOTAL><COUNT><NAME>", "12.503Milk");
    row("<TOTAL+COUNT,0.0>", "15.5");
    row("<NONE>|<total>", "|");
    row("<CARD,0.00>", "1234567890123456789");
    row("<SUM><B><LS3><65><#65><:B>", "<SUM><B><LS3><65><#65><:B>");
    row("<#123>", ""); // four characters: an attribute
    row("<BOLD>", "<B>Milk");
    row("<NAME2>", "Milk"); // the value is read again
    row("[Discount: <TOTAL>]", "[Discount: 12.50]");
    row("a[Discount: <ZERO>]b", "ab");
    row("a[Discount: <ZEROTEXT>]b", "ab");
    row("a[Discount: <EMPTY>]b", "ab");
    row("a[Discount: <NONE>]b", "ab");
    row("[<TINY>]", "");
    row("[<COUNT,\"\">]", "[03]"); // a format of two characters without "0"
    row("[a[b<ZERO>]c<TOTAL>]", "[ac<TOTAL>]"); // Contract: the walk goes on at the old place
    row("[a[b<ZERO>]longer <TOTAL>]", "[alonger 12.50]");
    row("[<TOTAL>[<ZERO>]]", "[12.50]");
    row("[<TOTAL> <ZERO>]", "");
    row("[<BRACKET><ZERO>]", "[]0]"); // the value's bracket closes the group
    row("<ZERO>[a]", "0[a]");
    row("<NA<B>ME>", "ME>"); // from "<" to the next ">"
    row("a < b and c > d", "a  d");
    row("a<NAME", "a<NAME");
    row("1 < 2", "1 < 2");
}

void tst_Preprocessing::processDocAttributes()
{
    QFETCH(QString, line);
    QTEST(PrinterDocumentFormatter().processDocAttributes(line, documentWith(QString())), "expected");
}

void tst_Preprocessing::prepareDocument_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QStringList>("expected");

    const auto row = [](const char *given, const QStringList &expected) {
        QTest::newRow(given) << lines(given) << expected;
    };
    row("Name <NAME>||end", lines("Name Milk||end"));
    row("a|<NONE>|b", lines("a|b"));
    row("a|[<ZERO>]|b", lines("a|b"));
    row("<DOCNO>|a", lines("<C>CHECK_COPY|a"));
    row("<ENTRIES>", lines("Milk<S>1.00|Bread<S>12.50"));
    row("a <X> <TOTAL>|b", lines("|b"));
    row("<XLINE>|a", lines("|a"));
    row("<<X>|a", lines("|a"));
    row("a<[><ZERO>]X>|b", lines("|b")); // the tag comes together when the group goes
    row("a<X:>|<TOTAL>|<:X>b", lines("ab"));
    row("a<X:>b", lines("a<X:>b"));
    row("<TWOLINES>", lines("a|b"));
    row("a<I>8 1 gA==</I>b", lines("ab"));
    row("<I>8 1 gA==</I>|a", lines("a"));
    row("<I>8 1 gA==</I><I></I>|a", lines("a"));
    row(" <I>nonsense</I>", lines(" "));
    row("a<I>8 1 gA==|</I>", lines("a<I>8 1 gA==|</I>"));
    row("a<X><I>8 1 gA==</I>|b", lines("|b"));
    row("</I>a<I>", lines("</I>a<I>"));
    row("<SPECSYMBOLS=none>|a", lines("a"));
    row("<SPECSYMBOLS=none>", lines(nullptr));
    row("<B>[Total: <TOTAL>]", lines("<B>[Total: 12.50]"));
}

void tst_Preprocessing::prepareDocument()
{
    QFETCH(QStringList, given);
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(given.join(QLatin1Char('\n')));
    const PrinterDocument document = documentWith(QStringLiteral("Milk=1.00\tBread=<TOTAL>"), true);
    QTEST(formatter.prepareDocument(document), "expected");
    QCOMPARE(formatter.getTemplate(), given);
}

void tst_Preprocessing::limits_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    const QString text(1000, QLatin1Char('x'));
    addRow("names itself", "x<SELF>", QString(10000, QLatin1Char('x')) + QStringLiteral("<SELF>"));
    addRow("names itself alone", "<SELF>", "<SELF>");
    addRow("grows", QString(text + QStringLiteral("<SELF>")),
           QString(1048000, QLatin1Char('x')) + QStringLiteral("<SELF>"));
}

void tst_Preprocessing::limits()
{
    QFETCH(QString, value);
    QFETCH(QString, expected);
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("SELF"), value}, {QStringLiteral("NAME"), QStringLiteral("Milk")}});
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringLiteral("<NAME>\n<SELF> <NAME>\n<NAME>"));
    expectWarning(QStringLiteral("\\b2\\b"));

    const QStringList prepared = formatter.prepareDocument(document);

    QCOMPARE(prepared.size(), 3);
    QCOMPARE(prepared.at(1).size(), expected.size() + 7);
    QVERIFY(prepared.at(1) == expected + QStringLiteral(" <NAME>")); // the rest of the line stays as it is
    QCOMPARE(prepared.at(2), QStringLiteral("Milk")); // the next line starts anew
}

void tst_Preprocessing::limitOfAllLines_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("lastFilled");

    const QString text(500000, QLatin1Char('x'));
    addRow("in many lines", text, "<LONG>", 100, 33);
    addRow("in groups that vanish", QString(QStringLiteral("[<ZERO>") + text + QStringLiteral("]xx<LONG>")), "<LONG>",
           2, 0);
}

void tst_Preprocessing::limitOfAllLines()
{
    QFETCH(QString, value);
    QFETCH(QString, line);
    QFETCH(int, count);
    QFETCH(int, lastFilled);
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("LONG"), value}, {QStringLiteral("ZERO"), 0}});
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringList(QVector<QString>(count, line).toList()).join(QLatin1Char('\n')));
    expectWarning(QStringLiteral("^Line %1: the values of one receipt").arg(lastFilled + 1));

    const QStringList prepared = formatter.prepareDocument(document);

    QCOMPARE(prepared.size(), count);
    for (int i = lastFilled + 1; i < count; ++i) {
        QCOMPARE(prepared.at(i), line);
    }
    QVERIFY(lastFilled == 0 || prepared.at(lastFilled - 1) == value);
}

void tst_Preprocessing::limitOfEntries_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("filled");

    // The first time is free, 33 more have less than 16,777,216 characters with their line ends.
    QTest::newRow("in length") << 500000 << 34;
    QTest::newRow("in count") << 1 << 1000;
}

void tst_Preprocessing::limitOfEntries()
{
    QFETCH(int, length);
    QFETCH(int, filled);
    const QString entry(length, QLatin1Char('x'));
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringLiteral("<ENTRIES>\n").repeated(filled + 10));
    expectWarning(QStringLiteral("^Line %1 asks for the entries too often").arg(filled + 1));

    const QStringList prepared = formatter.prepareDocument(documentWith(entry));

    QCOMPARE(prepared.size(), filled + 1);
    QVERIFY(prepared.at(filled - 1) == entry);
    QCOMPARE(prepared.at(filled), QString()); // behind the last line end; the tags that stayed name no attribute
}

QTEST_GUILESS_MAIN(tst_Preprocessing)
#include "tst_preprocessing.moc"
