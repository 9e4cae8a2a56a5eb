// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "jsontext.h"

#include <cctype>

namespace printsrv {

namespace {

constexpr QLatin1Char TextMark('t');
constexpr QLatin1Char NumberMark('n');

bool belongsToNumber(char byte)
{
    return byte == '-' || byte == '+' || byte == '.' || byte == 'e' || byte == 'E'
        || std::isdigit(static_cast<unsigned char>(byte)) != 0;
}

int endOfString(const QByteArray &json, int start)
{
    int end = start + 1;
    while (end < json.size() && json.at(end) != '"') {
        end += json.at(end) == '\\' ? 2 : 1;
    }
    return qMin(end + 1, json.size());
}

bool isKey(const QByteArray &json, int end)
{
    while (end < json.size() && std::isspace(static_cast<unsigned char>(json.at(end))) != 0) {
        ++end;
    }
    return end < json.size() && json.at(end) == ':';
}

// Well-formed JSON with each string "x" as "tx" and each number 1.0 as "n1.0"; keys stay.
QByteArray markScalars(const QByteArray &json)
{
    QByteArray marked;
    marked.reserve(json.size() + json.size() / 8);
    for (int start = 0; start < json.size();) {
        int end = start + 1;
        if (json.at(start) == '"') {
            end = endOfString(json, start);
            marked.append(isKey(json, end) ? "\"" : "\"t").append(json.constData() + start + 1, end - start - 1);
        } else if (json.at(start) == '-' || std::isdigit(static_cast<unsigned char>(json.at(start))) != 0) {
            while (end < json.size() && belongsToNumber(json.at(end))) {
                ++end;
            }
            marked.append("\"n").append(json.constData() + start, end - start).append('"');
        } else {
            marked.append(json.at(start));
        }
        start = end;
    }
    return marked;
}

} // namespace

JsonScalar::JsonScalar(const QJsonValue &value)
    : m_marked(value.toString())
{
}

bool JsonScalar::isText() const
{
    return m_marked.startsWith(TextMark);
}

bool JsonScalar::isNumber() const
{
    return m_marked.startsWith(NumberMark);
}

QString JsonScalar::text() const
{
    return m_marked.mid(1);
}

Failure jsonFailure(const QByteArray &json, const QJsonParseError &error)
{
    if (json.trimmed().isEmpty()) {
        return {QStringLiteral("is empty, where JSON is expected")};
    }
    const QByteArray before = json.left(error.offset);
    const int lineStart = before.lastIndexOf('\n') + 1;
    const QString hint
        = error.error == QJsonParseError::IllegalUTF8String ? QStringLiteral("; the data must be in UTF-8") : QString();
    return {QStringLiteral("no JSON: ") + error.errorString() + hint, before.count('\n') + 1,
            qMax(1, QString::fromUtf8(before.mid(lineStart)).size())}; // the parser stops behind the character
}

Outcome<QJsonObject> parseJsonObject(const QByteArray &json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        return jsonFailure(json, error);
    }
    if (!document.isObject()) {
        return Failure{QStringLiteral("no receipt: the data is a JSON object, {…}")};
    }
    return QJsonDocument::fromJson(markScalars(json)).object();
}

} // namespace printsrv
