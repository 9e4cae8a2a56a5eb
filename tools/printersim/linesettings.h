// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_LINESETTINGS_H
#define PRINTERSIM_LINESETTINGS_H

#include <QString>

#include <optional>

namespace printersim {

enum class EFlow {
    None,
    Hardware,
    Software,
};

enum class EParity {
    None,
    Even,
    Odd,
};

/** The settings at which a line is used, as far as a pseudo-terminal knows them. */
struct LineSettings
{
    /** Baud. */
    int baudRate = 9600;
    EFlow flow = EFlow::None;
    /** Not set: any will do. A pseudo-terminal forgets the parity, so that only a test that remembers it can ask. */
    std::optional<EParity> parity;
};

/** What the other side of the pseudo-terminal with this master has set; nothing when the line is gone. */
std::optional<LineSettings> readLineSettings(int masterDescriptor);

/** True when @p actual is what @p own asks for. */
bool matches(const LineSettings &own, const LineSettings &actual);

/** The flow control of this name ("none", "hardware", "software"); nothing for any other text. */
std::optional<EFlow> flowFromName(const QString &name);

/** The parity of this name ("none", "even", "odd"); nothing for any other text. */
std::optional<EParity> parityFromName(const QString &name);

} // namespace printersim

#endif
