// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "statetext.h"

#include "jsontext.h"

#include <printservicestatetolbuswrapper.h>

#include <QVector>

namespace printsrv {

namespace {

using tolbus::ClientState;

struct NamedNumber
{
    int number;
    const char *name;
};

const QVector<NamedNumber> &types()
{
    static const QVector<NamedNumber> names{{ClientState::INVALID, "INVALID"},
                                            {ClientState::NORMAL, "NORMAL"},
                                            {ClientState::WARNING, "WARNING"},
                                            {ClientState::CRITICAL, "CRITICAL"},
                                            {ClientState::FATAL, "FATAL"}};
    return names;
}

const QVector<NamedNumber> &services()
{
    static const QVector<NamedNumber> names{
        {PrintServiceState::ServiceStarting, "starting"}, {PrintServiceState::ServiceReady, "ready"},
        {PrintServiceState::ServicePrinting, "printing"}, {PrintServiceState::ServiceTesting, "testing"},
        {PrintServiceState::ServiceFailed, "failed"},     {PrintServiceState::ServiceInvalid, "invalid"}};
    return names;
}

const QVector<NamedNumber> &devices()
{
    static const QVector<NamedNumber> names{{PrintServiceState::DeviceReady, "ready"},
                                            {PrintServiceState::DeviceBusy, "busy"},
                                            {PrintServiceState::DeviceNeedsAttention, "attention"},
                                            {PrintServiceState::DeviceCritical, "critical"},
                                            {PrintServiceState::DeviceFatal, "fatal"},
                                            {PrintServiceState::DeviceInvalid, "invalid"}};
    return names;
}

QString nameIn(const QVector<NamedNumber> &names, int number)
{
    for (const NamedNumber &named : names) {
        if (named.number == number) {
            return QString::fromLatin1(named.name);
        }
    }
    return QString::number(number);
}

Outcome<int> numberIn(const QVector<NamedNumber> &names, const QString &text, int largest)
{
    QStringList known;
    for (const NamedNumber &named : names) {
        const auto name = QLatin1String(named.name);
        if (text.compare(name, Qt::CaseInsensitive) == 0) {
            return named.number;
        }
        known.append(name);
    }
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= qMin(0, names.first().number) && number <= largest) {
        return number;
    }
    return Failure{
        QStringLiteral("'%1' is none of %2, nor the number of one.").arg(text, known.join(QStringLiteral(", ")))};
}

template<typename Enum>
Outcome<Enum> stateIn(const QVector<NamedNumber> &names, const QString &text, int largest)
{
    const Outcome<int> number = numberIn(names, text, largest);
    return number ? Outcome<Enum>(static_cast<Enum>(*number)) : Outcome<Enum>(number.failure());
}

constexpr int LargestState = 0xFFFF;

} // namespace

QString typeName(ClientState::EStateType type)
{
    return nameIn(types(), type);
}

QString serviceName(PrintServiceState::EServiceState state)
{
    return nameIn(services(), state);
}

QString deviceName(PrintServiceState::EDeviceState state)
{
    return nameIn(devices(), state);
}

Outcome<PrintServiceState::EServiceState> serviceFrom(const QString &text)
{
    return stateIn<PrintServiceState::EServiceState>(services(), text, LargestState);
}

Outcome<PrintServiceState::EDeviceState> deviceFrom(const QString &text)
{
    return stateIn<PrintServiceState::EDeviceState>(devices(), text, LargestState);
}

Outcome<ClientState::EStateType> typeFrom(const QString &text)
{
    return stateIn<ClientState::EStateType>(types(), text, ClientState::FATAL);
}

QString timeText(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

Outcome<PrintServiceState> readRecord(const QByteArray &busText)
{
    QJsonParseError error{};
    static_cast<void>(QJsonDocument::fromJson(busText, &error));
    if (error.error != QJsonParseError::NoError) {
        return jsonFailure(busText, error);
    }
    ClientState sent;
    sent.setStateType(ClientState::NORMAL);
    sent.setDt(QDateTime::currentDateTime());
    sent.setState(QString::fromUtf8(busText));
    return PrintServiceStateTolbusWrapper(sent).state();
}

QString stateLine(const ClientState &state)
{
    return QStringLiteral("%1 %2 %3").arg(timeText(state.dt()), typeName(state.stateType()), state.state());
}

} // namespace printsrv
