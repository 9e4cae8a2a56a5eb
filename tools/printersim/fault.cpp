// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "fault.h"

namespace printersim {

QStringList faultNames()
{
    return {QStringLiteral("none"),       QStringLiteral("silent"),       QStringLiteral("echo"),
            QStringLiteral("garbage"),    QStringLiteral("late-inside"),  QStringLiteral("late-outside"),
            QStringLiteral("two-pieces"), QStringLiteral("changes-mind"), QStringLiteral("closes"),
            QStringLiteral("unplugs"),    QStringLiteral("drops"),        QStringLiteral("noise"),
            QStringLiteral("constant"),   QStringLiteral("slow-echo")};
}

std::optional<EFault> faultFromName(const QString &name)
{
    const int index = faultNames().indexOf(name);
    return index < 0 ? std::nullopt : std::optional(static_cast<EFault>(index));
}

} // namespace printersim
