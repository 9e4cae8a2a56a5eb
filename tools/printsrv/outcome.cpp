// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "outcome.h"

namespace printsrv {

QString Failure::at(const QString &path) const
{
    QString place = path;
    for (const int number : {line, column}) {
        place += number > 0 ? QLatin1Char(':') + QString::number(number) : QString();
    }
    return place + QStringLiteral(": ") + text;
}

} // namespace printsrv
