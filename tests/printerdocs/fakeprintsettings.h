// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FAKEPRINTSETTINGS_H
#define PRINTSRV_FAKEPRINTSETTINGS_H

#include "iprintdevicesettings.h"

/** Settings with a characters mode and nothing else. */
class FakePrintSettings : public IPrintDeviceSettings
{
public:
    explicit FakePrintSettings(ECharactersMode mode)
        : m_mode(mode)
    {
    }

    QSharedPointer<RS232Settings> port(const QString &) const override
    {
        return {};
    }
    QSharedPointer<RS232Settings> port() const override
    {
        return {};
    }
    unsigned int printerType() const override
    {
        return 0;
    }
    void setPrinterType(unsigned int) override
    {
    }
    QString printerId() const override
    {
        return {};
    }
    void setPrinterId(const QString &) override
    {
    }
    bool portLoggingEnabled() const override
    {
        return false;
    }
    void setPortLoggingEnabled(bool) override
    {
    }
    int emptyStringsAtEnd() const override
    {
        return 0;
    }
    void setEmptyStringsAtEnd(int) override
    {
    }
    int spacessBeforeString() const override
    {
        return 0;
    }
    void setSpacesBeforeString(int) override
    {
    }
    ECharactersMode charactersMode() const override
    {
        return m_mode;
    }
    void setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode) override
    {
        m_mode = mode;
    }

private:
    ECharactersMode m_mode;
};

/** Registers settings with a characters mode for its life; nothing is registered before and after it. */
class RegisteredMode
{
public:
    explicit RegisteredMode(int mode)
    {
        using Settings = IPrintDeviceSettings;
        const auto settings = QSharedPointer<FakePrintSettings>::create(static_cast<Settings::ECharactersMode>(mode));
        Settings::setPrintDeviceSettings(settings);
    }
    ~RegisteredMode()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
    }
    Q_DISABLE_COPY_MOVE(RegisteredMode)
};

#endif
