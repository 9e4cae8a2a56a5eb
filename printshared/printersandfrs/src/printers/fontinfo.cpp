// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerinfo.h"

#include <QDebug>

namespace {

const QLatin1String KeyId("id");
const QLatin1String KeyWidth("width");
const QLatin1String KeyHeight("height");
const QLatin1String KeyMwidth("mwidth");
const QLatin1String KeyMheight("mheight");
const QLatin1String KeyMonospace("monospace");
const QLatin1String KeyCustomSymbols("customSymbols");
const QLatin1String KeyCustomWidth("customWidth");
const QLatin1String KeyCustomHeight("customHeight");

quint8 toByte(const QVariant &value)
{
    return static_cast<quint8>(value.toUInt());
}

} // namespace

FontInfo::FontInfo(const QVariantMap &map)
{
    setMap(map);
}

// Contract: customHeight is left out here, though the constructors copy it.
FontInfo &FontInfo::operator=(const FontInfo &other) noexcept
{
    m_id = other.m_id;
    m_width = other.m_width;
    m_height = other.m_height;
    m_mwidth = other.m_mwidth;
    m_mheight = other.m_mheight;
    m_monospace = other.m_monospace;
    m_customSymbols = other.m_customSymbols;
    m_customWidth = other.m_customWidth;
    return *this;
}

FontInfo &FontInfo::operator=(FontInfo &&other) noexcept
{
    return *this = static_cast<const FontInfo &>(other);
}

qint8 FontInfo::id() const
{
    return m_id;
}

void FontInfo::setId(qint8 id)
{
    m_id = id;
}

quint8 FontInfo::width() const
{
    return m_width;
}

void FontInfo::setWidth(quint8 width)
{
    m_width = width;
}

quint8 FontInfo::height() const
{
    return m_height;
}

void FontInfo::setHeight(quint8 height)
{
    m_height = height;
}

double FontInfo::mwidth() const
{
    return m_mwidth;
}

void FontInfo::setMwidth(double mwidth)
{
    m_mwidth = mwidth;
}

double FontInfo::mheight() const
{
    return m_mheight;
}

void FontInfo::setMheight(double mheight)
{
    m_mheight = mheight;
}

bool FontInfo::monospace() const
{
    return m_monospace;
}

void FontInfo::setMonospace(bool monospace)
{
    m_monospace = monospace;
}

bool FontInfo::customSymbols() const
{
    return m_customSymbols;
}

void FontInfo::setCustomSymbols(bool customSymbols)
{
    m_customSymbols = customSymbols;
}

quint8 FontInfo::customWidth() const
{
    return m_customWidth;
}

void FontInfo::setCustomWidth(quint8 customWidth)
{
    m_customWidth = customWidth;
}

quint8 FontInfo::customHeight() const
{
    return m_customHeight;
}

void FontInfo::setCustomHeight(quint8 customHeight)
{
    m_customHeight = customHeight;
}

QString FontInfo::idAsString() const
{
    return QString::number(m_id);
}

void FontInfo::setMap(const QVariantMap &map)
{
    m_id = static_cast<qint8>(map.value(KeyId).toInt());
    m_width = toByte(map.value(KeyWidth));
    m_height = toByte(map.value(KeyHeight));
    m_mwidth = map.value(KeyMwidth).toDouble();
    m_mheight = map.value(KeyMheight).toDouble();
    m_monospace = map.value(KeyMonospace).toBool();
    m_customSymbols = map.value(KeyCustomSymbols).toBool();
    m_customWidth = m_customSymbols ? toByte(map.value(KeyCustomWidth)) : quint8(0);
    m_customHeight = m_customSymbols ? toByte(map.value(KeyCustomHeight)) : quint8(0);
}

QVariantMap FontInfo::toMap() const
{
    QVariantMap map{
        {KeyWidth, int(m_width)}, {KeyHeight, int(m_height)},  {KeyMwidth, m_mwidth},
        {KeyMheight, m_mheight},  {KeyMonospace, m_monospace}, {KeyCustomSymbols, m_customSymbols},
    };
    if (m_customSymbols) {
        map.insert(KeyCustomWidth, int(m_customWidth));
        map.insert(KeyCustomHeight, int(m_customHeight));
    }
    return map;
}

bool FontInfo::operator==(const FontInfo &other) const
{
    return m_id == other.m_id && m_width == other.m_width && m_height == other.m_height && m_mwidth == other.m_mwidth
        && m_mheight == other.m_mheight && m_monospace == other.m_monospace && m_customSymbols == other.m_customSymbols
        && m_customWidth == other.m_customWidth && m_customHeight == other.m_customHeight;
}

bool FontInfo::operator!=(const FontInfo &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const FontInfo &font)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "FontInfo(" << font.idAsString().toInt() << ", " << font.width() << 'x' << font.height()
                    << " dots, " << font.mwidth() << 'x' << font.mheight() << " mm, monospace " << font.monospace()
                    << ", customSymbols " << font.customSymbols() << ' ' << font.customWidth() << 'x'
                    << font.customHeight() << ')';
    return debug;
}
