// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "checktemplatessettings.h"

#include "descriptor.h"
#include "printsrvsettings.h"
#include "settingslocker.h"

using printsrv::Descriptor;
using printsrv::SettingsLocker;

const QString CheckTemplatesSettings::SECTION = QStringLiteral("CHECK_TEMPLATES");
const QString CheckTemplatesSettings::CHECK_TEMPLATES_PATH = QStringLiteral("checkTemplatesPath");
const QString CheckTemplatesSettings::SPEC_SYMBOLS_PATH = QStringLiteral("specsymbolsPath");
const QString CheckTemplatesSettings::Z_TEMPLATES_PATH = QStringLiteral("z_templatesPath");
const QString CheckTemplatesSettings::FISCAL_TEMPLATES_PATH = QStringLiteral("fiscalTemplatesPath");
const QString CheckTemplatesSettings::DEFAULT_CHECK_TEMPLATE = QStringLiteral("defaultCheckTemplate");

QMutex CheckTemplatesSettings::_settingsMutex;
QString CheckTemplatesSettings::_checkTemplatesPath;
QString CheckTemplatesSettings::_defaultCheckTemplate = QStringLiteral("default.cpt");

CheckTemplatesSettings::CheckTemplatesSettings() = default;

CheckTemplatesSettings::~CheckTemplatesSettings() = default;

QString CheckTemplatesSettings::checkTemplatesPath() const
{
    const SettingsLocker locker(_settingsMutex);
    if (_checkTemplatesPath.isEmpty()) {
        return PrintSrvSettings().workDir() + QLatin1String("/templates");
    }
    return _checkTemplatesPath;
}

void CheckTemplatesSettings::setCheckTemplatesPath(const QString &path)
{
    const SettingsLocker locker(_settingsMutex);
    _checkTemplatesPath = path;
}

QString CheckTemplatesSettings::defaultCheckTemplate() const
{
    const SettingsLocker locker(_settingsMutex);
    return _defaultCheckTemplate;
}

void CheckTemplatesSettings::setDefaultCheckTemplate(const QString &fileName)
{
    const SettingsLocker locker(_settingsMutex);
    _defaultCheckTemplate = fileName;
}

QVariantList CheckTemplatesSettings::toList() const
{
    const SettingsLocker locker(_settingsMutex);
    return {Descriptor{SECTION, CHECK_TEMPLATES_PATH, _checkTemplatesPath}.toMap(),
            Descriptor{SECTION, DEFAULT_CHECK_TEMPLATE, _defaultCheckTemplate}.toMap()};
}

bool CheckTemplatesSettings::setValue(const QVariantMap &descriptor)
{
    const SettingsLocker locker(_settingsMutex);
    return storeDescriptor(descriptor);
}

void CheckTemplatesSettings::setList(const QVariantList &list)
{
    const SettingsLocker locker(_settingsMutex);
    for (const QVariant &element : list) {
        storeDescriptor(element.toMap());
    }
}

// The caller holds the mutex.
bool CheckTemplatesSettings::storeDescriptor(const QVariantMap &map)
{
    const Descriptor descriptor = Descriptor::fromMap(map);
    const bool isPath = descriptor.key == CHECK_TEMPLATES_PATH;
    const bool isKnown = isPath || descriptor.key == DEFAULT_CHECK_TEMPLATE;
    if (descriptor.group != SECTION || !isKnown) {
        return false;
    }
    (isPath ? _checkTemplatesPath : _defaultCheckTemplate) = descriptor.value.toString();
    return true;
}
