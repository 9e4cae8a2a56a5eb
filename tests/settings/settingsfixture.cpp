// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingsfixture.h"

#include <systemprintersettings.h>
#include <textprintersettings.h>

namespace {

void resetText()
{
    TextPrinterSettings settings;
    settings.setPrinterId(QString());
    settings.setPortSettings(QString(), RS232Settings());
    settings.setPrinterType(0);
    settings.setEmptyStringsAtEnd(5);
    settings.setSpacesBeforeString(0);
    settings.setPaperLoopFlag(PaperLoopAsConfigured);
    settings.setCheckMovingTo(50);
    settings.setCharactersMode(IPrintDeviceSettings::CharactersAsWritten);
    settings.setPortLoggingEnabled(false);
    settings.setFrPrintTout(10000);
    settings.setFrSrvTestTout(5000);
    settings.setPaperTypeId(0);
    settings.setCodec(QStringLiteral("cp866"));
    settings.setDefaultFont(QString());
    settings.setPrintAsImage(false);
}

void resetSystem()
{
    SystemPrinterSettings settings;
    constexpr int baseEntries = 16;
    const QVariantList list = settings.toList().mid(baseEntries);
    for (const QVariant &element : list) {
        QVariantMap map = element.toMap();
        map[QStringLiteral("value")] = QString();
        settings.setValue(map);
    }
    settings.setPrinterMode(QString(), QPrinter::PrinterResolution);
    settings.setFullJustifyAlign(QString(), true);
}

} // namespace

QVariantMap SettingsFixture::descriptor(const QString &group, const QString &key, const QVariant &value)
{
    return {{QStringLiteral("group"), group}, {QStringLiteral("key"), key}, {QStringLiteral("value"), value}};
}

QStringList SettingsFixture::described(const QVariantList &list)
{
    QStringList lines;
    for (const QVariant &element : list) {
        const QVariantMap map = element.toMap();
        const QVariant value = map.value(QStringLiteral("value"));
        const QString group = map.value(QStringLiteral("group")).toString();
        const QString key = map.value(QStringLiteral("key")).toString();
        const QString note = map.size() == 3 ? QString() : QStringLiteral(" with other keys");
        lines.append(QStringLiteral("%1 %2 %3 %4").arg(group, key, QLatin1String(value.typeName()), value.toString())
                     + note);
    }
    return lines;
}

QVariant SettingsFixture::shown(const QVariantList &list, const QString &key)
{
    for (const QVariant &element : list) {
        if (element.toMap().value(QStringLiteral("key")).toString() == key) {
            return element.toMap().value(QStringLiteral("value"));
        }
    }
    return {};
}

void SettingsFixture::init()
{
    TestFixture::init();
    resetSystem();
    resetText();
}
