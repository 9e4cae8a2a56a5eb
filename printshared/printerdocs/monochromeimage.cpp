// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "monochromeimage.h"

#include <new>

namespace {

const QLatin1String WidthKey("w");
const QLatin1String HeightKey("h");
const QLatin1String DataKey("data");
constexpr qint64 LargestEmptyImageBytes = 64LL * 1024 * 1024;

// Zero bytes, or none at all when there is no memory for them.
QByteArray zeroBytes(int count)
{
    try {
        return QByteArray(count, '\0');
    } catch (const std::bad_alloc &) {
        return QByteArray();
    }
}

} // namespace

MonochromeImage::MonochromeImage(const QMap<QString, QVariant> &map)
{
    setMap(map);
}

MonochromeImage MonochromeImage::createEmpty(int width, int height)
{
    MonochromeImage image;
    image.m_height = height;
    image.m_width = width;
    // Contract: the rounding is the wrong way round, whole bytes get one more and broken ones are cut.
    const qint64 rowBytes = width % 8 == 0 ? width / 8 + 1 : width / 8;
    const qint64 bytes = rowBytes * height;
    if (width >= 0 && height >= 0 && bytes <= LargestEmptyImageBytes) {
        image.m_image = zeroBytes(static_cast<int>(bytes));
    }
    return image;
}

int MonochromeImage::width() const
{
    return m_width;
}

void MonochromeImage::setWidth(int width)
{
    m_width = width;
}

int MonochromeImage::height() const
{
    return m_height;
}

void MonochromeImage::setHeight(int height)
{
    m_height = height;
}

QByteArray MonochromeImage::image() const
{
    return m_image;
}

void MonochromeImage::setImage(const QByteArray &image)
{
    m_image = image;
}

bool MonochromeImage::isValid() const
{
    return m_width >= 1 && m_height >= 1 && qint64(m_width) * m_height / 8 <= m_image.size();
}

bool MonochromeImage::pixel(int x, int y, int align) const
{
    if (x < 0 || x >= m_width || y < 0 || y >= m_height || align == 0) {
        return false;
    }
    const qint64 unitsPerRow = qint64(m_width) / align + (qint64(m_width) % align != 0 ? 1 : 0);
    const qint64 index = qint64(align) / 8 * unitsPerRow * y + x / 8;
    if (index < 0 || index >= m_image.size()) {
        return false;
    }
    return (static_cast<uchar>(m_image.at(static_cast<int>(index))) & (0x80 >> (x % 8))) != 0;
}

void MonochromeImage::setMap(const QMap<QString, QVariant> &map)
{
    m_width = map.value(WidthKey).toInt();
    m_height = map.value(HeightKey).toInt();
    m_image = QByteArray::fromBase64(map.value(DataKey).toString().toLatin1());
}

QMap<QString, QVariant> MonochromeImage::toMap() const
{
    return {
        {HeightKey, m_height},
        {WidthKey, m_width},
        {DataKey, QString::fromLatin1(m_image.toBase64())},
    };
}

bool MonochromeImage::operator==(const MonochromeImage &other) const
{
    return m_width == other.m_width && m_height == other.m_height && m_image == other.m_image;
}

bool MonochromeImage::operator!=(const MonochromeImage &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const MonochromeImage &image)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "MonochromeImage(" << image.width() << 'x' << image.height() << ", " << image.image().size()
                    << " bytes)";
    return debug;
}
