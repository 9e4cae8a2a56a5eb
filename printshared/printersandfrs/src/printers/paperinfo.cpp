// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerinfo.h"

#include <QDebug>

namespace {

const QLatin1String KeyId("id");
const QLatin1String KeyWidth("width");
const QLatin1String KeyHeight("height");
const QLatin1String KeyPointsToLine("pointsToLine");
const QLatin1String KeyCaption("caption");

} // namespace

PaperInfo::PaperInfo(const QVariantMap &map)
{
    setMap(map);
}

qint8 PaperInfo::id() const
{
    return m_id;
}

void PaperInfo::setId(qint8 id)
{
    m_id = id;
}

qint16 PaperInfo::width() const
{
    return m_width;
}

void PaperInfo::setWidth(qint16 width)
{
    m_width = width;
}

qint16 PaperInfo::height() const
{
    return m_height;
}

void PaperInfo::setHeight(qint16 height)
{
    m_height = height;
}

qint32 PaperInfo::pointsToLine() const
{
    return m_pointsToLine;
}

void PaperInfo::setPointsToLine(qint32 pointsToLine)
{
    m_pointsToLine = pointsToLine;
}

QString PaperInfo::caption() const
{
    return m_caption;
}

void PaperInfo::setCaption(const QString &caption)
{
    m_caption = caption;
}

QString PaperInfo::idAsString() const
{
    return QString::number(m_id);
}

void PaperInfo::setMap(const QVariantMap &map)
{
    m_id = static_cast<qint8>(map.value(KeyId).toInt());
    m_width = static_cast<qint16>(map.value(KeyWidth).toUInt());
    m_height = static_cast<qint16>(map.value(KeyHeight).toUInt());
    m_pointsToLine = map.value(KeyPointsToLine).toInt();
    m_caption = map.value(KeyCaption).toString();
}

QVariantMap PaperInfo::toMap() const
{
    return {
        {KeyWidth, int(m_width)},
        {KeyHeight, int(m_height)},
        {KeyPointsToLine, m_pointsToLine},
        {KeyCaption, m_caption},
    };
}

bool PaperInfo::operator==(const PaperInfo &other) const
{
    return m_id == other.m_id && m_width == other.m_width && m_height == other.m_height
        && m_pointsToLine == other.m_pointsToLine && m_caption == other.m_caption;
}

bool PaperInfo::operator!=(const PaperInfo &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const PaperInfo &paper)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "PaperInfo(" << paper.idAsString().toInt() << ", " << paper.width() << 'x' << paper.height()
                    << " mm, " << paper.pointsToLine() << " dots, " << paper.caption() << ')';
    return debug;
}
