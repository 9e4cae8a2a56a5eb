// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "filesizelimit.h"
#include "testfixture.h"

#include <documentblock.h>
#include <specialcharacters.h>

#include <QImage>
#include <QUrl>

#include <ctime>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t OwnerOnly = S_IRWXU;

DocumentBlock blockOf(const QString &line, ETextAlignment alignment = TextAlignLeft)
{
    return DocumentBlock::createSimpleBlock({line}, alignment, 0, 0, 0, 0);
}

DocumentBlock blockWith(const QString &line, const QByteArray &font, const QByteArray &format)
{
    DocumentBlock block = blockOf(line);
    block.setFont(QList<QByteArray>{font});
    block.setFormat(QList<QByteArray>{format});
    return block;
}

QString htmlOf(const DocumentBlock &block, bool table, int leftCellPercent = 0)
{
    return block.toHtml(false, SpecialCharacters(), table, leftCellPercent);
}

QString symbolRow(const QString &symbol)
{
    return QStringLiteral("<tr><td colspan=\"2\" align = \"left\"> <font size = 1>%1</font> </td></tr>").arg(symbol);
}

} // namespace

class DocumentBlockHtmlTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void rows_data();
    void rows();
    void preformatted_data();
    void preformatted();
    void noText();
    void runs_data();
    void runs();
    void manyRunsAreLinear();
    void cellWidths_data();
    void cellWidths();
    void picture();
    void placedCharacterIsNoPicture();
    void badPictureFolder_data();
    void badPictureFolder();
    void fullDisk();

private:
    QString path(const QString &name) const;

    QScopedPointer<QTemporaryDir> m_temporary;
};

// Each function gets a temporary folder of its own, with a name that needs care in URLs and in HTML.
void DocumentBlockHtmlTest::init()
{
    m_temporary.reset(new QTemporaryDir(QDir::tempPath() + QStringLiteral("/a &\"b-XXXXXX")));
    QVERIFY(m_temporary->isValid());
    qputenv("TMPDIR", QFile::encodeName(m_temporary->path()));
    TestFixture::init();
}

void DocumentBlockHtmlTest::cleanup()
{
    TestFixture::cleanup();
    qunsetenv("TMPDIR");
}

QString DocumentBlockHtmlTest::path(const QString &name) const
{
    return m_temporary->filePath(name);
}

void DocumentBlockHtmlTest::rows_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected"); // between <tr> and </tr>

    const auto row = [](const char *name, int alignment, const char *line, const char *expected) {
        QTest::newRow(name) << alignment << QString::fromUtf8(line) << QString::fromUtf8(expected);
    };
    row("left", TextAlignLeft, "abc", R"(<td colspan="2" align = "left"> <font size = 1>abc</font> </td>)");
    row("right", TextAlignRight, "abc", R"(<td colspan="2" align = "right"> <font size = 1>abc</font> </td>)");
    row("centre", TextAlignCenter, "abc", R"(<td colspan="2" align = "center"> <font size = 1>abc</font> </td>)");
    row("unknown alignment", 42, "abc", R"(<td colspan="2" align = "left"> <font size = 1>abc</font> </td>)");
    row("full width", TextAlignFullWidth, "a\tb",
        R"(<td align = "left"> <font size = 1>a</font> </td><td align = "right"> <font size = 1>b</font> </td>)");
    row("full width without TAB", TextAlignFullWidth, "ab",
        R"(<td colspan="2" align = "left"> <font size = 1>ab</font> </td>)");
    row("full width, split at the first TAB", TextAlignFullWidth, "\tb\tc",
        "<td align = \"left\">  </td><td align = \"right\"> <font size = 1>b\tc</font> </td>");
    row("escaped", TextAlignLeft, "<b>&\"'Я",
        R"(<td colspan="2" align = "left"> <font size = 1>&lt;b&gt;&amp;&quot;'Я</font> </td>)");
    row("single blanks", TextAlignLeft, "a b c",
        R"(<td colspan="2" align = "left"> <font size = 1>a b c</font> </td>)");
    row("blanks that would be lost", TextAlignLeft, " a  b ",
        R"(<td colspan="2" align = "left"> <font size = 1>&nbsp;a&nbsp;&nbsp;b&nbsp;</font> </td>)");
    row("blanks at the inner ends of cells", TextAlignFullWidth, "a \t b",
        R"(<td align = "left"> <font size = 1>a&nbsp;</font> </td>)"
        R"(<td align = "right"> <font size = 1>&nbsp;b</font> </td>)");
}

void DocumentBlockHtmlTest::rows()
{
    QFETCH(int, alignment);
    QFETCH(QString, line);
    QFETCH(QString, expected);
    const QString html = htmlOf(blockOf(line, static_cast<ETextAlignment>(alignment)), true);
    QCOMPARE(html, QStringLiteral("<tr>") + expected + QStringLiteral("</tr>"));
}

void DocumentBlockHtmlTest::preformatted_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, int alignment, const char *line, const char *expected) {
        QTest::newRow(name) << alignment << QString::fromUtf8(line) << QString::fromUtf8(expected);
    };
    row("left", TextAlignLeft, " a  b<", R"(<div align="left"><font size = 1> a  b&lt;</font></div>)");
    row("right", TextAlignRight, "a", R"(<div align="right"><font size = 1>a</font></div>)");
    row("centre", TextAlignCenter, "a", R"(<div align="center"><font size = 1>a</font></div>)");
    row("full width", TextAlignFullWidth, "a\tb", "<div align=\"left\"><font size = 1>a\tb</font></div>");
    row("empty", TextAlignRight, "", "<br>");
    row("blank", TextAlignFullWidth, " \t\u00A0", "<br>");
}

void DocumentBlockHtmlTest::preformatted()
{
    QFETCH(int, alignment);
    QFETCH(QString, line);
    QFETCH(QString, expected);
    DocumentBlock block = blockOf(line, static_cast<ETextAlignment>(alignment));
    QVERIFY(block.append(block));
    const QString piece = QStringLiteral("<pre>\n%1\n</pre>").arg(expected);
    QCOMPARE(htmlOf(block, false), piece + QLatin1Char('\n') + piece);
    QCOMPARE(block.toHtml(true, SpecialCharacters(), false, 50), htmlOf(block, false));
    if (expected == QStringLiteral("<br>")) {
        QCOMPARE(htmlOf(block, true), QStringLiteral("<br>\n<br>"));
    }
}

void DocumentBlockHtmlTest::noText()
{
    DocumentBlock code;
    code.setQrCode("x");
    DocumentBlock broken = blockOf(QStringLiteral("x"));
    broken.setLineSpacing(QList<int>());
    for (const DocumentBlock &block : {DocumentBlock(), code, broken}) {
        QCOMPARE(htmlOf(block, true), QString());
        QCOMPARE(htmlOf(block, false), QString());
    }
}

void DocumentBlockHtmlTest::runs_data()
{
    QTest::addColumn<QByteArray>("font");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("expected"); // of the line "abc"

    const auto row = [](const char *name, const QByteArray &font, const QByteArray &format, const char *expected) {
        QTest::newRow(name) << font << format << QString::fromLatin1(expected);
    };
    row("fonts", "\3\3\1", "", "<font size = 4>ab</font><font size = 2>c</font>");
    row("double size", "\1\1\1", "\x30\x10\x20",
        "<font size = 4>a</font><font size = 2>b</font><font size = 2>c</font>");
    row("nesting", "", "\x0b\x0b\x0b", "<b><i><u><font size = 1>abc</font></u></i></b>");
    row("each element", "", "\1\2\x08",
        "<b><font size = 1>a</font></b><i><font size = 1>b</font></i><u><font size = 1>c</font></u>");
    row("the driver's own bit", "", "\4\4\4", "<font size = 1>abc</font>");
    row("bytes end early", "\1", "\1\1",
        "<b><font size = 2>a</font></b><b><font size = 1>b</font></b><font size = 1>c</font>");
    row("bytes past the end", QByteArray(9, '\2'), QByteArray(9, '\0'), "<font size = 3>abc</font>");
    row("no font of ours", "\xff\xff\xff", "\xb0\xb0\xb0", "<font size = 512>abc</font>");
}

void DocumentBlockHtmlTest::runs()
{
    QFETCH(QByteArray, font);
    QFETCH(QByteArray, format);
    QFETCH(QString, expected);
    const QString html = htmlOf(blockWith(QStringLiteral("abc"), font, format), false);
    QCOMPARE(html, QStringLiteral("<pre>\n<div align=\"left\">%1</div>\n</pre>").arg(expected));
}

// Each run used to look at the rest of its line again, and a line of a damaged template took most of a minute.
void DocumentBlockHtmlTest::manyRunsAreLinear()
{
    constexpr int Runs = 1000000;
    const DocumentBlock block
        = blockWith(QString(Runs, QLatin1Char('x')), QByteArray(Runs, '\0'), QByteArray("\x01\x02").repeated(Runs / 2));
    const std::clock_t begin = std::clock();
    const QString html = htmlOf(block, true);
    const double seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    QCOMPARE(html.count(QLatin1String("<font size = 1>")), Runs);
    QVERIFY2(seconds < 3, qPrintable(QString::number(seconds)));
}

void DocumentBlockHtmlTest::cellWidths_data()
{
    QTest::addColumn<int>("leftCellPercent");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");

    const auto row = [](const char *name, int percent, const char *left, const char *right) {
        QTest::newRow(name) << percent << QString::fromLatin1(left) << QString::fromLatin1(right);
    };
    row("the browser's choice", 0, "", "");
    row("narrow", 1, " width=\"1%\"", " width=\"99%\"");
    row("wide", 70, " width=\"70%\"", " width=\"30%\"");
    row("whole row", 100, "", "");
    row("negative", -5, "", "");
}

void DocumentBlockHtmlTest::cellWidths()
{
    QFETCH(int, leftCellPercent);
    QFETCH(QString, left);
    QFETCH(QString, right);
    const QString html = htmlOf(blockOf(QStringLiteral("a\tb"), TextAlignFullWidth), true, leftCellPercent);
    QCOMPARE(html,
             QStringLiteral("<tr><td align = \"left\"%1> <font size = 1>a</font> </td>"
                            "<td align = \"right\"%2> <font size = 1>b</font> </td></tr>")
                 .arg(left, right));
}

void DocumentBlockHtmlTest::picture()
{
    const QString html = htmlOf(blockOf(QStringLiteral("\7")), true);
    QString url = html.section(QStringLiteral("src=\""), 1).section(QLatin1Char('"'), 0, 0);
    QCOMPARE(html, symbolRow(QStringLiteral("<img src=\"%1\" width=\"10\" height=\"10\">").arg(url)));

    const QString file = QUrl(url.replace(QStringLiteral("&amp;"), QStringLiteral("&"))).toLocalFile();
    QCOMPARE(QFileInfo(file).absolutePath(), path(QStringLiteral("tempimg")));
    QCOMPARE(QImage(file).size(), QSize(48, 48));
    struct stat status;
    QCOMPARE(stat(QFile::encodeName(path(QStringLiteral("tempimg"))).constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777, OwnerOnly);

    QFile kept(file);
    QVERIFY(kept.open(QIODevice::WriteOnly));
    kept.close();
    QCOMPARE(htmlOf(blockOf(QStringLiteral("\1")), true), html); // the same white picture
    QCOMPARE(QFileInfo(file).size(), 0); // a file that is there is not written again
    QCOMPARE(QDir(path(QStringLiteral("tempimg"))).entryList(QDir::Files).size(), 1);
}

void DocumentBlockHtmlTest::placedCharacterIsNoPicture()
{
    QCOMPARE(htmlOf(blockWith(QStringLiteral("\3"), "", "\x40"), true), symbolRow(QStringLiteral("\3")));
    QCOMPARE(htmlOf(blockOf(QStringLiteral("a\x8")), true), symbolRow(QStringLiteral("a\x8")));
    QVERIFY(!QFileInfo::exists(path(QStringLiteral("tempimg"))));
}

void DocumentBlockHtmlTest::badPictureFolder_data()
{
    QTest::addColumn<QString>("kind");

    QTest::newRow("link to a folder of ours") << QStringLiteral("link");
    QTest::newRow("file") << QStringLiteral("file");
    QTest::newRow("somebody else's") << QStringLiteral("owner");
    QTest::newRow("no temporary folder") << QStringLiteral("missing");
}

void DocumentBlockHtmlTest::badPictureFolder()
{
    QFETCH(QString, kind);
    const QByteArray folder = QFile::encodeName(path(QStringLiteral("tempimg")));
    if (kind == QStringLiteral("link")) {
        QVERIFY(QDir(m_temporary->path()).mkdir(QStringLiteral("target")));
        QVERIFY(QFile::link(QStringLiteral("target"), QFile::decodeName(folder)));
    } else if (kind == QStringLiteral("file")) {
        QVERIFY(QFile(QFile::decodeName(folder)).open(QIODevice::WriteOnly));
    } else if (kind == QStringLiteral("missing") || mkdir(folder.constData(), OwnerOnly) != 0
               || chown(folder.constData(), geteuid() + 1, getegid()) != 0) {
        // Without the right to give a folder away, none that can be used stands in for somebody else's.
        qputenv("TMPDIR", QFile::encodeName(path(QStringLiteral("nowhere"))));
    }
    expectWarning(QStringLiteral("Cannot use the folder of symbol pictures"));
    QCOMPARE(htmlOf(blockOf(QStringLiteral("\1\2")), true), symbolRow(QStringLiteral("\u25A1\u25A1")));
    QCOMPARE(QDir(path(QStringLiteral("target"))).entryList(QDir::Files), QStringList());
}

// Half a picture would be taken for the whole one by every later preview.
void DocumentBlockHtmlTest::fullDisk()
{
    constexpr rlim_t RoomBytes = 16; // less than any picture has
    const DocumentBlock block = blockOf(QStringLiteral("\1\2"));
    QString html;
    expectWarning(QStringLiteral("Cannot write the symbol picture"));
    {
        const FileSizeLimit fullDisk(RoomBytes);
        html = htmlOf(block, true);
    }
    QCOMPARE(html, symbolRow(QStringLiteral("\u25A1\u25A1")));
    QVERIFY(QDir(path(QStringLiteral("tempimg"))).isEmpty(QDir::Files | QDir::Hidden));
    QCOMPARE(htmlOf(block, true).count(QStringLiteral("<img")), 2);
}

QTEST_GUILESS_MAIN(DocumentBlockHtmlTest)
#include "tst_documentblockhtml.moc"
