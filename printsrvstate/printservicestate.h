// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTSERVICESTATE_H
#define PRINTSRV_PRINTSERVICESTATE_H

#include <QMetaType>
#include <QString>
#include <QVariant>

QT_BEGIN_NAMESPACE
class QDebug;
QT_END_NAMESPACE

/**
 * The state of the print service and of its printing device.
 *
 * A plain value; any 16-bit number can stand in the two states, and those without a name are carried. Reentrant.
 */
class Q_DECL_EXPORT PrintServiceState
{
public:
    /** Where the service stands. It can print in the states 1 to 3; numbers above 3 mean that it has failed. */
    enum EServiceState : quint16 {
        ServiceStarting = 0, /**< The service starts and takes no receipts yet. */
        ServiceReady = 1, /**< The service waits for a receipt. */
        ServicePrinting = 2, /**< The service prints. */
        ServiceTesting = 3, /**< The service tests its device and takes receipts. */
        ServiceFailed = 4, /**< The service has failed, as with every greater number but ServiceInvalid. */
        ServiceInvalid = 0xFF, /**< Nothing is known; the default. */
    };

    /** Where the printing device stands. It can print in the states 0 to 2. */
    enum EDeviceState : quint16 {
        DeviceReady = 0, /**< The device is ready. */
        DeviceBusy = 1, /**< The device prints. */
        DeviceNeedsAttention = 2, /**< The device works, but not for long: paper is low, for instance. */
        DeviceCritical = 3, /**< The device does not print until somebody helps: no paper, cover open. */
        DeviceFatal = 4, /**< The device is broken or missing. */
        DeviceInvalid = 0xFF, /**< Nothing is known; the default. */
    };

    /** Makes a record of which nothing is known, with paper. */
    PrintServiceState() = default;

    /** Makes a record and fills it as setMap() does. */
    explicit PrintServiceState(const QVariantMap &map);

    /** Where the service stands; ServiceInvalid by default. */
    EServiceState serviceState() const;
    void setServiceState(EServiceState serviceState);

    /** Where the device stands; DeviceInvalid by default. */
    EDeviceState deviceState() const;
    void setDeviceState(EDeviceState deviceState);

    /** The device's error as the service numbers it, such as the flag word of TxtPrinterError; 0 by default. */
    unsigned int deviceErrorCode() const;
    void setDeviceErrorCode(unsigned int code);

    /** The device's error as the device itself numbers it; 0 by default. */
    unsigned int deviceNativeCode() const;
    void setDeviceNativeCode(unsigned int code);

    /** The device's error for people; empty by default. */
    QString deviceErrorMsg() const;
    /** Contract: "Eror". */
    void setDeviceErorMsg(const QString &message);

    /** True when the device has paper; true by default. */
    bool tapeAvailable() const;
    void setTapeAvailable(bool isAvailable);

    /** True when all six fields are equal. Contract: not const. */
    bool operator==(const PrintServiceState &other);
    bool operator!=(const PrintServiceState &other);

    /**
     * Takes the fields whose keys are in @p map; the others stay. States are cut to 16 bits, what is no number reads 0.
     */
    void setMap(const QVariantMap &map);

    /**
     * All six fields: "serviceState" and "deviceState" (int), "deviceErrorCode" and "deviceNativeCode" (qlonglong),
     * "deviceErrorMsg" (string), "tapeAvailable" (bool).
     */
    QVariantMap toMap() const;

private:
    EServiceState m_serviceState = ServiceInvalid;
    EDeviceState m_deviceState = DeviceInvalid;
    unsigned int m_deviceErrorCode = 0;
    unsigned int m_deviceNativeCode = 0;
    QString m_deviceErrorMsg;
    bool m_tapeAvailable = true;
};

Q_DECLARE_METATYPE(PrintServiceState)

/** Writes all six fields. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const PrintServiceState &state);

#endif
