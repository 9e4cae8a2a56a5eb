// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingschange.h"

#include "descriptorlist.h"
#include "report.h"

#include <textprintersettings.h>

namespace printsrv {

namespace {

QVariant shownValue(const PrinterSettings &settings, const QString &group, const QString &key)
{
    const QVariantList list = settings.toList();
    const int index = indexOf(list, group, key);
    return index < 0 ? QVariant() : valueOf(list.at(index).toMap());
}

QString foreignGroup(const PrinterSettings &settings, const QString &group, const QString &key)
{
    if (shownValue(settings, PrinterSettings::SECTION, key).isValid()) {
        return QStringLiteral("it stands in the group '%1'").arg(PrinterSettings::SECTION);
    }
    const QString printer = settings.printerId();
    return printer.isEmpty()
        ? QStringLiteral("no printer is chosen, so that the group '%1' is nobody's; set printerName first").arg(group)
        : QStringLiteral("the group '%1' is not the current printer's, which is '%2'").arg(group, printer);
}

QString unknownKey(const PrinterSettings &settings, const QString &group, const QString &key)
{
    if (dynamic_cast<const TextPrinterSettings *>(&settings) == nullptr || group == PrinterSettings::SECTION) {
        return QStringLiteral("unknown key");
    }
    if (key == TextPrinterSettings::PRINTER_CODEC || key == TextPrinterSettings::PRINT_AS_IMAGE) {
        return QStringLiteral("'%1' does not have this setting").arg(group);
    }
    return key == TextPrinterSettings::DEFAULT_FONT ? QStringLiteral("it applies only while printAsImage is 1")
                                                    : QStringLiteral("unknown key");
}

// The value in the type of the one shown; invalid when it is no such value.
QVariant converted(const QVariant &value, const QVariant &shown)
{
    bool isRight = true;
    const QString text = value.toString();
    switch (shown.userType()) {
    case QMetaType::Int:
        return text.toInt(&isRight), isRight ? QVariant(text.toInt()) : QVariant();
    case QMetaType::Double:
        return text.toDouble(&isRight), isRight ? QVariant(text.toDouble()) : QVariant();
    case QMetaType::Bool:
        isRight = QStringList{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("false"), QStringLiteral("true")}
                      .contains(text);
        return isRight ? QVariant(QVariant(text).toBool()) : QVariant();
    default:
        return text;
    }
}

bool isTimeout(const QString &key)
{
    return key == PrinterSettings::REMOTE_FR_PRINT_TIMEOUT || key == PrinterSettings::REMOTE_FR_TEST_TIMEOUT;
}

// Applies a value of the right kind, and takes it back when the settings made something else of it.
ChangeResult store(PrinterSettings &settings, const QVariantMap &descriptor, const QVariant &before)
{
    const QString group = groupOf(descriptor);
    const QString key = keyOf(descriptor);
    const QVariant wanted = valueOf(descriptor);
    const LibrarySilence silence; // what it refuses is told here
    const bool isTaken = settings.setValue(descriptor);
    const QVariant after = shownValue(settings, group, key);
    if (isTaken && after == wanted) {
        return {true, {}, descriptor};
    }
    if (isTaken && isTimeout(key)) {
        const QString note = QStringLiteral("%1 is outside 1000 to 30000 and is stored as %2")
                                 .arg(wanted.toString(), after.toString());
        return {true, note, makeDescriptor(group, key, after)};
    }
    settings.setValue(makeDescriptor(group, key, before));
    return {false, QStringLiteral("%1 is not possible, it stays %2").arg(wanted.toString(), before.toString()), {}};
}

} // namespace

ChangeResult applyChange(PrinterSettings &settings, const QVariantMap &descriptor)
{
    const QString group = groupOf(descriptor);
    const QString key = keyOf(descriptor);
    for (const char *member : {"group", "key"}) {
        if (!descriptor.contains(QLatin1String(member))) {
            return {false, QStringLiteral("the descriptor has no \"%1\"").arg(QLatin1String(member)), {}};
        }
    }
    if (group != PrinterSettings::SECTION && group != settings.printerId()) {
        return {false, foreignGroup(settings, group, key), {}};
    }
    const QVariant before = shownValue(settings, group, key);
    if (!before.isValid()) {
        return {false, unknownKey(settings, group, key), {}};
    }
    const QVariant value = converted(valueOf(descriptor), before);
    if (!value.isValid()) {
        const QString kind = before.userType() == QMetaType::Int ? QStringLiteral("a whole number")
            : before.userType() == QMetaType::Double             ? QStringLiteral("a number")
                                                                 : QStringLiteral("0 or 1");
        return {false, QStringLiteral("'%1' is not %2").arg(valueOf(descriptor).toString(), kind), {}};
    }
    return store(settings, makeDescriptor(group, key, value), before);
}

} // namespace printsrv
