// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "actions.h"
#include "commandline.h"
#include "inputfile.h"
#include "outputwriter.h"
#include "report.h"
#include "statebus.h"
#include "statetext.h"

#include <printservicestatetolbuswrapper.h>

namespace printsrv {

namespace {

using tolbus::ClientState;

struct Option
{
    const char *name;
    const char *description;
    const char *valueName;
    const char *defaultValue;
};

constexpr Option EncodeOptions[] = {
    {"service", "starting, ready, printing, testing, failed, invalid or a number.", "STATE", "invalid"},
    {"device", "ready, busy, attention, critical, fatal, invalid or a number.", "STATE", "invalid"},
    {"error", "Error code.", "N", "0"},
    {"native", "The device's own code.", "N", "0"},
    {"message", "Error text.", "TEXT", ""},
    {"no-tape", "There is no paper.", "", ""},
    {"line", "Writes time and type in front of the text.", "", ""},
};

constexpr Option DecodeOptions[] = {
    {"type", "INVALID, NORMAL, WARNING, CRITICAL, FATAL or a number; what the text says unless given.", "TYPE", ""},
    {"time", "Time of the state; now unless given.", "TIME", ""},
};

template<size_t Count>
void addOptions(CommandLine &line, const Option (&options)[Count])
{
    for (const Option &option : options) {
        line.addOption({QLatin1String(option.name)}, QLatin1String(option.description), QLatin1String(option.valueName),
                       QLatin1String(option.defaultValue));
    }
}

std::optional<unsigned int> codeFrom(const CommandLine &line, const QString &option)
{
    bool isNumber = false;
    const unsigned int code = line.value(option).toUInt(&isNumber, 0);
    if (!isNumber) {
        line.usageError(
            QStringLiteral("--%1 takes a number from 0 to 4294967295, not '%2'.").arg(option, line.value(option)));
        return {};
    }
    return code;
}

std::optional<PrintServiceState> stateFrom(const CommandLine &line)
{
    const auto service = serviceFrom(line.value(QStringLiteral("service")));
    const auto device = deviceFrom(line.value(QStringLiteral("device")));
    if (!service || !device) {
        line.usageError((service ? device.failure() : service.failure()).text);
        return {};
    }
    const auto error = codeFrom(line, QStringLiteral("error"));
    const auto native = codeFrom(line, QStringLiteral("native"));
    if (!error || !native) {
        return {};
    }
    PrintServiceState state;
    state.setServiceState(*service);
    state.setDeviceState(*device);
    state.setDeviceErrorCode(*error);
    state.setDeviceNativeCode(*native);
    state.setDeviceErorMsg(line.value(QStringLiteral("message")));
    state.setTapeAvailable(!line.isSet(QStringLiteral("no-tape")));
    return state;
}

ExitCode encode(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("state encode"),
        QStringLiteral("Writes the bus text of a state, and with --line the whole client state as it would\n"
                       "be sent now: time, type and text."),
        {QStringLiteral("printsrv state encode --service ready --device critical --error 0x20"),
         QStringLiteral("printsrv state encode --service 2 --device 0 | printsrv state decode -")});
    addOptions(line, EncodeOptions);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const auto state = stateFrom(line);
    if (!state) {
        return ExitUsage;
    }
    const ClientState client = PrintServiceStateTolbusWrapper(*state).toClientState();
    const QString text = line.isSet(QStringLiteral("line")) ? stateLine(client) : client.state();
    return writeOutput({}, text.toUtf8() + '\n');
}

QString answer(bool isYes)
{
    return isYes ? QStringLiteral("yes") : QStringLiteral("no");
}

QString described(const PrintServiceStateTolbusWrapper &wrapper)
{
    const PrintServiceState state = wrapper.state();
    const auto number = [](const QString &name, int value) {
        return QStringLiteral("%1 (%2)").arg(name).arg(value);
    };
    const QVector<std::pair<const char *, QString>> rows{
        {"type", number(typeName(wrapper.stateType()), wrapper.stateType())},
        {"time", timeText(wrapper.stateDt())},
        {"service", number(serviceName(state.serviceState()), state.serviceState())},
        {"device", number(deviceName(state.deviceState()), state.deviceState())},
        {"error", QStringLiteral("0x%1").arg(state.deviceErrorCode(), 0, 16)},
        {"native", QString::number(state.deviceNativeCode())},
        {"message", state.deviceErrorMsg()},
        {"paper", answer(state.tapeAvailable())},
        {"valid", answer(wrapper.isValid())},
        {"workable", answer(wrapper.isWorkable())}};
    QString text;
    for (const auto &[name, value] : rows) {
        text += QString::fromLatin1(name).leftJustified(9) + value + QLatin1Char('\n');
    }
    return text;
}

// The type of the options, if they have one.
bool takeType(const CommandLine &line, ClientState &client)
{
    const QString name = line.value(QStringLiteral("type"));
    if (name.isEmpty()) {
        return true;
    }
    const auto type = typeFrom(name);
    if (!type) {
        line.usageError(type.failure().text);
        return false;
    }
    client.setStateType(*type);
    return true;
}

// The time of the options, or now.
bool takeTime(const CommandLine &line, ClientState &client)
{
    const QString time = line.value(QStringLiteral("time"));
    client.setDt(time.isEmpty() ? QDateTime::currentDateTime() : QDateTime::fromString(time, Qt::ISODateWithMs));
    if (!client.dt().isValid()) {
        line.usageError(QStringLiteral("--time takes ISO 8601, 2024-03-05T12:00:00Z, not '%1'.").arg(time));
    }
    return client.dt().isValid();
}

Outcome<QByteArray> busText(const QString &argument)
{
    return argument == QLatin1String("-") ? readInput(argument) : Outcome<QByteArray>(argument.toUtf8());
}

ExitCode decode(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("state decode"), QStringLiteral("Shows what a monitor reads from the bus text of a state."),
        {QStringLiteral("printsrv state decode '{\"serviceState\":1,\"deviceState\":3}'"),
         QStringLiteral("printsrv state decode - --type WARNING --time 2024-03-05T12:00:00Z < state.json")});
    line.addArgument(QStringLiteral("TEXT"), QStringLiteral("The bus text, or - for standard input."));
    addOptions(line, DecodeOptions);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    ClientState client;
    if (!takeType(line, client) || !takeTime(line, client)) {
        return ExitUsage;
    }
    const Outcome<QByteArray> text = busText(line.argument(0));
    if (!text) {
        return complainAt(text.failure(), line.argument(0));
    }
    client.setState(QString::fromUtf8(*text));
    const auto record = readRecord(*text);
    if (!record) {
        const bool isInput = line.argument(0) == QLatin1String("-");
        return complainAt(record.failure(), isInput ? line.argument(0) : QStringLiteral("the bus text"));
    }
    if (line.value(QStringLiteral("type")).isEmpty()) {
        client.setStateType(PrintServiceStateTolbusWrapper(*record).toClientState().stateType());
    }
    const PrintServiceStateTolbusWrapper wrapper(client);
    return writeOutput({}, described(wrapper).toUtf8());
}

} // namespace

ExitCode runState(const QStringList &arguments)
{
    const ActionGroup group{"state",
                            "The state of the print service: its text on the bus, and the bus itself.",
                            {{"encode", "writes the bus text of a state", encode},
                             {"decode", "shows what a bus text says", decode},
                             {"publish", "offers the current state on D-Bus", publishState},
                             {"watch", "follows a state on D-Bus", watchState}},
                            {QStringLiteral("printsrv state encode --service ready --device busy"),
                             QStringLiteral("printsrv state watch --bus session")}};
    return runAction(group, arguments);
}

} // namespace printsrv
