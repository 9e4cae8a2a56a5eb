// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_RS232SETTINGS_H
#define ORBEKEXTLIB_RS232SETTINGS_H

#include "portsettings.h"

#include <QVariant>

/**
 * The serial parameters of one port as a section of the terminal's settings.
 *
 * A plain value, shown to a settings editor as a list of descriptors: maps of "group" (the section), "key" and "value".
 * Reentrant.
 */
class Q_DECL_EXPORT RS232Settings : public PortSettings
{
public:
    /** Starts with the defaults of PortSettings in the section @p section. */
    explicit RS232Settings(const QString &section = QString());

    /** The section, which is the "group" of all descriptors; empty by default. */
    QString section() const;
    void setSection(const QString &section);

    /**
     * Applies one descriptor.
     *
     * The keys are "portName" (text), "baudRate" (a positive number), "dataBits", "parity", "stopBits" and
     * "flowControl" (a number of the enumeration of QSerialPort of that name; its "unknown" is refused).
     *
     * Returns true when the "group" is this section and the key is one of the six; false, and nothing is changed,
     * otherwise. A value that is refused leaves the parameter as it was and writes one warning; the result is true,
     * since the descriptor was meant for this section.
     */
    bool setValue(const QVariantMap &descriptor);

    /** Six descriptors in the order of the keys above: the port name as a string, the others as int. */
    QVariantList toList() const;

    /** True when the section and all six parameters are equal. */
    bool operator==(const RS232Settings &other) const;
    bool operator!=(const RS232Settings &other) const;

private:
    QString m_section;
};

Q_DECLARE_METATYPE(RS232Settings)

#endif
