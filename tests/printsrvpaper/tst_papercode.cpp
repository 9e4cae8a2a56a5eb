// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "dotart.h"
#include "testfixture.h"

#include <paperrenderer.h>

// Asks for the form of its results that stays.
#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

namespace {

DocumentBlock codeBlock(int type, const QByteArray &data)
{
    DocumentBlock block;
    if (type == 0) {
        block.setQrCode(data);
    } else {
        block.setBarCode(data, static_cast<DocumentBlock::EBarcodeType>(type));
    }
    return block;
}

QImage render(const DocumentBlock &block, int width = 576)
{
    TextPrinterDocument document;
    // Lines above and below, as a receipt has them: the code needs its own quiet zone.
    document.appendBlock(DocumentBlock::createSimpleBlock({QString(40, QChar(0x2588))}, TextAlignLeft, 0, 0, 0, 0));
    document.appendBlock(block);
    document.appendBlock(DocumentBlock::emptyBlock(1, TextAlignLeft, 0));
    return PaperRenderer(smallModel(width, 12, 24)).render(document);
}

QByteArray readBack(const QImage &picture)
{
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    const ZXing::ImageView view(grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                                grey.bytesPerLine());
    const auto result = ZXing::ReadBarcode(view, ZXing::DecodeHints().setTryHarder(true));
    const auto &bytes = result.bytes();
    return result.isValid() ? QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<int>(bytes.size()))
                            : QByteArray("not read");
}

} // namespace

/** Barcodes and QR codes: read back, or refused. */
class TestPaperCode : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void isRead_data();
    void isRead();
    void isRefused_data();
    void isRefused();
    void isAligned();
};

void TestPaperCode::isRead_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("width");
    QTest::addColumn<QByteArray>("read");

    const QByteArray fiscal("t=20240305T1407&s=1000.00&fn=9960440300012345&i=8117&fp=0318274401&n=1");
    QTest::newRow("QR code") << 0 << fiscal << 576 << fiscal;
    QTest::newRow("QR code on narrow paper") << 0 << fiscal << 200 << fiscal;
    QTest::newRow("QR code of many bytes") << 0 << QByteArray(1000, 'x') << 512 << QByteArray(1000, 'x');
    QTest::newRow("Code 128") << 20 << QByteArray("Receipt-004511") << 576 << QByteArray("Receipt-004511");
    QTest::newRow("Code 39") << 8 << QByteArray("A1234") << 384 << QByteArray("A1234");
    QTest::newRow("EAN-13") << 13 << QByteArray("460123456789") << 384 << QByteArray("4601234567893");
    QTest::newRow("PDF417") << 55 << fiscal << 576 << fiscal;
    QTest::newRow("Data Matrix") << 71 << fiscal << 576 << fiscal;
}

void TestPaperCode::isRead()
{
    QFETCH(int, type);
    QFETCH(QByteArray, data);
    QFETCH(int, width);
    QTEST(readBack(render(codeBlock(type, data), width)), "read");
}

void TestPaperCode::isRefused_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("warning");

    QTest::newRow("no such symbology") << 9999 << QByteArray("1") << "No code of type 9999: it is no symbology";
    QTest::newRow("negative symbology") << -1 << QByteArray("1") << "No code of type -1: it is no symbology";
    QTest::newRow("hexagons") << 57 << QByteArray("1") << "No code of type 57: it is no symbology";
    QTest::newRow("no data") << 20 << QByteArray() << "No code of type 20: it has 0 bytes";
    QTest::newRow("too much data") << 0 << QByteArray(1000000, 'x') << "No code of type 58: it has 1000000 bytes";
    QTest::newRow("letters in an EAN") << 13 << QByteArray("secret")
                                       << "No code of type 13: libzint refuses the data \\(Error [0-9]+\\)$";
    QTest::newRow("more than a QR code holds") << 0 << QByteArray(8000, 'x') << "No code of type 58: libzint refuses";
    QTest::newRow("wider than the paper")
        << 20 << QByteArray(60, 'x') << "No code of type 20: it is wider than the paper";
}

void TestPaperCode::isRefused()
{
    QFETCH(int, type);
    QFETCH(QByteArray, data);
    QFETCH(QString, warning);
    expectWarning(warning);
    const DocumentBlock mark = DocumentBlock::createSimpleBlock({QStringLiteral("?")}, TextAlignLeft, 0, 0, 0, 0);
    QCOMPARE(dotArt(render(codeBlock(type, data))), dotArt(render(mark)));
}

void TestPaperCode::isAligned()
{
    DocumentBlock block = codeBlock(0, "x");
    const QStringList left = dotArt(render(block));
    block.setAlignment(TextAlignRight);
    const QStringList right = dotArt(render(block));
    // 21 modules and 4 of quiet zone at each side, 6 dots each.
    constexpr int Side = 29 * 6;
    QCOMPARE(left.size(), 24 + Side + 24);
    QCOMPARE(left.mid(24, Side).replaceInStrings(QRegularExpression(QStringLiteral("^(.{174})(.*)$")),
                                                 QStringLiteral("\\2\\1")),
             right.mid(24, Side));
}

QTEST_GUILESS_MAIN(TestPaperCode)

#include "tst_papercode.moc"
