// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "transcript.h"

#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace printersim {

namespace {

/** A moment of the recording; what is beyond any recording is cut, so that moments can be subtracted. */
std::chrono::milliseconds timeFrom(double milliseconds)
{
    constexpr double Longest = 1e15;
    return std::chrono::milliseconds(static_cast<qint64>(std::clamp(milliseconds, -Longest, Longest)));
}

class Reader
{
public:
    bool read(const QByteArray &line)
    {
        QJsonParseError error;
        const QJsonObject object = QJsonDocument::fromJson(line, &error).object();
        if (object.isEmpty()) {
            m_errorString = QStringLiteral("no JSON object: %1").arg(error.errorString());
            return false;
        }
        const QString port = object.value(QLatin1String("port")).toString();
        m_port = m_port.isEmpty() ? port : m_port;
        return port != m_port || readEvent(object);
    }

    bool finish()
    {
        m_errorString = QStringLiteral("nothing was ever written to the port");
        return m_hasRequest;
    }

    Personality personality() const
    {
        Personality result;
        result.name = QStringLiteral("replay-%1").arg(QString(m_port).replace(QLatin1Char('/'), QLatin1Char('_')));
        result.voices = m_voices;
        result.isGarbledElsewhere = false;
        return result;
    }

    QString errorString() const
    {
        return m_errorString;
    }

private:
    bool readEvent(const QJsonObject &object)
    {
        const QString event = object.value(QLatin1String("event")).toString();
        if (event == QLatin1String("settings")) {
            return readSettings(object);
        }
        const QByteArray bytes = QByteArray::fromHex(object.value(QLatin1String("bytes")).toString().toLatin1());
        const auto time = timeFrom(object.value(QLatin1String("ms")).toDouble());
        if (event == QLatin1String("write")) {
            return readRequest(bytes, time);
        }
        const bool isAnswer = event == QLatin1String("read") || event == QLatin1String("discard");
        return !isAnswer || readAnswer(bytes, time);
    }

    bool readSettings(const QJsonObject &object)
    {
        const auto flow = flowFromName(object.value(QLatin1String("flowControl")).toString());
        const int baudRate = object.value(QLatin1String("baudRate")).toInt();
        if (!flow.has_value() || baudRate <= 0) {
            m_errorString = QStringLiteral("settings without a baud rate or flow control");
            return false;
        }
        m_voices.append(Voice{{baudRate, *flow, {}}, {}});
        m_requests.clear();
        m_request = nullptr;
        return true;
    }

    bool readRequest(const QByteArray &bytes, std::chrono::milliseconds time)
    {
        if (m_voices.isEmpty() || bytes.isEmpty()) {
            m_errorString = QStringLiteral("a write before any settings, or without bytes");
            return false;
        }
        QVector<Rule> &rules = m_voices.last().rules;
        const int known = m_requests.value(bytes, rules.size());
        if (known == rules.size()) {
            rules.append({bytes, {}, QStringLiteral("recorded")});
            m_requests.insert(bytes, known);
        }
        m_request = &rules[known];
        m_request->answers.append(Answer{});
        m_requestTime = time;
        m_hasRequest = true;
        return true;
    }

    bool readAnswer(const QByteArray &bytes, std::chrono::milliseconds time)
    {
        if (m_request == nullptr) {
            return true;
        }
        Answer &answer = m_request->answers.last();
        if (answer.bytes.isEmpty()) {
            answer.delay = std::max(std::chrono::milliseconds(0), time - m_requestTime);
        }
        answer.bytes += bytes;
        return true;
    }

    QString m_port;
    QString m_errorString;
    QVector<Voice> m_voices;
    QHash<QByteArray, int> m_requests; // of the last voice: the place of each one's rule
    Rule *m_request = nullptr;
    std::chrono::milliseconds m_requestTime{0};
    bool m_hasRequest = false;
};

} // namespace

std::optional<Personality> personalityFromTranscript(const QByteArray &transcript, QString *errorString)
{
    Reader reader;
    int number = 0;
    const QList<QByteArray> lines = transcript.split('\n');
    for (const QByteArray &line : lines) {
        ++number;
        if (!line.trimmed().isEmpty() && !reader.read(line)) {
            *errorString = QStringLiteral("line %1: %2").arg(number).arg(reader.errorString());
            return std::nullopt;
        }
    }
    if (!reader.finish()) {
        *errorString = reader.errorString();
        return std::nullopt;
    }
    return reader.personality();
}

} // namespace printersim
