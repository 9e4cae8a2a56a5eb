// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "discoverysupport.h"

#include <QJsonDocument>
#include <QLoggingCategory>
#include <QMap>
#include <QMutex>
#include <QtTest>

#include <atomic>
#include <optional>

#include <dlfcn.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

namespace {

constexpr unsigned FirstSlaveMajor = 136;
constexpr tcflag_t DroppedFlags = PARENB | PARODD | CSTOPB;

std::atomic_int waitDivisor{1};
QMutex requestMutex;
QMap<int, tcflag_t> requestedFlags;

QMutex logMutex;
QVector<QJsonObject> wireEvents;
QStringList printersLines;
QtMessageHandler previousHandler = nullptr;

template<typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/** The number of a pseudo-terminal, the same for both of its sides. */
std::optional<int> terminalNumber(int descriptor)
{
    int number = 0;
    if (ioctl(descriptor, TIOCGPTN, &number) == 0) {
        return number;
    }
    struct stat status = {};
    const bool isSlave
        = fstat(descriptor, &status) == 0 && S_ISCHR(status.st_mode) && major(status.st_rdev) == FirstSlaveMajor;
    return isSlave ? std::optional(int(minor(status.st_rdev))) : std::nullopt;
}

void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QLatin1String category(context.category);
    QMutexLocker locker(&logMutex);
    if (category == QLatin1String("printers.wire")) {
        wireEvents.append(QJsonDocument::fromJson(text.toUtf8()).object());
        return;
    }
    if (category == QLatin1String("printers")) {
        printersLines.append(text);
    }
    locker.unlock();
    previousHandler(type, context, text);
}

} // namespace

extern "C" {

Q_DECL_EXPORT int tcsetattr(int descriptor, int actions, const termios *line) noexcept
{
    static const auto real = next<int (*)(int, int, const termios *)>("tcsetattr");
    if (const auto number = terminalNumber(descriptor)) {
        QMutexLocker locker(&requestMutex);
        requestedFlags.insert(*number, line->c_cflag & DroppedFlags);
    }
    return real(descriptor, actions, line);
}

Q_DECL_EXPORT int tcgetattr(int descriptor, termios *line) noexcept
{
    static const auto real = next<int (*)(int, termios *)>("tcgetattr");
    const int result = real(descriptor, line);
    const auto number = terminalNumber(descriptor);
    if (result == 0 && number.has_value()) {
        QMutexLocker locker(&requestMutex);
        line->c_cflag |= requestedFlags.value(*number);
    }
    return result;
}

Q_DECL_EXPORT int ppoll(pollfd *descriptors, nfds_t count, const timespec *timeout, const sigset_t *mask)
{
    static const auto real = next<int (*)(pollfd *, nfds_t, const timespec *, const sigset_t *)>("ppoll");
    const int divisor = waitDivisor;
    if (divisor == 1 || count != 1 || timeout == nullptr || !terminalNumber(descriptors->fd)) {
        return real(descriptors, count, timeout, mask);
    }
    const qint64 nanoseconds = (qint64(timeout->tv_sec) * 1'000'000'000 + timeout->tv_nsec) / divisor;
    const timespec shorter{time_t(nanoseconds / 1'000'000'000), long(nanoseconds % 1'000'000'000)};
    return real(descriptors, count, &shorter, mask);
}

} // extern "C"

ShortWaits::ShortWaits(int factor)
{
    waitDivisor = factor;
}

ShortWaits::~ShortWaits()
{
    waitDivisor = 1;
}

WireLog::WireLog()
{
    wireEvents.clear();
    printersLines.clear();
    previousHandler = qInstallMessageHandler(collect);
    QLoggingCategory::setFilterRules(QStringLiteral("printers.wire.debug=true"));
}

WireLog::~WireLog()
{
    QLoggingCategory::setFilterRules({});
    qInstallMessageHandler(previousHandler);
    wireEvents.clear();
    printersLines.clear();
}

QVector<QJsonObject> WireLog::events(const QString &name)
{
    QMutexLocker locker(&logMutex);
    QVector<QJsonObject> result;
    for (const QJsonObject &event : qAsConst(wireEvents)) {
        if (name.isEmpty() || event.value(QLatin1String("event")).toString() == name) {
            result.append(event);
        }
    }
    return result;
}

QStringList WireLog::lines()
{
    QMutexLocker locker(&logMutex);
    return printersLines;
}

SignalLog::SignalLog(PrintDeviceFinder *finder)
{
    connect(finder, &PrintDeviceFinder::needCancel, this, [this] { signalsSeen.append(QStringLiteral("needCancel")); });
    connect(finder, &PrintDeviceFinder::finished, this, [this] { signalsSeen.append(QStringLiteral("finished")); });
    connect(finder, &PrintDeviceFinder::noDevices, this,
            [this](const QString &reason) { signalsSeen.append(QStringLiteral("noDevices ") + reason); });
    connect(finder, &PrintDeviceFinder::deviceFinded, this, [this](const PrintDeviceInfo &device) {
        signalsSeen.append(QStringLiteral("deviceFinded ") + device.deviceId());
        found.append(device);
    });
}

QStringList SignalLog::withoutNeedCancel() const
{
    QStringList result = signalsSeen;
    result.removeAll(QStringLiteral("needCancel"));
    return result;
}

PortSettings portSettings(const QString &portName, qint32 baudRate, QSerialPort::FlowControl flowControl,
                          QSerialPort::Parity parity)
{
    PortSettings settings;
    settings.setPortName(portName);
    settings.setBaudRate(baudRate);
    settings.setFlowControl(flowControl);
    settings.setParity(parity);
    return settings;
}

PortSettings ownSettings(const QString &portName, const printersim::Personality &personality)
{
    constexpr QSerialPort::FlowControl FlowControls[]
        = {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl};
    constexpr QSerialPort::Parity Parities[] = {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity};
    const printersim::LineSettings &line = personality.voices.first().line;
    return portSettings(portName, line.baudRate, FlowControls[int(line.flow)],
                        Parities[int(line.parity.value_or(printersim::EParity::None))]);
}

PrintDeviceInfo config(const QString &deviceId, const PortSettings &settings)
{
    PrintDeviceInfo device;
    device.setDeviceType(1);
    device.setDeviceId(deviceId);
    device.setSettings(settings);
    return device;
}

printersim::Personality known(const QString &name)
{
    const auto found = printersim::personality(name);
    Q_ASSERT_X(found.has_value(), "known", qPrintable(name));
    return *found;
}

printersim::Personality scripted(const QVector<QPair<QByteArray, QByteArray>> &requestsAndAnswers)
{
    printersim::Personality result;
    result.name = QStringLiteral("scripted");
    printersim::Voice voice{{9600, printersim::EFlow::None, {}}, {}};
    for (const auto &pair : requestsAndAnswers) {
        const printersim::Answer answer{QByteArray::fromHex(pair.second), {}};
        voice.rules.append({QByteArray::fromHex(pair.first), {answer}, {}});
    }
    result.voices.append(voice);
    return result;
}

char *QTest::toString(const PortSettings &settings)
{
    return qstrdup(qPrintable(QStringLiteral("%1 %2 baud, parity %3, flow control %4, %5 data, %6 stop")
                                  .arg(settings.portName())
                                  .arg(settings.baudRate())
                                  .arg(settings.parity())
                                  .arg(settings.flowControl())
                                  .arg(settings.dataBits())
                                  .arg(settings.stopBits())));
}
