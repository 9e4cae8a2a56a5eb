// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocumentformatter.h"
#include "testfixture.h"

// formatPrintStr(): one prepared line becomes text with a font and a format byte for each character.

namespace {

constexpr int Left = 0;
constexpr int Right = 1;
constexpr int Centre = 2;
constexpr int Full = 3;

/** A format and a font carried from the line before, none of them the default. */
struct Carried
{
    unsigned char format = 0;
    unsigned char font = 0;
};

QTestData &row(const char *name, const char *line, const char *text)
{
    return QTest::newRow(name) << line << text;
}

QString hexOf(const QList<QByteArray> &lines)
{
    return lines.size() == 1 ? QString::fromLatin1(lines.first().toHex(' ')) : QStringLiteral("no single line");
}

/** The text of the block, with "?" for characters of code 0. */
QString visible(const DocumentBlock &block)
{
    return block.text().join(QLatin1Char('|')).replace(QChar(0), QLatin1Char('?'));
}

} // namespace

class tst_LineFormatting : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void textAndAlignment_data();
    void textAndAlignment();
    void formats_data();
    void formats();
    void fonts_data();
    void fonts();
    void characterCodes_data();
    void characterCodes();
    void lineSpacing_data();
    void lineSpacing();
    void emptyLine_data();
    void emptyLine();
};

void tst_LineFormatting::textAndAlignment_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("alignment");

    row("plain", "TOTAL 1.00", "TOTAL 1.00") << Left;
    row("centred", "<C><B>TOTAL", "TOTAL") << Centre;
    row("tag at the end", "TOTAL<C>", "TOTAL") << Centre;
    row("right", "<R>TOTAL", "TOTAL") << Right;
    row("centred before right", "<R>a<C>b", "ab") << Centre;
    row("full width", "Milk<S>1.00", "Milk\t1.00") << Full;
    row("full width before centred", "<C>Milk<S>1.00", "Milk\t1.00") << Full;
    row("several", "a<S>b<S>c", "a\tb\tc") << Full;
    row("TAB of the text", "a\tb", "a\tb") << Left;
    row("every tag goes", "<C>a<C><L1>b<L1><Z><Z>", "ab") << Centre;
    row("brackets", "[Discount: 5.00[]]", "Discount: 5.00") << Left;
    row("lone brackets", "]a[", "a") << Left;
    row("colon tag", "a<:>b<:>", "ab") << Left;
    row("brackets inside a tag", "<[C]>a", "?a") << Left;
    row("tag that re-forms", "<<C>C>a", "a") << Centre;
    row("only tags", "<C><B>", "") << Centre;
    row("no tag", "a < b", "a < b") << Left;
    row("greater", "a > b", "a > b") << Left;
    row("unclosed tag", "a<C", "a<C") << Left;
    row("not ASCII", "<R>Чек №5 €", "Чек №5 €") << Right;
}

void tst_LineFormatting::textAndAlignment()
{
    QFETCH(QString, line);
    Carried carried;
    auto alignment = static_cast<ETextAlignment>(Centre); // of the line before: no line but an empty one keeps it

    const DocumentBlock block
        = PrinterDocumentFormatter().formatPrintStr(line, carried.format, carried.font, alignment, 0);

    QVERIFY(block.isText());
    QTEST(visible(block), "text");
    QTEST(static_cast<int>(alignment), "alignment");
    QCOMPARE(static_cast<int>(block.alignment()), static_cast<int>(alignment));
    QCOMPARE(block.font().first().size(), block.text().first().size());
    QCOMPARE(block.format().first().size(), block.text().first().size());
}

void tst_LineFormatting::formats_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("carriedIn");
    QTest::addColumn<QString>("formats");
    QTest::addColumn<int>("carriedOut");

    row("none", "ab", "ab") << 0 << "00 00" << 0;
    row("carried", "ab", "ab") << 0x09 << "09 09" << 0x09;
    row("carried 0x40 is cleared", "ab", "ab") << 0x41 << "01 01" << 0x01;
    row("B", "a<B>b", "ab") << 0 << "01 01" << 0;
    row("N", "a<N>b", "ab") << 0 << "02 02" << 0;
    row("Z", "a<Z>b", "ab") << 0 << "04 04" << 0;
    row("U", "a<U>b", "ab") << 0 << "08 08" << 0;
    row("W2", "a<W2>b", "ab") << 0 << "10 10" << 0;
    row("H2", "a<H2>b", "ab") << 0 << "20 20" << 0;
    row("all", "<B><N><Z><U><W2><H2>a", "a") << 0 << "3f" << 0;
    row("L1 has no effect", "<L1>a", "a") << 0x02 << "02" << 0x02;
    row("with carried", "a<B>b", "ab") << 0x08 << "09 09" << 0x08;
    row("lower case is no tag", "<b>a", "?a") << 0 << "40 00" << 0;
    row("span", "a<B:>b<:B>c", "abc") << 0 << "00 01 00" << 0;
    row("span, all letters", "<B:><N:><Z:><U:><W2:><H2:>a<:H2>b", "ab") << 0 << "3f 1f" << 0x1f;
    row("span left open", "a<U:>b", "ab") << 0 << "00 08" << 0x08;
    row("span goes on", "a<:U>b", "ab") << 0x08 << "08 00" << 0;
    row("end without a start", "a<:B>b", "ab") << 0 << "00 00" << 0;
    row("start twice, one end", "<B:>a<B:>b<:B>c", "abc") << 0 << "01 01 00" << 0;
    row("spans cross", "<B:>a<U:>b<:B>c<:U>d", "abcd") << 0 << "01 09 08 00" << 0;
    row("whole line, whatever ends in it", "<B>a<:B>b", "ab") << 0x01 << "01 01" << 0;
    row("whole line over a span", "a<B:>b<:B>c<B>", "abc") << 0 << "01 01 01" << 0;
    row("markers alone are carried", "<B:>", "") << 0 << "" << 0x01;
    row("marker inside a marker", "<B<B:>:>a", "a") << 0 << "01" << 0x01;
    row("marker split by another", "<B<U:>:>a", "?a") << 0 << "40 08" << 0x08;
}

void tst_LineFormatting::formats()
{
    QFETCH(QString, line);
    QFETCH(int, carriedIn);
    Carried carried{static_cast<unsigned char>(carriedIn), 0};
    auto alignment = static_cast<ETextAlignment>(Left);

    const DocumentBlock block
        = PrinterDocumentFormatter().formatPrintStr(line, carried.format, carried.font, alignment, 0);

    QTEST(visible(block), "text");
    QTEST(hexOf(block.format()), "formats");
    QTEST(static_cast<int>(carried.format), "carriedOut");
}

void tst_LineFormatting::fonts_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("carriedIn");
    QTest::addColumn<QString>("fonts");
    QTest::addColumn<int>("carriedOut");

    row("none", "ab", "ab") << 2 << "02 02" << 2;
    row("F1", "a<F1>b", "ab") << 2 << "02 00" << 0;
    row("F4", "a<F4>b", "ab") << 0 << "00 03" << 3;
    row("F5", "a<F5>b", "ab") << 0 << "00 01" << 1;
    row("F8", "a<F8>b", "ab") << 3 << "03 00" << 0;
    row("F11", "<F11>b", "b") << 0 << "03" << 3;
    row("leading zero", "<F02>b", "b") << 0 << "01" << 1;
    row("many digits", "<F10000000000000000000000003>b", "b") << 0 << "03" << 3;
    row("two", "a<F2>b<F3>c", "abc") << 0 << "00 01 02" << 2;
    row("F0 is a character code", "a<F0>b", "a?b") << 1 << "01 01 01" << 1;
    row("sign is a character code", "a<F+2>b", "a?b") << 1 << "01 01 01" << 1;
    row("blank is a character code", "a<F 2>b", "a?b") << 1 << "01 01 01" << 1;
    row("alone", "<F3>", "") << 0 << "" << 2;
    row("font of a character code", "<F2>a<65>", "aA") << 0 << "01 01" << 1;
}

void tst_LineFormatting::fonts()
{
    QFETCH(QString, line);
    QFETCH(int, carriedIn);
    Carried carried{0, static_cast<unsigned char>(carriedIn)};
    auto alignment = static_cast<ETextAlignment>(Left);

    const DocumentBlock block
        = PrinterDocumentFormatter().formatPrintStr(line, carried.format, carried.font, alignment, 0);

    QTEST(visible(block), "text");
    QTEST(hexOf(block.font()), "fonts");
    QTEST(static_cast<int>(carried.font), "carriedOut");
}

void tst_LineFormatting::characterCodes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<int>>("codes");
    QTest::addColumn<QString>("formats");

    const auto codeRow = [](const char *line, const QList<int> &codes, const char *formats) {
        QTest::newRow(line) << line << codes << formats;
    };
    codeRow("<65>", {65}, "40");
    codeRow("<#65>", {65}, "00");
    codeRow("a<7>b", {97, 7, 98}, "00 40 00");
    codeRow("<B>a<65><#66>", {97, 65, 66}, "01 41 01");
    codeRow("<U:>a<65><:U><66>", {97, 65, 66}, "08 48 40");
    codeRow("<321>", {65}, "40");
    codeRow("<#321>", {65}, "00");
    codeRow("<255>", {255}, "40");
    codeRow("<256>", {0}, "40");
    codeRow("<007>", {7}, "40");
    codeRow("<999999999>", {255}, "40"); // 999999999 = 3906249 x 256 + 255
    codeRow("<1000000001>", {0}, "40"); // ten digits
    codeRow("<>", {0}, "40");
    codeRow("<#>", {0}, "00");
    codeRow("<##65>", {0}, "00");
    codeRow("<word>", {0}, "40");
    codeRow("<#word>", {0}, "00");
    codeRow("<-65>", {0}, "40");
    codeRow("<+65>", {0}, "40");
    codeRow("< 65>", {0}, "40");
    codeRow("<6.5>", {0}, "40");
    codeRow("<0x41>", {0}, "40");
    codeRow("<LS8>", {0}, "40");
    codeRow("<I>", {0}, "40");
    codeRow("<:X>", {0}, "40");
    codeRow("<#60>C>", {60, 67, 62}, "00 00 00"); // "<" from a code starts no tag
    codeRow("<60>65>", {60, 54, 53, 62}, "40 00 00 00");
    codeRow("<#91>a<#93>", {91, 97, 93}, "00 00 00"); // nor is "[" a bracket
    codeRow("<#9>", {9}, "00"); // a TAB from a code aligns nothing
    codeRow("<a<65>", {0}, "40"); // from "<" to the next ">"
    codeRow("<65", {60, 54, 53}, "00 00 00");
    codeRow("65>", {54, 53, 62}, "00 00 00");
}

void tst_LineFormatting::characterCodes()
{
    QFETCH(QString, line);
    Carried carried;
    auto alignment = static_cast<ETextAlignment>(Left);

    const DocumentBlock block
        = PrinterDocumentFormatter().formatPrintStr(line, carried.format, carried.font, alignment, 0);

    QList<int> codes;
    const QString text = block.text().constFirst();
    for (const QChar character : text) {
        codes.append(character.unicode());
    }
    QTEST(codes, "codes");
    QTEST(hexOf(block.format()), "formats");
    QCOMPARE(static_cast<int>(carried.format), 0);
    QCOMPARE(static_cast<int>(alignment), Left);
}

void tst_LineFormatting::lineSpacing_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("spacing");

    QTest::newRow("given") << "a" << 5;
    QTest::newRow("tag") << "<LS3>a" << 3;
    QTest::newRow("zero") << "a<LS0>" << 0;
    QTest::newRow("seven") << "a<LS7>b" << 7;
    QTest::newRow("the last one counts") << "<LS6>a<LS2>b" << 2;
    QTest::newRow("the last one counts, rising") << "<LS2>a<LS6>b" << 6;
    QTest::newRow("no tag") << "<LS8>a" << 5;
}

void tst_LineFormatting::lineSpacing()
{
    QFETCH(QString, line);
    QFETCH(int, spacing);
    Carried carried;
    auto alignment = static_cast<ETextAlignment>(Left);
    const DocumentBlock block
        = PrinterDocumentFormatter().formatPrintStr(line, carried.format, carried.font, alignment, 5);
    QCOMPARE(block.lineSpacing(), QList<int>{spacing});
}

void tst_LineFormatting::emptyLine_data()
{
    QTest::addColumn<int>("alignment");
    QTest::newRow("left") << Left;
    QTest::newRow("right") << Right;
    QTest::newRow("centre") << Centre;
    QTest::newRow("full width") << Full;
}

void tst_LineFormatting::emptyLine()
{
    QFETCH(int, alignment);
    Carried carried{0x49, 2};
    auto current = static_cast<ETextAlignment>(alignment);

    const DocumentBlock block
        = PrinterDocumentFormatter().formatPrintStr(QString(), carried.format, carried.font, current, 4);

    QCOMPARE(block.text(), QStringList{QString()});
    QCOMPARE(block.font(), QList<QByteArray>{QByteArray()});
    QCOMPARE(block.format(), QList<QByteArray>{QByteArray()});
    QCOMPARE(block.lineSpacing(), QList<int>{4});
    QCOMPARE(static_cast<int>(block.alignment()), alignment);
    QCOMPARE(static_cast<int>(current), alignment);
    QCOMPARE(static_cast<int>(carried.format), 0x09);
    QCOMPARE(static_cast<int>(carried.font), 2);
}

QTEST_GUILESS_MAIN(tst_LineFormatting)
#include "tst_lineformatting.moc"
