// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DISCOVERYSUPPORT_H
#define PRINTSRV_DISCOVERYSUPPORT_H

#include <personality.h>
#include <portsettings.h>
#include <printdevicefinder.h>
#include <simulatedprinter.h>

#include <QJsonObject>
#include <QVector>

#include <memory>

// A program that links this file has its own tcsetattr(), tcgetattr() and ppoll(): a pseudo-terminal drops the parity
// that is asked for, so the request is remembered per device and told to both sides; and waits on a pseudo-terminal can
// be made shorter.

/** Makes every wait of a serial port on a pseudo-terminal @p factor times shorter while it exists. */
class ShortWaits
{
public:
    explicit ShortWaits(int factor);
    ~ShortWaits();
};

/** Collects the lines of discovery's log categories while it exists; the handler before it gets all other lines. */
class WireLog
{
public:
    WireLog();
    ~WireLog();

    /** The events of "printers.wire", in order. */
    static QVector<QJsonObject> events(const QString &name = {});

    /** The lines of "printers". */
    static QStringList lines();
};

/** The signals of a finder as words in their order: "needCancel", "deviceFinded MODEL", "noDevices TEXT", "finished".
 */
class SignalLog : public QObject
{
public:
    explicit SignalLog(PrintDeviceFinder *finder);

    QStringList signalsSeen;
    /** Those of them that tell a result or an end. */
    QStringList withoutNeedCancel() const;
    QVector<PrintDeviceInfo> found;
};

/** A printer, a finder of its own and what that signalled. */
struct Search
{
    printersim::SimulatedPrinter *printer;
    std::unique_ptr<PrintDeviceFinder> finder = std::make_unique<PrintDeviceFinder>();
    std::unique_ptr<SignalLog> log = std::make_unique<SignalLog>(finder.get());

    explicit Search(printersim::SimulatedPrinter *simulated)
        : printer(simulated)
    {
    }

    bool isOver() const
    {
        return log->signalsSeen.contains(QStringLiteral("finished"));
    }
};

/** One set of serial parameters. */
PortSettings portSettings(const QString &portName, qint32 baudRate,
                          QSerialPort::FlowControl flowControl = QSerialPort::NoFlowControl,
                          QSerialPort::Parity parity = QSerialPort::NoParity);

/** The parameters at which the first voice of a personality answers. */
PortSettings ownSettings(const QString &portName, const printersim::Personality &personality);

/** A text printer to verify. */
PrintDeviceInfo config(const QString &deviceId, const PortSettings &settings);

/** A personality known to the simulator; aborts the test when there is none. */
printersim::Personality known(const QString &name);

/** A printer at 9600 baud that answers each request, given in hexadecimal digits, with the bytes behind it. */
printersim::Personality scripted(const QVector<QPair<QByteArray, QByteArray>> &requestsAndAnswers);

namespace QTest {

char *toString(const PortSettings &settings);

} // namespace QTest

#endif
