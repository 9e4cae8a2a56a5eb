// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_JSONTEXT_H
#define PRINTSRV_JSONTEXT_H

#include "outcome.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace printsrv {

/**
 * A text or a number of a JSON object that parseJsonObject() made.
 *
 * Qt reads 12.00 as a whole number, and then a template prints it in another format than 12.50. So numbers come as
 * they are written, and it is the reader's to say what they are.
 */
class JsonScalar
{
public:
    explicit JsonScalar(const QJsonValue &value);

    /** True for a string. */
    bool isText() const;
    /** True for a number. */
    bool isNumber() const;
    /** The string, or the number as it is written; empty for anything else. */
    QString text() const;

private:
    QString m_marked;
};

/**
 * The object that a JSON text holds. Its strings and numbers are read with JsonScalar, its keys are as they are.
 *
 * A syntax error gives the parser's text with line and column.
 */
[[nodiscard]] Outcome<QJsonObject> parseJsonObject(const QByteArray &json);

/** What the parser's @p error in @p json says, with line and column. */
Failure jsonFailure(const QByteArray &json, const QJsonParseError &error);

} // namespace printsrv

#endif
