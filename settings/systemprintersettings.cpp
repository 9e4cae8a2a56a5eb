// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "systemprintersettings.h"

#include "descriptor.h"
#include "settingslocker.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <array>

using namespace printsrv;

namespace {

constexpr int FontPoints = 14;

bool isKnownUnit(int unit)
{
    return unit >= ISystemPrinterSettings::UnitMillimeter && unit <= ISystemPrinterSettings::UnitCicero;
}

bool isKnownMode(int mode)
{
    return mode >= QPrinter::ScreenResolution && mode <= QPrinter::HighResolution;
}

// Qt's units of page layouts and of page sizes have the numbers of ours, 0 being millimetres.
template<typename QtUnit>
QtUnit knownUnit(ISystemPrinterSettings::Unit unit)
{
    return static_cast<QtUnit>(isKnownUnit(unit) ? unit : ISystemPrinterSettings::UnitMillimeter);
}

QFont fixedPitchFont()
{
    const QString monospace = QStringLiteral("Monospace");
    // The font database ends the process when there is no QGuiApplication.
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()) == nullptr) {
        return QFont(monospace);
    }
    const QFontDatabase database;
    const QStringList families = database.families(QFontDatabase::Cyrillic);
    if (families.contains(monospace)) {
        return QFont(monospace);
    }
    const auto fixed = std::find_if(families.begin(), families.end(),
                                    [&](const QString &family) { return database.isFixedPitch(family); });
    return fixed == families.end() ? QFont() : QFont(*fixed);
}

QVariant shown(const QString &text)
{
    return text;
}

QVariant shown(double length)
{
    return length;
}

QVariant shown(bool isSet)
{
    return isSet;
}

QVariant shown(int number)
{
    return number;
}

template<auto Source>
QVariant read()
{
    return shown(*Source);
}

template<auto Source>
QVariant readFlag()
{
    return *Source ? 1 : 0;
}

QString textFrom(const QVariant &value)
{
    return value.toString();
}

double lengthFrom(const QVariant &value)
{
    return value.toDouble();
}

bool boolFrom(const QVariant &value)
{
    return value.toBool();
}

bool flagFrom(const QVariant &value)
{
    return value.toInt() != 0;
}

template<typename Integer>
Integer integerFrom(const QVariant &value)
{
    return static_cast<Integer>(value.toInt());
}

template<auto Target, auto Convert>
void write(const QVariant &value)
{
    *Target = Convert(value);
}

} // namespace

const QString SystemPrinterSettings::DEFAULT_FONT = QStringLiteral("defaultFont");
const QString SystemPrinterSettings::UNIT = QStringLiteral("unit");
const QString SystemPrinterSettings::PAGE_SIZE_KEY = QStringLiteral("pageSizeKey");
const QString SystemPrinterSettings::PAGE_WIDTH = QStringLiteral("pageWidth");
const QString SystemPrinterSettings::PAGE_HEIGHT = QStringLiteral("pageHeight");
const QString SystemPrinterSettings::AUTO_PAGE_HEIGHT = QStringLiteral("autoPageHeight");
const QString SystemPrinterSettings::EMPTY_STRINGS = QStringLiteral("emptyStrings");
const QString SystemPrinterSettings::LEFT_MARGIN = QStringLiteral("leftMargin");
const QString SystemPrinterSettings::RIGHT_MARGIN = QStringLiteral("rightMargin");
const QString SystemPrinterSettings::TOP_MARGIN = QStringLiteral("topMargin");
const QString SystemPrinterSettings::BOTTOM_MARGIN = QStringLiteral("bottomMargin");
const QString SystemPrinterSettings::ORIENTATION = QStringLiteral("orientation");
const QString SystemPrinterSettings::PRINTER_MODE = QStringLiteral("printerMode");
const QString SystemPrinterSettings::FULL_JUSTIFY_ALIGN = QStringLiteral("fullJustifyAlignment");

QString SystemPrinterSettings::_defaultFont;
ISystemPrinterSettings::Unit SystemPrinterSettings::_unit = UnitMillimeter;
QString SystemPrinterSettings::_pageSizeKey;
double SystemPrinterSettings::_pageWidgth = 0.0;
double SystemPrinterSettings::_pageHeight = 0.0;
bool SystemPrinterSettings::_autoPageHeight = false;
qint32 SystemPrinterSettings::_emtyStrings = 0;
double SystemPrinterSettings::_leftMargin = 0.0;
double SystemPrinterSettings::_rightMargin = 0.0;
double SystemPrinterSettings::_topMargin = 0.0;
double SystemPrinterSettings::_bottomMargin = 0.0;
ISystemPrinterSettings::Orientation SystemPrinterSettings::_orientation = OrientationPortrait;
qint32 SystemPrinterSettings::_printerMode = QPrinter::PrinterResolution;
bool SystemPrinterSettings::_fullJustifyAlign = true;

// One entry of the descriptor list: its key, and how its value is read and written; the caller holds the mutex.
struct SystemPrinterSettings::Field
{
    const QString *key;
    QVariant (*read)();
    void (*write)(const QVariant &value);
};

SystemPrinterSettings::SystemPrinterSettings() = default;

SystemPrinterSettings::~SystemPrinterSettings() = default;

const std::array<SystemPrinterSettings::Field, 14> &SystemPrinterSettings::fields()
{
    static constexpr std::array<Field, 14> fields{{
        {&DEFAULT_FONT, read<&_defaultFont>, write<&_defaultFont, textFrom>},
        {&UNIT, read<&_unit>, write<&_unit, integerFrom<Unit>>},
        {&PAGE_SIZE_KEY, read<&_pageSizeKey>, write<&_pageSizeKey, textFrom>},
        {&PAGE_WIDTH, read<&_pageWidgth>, write<&_pageWidgth, lengthFrom>},
        {&PAGE_HEIGHT, read<&_pageHeight>, write<&_pageHeight, lengthFrom>},
        {&AUTO_PAGE_HEIGHT, read<&_autoPageHeight>, write<&_autoPageHeight, boolFrom>},
        {&EMPTY_STRINGS, read<&_emtyStrings>, write<&_emtyStrings, integerFrom<qint32>>},
        {&LEFT_MARGIN, read<&_leftMargin>, write<&_leftMargin, lengthFrom>},
        {&RIGHT_MARGIN, read<&_rightMargin>, write<&_rightMargin, lengthFrom>},
        {&TOP_MARGIN, read<&_topMargin>, write<&_topMargin, lengthFrom>},
        {&BOTTOM_MARGIN, read<&_bottomMargin>, write<&_bottomMargin, lengthFrom>},
        {&ORIENTATION, read<&_orientation>, write<&_orientation, integerFrom<Orientation>>},
        {&PRINTER_MODE, read<&_printerMode>, write<&_printerMode, integerFrom<qint32>>},
        {&FULL_JUSTIFY_ALIGN, readFlag<&_fullJustifyAlign>, write<&_fullJustifyAlign, flagFrom>},
    }};
    return fields;
}

// Null for a key of none of them.
const SystemPrinterSettings::Field *SystemPrinterSettings::findField(const QString &key)
{
    const auto found
        = std::find_if(fields().begin(), fields().end(), [&](const Field &field) { return *field.key == key; });
    return found == fields().end() ? nullptr : &*found;
}

QVariantList SystemPrinterSettings::toList() const
{
    QVariantList list = PrinterSettings::toList();
    const SettingsLocker locker(_settingsMutex);
    for (const Field &field : fields()) {
        list.append(Descriptor{_printerId, *field.key, field.read()}.toMap());
    }
    return list;
}

void SystemPrinterSettings::setList(const QVariantList &list)
{
    PrinterSettings::setList(list);
    const SettingsLocker locker(_settingsMutex);
    for (const QVariant &element : list) {
        const Descriptor descriptor = Descriptor::fromMap(element.toMap());
        const bool isAnyGroupTaken = descriptor.key == DEFAULT_FONT; // Contract: unlike in setValue()
        storeDescriptor(descriptor, isAnyGroupTaken ? descriptor.group : _printerId);
    }
}

bool SystemPrinterSettings::setValue(const QVariantMap &map)
{
    if (PrinterSettings::setValue(map)) {
        return true;
    }
    const SettingsLocker locker(_settingsMutex);
    return storeDescriptor(Descriptor::fromMap(map), _printerId);
}

// The caller holds the mutex.
bool SystemPrinterSettings::storeDescriptor(const Descriptor &descriptor, const QString &group)
{
    const Field *field = findField(descriptor.key);
    if (!descriptor.hasGroup || descriptor.group != group || field == nullptr) {
        return false;
    }
    field->write(descriptor.value);
    return true;
}

QFont SystemPrinterSettings::defaultFont(const QString &) const
{
    const QString text = lockedRead(_settingsMutex, _defaultFont);
    QFont font;
    return !text.isEmpty() && font.fromString(text) ? font : prepareDefaultFont();
}

void SystemPrinterSettings::setDefaultFont(const QString &, const QFont &font)
{
    lockedWrite(_settingsMutex, _defaultFont, font.toString());
}

ISystemPrinterSettings::Unit SystemPrinterSettings::unit(const QString &) const
{
    return lockedRead(_settingsMutex, _unit);
}

void SystemPrinterSettings::setUnit(const QString &, Unit unit)
{
    lockedWrite(_settingsMutex, _unit, unit);
}

QString SystemPrinterSettings::pageSizeKey(const QString &) const
{
    return lockedRead(_settingsMutex, _pageSizeKey);
}

void SystemPrinterSettings::setPageSizeKey(const QString &, const QString &key)
{
    lockedWrite(_settingsMutex, _pageSizeKey, key);
}

double SystemPrinterSettings::pageWidgth(const QString &) const
{
    return lockedRead(_settingsMutex, _pageWidgth);
}

void SystemPrinterSettings::setPageWidth(const QString &, double width)
{
    lockedWrite(_settingsMutex, _pageWidgth, width);
}

double SystemPrinterSettings::pageHeight(const QString &) const
{
    return lockedRead(_settingsMutex, _pageHeight);
}

void SystemPrinterSettings::setPageHeight(const QString &, double height)
{
    lockedWrite(_settingsMutex, _pageHeight, height);
}

bool SystemPrinterSettings::autoPageHeight(const QString &) const
{
    return lockedRead(_settingsMutex, _autoPageHeight);
}

void SystemPrinterSettings::setAutoPageHeight(const QString &, bool isAutomatic)
{
    lockedWrite(_settingsMutex, _autoPageHeight, isAutomatic);
}

int SystemPrinterSettings::emtyStrings(const QString &) const
{
    return lockedRead(_settingsMutex, _emtyStrings);
}

void SystemPrinterSettings::setEmptyStrings(const QString &, int count)
{
    lockedWrite(_settingsMutex, _emtyStrings, count);
}

double SystemPrinterSettings::leftMargin(const QString &) const
{
    return lockedRead(_settingsMutex, _leftMargin);
}

void SystemPrinterSettings::setLeftMargin(const QString &, double margin)
{
    lockedWrite(_settingsMutex, _leftMargin, margin);
}

double SystemPrinterSettings::rightMargin(const QString &) const
{
    return lockedRead(_settingsMutex, _rightMargin);
}

void SystemPrinterSettings::setRightMargin(const QString &, double margin)
{
    lockedWrite(_settingsMutex, _rightMargin, margin);
}

double SystemPrinterSettings::topMargin(const QString &) const
{
    return lockedRead(_settingsMutex, _topMargin);
}

void SystemPrinterSettings::setTopMargin(const QString &, double margin)
{
    lockedWrite(_settingsMutex, _topMargin, margin);
}

double SystemPrinterSettings::bottomMargin(const QString &) const
{
    return lockedRead(_settingsMutex, _bottomMargin);
}

void SystemPrinterSettings::setBottomMargin(const QString &, double margin)
{
    lockedWrite(_settingsMutex, _bottomMargin, margin);
}

ISystemPrinterSettings::Orientation SystemPrinterSettings::orientation(const QString &) const
{
    return lockedRead(_settingsMutex, _orientation);
}

void SystemPrinterSettings::setOrientation(const QString &, Orientation orientation)
{
    lockedWrite(_settingsMutex, _orientation, orientation);
}

QPrinter::PrinterMode SystemPrinterSettings::printerMode(const QString &) const
{
    const int mode = lockedRead(_settingsMutex, _printerMode);
    return isKnownMode(mode) ? static_cast<QPrinter::PrinterMode>(mode) : QPrinter::PrinterResolution;
}

void SystemPrinterSettings::setPrinterMode(const QString &, QPrinter::PrinterMode mode)
{
    lockedWrite(_settingsMutex, _printerMode, qint32{mode});
}

bool SystemPrinterSettings::fullJustifyAlign(const QString &) const
{
    return lockedRead(_settingsMutex, _fullJustifyAlign);
}

void SystemPrinterSettings::setFullJustifyAlign(const QString &, bool isJustified)
{
    lockedWrite(_settingsMutex, _fullJustifyAlign, isJustified);
}

QPageLayout::Unit SystemPrinterSettings::pageLayoutUnit(const QString &printer) const
{
    return knownUnit<QPageLayout::Unit>(unit(printer));
}

void SystemPrinterSettings::setPageLayoutUnit(const QString &printer, QPageLayout::Unit unit)
{
    if (isKnownUnit(unit)) {
        setUnit(printer, static_cast<Unit>(unit));
    }
}

QPageSize::Unit SystemPrinterSettings::pageSizeUnit(const QString &printer) const
{
    return knownUnit<QPageSize::Unit>(unit(printer));
}

QPageLayout::Orientation SystemPrinterSettings::pageLayoutOrientation(const QString &printer) const
{
    return orientation(printer) == OrientationLandscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

void SystemPrinterSettings::setPageLayoutOrientation(const QString &printer, QPageLayout::Orientation orientation)
{
    if (orientation == QPageLayout::Portrait || orientation == QPageLayout::Landscape) {
        setOrientation(printer, static_cast<Orientation>(orientation));
    }
}

QFont SystemPrinterSettings::prepareDefaultFont()
{
    QFont font = fixedPitchFont();
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    font.setPointSize(FontPoints);
    return font;
}
