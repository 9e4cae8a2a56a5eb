// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "otherdevices.h"

#include <QFile>

#include <algorithm>
#include <iterator>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace printsrv {

namespace {

struct Property
{
    const char *name;
    const char *what;
};

// Set to "1" by the rules that name a modem's ports. That a modem manager would look at a port says nothing.
constexpr Property Properties[] = {
    {"ID_MM_PORT_TYPE_AT_PRIMARY", "a modem"},
    {"ID_MM_PORT_TYPE_AT_SECONDARY", "a modem"},
    {"ID_MM_PORT_TYPE_QCDM", "a modem"},
    {"ID_MM_PORT_TYPE_GPS", "a GPS receiver"},
};

struct Vendor
{
    quint16 id;
    const char *what;
};

// Makers that build nothing but the one kind of device, from the public list of USB ids.
constexpr Vendor Vendors[] = {
    {0x091E, "a GPS receiver"}, // Garmin
    {0x1546, "a GPS receiver or modem"}, // u-blox
    {0x1199, "a modem"}, // Sierra Wireless
    {0x12D1, "a modem"}, // Huawei
    {0x19D2, "a modem"}, // ZTE
    {0x1BC7, "a modem"}, // Telit
    {0x1E2D, "a modem"}, // Gemalto
    {0x2C7C, "a modem"}, // Quectel
};

QString byProperty(const UdevProperties &properties)
{
    const auto *found = std::find_if(std::begin(Properties), std::end(Properties), [&](const Property &property) {
        return properties.value(QLatin1String(property.name)) == QLatin1String("1");
    });
    return found == std::end(Properties) ? QString() : QLatin1String(found->what);
}

QString byVendor(quint16 vendor)
{
    const auto *found
        = std::find_if(std::begin(Vendors), std::end(Vendors), [=](const Vendor &known) { return known.id == vendor; });
    return found == std::end(Vendors) ? QString() : QLatin1String(found->what);
}

} // namespace

UdevProperties udevProperties(const QString &location)
{
    struct stat status = {};
    if (stat(QFile::encodeName(location).constData(), &status) != 0 || !S_ISCHR(status.st_mode)) {
        return {};
    }
    QFile file(QStringLiteral("/run/udev/data/c%1:%2").arg(major(status.st_rdev)).arg(minor(status.st_rdev)));
    UdevProperties properties;
    if (!file.open(QIODevice::ReadOnly)) {
        return properties;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("E:"))) {
            properties.insert(line.mid(2).section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1));
        }
    }
    return properties;
}

QString otherDevice(const QSerialPortInfo &info, const UdevProperties &properties)
{
    const QString known = byProperty(properties);
    if (!known.isEmpty() || !info.hasVendorIdentifier()) {
        return known;
    }
    return byVendor(info.vendorIdentifier());
}

} // namespace printsrv
