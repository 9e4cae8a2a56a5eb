// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "picturewriters.h"

#include <QPoint>
#include <QVector>

#include <charconv>
#include <cmath>

namespace printsrv {

namespace {

constexpr double PointsAMetre = 72 * 1000 / 25.4;
// What a PDF reader has to accept; a longer page counts in larger units.
constexpr double LargestPdfSide = 14400;

double metres(int dots, int dotsAMetre)
{
    return double(dots) / qMax(1, dotsAMetre);
}

QByteArray decimal(double value)
{
    return QByteArray::number(value, 'f', 4);
}

// What lies behind the last dot of a row is whatever the memory held.
void clearPadding(QByteArray &rows, int rowBytes, int width)
{
    const int mask = 0xFF00 >> (width % 8);
    for (int last = rowBytes - 1; width % 8 != 0 && last < rows.size(); last += rowBytes) {
        rows[last] = static_cast<char>(rows.at(last) & mask);
    }
}

QByteArray packedRows(const QImage &picture)
{
    const int rowBytes = (picture.width() + 7) / 8;
    QByteArray rows;
    rows.reserve(rowBytes * picture.height());
    for (int y = 0; y < picture.height(); ++y) {
        rows.append(reinterpret_cast<const char *>(picture.constScanLine(y)), rowBytes);
    }
    clearPadding(rows, rowBytes, picture.width());
    return rows;
}

// qCompress() puts the length in front of what the PDF filter reads.
QByteArray deflated(const QByteArray &bytes)
{
    return qCompress(bytes).mid(4);
}

QByteArray stream(const QByteArray &dictionary, const QByteArray &content)
{
    return "<< " + dictionary + " /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content
        + "\nendstream";
}

QByteArray referenceTable(const QVector<int> &offsets, int start)
{
    const QByteArray count = QByteArray::number(offsets.size() + 1);
    QByteArray text = "xref\n0 " + count + "\n0000000000 65535 f \n";
    for (const int offset : offsets) {
        text += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    }
    return text + "trailer\n<< /Size " + count + " /Root 1 0 R >>\nstartxref\n" + QByteArray::number(start)
        + "\n%%EOF\n";
}

QByteArray pdfFile(const QVector<QByteArray> &objects)
{
    QByteArray text("%PDF-1.6\n%\xE2\xE3\xCF\xD3\n");
    QVector<int> offsets;
    for (const QByteArray &object : objects) {
        offsets.append(text.size());
        text += QByteArray::number(offsets.size()) + " 0 obj\n" + object + "\nendobj\n";
    }
    return text + referenceTable(offsets, text.size());
}

void appendNumber(QByteArray &text, int number)
{
    char digits[12];
    const char *end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text.append(digits, static_cast<int>(end - digits));
}

void appendRun(QByteArray &path, QPoint begin, int length)
{
    path += 'M';
    appendNumber(path, begin.x());
    path += ' ';
    appendNumber(path, begin.y());
    path += 'h';
    appendNumber(path, length);
    path += "v1h";
    appendNumber(path, -length);
    path += 'z';
}

// The runs of black dots of one row as subpaths.
void appendRuns(QByteArray &path, const QImage &picture, int y)
{
    const uchar *row = picture.constScanLine(y);
    const auto isBlack = [row](int x) {
        return (row[x / 8] & (0x80 >> (x % 8))) != 0;
    };
    for (int x = 0; x < picture.width(); ++x) {
        const int begin = x;
        while (x < picture.width() && isBlack(x)) {
            ++x;
        }
        if (x > begin) {
            appendRun(path, {begin, y}, x - begin);
        }
    }
}

} // namespace

QImage blackOnWhite(const QImage &picture)
{
    const QVector<QRgb> colours = {qRgb(255, 255, 255), qRgb(0, 0, 0)};
    if (picture.format() == QImage::Format_Mono && picture.colorTable() == colours) {
        return picture;
    }
    QImage result = picture.convertToFormat(QImage::Format_Mono, colours, Qt::ThresholdDither);
    result.setDotsPerMeterX(picture.dotsPerMeterX());
    result.setDotsPerMeterY(picture.dotsPerMeterY());
    return result;
}

QByteArray pdfBytes(const QImage &anyPicture)
{
    const QImage picture = blackOnWhite(anyPicture);
    const double width = metres(picture.width(), picture.dotsPerMeterX()) * PointsAMetre;
    const double height = metres(picture.height(), picture.dotsPerMeterY()) * PointsAMetre;
    const double unit = std::ceil(qMax(1.0, qMax(width, height) / LargestPdfSide));
    const QByteArray size = decimal(width / unit) + ' ' + decimal(height / unit);
    const QByteArray sides
        = "/Width " + QByteArray::number(picture.width()) + " /Height " + QByteArray::number(picture.height());
    const QByteArray place = "q " + decimal(width / unit) + " 0 0 " + decimal(height / unit) + " 0 0 cm /I Do Q";
    return pdfFile({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                    "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + size + "] /UserUnit " + decimal(unit)
                        + " /Contents 5 0 R /Resources << /XObject << /I 4 0 R >> >> >>",
                    stream("/Type /XObject /Subtype /Image " + sides
                               + " /ColorSpace /DeviceGray /BitsPerComponent 1 /Decode [1 0] /Filter /FlateDecode",
                           deflated(packedRows(picture))),
                    stream({}, place)});
}

QByteArray svgBytes(const QImage &anyPicture)
{
    const QImage picture = blackOnWhite(anyPicture);
    const QByteArray width = QByteArray::number(picture.width());
    const QByteArray height = QByteArray::number(picture.height());
    QByteArray text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\""
        + decimal(metres(picture.width(), picture.dotsPerMeterX()) * 1000) + "mm\" height=\""
        + decimal(metres(picture.height(), picture.dotsPerMeterY()) * 1000) + "mm\" viewBox=\"0 0 " + width + ' '
        + height + "\" shape-rendering=\"crispEdges\">\n<rect width=\"" + width + "\" height=\"" + height
        + "\" fill=\"#fff\"/>\n<path d=\"";
    for (int y = 0; y < picture.height(); ++y) {
        appendRuns(text, picture, y);
    }
    return text + "\"/>\n</svg>\n";
}

} // namespace printsrv
