// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocumentformatter.h"

#include "fakeprintsettings.h"
#include "receiptdata.h"
#include "testfixture.h"
#include "textprinterdocument.h"

#include <QRandomGenerator>

// The outputs of the formatter: plain text, HTML and documents; texts from outside; time.

namespace {

using Place = PrinterDocumentFormatter::EValuePlace;

/** The blocks as text: alignment, colon, lines parted by "|"; blocks parted by blanks. */
QString blocksOf(const TextPrinterDocument &document)
{
    QStringList blocks;
    const auto all = document.blocks();
    for (const DocumentBlock &block : all) {
        blocks.append(QString::number(block.alignment()) + QLatin1Char(':') + block.text().join(QLatin1Char('|')));
    }
    return blocks.join(QLatin1Char(' '));
}

QString row(const char *attributes, const char *content)
{
    return QStringLiteral("<tr><td %1> %2 </td></tr>").arg(QLatin1String(attributes), QLatin1String(content));
}

/** Prints @p text as the value of an attribute in a line "a[…]b", or as an entry with "a" and "b" around it. */
QString printed(const QString &text, Place place)
{
    const QString escaped = PrinterDocumentFormatter::escapeValue(text, place);
    PrinterDocument document;
    PrinterDocumentFormatter formatter;
    if (place == Place::Attribute) {
        document.setAttributes({{QStringLiteral("VALUE"), escaped}});
        formatter.setTemplate(QStringLiteral("a[<VALUE>]b"));
    } else {
        document.setEntries(escaped);
        formatter.setTemplate(QStringLiteral("a<ENTRIES>b"));
    }
    return formatter.toPlainText(document, 0);
}

QString withoutControls(QString text)
{
    const auto isControl = [](QChar character) {
        return character.category() == QChar::Other_Control;
    };
    text.resize(static_cast<int>(std::remove_if(text.begin(), text.end(), isControl) - text.begin()));
    return text;
}

QString randomText(QRandomGenerator &random)
{
    static const QString letters
        = QString::fromUtf8("<>[]=\t\n#,.+-eE0123456789 inaf:;ABXLSЧ€ßİ\x01\x07\x1b") + QString::fromUtf8("😀");
    QString text;
    for (int left = random.bounded(12); left > 0; --left) {
        text.append(letters.at(random.bounded(letters.size())));
    }
    return text;
}

} // namespace

class tst_ReceiptConversions : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void plainText_data();
    void plainText();
    void charactersMode_data();
    void charactersMode();
    void html_data();
    void html();
    void htmlWrappers_data();
    void htmlWrappers();
    void blocks_data();
    void blocks();
    void documentFields();
    void escapeValue_data();
    void escapeValue();
    void escapedTextPrintsAsItWas();
};

void tst_ReceiptConversions::plainText_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<int>("width");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("empty line") << lines("a||b") << 3 << lines("a|   |b");
    QTest::newRow("no text") << lines("") << 2 << lines("  ");
    QTest::newRow("right") << lines("<R>abc") << 10 << lines("       abc");
    QTest::newRow("centre") << lines("<C>abc") << 10 << lines("   abc");
    QTest::newRow("full width") << lines("a<S>b") << 10 << lines("a        b");
    QTest::newRow("full width, too long") << lines("abc<S>def") << 7 << lines("abc def");
    QTest::newRow("TAB of the text") << lines("a\tb") << 10 << lines("a\tb");
    QTest::newRow("longer than the width") << lines("<R>abcdef") << 3 << lines("abcdef");
    QTest::newRow("line of tags") << lines("<B><LS3>|a") << 4 << lines("|a");
    QTest::newRow("alignment is not carried") << lines("<R>a|b") << 2 << lines(" a|b");
    QTest::newRow("negative width") << lines("a||b") << -1 << lines("a||b");
}

void tst_ReceiptConversions::plainText()
{
    QFETCH(QStringList, given);
    QFETCH(int, width);
    QFETCH(QStringList, expected);
    PrinterDocumentFormatter formatter;
    const QString text = given.join(QLatin1Char('\n'));
    formatter.setTemplate(text);
    QCOMPARE(formatter.plainTextToFormattedPlainText(text, width), expected.join(QLatin1Char('\n')));
    QCOMPARE(formatter.toPlainText(PrinterDocument(), width), expected.join(QLatin1Char('\n')));
}

void tst_ReceiptConversions::charactersMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    QTest::newRow("as written") << 0 << "Milk aÄ";
    QTest::newRow("upper case") << 1 << "MILK AÄ";
    QTest::newRow("lower case") << 2 << "milk aä";
    QTest::newRow("any other") << 3 << "Milk aÄ";
}

void tst_ReceiptConversions::charactersMode()
{
    QFETCH(int, mode);
    QFETCH(QString, expected);
    const QString text = QStringLiteral("Milk <97><196>");
    const PrinterDocumentFormatter formatter;
    {
        const RegisteredMode registered(mode);
        QCOMPARE(formatter.plainTextToFormattedPlainText(text, 0), expected);
        QVERIFY(formatter.plainTextToHtml(text, false).contains(expected.left(4)));
        QCOMPARE(blocksOf(formatter.plainTextToTextPrinterDocument(text)), QStringLiteral("0:|") + expected);
    }
    QCOMPARE(formatter.plainTextToFormattedPlainText(text, 0), QString::fromUtf8("Milk aÄ"));
}

void tst_ReceiptConversions::html_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    const char *const left = "colspan=\"2\" align = \"left\"";
    addRow("left", "a", row(left, "<font size = 1>a</font>"));
    addRow("right", "<R>a", row("colspan=\"2\" align = \"right\"", "<font size = 1>a</font>"));
    addRow("centre", "<C>a", row("colspan=\"2\" align = \"center\"", "<font size = 1>a</font>"));
    addRow("empty", "", "<br>");
    addRow("blank", "<C>  ", "<br>");
    addRow("escaped", "a&\"b\"<#60><#62>", row(left, "<font size = 1>a&amp;&quot;b&quot;&lt;&gt;</font>"));
    addRow("nested", "<B><N><U>a", row(left, "<b><i><u><font size = 1>a</font></u></i></b>"));
    addRow("runs", "a<B:>b<:B>c",
           row(left, "<font size = 1>a</font><b><font size = 1>b</font></b><font size = 1>c</font>"));
    addRow("fonts", "<F2>a<F4>b", row(left, "<font size = 2>a</font><font size = 4>b</font>"));
    addRow("double", "<F2><W2><H2>a", row(left, "<font size = 4>a</font>"));
    addRow("double width", "<F2><W2>a", row(left, "<font size = 2>a</font>"));
}

void tst_ReceiptConversions::html()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    const QString opening = QStringLiteral("<p><table width=\"100%\" cellspacing=0 cellpadding=0>");
    const QString closing = QStringLiteral("</table></p>");
    const PrinterDocumentFormatter formatter;
    QCOMPARE(formatter.plainTextToHtml(line, false), opening + expected + closing);
    QCOMPARE(formatter.plainTextToHtml(line + QLatin1Char('\n'), true),
             opening + expected + QStringLiteral("\n<br>") + closing);
}

void tst_ReceiptConversions::htmlWrappers_data()
{
    QTest::addColumn<bool>("isValid");
    QTest::newRow("one line") << true;
    QTest::newRow("no template") << false;
}

void tst_ReceiptConversions::htmlWrappers()
{
    QFETCH(bool, isValid);
    const QString page = QStringLiteral(
        "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\"></head><body><table "
        "width=\"100%\" cellspacing=0 cellpadding=0>%1</table></body></html>");
    const QString fragment = QStringLiteral("<p><table width=\"100%\" cellspacing=0 cellpadding=0>%1</table></p>");
    // Contract: no blank before cellspacing
    const QString narrow = QStringLiteral("<p><table width=\"100%\"cellspacing=0 cellpadding=0>%1</table></p>");
    PrinterDocumentFormatter formatter;
    if (isValid) {
        formatter.setTemplate(QString());
    }
    const QString rows = isValid ? QStringLiteral("<br>") : QString();

    QCOMPARE(formatter.toHtml(PrinterDocument(), true), narrow.arg(rows));
    QCOMPARE(formatter.toHtml(PrinterDocument(), false), narrow.arg(rows));
    QCOMPARE(formatter.toHtmlDocument(PrinterDocument(), false), page.arg(rows));
    QCOMPARE(formatter.plainTextToHtml(QString(), true), fragment.arg(QStringLiteral("<br>")));
    QCOMPARE(formatter.plainTextToHtmlDocument(QString(), true), page.arg(QStringLiteral("<br>")));
    QCOMPARE(formatter.toPlainText(PrinterDocument(), 3), isValid ? QStringLiteral("   ") : QString());
}

void tst_ReceiptConversions::blocks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    addRow("left", "a\nb", "0:|a|b");
    addRow("another alignment", "<C>a", "0: 2:a");
    addRow("joined by alignment", "a\n<C>b\n<C>c\n<R>d\ne", "0:|a 2:b|c 1:d 0:e");
    addRow("an empty line keeps the alignment", "<C>a\n\nb", "0: 2:a| 0:b");
    addRow("full width", "a<S>b\n", "0: 3:a\tb|");
    addRow("one empty line", "", "0:|");
}

void tst_ReceiptConversions::blocks()
{
    QFETCH(QString, text);
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(text);
    QTEST(blocksOf(formatter.toTextPrinterDocument(PrinterDocument())), "expected");
    QTEST(blocksOf(PrinterDocumentFormatter().plainTextToTextPrinterDocument(text)), "expected");
}

void tst_ReceiptConversions::documentFields()
{
    PrinterDocumentFormatter formatter;
    QCOMPARE(formatter.toTextPrinterDocument(PrinterDocument()), TextPrinterDocument());

    formatter.setTemplate(QStringLiteral("<LS3><B:><F2>a\nb<:B>\n<B>c"));
    const TextPrinterDocument document = formatter.toTextPrinterDocument(PrinterDocument());
    const DocumentBlock block = document.blocks().first();
    QCOMPARE(document.blocks().size(), 1);
    QVERIFY(document.currentTicketAction() == QFlags<EPrinterTicketAction>());
    QCOMPARE(block.lineSpacing(), (QList<int>{0, 3, 0, 0}));
    QCOMPARE(block.format(), (QList<QByteArray>{QByteArray(), "\x01", "\x01", "\x01"}));
    QCOMPARE(block.font(), (QList<QByteArray>{QByteArray(), "\x01", "\x01", "\x01"}));
}

void tst_ReceiptConversions::escapeValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    addRow("nothing to do", "Milk 3,2 % > \"x\" & y", "Milk 3,2 % > \"x\" & y");
    addRow("tags and groups", "<TOTAL>[x]", "<TOTAL>[x]");
    addRow("equals sign", "a=b", "a=b");
    addRow("number", "007", "007");
    addRow("zero", "0", "0");
    addRow("number with a comma", " 12,50 ", " 12,50 ");
    addRow("number by another name", "inf", "inf");
    addRow("no number", "nan", "nan");
    addRow("zero of many digits", "0000000000000000000", "0000000000000000000");
    addRow("tiny number", "0.000000000000000001", "0.000000000000000001");
    addRow("controls", "a\tb\nc\x1b\x01", "abc");
    addRow("only controls", "\t\n", "");
    addRow("blank", " ", " ");
    addRow("empty", "", "");
    addRow("long number", "12345678901234567890", "12345678901234567890");
}

void tst_ReceiptConversions::escapeValue()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(printed(text, Place::Attribute), QLatin1Char('a') + expected + QLatin1Char('b'));
    QCOMPARE(printed(text, Place::Entry), QLatin1Char('a') + expected + QLatin1Char('b'));
}

void tst_ReceiptConversions::escapedTextPrintsAsItWas()
{
    const quint32 seed = qEnvironmentVariableIsSet("PRINTSRV_PROPERTY_SEED")
        ? static_cast<quint32>(qEnvironmentVariableIntValue("PRINTSRV_PROPERTY_SEED"))
        : QRandomGenerator::global()->generate() / 2;
    QRandomGenerator random(seed);
    for (int i = 0; i < 3000; ++i) {
        const QString text = randomText(random);
        const QString expected = QLatin1Char('a') + withoutControls(text) + QLatin1Char('b');
        const QString context = QStringLiteral("seed %1, run %2, text \"%3\"").arg(seed).arg(i).arg(text);
        QVERIFY2(printed(text, Place::Attribute) == expected, qPrintable(context));
        QVERIFY2(printed(text, Place::Entry) == expected, qPrintable(context));
    }
}

QTEST_GUILESS_MAIN(tst_ReceiptConversions)
#include "tst_receiptconversions.moc"
