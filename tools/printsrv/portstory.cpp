// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "portstory.h"

#include <algorithm>
#include <iterator>

namespace printsrv {

namespace {

using std::chrono::milliseconds;

constexpr int UtterancesKept = 8;
constexpr int BytesKept = 64;
constexpr int ShortestEcho = 2;

struct ProbeCost
{
    const char *name;
    int entries;
    /** What an entry costs when nobody answers. */
    milliseconds silence;
};

// In the order of a search.
constexpr ProbeCost ProbeCosts[] = {
    {"scan1D491", 54, milliseconds(600)}, {"scanSwecoin", 54, milliseconds(1400)}, {"scanStar", 24, milliseconds(300)},
    {"scanAV268", 1, milliseconds(1000)}, {"scanSimple", 27, milliseconds(1000)},
};

QString text(const QJsonObject &event, const char *member)
{
    return event.value(QLatin1String(member)).toString();
}

QByteArray bytes(const QJsonObject &event)
{
    return QByteArray::fromHex(text(event, "bytes").toLatin1());
}

} // namespace

void PortStory::take(const QJsonObject &event)
{
    const QString name = text(event, "event");
    if (name == QLatin1String("settings")) {
        beginEntry(event);
    } else if (name == QLatin1String("write")) {
        m_current.asked += bytes(event);
    } else if (name == QLatin1String("read") || name == QLatin1String("discard")) {
        m_current.said += bytes(event);
    } else if (name == QLatin1String("opened")) {
        m_wasOpened = true;
    } else if (name == QLatin1String("refused")) {
        m_refusal = text(event, "error");
    } else if (name == QLatin1String("lost")) {
        m_wasLost = true;
    }
}

void PortStory::beginEntry(const QJsonObject &event)
{
    m_utterances = utterances();
    m_onlyEchoes = m_onlyEchoes && isCurrentEcho();
    m_longestEcho = std::max(m_longestEcho, m_current.said.size());
    m_askedBefore = m_current.asked;
    m_probe = text(event, "probe");
    m_entry = event.value(QLatin1String("entry")).toInt();
    m_entries = event.value(QLatin1String("entries")).toInt();
    m_baudRate = event.value(QLatin1String("baudRate")).toInt();
    m_current = {m_baudRate, {}, {}};
}

bool PortStory::wasOpened() const
{
    return m_wasOpened;
}

QString PortStory::refusal() const
{
    return m_refusal;
}

bool PortStory::wasLost() const
{
    return m_wasLost;
}

bool PortStory::isEcho() const
{
    // One byte could be an answer that looks like a part of its request.
    const bool isLongEnough = std::max(m_longestEcho, m_current.said.size()) >= ShortestEcho;
    return m_onlyEchoes && isCurrentEcho() && isLongEnough;
}

bool PortStory::isCurrentEcho() const
{
    // On a slow line the end of an echo comes when the next settings are tried already.
    return (m_askedBefore + m_current.asked).contains(m_current.said);
}

QVector<Utterance> PortStory::utterances() const
{
    QVector<Utterance> all = m_utterances;
    if (!m_current.said.isEmpty()) {
        all.append({m_current.baudRate, m_current.asked.left(BytesKept), m_current.said.left(BytesKept)});
    }
    return all.mid(std::max(0, all.size() - UtterancesKept));
}

milliseconds PortStory::timeLeft() const
{
    const auto *cost = std::find_if(std::begin(ProbeCosts), std::end(ProbeCosts),
                                    [this](const ProbeCost &known) { return m_probe == QLatin1String(known.name); });
    milliseconds left(0);
    if (cost != std::end(ProbeCosts)) {
        left = (m_entries - m_entry + 1) * cost->silence;
        for (++cost; cost != std::end(ProbeCosts); ++cost) {
            left += cost->entries * cost->silence;
        }
    }
    return left;
}

QString PortStory::progress() const
{
    if (m_probe.isEmpty()) {
        return {};
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(timeLeft()).count();
    return QStringLiteral("%1, %2 baud, at most %3:%4 left")
        .arg(m_probe)
        .arg(m_baudRate)
        .arg(seconds / 60)
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace printsrv
