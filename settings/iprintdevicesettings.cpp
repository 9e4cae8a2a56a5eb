// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "iprintdevicesettings.h"

#include "builtinprinters.h"

QSharedPointer<IPrintDeviceSettings> IPrintDeviceSettings::_printDeviceSettings;

IPrintDeviceSettings::~IPrintDeviceSettings() = default;

QSharedPointer<IPrintDeviceSettings> IPrintDeviceSettings::printDeviceSettings()
{
    return _printDeviceSettings;
}

void IPrintDeviceSettings::setPrintDeviceSettings(const QSharedPointer<IPrintDeviceSettings> &settings)
{
    _printDeviceSettings = settings;
}

QSharedPointer<ITextPrinterSettings> IPrintDeviceSettings::textPrinterSettings()
{
    return _printDeviceSettings.dynamicCast<ITextPrinterSettings>();
}

QSharedPointer<ISystemPrinterSettings> IPrintDeviceSettings::systemPrinterSettings()
{
    return _printDeviceSettings.dynamicCast<ISystemPrinterSettings>();
}

ITextPrinterSettings::ITextPrinterSettings()
{
    ITextPrinterSettings::loadAvailablePrinters();
}

ITextPrinterSettings::~ITextPrinterSettings() = default;

QMap<QString, PrinterInfo> ITextPrinterSettings::availablePrinters() const
{
    return _availablePrinters;
}

void ITextPrinterSettings::setAvailablePrinters(const QMap<QString, PrinterInfo> &printers)
{
    _availablePrinters = printers;
}

PrinterInfo ITextPrinterSettings::printerInfo(const QString &printer) const
{
    return _availablePrinters.value(printer);
}

void ITextPrinterSettings::loadAvailablePrinters()
{
    if (_availablePrinters.isEmpty()) {
        _availablePrinters = printsrv::builtInPrinters();
    }
}

ISystemPrinterSettings::~ISystemPrinterSettings() = default;
