// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "verdict.h"

#include "porttext.h"

#include <QJsonArray>

namespace printsrv {

namespace {

struct Wording
{
    EVerdict kind;
    const char *name;
    const char *text;
};

constexpr Wording Wordings[] = {
    {EVerdict::Found, "found", "found"},
    {EVerdict::Silent, "silent", "silent: nothing answers"},
    {EVerdict::Echo, "echo", "echo: whatever is sent comes back, as from a loop-back plug"},
    {EVerdict::Foreign, "foreign", "talks, but is none of our printers"},
    {EVerdict::Busy, "busy", "busy"},
    {EVerdict::Denied, "denied", ""},
    {EVerdict::Vanished, "vanished", "vanished during the search"},
    {EVerdict::Missing, "missing", ""},
    {EVerdict::NoPort, "no-port", ""},
    {EVerdict::Refused, "refused", "cannot be opened"},
    {EVerdict::Unfinished, "unfinished", "not searched to the end"},
    {EVerdict::Skipped, "skipped", "skipped"},
    {EVerdict::Planned, "planned", "would be searched"},
};

const Wording &wording(EVerdict kind)
{
    return Wordings[static_cast<std::size_t>(kind)];
}

EVerdict refusalKind(const PortFacts &port)
{
    switch (port.access) {
    case EAccess::Denied:
    case EAccess::OwnerOnly:
        return EVerdict::Denied;
    case EAccess::Missing:
        return EVerdict::Missing;
    case EAccess::NoPort:
        return EVerdict::NoPort;
    default:
        return port.users.isEmpty() ? EVerdict::Refused : EVerdict::Busy;
    }
}

EVerdict talkKind(const PortStory &story, ETurn turn)
{
    if (story.wasLost()) {
        return EVerdict::Vanished;
    }
    if (turn == ETurn::CutShort) {
        return EVerdict::Unfinished;
    }
    if (story.utterances().isEmpty()) {
        return EVerdict::Silent;
    }
    return story.isEcho() ? EVerdict::Echo : EVerdict::Foreign;
}

QString sample(const Utterance &utterance)
{
    return QStringLiteral("asked %2 it says %3 at %1 baud")
        .arg(utterance.baudRate)
        .arg(bytesText(utterance.asked), bytesText(utterance.said));
}

QString details(const Verdict &verdict)
{
    switch (verdict.kind) {
    case EVerdict::Found:
        return QStringLiteral(": %1, %2").arg(verdict.device.deviceId(), settingsText(verdict.device.settings()));
    case EVerdict::Foreign:
        return verdict.utterances.isEmpty() ? QString() : QStringLiteral(": ") + sample(verdict.utterances.last());
    case EVerdict::Busy:
        return QStringLiteral(": used by ") + verdict.port.users.join(QStringLiteral(", "));
    case EVerdict::Denied:
    case EVerdict::Missing:
    case EVerdict::NoPort:
        return accessText(verdict.port);
    case EVerdict::Refused:
        return QStringLiteral(": ") + verdict.reason;
    case EVerdict::Skipped:
        return QStringLiteral(": it is %1; name the port to search it all the same").arg(verdict.port.otherDevice);
    default:
        return {};
    }
}

} // namespace

Verdict judge(const PortFacts &port, const PortStory &story, const PrintDeviceInfo &device, ETurn turn)
{
    Verdict verdict;
    verdict.port = port;
    verdict.device = device;
    verdict.reason = story.refusal();
    if (device.isValid()) {
        verdict.kind = EVerdict::Found;
    } else if (!story.refusal().isEmpty()) {
        verdict.port = portFacts(port.name);
        verdict.kind = refusalKind(verdict.port);
    } else {
        verdict.kind = talkKind(story, turn);
        verdict.utterances = story.utterances();
    }
    return verdict;
}

Verdict forecast(const PortFacts &port)
{
    Verdict verdict;
    verdict.port = port;
    verdict.kind = port.access == EAccess::Allowed ? EVerdict::Planned : refusalKind(port);
    return verdict;
}

QString toText(const Verdict &verdict)
{
    return QStringLiteral("%1: %2%3")
        .arg(verdict.port.name, QLatin1String(wording(verdict.kind).text), details(verdict));
}

QJsonObject toJson(const Verdict &verdict)
{
    QJsonObject object{{QStringLiteral("port"), verdict.port.name},
                       {QStringLiteral("verdict"), QLatin1String(wording(verdict.kind).name)},
                       {QStringLiteral("text"), toText(verdict)}};
    if (verdict.device.isValid()) {
        object.insert(QStringLiteral("model"), verdict.device.deviceId());
        object.insert(QStringLiteral("settings"), toJson(verdict.device.settings()));
    }
    QJsonArray said;
    for (const Utterance &utterance : verdict.utterances) {
        said.append(QJsonObject{{QStringLiteral("baudRate"), utterance.baudRate},
                                {QStringLiteral("asked"), bytesText(utterance.asked)},
                                {QStringLiteral("said"), bytesText(utterance.said)}});
    }
    if (!said.isEmpty()) {
        object.insert(QStringLiteral("said"), said);
    }
    if (verdict.kind == EVerdict::Busy) {
        object.insert(QStringLiteral("users"), QJsonArray::fromStringList(verdict.port.users));
    }
    return object;
}

} // namespace printsrv
