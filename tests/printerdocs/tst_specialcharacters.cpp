// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <specialcharacters.h>

#include <limits>

namespace {

constexpr int Largest = std::numeric_limits<int>::max();
constexpr int LargestFileBytes = 16 * 1024 * 1024;

// A symbol file of one font with the attributes and content given.
QByteArray fontFile(const QByteArray &attributes, const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SpecialSymbolImages><Font " + attributes + ">" + content
        + "</Font></SpecialSymbolImages>";
}

// A font of one symbol of black dots.
QByteArray blackFont(int code, int width, int height)
{
    const QByteArray line = "<Line>" + QByteArray(width, '1') + "</Line>";
    return "<Font Height=\"" + QByteArray::number(height) + "\" Width=\"" + QByteArray::number(width)
        + "\"><Symbol Code=\"" + QByteArray::number(code) + "\">" + line.repeated(height) + "</Symbol></Font>";
}

QByteArray symbol(int code, const QByteArray &lines)
{
    return "<Symbol Code=\"" + QByteArray::number(code) + "\">" + lines + "</Symbol>";
}

// The code, size and bytes of every image.
QString described(const SpecialCharacters &symbols)
{
    const auto images = symbols.images();
    QStringList result;
    for (auto image = images.cbegin(); image != images.cend(); ++image) {
        result.append(QStringLiteral("%1:%2x%3:%4")
                          .arg(image.key())
                          .arg(image->width())
                          .arg(image->height())
                          .arg(QString::fromLatin1(image->image().toHex())));
    }
    return result.join(QLatin1Char(' '));
}

// '#' for a black pixel, '.' for a white one, '?' for any other; rows are parted by blanks.
QString drawn(const QImage &image)
{
    QStringList rows;
    for (int y = 0; y < image.height(); ++y) {
        QString row;
        for (int x = 0; x < image.width(); ++x) {
            const QRgb rgb = image.pixel(x, y) & RGB_MASK;
            row += QLatin1Char(rgb == 0 ? '#' : rgb == RGB_MASK ? '.' : '?');
        }
        rows.append(row);
    }
    return rows.join(QLatin1Char(' '));
}

} // namespace

class SpecialCharactersTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void load_data();
    void load();
    void unreadable_data();
    void unreadable();
    void refused_data();
    void refused();
    void bestImage_data();
    void bestImage();
    void picture_data();
    void picture();
    void hugePicture();
    void equality();

private:
    bool loadBytes(SpecialCharacters &symbols, const QByteArray &bytes) const;

    QTemporaryDir m_folder;
};

bool SpecialCharactersTest::loadBytes(SpecialCharacters &symbols, const QByteArray &bytes) const
{
    QFile file(m_folder.filePath(QStringLiteral("symbols.ssi")));
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    file.close();
    return isWritten && symbols.load(file.fileName());
}

void SpecialCharactersTest::load_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<QString>("images");
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QString>("critical");

    const auto row = [](const char *name, const QByteArray &bytes, bool isLoaded, const char *images,
                        const char *warning = "", const char *critical = "") {
        QTest::newRow(name) << bytes << isLoaded << QString::fromLatin1(images) << QString::fromLatin1(warning)
                            << QString::fromLatin1(critical);
    };
    const QByteArray attributes = "Height=\"2\" Width=\"9\"";
    const QByteArray lines = "<Line>100000000</Line><Line>0000000#1</Line>";
    const QByteArray good = symbol(65, lines);
    const char *const wrong = "wrong root element or symbol";
    row("rows of whole bytes", fontFile(attributes, good), true, "65:9x2:80000180");
    row("large, in another encoding",
        "<?xml version=\"1.0\" encoding = \"Windows-1251\"?><SpecialSymbolImages><Font " + attributes + '>' + good
            + "</Font></SpecialSymbolImages>" + QByteArray(70000, '\n'),
        true, "65:9x2:80000180");
    row("code beyond 8 bits", fontFile(attributes, symbol(321, lines)), true, "65:9x2:80000180");
    row("negative code", fontFile(attributes, symbol(-3, lines)), true, "-3:9x2:80000180");
    row("other elements are skipped",
        fontFile(attributes, "<A><Symbol/></A><Symbol Code=\"1\"><B>x<Line/></B>" + lines + "</Symbol>"), true,
        "1:9x2:80000180");
    row("no attributes", fontFile("", "<Symbol/>"), true, "");
    row("malformed numbers read 0", fontFile("Height=\"two\" Width=\"9\"", symbol(1, "")), true, "");
    row("a size without dots", fontFile("Height=\"1\" Width=\"0\"", symbol(1, "<Line/>")), true, "");
    row("no fonts", "<SpecialSymbolImages/>", true, "");
    row("another root", "<Images>" + good + "</Images>", false, "", wrong);
    row("too few lines", fontFile("Height=\"3\" Width=\"9\"", good), false, "", wrong);
    row("too many lines", fontFile("Height=\"1\" Width=\"9\"", good), false, "", wrong);
    row("line too short", fontFile("Height=\"2\" Width=\"10\"", good), false, "", wrong);
    row("huge size", fontFile("Height=\"2147483647\" Width=\"2147483647\"", symbol(1, "")), false, "", wrong);
    row("symbols before a bad one stay", fontFile(attributes, good + symbol(1, "")), false, "65:9x2:80000180", wrong);
    row("element in a line", fontFile(attributes, symbol(1, "<Line>1<b/></Line>")), false, "", "", "line 2 column");
    const QByteArray whole = fontFile(attributes, good);
    row("Contract: ends after a symbol", whole.left(whole.indexOf("</Font>")), true, "65:9x2:80000180", "",
        "error 4 .* line 2 column");
    row("ends in a symbol", whole.left(whole.indexOf("</Line>")), false, "", "", "error 4 ");
    row("Contract: an empty file loads", "", true, "", "", "error 4 ");
    row("not XML", "\xff\xfe\0\0 1", true, "", "", "error 4 ");
}

void SpecialCharactersTest::load()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isLoaded);
    QFETCH(QString, warning);
    QFETCH(QString, critical);
    if (!warning.isEmpty()) {
        expectWarning(warning);
    }
    if (!critical.isEmpty()) {
        expectCritical(critical);
    }
    SpecialCharacters symbols;
    QCOMPARE(loadBytes(symbols, bytes), isLoaded);
    QTEST(described(symbols), "images");
}

void SpecialCharactersTest::unreadable_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("critical");

    QTest::newRow("missing") << m_folder.filePath(QStringLiteral("missing.ssi"))
                             << QStringLiteral("5 \"No such file or directory\"");
    QTest::newRow("folder") << m_folder.path() << QStringLiteral("no regular file");
    QTest::newRow("endless device") << QStringLiteral("/dev/zero") << QStringLiteral("no regular file");
}

void SpecialCharactersTest::unreadable()
{
    QFETCH(QString, path);
    QFETCH(QString, critical);
    SpecialCharacters symbols;
    QVERIFY(loadBytes(symbols, "<SpecialSymbolImages>" + blackFont(1, 8, 1) + "</SpecialSymbolImages>"));
    QCOMPARE(symbols.images().size(), 1);
    expectCritical(critical);
    QVERIFY(!symbols.load(path));
    QCOMPARE(symbols, SpecialCharacters());
}

void SpecialCharactersTest::refused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<QString>("critical");

    const auto row = [](const char *name, const QByteArray &bytes, bool isLoaded, const char *critical) {
        QTest::newRow(name) << bytes << isLoaded << QString::fromLatin1(critical);
    };
    const QByteArray whole = fontFile("Height=\"1\" Width=\"1\"", symbol(1, "<Line>1</Line>"));
    row("entities", "<!DOCTYPE a [<!ENTITY b \"bb\">]>" + whole.mid(whole.indexOf('\n')), false,
        "document type declaration");
    row("larger than 16 MiB", whole + QByteArray(LargestFileBytes + 1 - whole.size(), ' '), false,
        "larger than 16 MiB");
    const QByteArray blanks(70000, ' ');
    row("many attributes",
        "<SpecialSymbolImages a=\">\"" + QByteArray(" b=''").repeated(256) + blanks + "></SpecialSymbolImages>", false,
        "more than 256 attributes");
    row("large in UTF-16", QByteArray("\xFF\xFE<\0a\0", 6) + blanks, false, "an encoding without ASCII");
    row("large in EBCDIC", "<?xml version='1.0' encoding='IBM037'?>" + blanks, false, "an encoding without ASCII");
    row("nested too deeply, an XML error", "<SpecialSymbolImages>" + QByteArray("<a>").repeated(1000000), true,
        "nested too deeply");
}

void SpecialCharactersTest::refused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, critical);
    expectCritical(critical);
    SpecialCharacters symbols;
    QTEST(loadBytes(symbols, bytes), "isLoaded");
    QCOMPARE(described(symbols), QString());
}

void SpecialCharactersTest::bestImage_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QSize>("cell");
    QTest::addColumn<QSize>("expected");
    QTest::addColumn<int>("bytes");

    QTest::newRow("the largest") << 1 << QSize(100, 100) << QSize(12, 24) << 48;
    QTest::newRow("exact") << 1 << QSize(12, 24) << QSize(12, 24) << 48;
    QTest::newRow("the smaller one") << 1 << QSize(10, 20) << QSize(8, 16) << 16;
    QTest::newRow("too high") << 1 << QSize(12, 23) << QSize(8, 16) << 16;
    QTest::newRow("by area, not by width") << 2 << QSize(30, 30) << QSize(8, 16) << 16;
    QTest::newRow("none fits") << 1 << QSize(4, 4) << QSize(4, 4) << 0;
    QTest::newRow("code of more than 8 bits") << 257 << QSize(10, 20) << QSize(8, 16) << 16;
    QTest::newRow("unknown code") << 9 << QSize(9, 3) << QSize(9, 3) << 3;
    QTest::newRow("negative cell") << 1 << QSize(-1, -1) << QSize(-1, -1) << 0;
}

void SpecialCharactersTest::bestImage()
{
    QFETCH(int, code);
    QFETCH(QSize, cell);
    SpecialCharacters symbols;
    QVERIFY(loadBytes(symbols,
                      "<SpecialSymbolImages>" + blackFont(1, 8, 16) + blackFont(1, 12, 24) + blackFont(2, 8, 16)
                          + blackFont(2, 30, 1) + "</SpecialSymbolImages>"));
    const MonochromeImage image = symbols.getImage(code, cell.width(), cell.height());
    QTEST(QSize(image.width(), image.height()), "expected");
    QTEST(image.image().size(), "bytes");
}

void SpecialCharactersTest::picture_data()
{
    QTest::addColumn<QByteArray>("font");
    QTest::addColumn<QString>("expected");

    const QByteArray rows = "<Line>1100000010</Line><Line>1100000010</Line>";
    QTest::newRow("Contract: mirrored, without the last row")
        << fontFile("Height=\"2\" Width=\"10\"", symbol(1, rows)) << QStringLiteral("......##.. ..........");
    QTest::newRow("Contract: one row stays white")
        << fontFile("Height=\"1\" Width=\"3\"", symbol(1, "<Line>111</Line>")) << QStringLiteral("...");
    QTest::newRow("unknown code") << fontFile("", "") << QStringLiteral(".... .... ....");
}

void SpecialCharactersTest::picture()
{
    QFETCH(QByteArray, font);
    SpecialCharacters symbols;
    QVERIFY(loadBytes(symbols, font));
    const bool isKnown = !symbols.images().isEmpty();
    const QImage image = symbols.getPngImage(1, isKnown ? 100 : 4, isKnown ? 100 : 3);
    QCOMPARE(image.format(), QImage::Format_RGB32);
    QTEST(drawn(image), "expected");
}

void SpecialCharactersTest::hugePicture()
{
    QVERIFY(SpecialCharacters().getPngImage(1, Largest, Largest).isNull());
    QVERIFY(SpecialCharacters().getPngImage(1, 4097, 4096).isNull());
    QCOMPARE(SpecialCharacters().getPngImage(1, 4096, 4096).size(), QSize(4096, 4096));
    QVERIFY(SpecialCharacters().getPngImage(1, -5, 5).isNull());
}

void SpecialCharactersTest::equality()
{
    SpecialCharacters symbols;
    QVERIFY(loadBytes(symbols, "<SpecialSymbolImages>" + blackFont(1, 8, 1) + "</SpecialSymbolImages>"));
    SpecialCharacters other = symbols;
    QCOMPARE(other, symbols);
    QCOMPARE(symbols.fileName(), QString()); // Contract: nothing sets it
    other.clear();
    QVERIFY(other != symbols);
    QCOMPARE(other, SpecialCharacters());
}

QTEST_GUILESS_MAIN(SpecialCharactersTest)
#include "tst_specialcharacters.moc"
