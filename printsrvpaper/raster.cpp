// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "raster.h"

#include <cstring>

namespace printsrv {

Raster::Raster(int width, int height)
    : m_width(qMax(0, width))
    , m_height(qMax(0, height))
    , m_rowBytes((m_width + 7) / 8)
    , m_bits(m_rowBytes * m_height, '\0')
{
}

// Copies whole rows; the data of an image can be shorter than its size says, and its padding can hold dots.
Raster::Raster(const MonochromeImage &image)
    : Raster(image.width(), image.height())
{
    const QByteArray data = image.image();
    std::memcpy(m_bits.data(), data.constData(), static_cast<size_t>(qMin(data.size(), m_bits.size())));
    for (int y = 0; y < m_height; ++y) {
        clearPadding(reinterpret_cast<uchar *>(m_bits.data()) + qptrdiff(y) * m_rowBytes);
    }
}

int Raster::width() const
{
    return m_width;
}

int Raster::height() const
{
    return m_height;
}

bool Raster::dot(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return false;
    }
    return (m_bits.at(y * m_rowBytes + x / 8) & (0x80 >> (x % 8))) != 0;
}

void Raster::setDot(int x, int y)
{
    fill(x, y, 1, 1);
}

void Raster::fill(int x, int y, int width, int height)
{
    const int right = qMin(x + width, m_width);
    const int bottom = qMin(y + height, m_height);
    for (int row = qMax(0, y); row < bottom; ++row) {
        char *bits = m_bits.data() + qptrdiff(row) * m_rowBytes;
        for (int column = qMax(0, x); column < right; ++column) {
            bits[column / 8] = static_cast<char>(bits[column / 8] | (0x80 >> (column % 8)));
        }
    }
}

void Raster::draw(const Raster &other, int x, int y)
{
    if (x >= m_width || x + other.m_width <= 0) {
        return;
    }
    const auto *source = reinterpret_cast<const uchar *>(other.m_bits.constData());
    auto *target = reinterpret_cast<uchar *>(m_bits.data());
    const int last = qMin(other.m_height, m_height - y);
    for (int row = qMax(0, -y); row < last; ++row) {
        drawRow(source + qptrdiff(row) * other.m_rowBytes, other.m_rowBytes, x,
                target + qptrdiff(y + row) * m_rowBytes);
    }
}

// Each byte of the source falls on two bytes of the row; an index outside of the row is left away.
void Raster::drawRow(const uchar *source, int sourceBytes, int x, uchar *target) const
{
    const int shift = x & 7;
    const int first = (x - shift) / 8;
    const int end = qMin(sourceBytes, m_rowBytes - first);
    for (int index = qMax(0, -first - 1); index < end; ++index) {
        const int place = first + index;
        const int bits = source[index] << (8 - shift);
        if (place >= 0) {
            target[place] = static_cast<uchar>(target[place] | (bits >> 8));
        }
        if (place + 1 < m_rowBytes) {
            target[place + 1] = static_cast<uchar>(target[place + 1] | (bits & 0xFF));
        }
    }
    clearPadding(target);
}

void Raster::clearPadding(uchar *row) const
{
    if (m_width % 8 != 0) {
        row[m_rowBytes - 1] = static_cast<uchar>(row[m_rowBytes - 1] & (0xFF00 >> (m_width % 8)));
    }
}

void Raster::grow(int rows)
{
    m_bits.append(rows * m_rowBytes, '\0');
    m_height += rows;
}

Raster Raster::inverted() const
{
    Raster result = *this;
    for (char &byte : result.m_bits) {
        byte = static_cast<char>(~byte);
    }
    auto *bits = reinterpret_cast<uchar *>(result.m_bits.data());
    for (int y = 0; y < m_height; ++y) {
        result.clearPadding(bits + qptrdiff(y) * m_rowBytes);
    }
    return result;
}

Raster Raster::scaled(int horizontal, int vertical) const
{
    Raster result(m_width * horizontal, m_height * vertical);
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            if (dot(x, y)) {
                result.fill(x * horizontal, y * vertical, horizontal, vertical);
            }
        }
    }
    return result;
}

Raster Raster::centred(int width, int height) const
{
    Raster result(width, height);
    result.draw(*this, (width - m_width) / 2, (height - m_height) / 2);
    return result;
}

QImage Raster::toImage() const
{
    QImage image(m_width, m_height, QImage::Format_Mono);
    if (image.isNull()) {
        return image;
    }
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    image.fill(0);
    for (int y = 0; y < m_height; ++y) {
        std::memcpy(image.scanLine(y), m_bits.constData() + qptrdiff(y) * m_rowBytes, static_cast<size_t>(m_rowBytes));
    }
    return image;
}

MonochromeImage Raster::toMonochromeImage() const
{
    MonochromeImage image;
    image.setWidth(m_width);
    image.setHeight(m_height);
    image.setImage(m_bits);
    return image;
}

} // namespace printsrv
