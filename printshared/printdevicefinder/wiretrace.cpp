// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "wiretrace.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

namespace printsrv {

namespace {

Q_LOGGING_CATEGORY(WIRE, "printers.wire", QtInfoMsg)

constexpr int BytesTold = 1024;

qint64 milliseconds()
{
    static const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return clock.elapsed();
}

QString parityName(QSerialPort::Parity parity)
{
    switch (parity) {
    case QSerialPort::EvenParity:
        return QStringLiteral("even");
    case QSerialPort::OddParity:
        return QStringLiteral("odd");
    case QSerialPort::NoParity:
        return QStringLiteral("none");
    default:
        return QStringLiteral("other");
    }
}

QString flowControlName(QSerialPort::FlowControl flowControl)
{
    switch (flowControl) {
    case QSerialPort::HardwareControl:
        return QStringLiteral("hardware");
    case QSerialPort::SoftwareControl:
        return QStringLiteral("software");
    default:
        return QStringLiteral("none");
    }
}

void tell(const QString &portName, const char *probe, const char *event, QJsonObject object)
{
    object.insert(QStringLiteral("ms"), milliseconds());
    object.insert(QStringLiteral("port"), portName);
    object.insert(QStringLiteral("probe"), QLatin1String(probe));
    object.insert(QStringLiteral("event"), QLatin1String(event));
    qCDebug(WIRE, "%s", QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
}

} // namespace

WireTrace::WireTrace(const QString &portName, const char *probe)
    : m_portName(portName)
    , m_probe(probe)
{
}

bool WireTrace::isOn()
{
    return WIRE().isDebugEnabled();
}

void WireTrace::settings(const PortSettings &settings, WalkPosition position) const
{
    if (!isOn()) {
        return;
    }
    tell(m_portName, m_probe, "settings",
         {{QStringLiteral("entry"), position.entry},
          {QStringLiteral("entries"), position.entries},
          {QStringLiteral("baudRate"), settings.baudRate()},
          {QStringLiteral("dataBits"), int(settings.dataBits())},
          {QStringLiteral("parity"), parityName(settings.parity())},
          {QStringLiteral("stopBits"), int(settings.stopBits())},
          {QStringLiteral("flowControl"), flowControlName(settings.flowControl())}});
}

void WireTrace::bytes(const char *event, const QByteArray &bytes) const
{
    if (!isOn() || bytes.isEmpty()) {
        return;
    }
    QJsonObject object{{QStringLiteral("bytes"), QString::fromLatin1(bytes.left(BytesTold).toHex())}};
    if (bytes.size() > BytesTold) {
        object.insert(QStringLiteral("size"), bytes.size());
    }
    tell(m_portName, m_probe, event, object);
}

void WireTrace::silence(int timeoutMs) const
{
    if (isOn()) {
        tell(m_portName, m_probe, "silence", {{QStringLiteral("timeoutMs"), timeoutMs}});
    }
}

void WireTrace::port(const char *event, const QString &error) const
{
    if (!isOn()) {
        return;
    }
    QJsonObject object;
    if (!error.isEmpty()) {
        object.insert(QStringLiteral("error"), error);
    }
    tell(m_portName, m_probe, event, object);
}

} // namespace printsrv
