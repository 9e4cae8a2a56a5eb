// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "conversations.h"

#include <textprintermodels.h>

#include <QRegularExpression>

#include <algorithm>

using Models = TextPrinterModels;

namespace {

/** Clocks that tell whole milliseconds differ by one at each end. */
constexpr int ClockError = 2;

QString patternOf(const QString &model)
{
    if (model == Models::MODEL_SWECOIN_TM_20XX) {
        return QStringLiteral("w1b0507 r.{4} w1b0501 r(06|15) w1b0611 r11 w1b0612 r12");
    }
    if (model == Models::MODEL_TSP_TUP) {
        return QStringLiteral("w1b1e60021b0601 r(?!1b0601|1b1e60021b0601).{2,32} w05 r.{2,32} w04 r.{2,32} "
                              "w535441 s w010203 s w1b6432");
    }
    if (model == Models::MODEL_AV_268) {
        return QStringLiteral("(w1b76 r.. ){3}w01020304 s w1b69");
    }
    if (model == Models::MODEL_CITIZEN_PPU_231) {
        return QStringLiteral("w1b76 r.. w1b76 r[02468ace]. w010203 s w1b69");
    }
    const QList<int> bytes = modelsByByte().keys(model);
    // Whatever was configured is found by 0x3D; nothing is sent afterwards.
    QStringList alternatives{QStringLiteral("3d")};
    for (const int byte : bytes) {
        alternatives.append(QStringLiteral("%1").arg(byte, 2, 16));
    }
    return QStringLiteral("w1d4901 (s w1d4931 )?r(%1) w1d4901 (s w1d4931 )?r\\2( w[0-9a-f]+)*")
        .arg(alternatives.join(QLatin1Char('|')));
}

QString shown(const PortSettings &settings)
{
    static const QHash<int, QString> parities{{QSerialPort::NoParity, QStringLiteral("none")},
                                              {QSerialPort::EvenParity, QStringLiteral("even")},
                                              {QSerialPort::OddParity, QStringLiteral("odd")}};
    static const QHash<int, QString> flowControls{{QSerialPort::NoFlowControl, QStringLiteral("none")},
                                                  {QSerialPort::HardwareControl, QStringLiteral("hardware")},
                                                  {QSerialPort::SoftwareControl, QStringLiteral("software")}};
    return QStringLiteral("%1 %2 %3")
        .arg(settings.baudRate())
        .arg(parities.value(settings.parity()), flowControls.value(settings.flowControl()));
}

QString shown(const QJsonObject &event)
{
    return QStringLiteral("%1 %2 %3")
        .arg(event.value(QLatin1String("baudRate")).toInt())
        .arg(event.value(QLatin1String("parity")).toString(), event.value(QLatin1String("flowControl")).toString());
}

} // namespace

const QHash<int, QString> &modelsByByte()
{
    static const QHash<int, QString> bytes{
        {0x20, Models::MODEL_CITIZEN_CPP_8001}, {0x27, Models::MODEL_EPSON_EU_4XX},
        {0x30, Models::MODEL_CITIZEN_CBM_1000}, {0x51, Models::MODEL_CITIZEN_CTS_2000},
        {0x5D, Models::MODEL_CUSTOM_VKP_80},    {0x5E, Models::MODEL_CUSTOM_VKP_80},
        {0x75, Models::MODEL_CITIZEN_PPU_700},  {0x93, Models::MODEL_CUSTOM_TG_2480_SE},
        {0xA7, Models::MODEL_CUSTOM_TG_2480_H}, {0xA8, Models::MODEL_CUSTOM_TG_2480_H},
    };
    return bytes;
}

bool isFoundByItsByte(const QString &model)
{
    return !modelsByByte().keys(model).isEmpty();
}

Conversations::Conversations(const QVector<QJsonObject> &events, int waitDivisor)
    : m_waitDivisor(waitDivisor)
{
    for (const QJsonObject &event : events) {
        add(event);
    }
}

void Conversations::add(const QJsonObject &event)
{
    const QString port = event.value(QLatin1String("port")).toString();
    const QString name = event.value(QLatin1String("event")).toString();
    const QString bytes = event.value(QLatin1String("bytes")).toString();
    const int now = event.value(QLatin1String("ms")).toInt();
    Talk &talk = m_running[port];
    if (name == QLatin1String("settings")) {
        talk = {shown(event), {}, now};
    } else if (name == QLatin1String("closed")) {
        m_ended.insert(port, m_running.take(port));
    } else if (name == QLatin1String("write") || name == QLatin1String("read")) {
        talk.said.append(name.at(0) + bytes);
        talk.lastMs = now;
    } else if (name == QLatin1String("silence")) {
        const int shortestMs = event.value(QLatin1String("timeoutMs")).toInt() / m_waitDivisor - ClockError;
        const int lastedMs = now - talk.lastMs;
        talk.said.append(lastedMs >= shortestMs ? QStringLiteral("s") : QStringLiteral("!short:%1").arg(lastedMs));
    } else if (name == QLatin1String("lost")) {
        talk.said.append(QStringLiteral("!lost"));
    }
}

QString Conversations::objection(const PrintDeviceInfo &device) const
{
    const QRegularExpression rule(QRegularExpression::anchoredPattern(patternOf(device.deviceId())));
    const QList<Talk> talks = m_ended.values(device.settings().portName().remove(QStringLiteral("/dev/")));
    QStringList others;
    for (const Talk &talk : talks) {
        const QString said = talk.said.join(QLatin1Char(' '));
        if (talk.settings == shown(device.settings()) && rule.match(said).hasMatch()) {
            return {};
        }
        others.append(QStringLiteral("at %1: %2").arg(talk.settings, said));
    }
    return QStringLiteral("%1 found at %2 %3, where was said %4")
        .arg(device.deviceId(), device.settings().portName(), shown(device.settings()),
             others.join(QStringLiteral("; ")));
}
