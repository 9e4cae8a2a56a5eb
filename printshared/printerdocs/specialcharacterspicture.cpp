// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "specialcharacters.h"

// A symbol drawn as a picture.

namespace {

constexpr qint64 LargestPictureBytes = 64LL * 1024 * 1024;
constexpr qint64 BytesPerPixel = 4;
constexpr QRgb Black = 0;

// A white picture, null when it has no dots or is too large.
QImage whitePicture(int width, int height)
{
    if (width < 1 || height < 1 || qint64(width) * height > LargestPictureBytes / BytesPerPixel) {
        return QImage();
    }
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::white);
    return picture;
}

// Contract: the least significant bit comes first, so that each group of eight dots is mirrored.
void drawRow(QRgb *line, int width, const char *row)
{
    for (int x = 0; x < width; ++x) {
        if ((static_cast<uchar>(row[x / 8]) & (1 << (x % 8))) != 0) {
            line[x] = Black;
        }
    }
}

} // namespace

QImage SpecialCharacters::getPngImage(int code, int width, int height) const
{
    const MonochromeImage image = getImage(code, width, height);
    QImage picture = whitePicture(image.width(), image.height());
    if (picture.isNull()) {
        return picture;
    }
    const QByteArray data = image.image();
    const qint64 rowBytes = (qint64(image.width()) + 7) / 8;
    // Contract: a row is drawn only when there is data behind it, so that the last one stays white.
    for (int y = 0; y < picture.height() && data.size() > (y + 1) * rowBytes; ++y) {
        drawRow(reinterpret_cast<QRgb *>(picture.scanLine(y)), picture.width(), data.constData() + y * rowBytes);
    }
    return picture;
}
