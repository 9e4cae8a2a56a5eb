// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerinfo.h"

#include <QDebug>

#include <algorithm>

namespace {

const QLatin1String KeyId("id");
const QLatin1String KeyName("name");
const QLatin1String KeyInterface("interface");
const QLatin1String KeyResolution("resolution");
const QLatin1String KeyPaperTypes("paperTypes");
const QLatin1String KeyFontTypes("fontTypes");

struct Flag
{
    const char *writtenKey;
    const char *readKey;
    bool (PrinterInfo::*get)() const;
    void (PrinterInfo::*set)(bool);
};

// Contract: customSymbols and ejection are read from other keys than they are written to.
constexpr Flag Flags[] = {
    {"doubleWidth", "doubleWidth", &PrinterInfo::doubleWidth, &PrinterInfo::setDoubleWidth},
    {"doubleHeight", "doubleHeight", &PrinterInfo::doubleHeight, &PrinterInfo::setDoubleHeight},
    {"bold", "bold", &PrinterInfo::bold, &PrinterInfo::setBold},
    {"italic", "italic", &PrinterInfo::italic, &PrinterInfo::setItalic},
    {"underline", "underline", &PrinterInfo::underline, &PrinterInfo::setUnderline},
    {"inversion", "inversion", &PrinterInfo::inversion, &PrinterInfo::setInversion},
    {"alignCenter", "alignCenter", &PrinterInfo::alignCenter, &PrinterInfo::setAlignCenter},
    {"alignRight", "alignRight", &PrinterInfo::alignRight, &PrinterInfo::setAlignRight},
    {"alignLeft", "alignLeft", &PrinterInfo::alignLeft, &PrinterInfo::setAlignLeft},
    {"alignJustify", "alignJustify", &PrinterInfo::alignJustify, &PrinterInfo::setAlignJustify},
    {"customSymbols", "customImages", &PrinterInfo::customSymbols, &PrinterInfo::setCustomSymbols},
    {"customImages", "customImages", &PrinterInfo::customImages, &PrinterInfo::setCustomImages},
    {"lineSpacing", "lineSpacing", &PrinterInfo::lineSpacing, &PrinterInfo::setLineSpacing},
    {"retraction", "retraction", &PrinterInfo::retraction, &PrinterInfo::setRetraction},
    {"ejection", "ejection_", &PrinterInfo::ejection, &PrinterInfo::setEjection},
    {"retractTimeout", "retractTimeout", &PrinterInfo::retractTimeout, &PrinterInfo::setRetractTimeout},
    {"paperLoopSupported", "paperLoopSupported", &PrinterInfo::paperLoopSupported, &PrinterInfo::setPaperLoopSupported},
    {"checkMoveSettings", "checkMoveSettings", &PrinterInfo::checkMoveSettingsSupported,
     &PrinterInfo::setCheckMoveSettingsSupported},
};

QVariantMap withId(const QString &key, const QVariant &body)
{
    QVariantMap map = body.toMap();
    map.insert(KeyId, key.toUInt());
    return map;
}

} // namespace

const QString PrinterInfo::RC_INFO_FILENAME = QStringLiteral(":/printinfo/printers.info");

PrinterInfo::PrinterInfo(const QVariantMap &map)
{
    setMap(map);
}

QString PrinterInfo::id() const
{
    return m_id;
}

void PrinterInfo::setId(const QString &id)
{
    m_id = id;
}

QString PrinterInfo::name() const
{
    return m_name;
}

void PrinterInfo::setName(const QString &name)
{
    m_name = name;
}

QString PrinterInfo::interface() const
{
    return m_interface;
}

void PrinterInfo::setInterface(const QString &interface)
{
    m_interface = interface;
}

bool PrinterInfo::doubleWidth() const
{
    return m_doubleWidth;
}

void PrinterInfo::setDoubleWidth(bool doubleWidth)
{
    m_doubleWidth = doubleWidth;
}

bool PrinterInfo::doubleHeight() const
{
    return m_doubleHeight;
}

void PrinterInfo::setDoubleHeight(bool doubleHeight)
{
    m_doubleHeight = doubleHeight;
}

bool PrinterInfo::bold() const
{
    return m_bold;
}

void PrinterInfo::setBold(bool bold)
{
    m_bold = bold;
}

bool PrinterInfo::italic() const
{
    return m_italic;
}

void PrinterInfo::setItalic(bool italic)
{
    m_italic = italic;
}

bool PrinterInfo::underline() const
{
    return m_underline;
}

void PrinterInfo::setUnderline(bool underline)
{
    m_underline = underline;
}

bool PrinterInfo::inversion() const
{
    return m_inversion;
}

void PrinterInfo::setInversion(bool inversion)
{
    m_inversion = inversion;
}

bool PrinterInfo::alignCenter() const
{
    return m_alignCenter;
}

void PrinterInfo::setAlignCenter(bool alignCenter)
{
    m_alignCenter = alignCenter;
}

bool PrinterInfo::alignRight() const
{
    return m_alignRight;
}

void PrinterInfo::setAlignRight(bool alignRight)
{
    m_alignRight = alignRight;
}

bool PrinterInfo::alignLeft() const
{
    return m_alignLeft;
}

void PrinterInfo::setAlignLeft(bool alignLeft)
{
    m_alignLeft = alignLeft;
}

bool PrinterInfo::alignJustify() const
{
    return m_alignJustify;
}

void PrinterInfo::setAlignJustify(bool alignJustify)
{
    m_alignJustify = alignJustify;
}

bool PrinterInfo::customSymbols() const
{
    return m_customSymbols;
}

void PrinterInfo::setCustomSymbols(bool customSymbols)
{
    m_customSymbols = customSymbols;
}

bool PrinterInfo::customImages() const
{
    return m_customImages;
}

void PrinterInfo::setCustomImages(bool customImages)
{
    m_customImages = customImages;
}

bool PrinterInfo::lineSpacing() const
{
    return m_lineSpacing;
}

void PrinterInfo::setLineSpacing(bool lineSpacing)
{
    m_lineSpacing = lineSpacing;
}

bool PrinterInfo::retraction() const
{
    return m_retraction;
}

void PrinterInfo::setRetraction(bool retraction)
{
    m_retraction = retraction;
}

bool PrinterInfo::ejection() const
{
    return m_ejection;
}

void PrinterInfo::setEjection(bool ejection)
{
    m_ejection = ejection;
}

bool PrinterInfo::retractTimeout() const
{
    return m_retractTimeout;
}

void PrinterInfo::setRetractTimeout(bool retractTimeout)
{
    m_retractTimeout = retractTimeout;
}

qint32 PrinterInfo::resolution() const
{
    return m_resolution;
}

void PrinterInfo::setResolution(qint32 resolution)
{
    m_resolution = resolution;
}

bool PrinterInfo::paperLoopSupported() const
{
    return m_paperLoopSupported;
}

void PrinterInfo::setPaperLoopSupported(bool paperLoopSupported)
{
    m_paperLoopSupported = paperLoopSupported;
}

bool PrinterInfo::checkMoveSettingsSupported() const
{
    return m_checkMoveSettingsSupported;
}

void PrinterInfo::setCheckMoveSettingsSupported(bool checkMoveSettingsSupported)
{
    m_checkMoveSettingsSupported = checkMoveSettingsSupported;
}

QMap<int, PaperInfo> PrinterInfo::paperTypes() const
{
    return m_paperTypes;
}

void PrinterInfo::setPaperTypes(const QMap<int, PaperInfo> &paperTypes)
{
    m_paperTypes = paperTypes;
}

QList<FontInfo> PrinterInfo::fontTypes() const
{
    return m_fontTypes;
}

void PrinterInfo::setFontTypes(const QList<FontInfo> &fontTypes)
{
    m_fontTypes = fontTypes;
}

void PrinterInfo::addPaperType(const PaperInfo &paper)
{
    m_paperTypes.insert(paper.id(), paper);
}

PaperInfo PrinterInfo::paperType(int id) const
{
    if (m_paperTypes.isEmpty()) {
        return {};
    }
    return m_paperTypes.value(qBound(m_paperTypes.firstKey(), id, m_paperTypes.lastKey()));
}

void PrinterInfo::addFontType(const FontInfo &font)
{
    m_fontTypes.append(font);
}

void PrinterInfo::setMap(const QVariantMap &map)
{
    m_id = map.value(KeyId).toString();
    m_name = map.value(KeyName).toString();
    m_interface = map.value(KeyInterface).toString();
    m_resolution = map.value(KeyResolution).toInt();
    for (const Flag &flag : Flags) {
        (this->*flag.set)(map.value(QLatin1String(flag.readKey)).toBool());
    }
    paperFromMap(map.value(KeyPaperTypes).toMap());
    fontFromMap(map.value(KeyFontTypes).toMap());
}

QVariantMap PrinterInfo::toMap() const
{
    QVariantMap map{
        {KeyId, m_id},
        {KeyName, m_name},
        {KeyInterface, m_interface},
        {KeyResolution, m_resolution},
        {KeyPaperTypes, paperToMap()},
        {KeyFontTypes, fontToMap()},
    };
    for (const Flag &flag : Flags) {
        map.insert(QLatin1String(flag.writtenKey), (this->*flag.get)());
    }
    return map;
}

void PrinterInfo::paperFromMap(const QVariantMap &map)
{
    m_paperTypes.clear();
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        addPaperType(PaperInfo(withId(entry.key(), entry.value())));
    }
}

QVariantMap PrinterInfo::paperToMap() const
{
    QVariantMap map;
    for (const PaperInfo &paper : m_paperTypes) {
        map.insert(paper.idAsString(), paper.toMap());
    }
    return map;
}

void PrinterInfo::fontFromMap(const QVariantMap &map)
{
    m_fontTypes.clear();
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        addFontType(FontInfo(withId(entry.key(), entry.value())));
    }
}

QVariantMap PrinterInfo::fontToMap() const
{
    QVariantMap map;
    for (const FontInfo &font : m_fontTypes) {
        map.insert(font.idAsString(), font.toMap());
    }
    return map;
}

bool PrinterInfo::operator==(const PrinterInfo &other) const
{
    const auto isSame = [&](const Flag &flag) {
        return (this->*flag.get)() == (other.*flag.get)();
    };
    return m_id == other.m_id && m_name == other.m_name && m_interface == other.m_interface
        && m_resolution == other.m_resolution && std::all_of(std::begin(Flags), std::end(Flags), isSame);
}

bool PrinterInfo::operator!=(const PrinterInfo &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const PrinterInfo &printer)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "PrinterInfo(" << printer.id() << ", " << printer.name() << ", " << printer.paperTypes().size()
                    << " paper types, " << printer.fontTypes().size() << " font types)";
    return debug;
}
