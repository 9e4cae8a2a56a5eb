// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FUZZSUPPORT_H
#define PRINTSRV_FUZZSUPPORT_H

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace fuzz {

/** Parts the input of a target that takes several texts. */
constexpr char Separator = '\x1E';

/** Ends the process when @p law, which is said in words, does not hold. */
void require(bool holds, const char *law);

/** require() that @p found is @p expected; writes both. */
void requireEqual(const QString &expected, const QString &found, const char *law);

/** Counts the log lines of a scope, from warnings on, and writes none of them. */
class LogCount
{
public:
    LogCount();
    ~LogCount();
    Q_DISABLE_COPY_MOVE(LogCount)

    int lines() const;

private:
    QtMessageHandler m_previous;
};

/** The JSON in @p input as a variant, as the library's readers parse it; invalid when it is none. */
QVariant jsonVariant(const QByteArray &input);

} // namespace fuzz

#endif
