// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "linesettings.h"

#include <algorithm>
#include <iterator>

#include <termios.h>

namespace printersim {

namespace {

struct Speed
{
    speed_t code;
    int baudRate;
};

constexpr Speed Speeds[] = {{B1200, 1200},   {B2400, 2400},   {B4800, 4800},     {B9600, 9600},    {B19200, 19200},
                            {B38400, 38400}, {B57600, 57600}, {B115200, 115200}, {B230400, 230400}};

int baudRate(speed_t code)
{
    const auto *found
        = std::find_if(std::begin(Speeds), std::end(Speeds), [code](const Speed &speed) { return speed.code == code; });
    return found == std::end(Speeds) ? 0 : found->baudRate;
}

EFlow flow(const termios &line)
{
    if ((line.c_cflag & CRTSCTS) != 0) {
        return EFlow::Hardware;
    }
    return (line.c_iflag & IXON) != 0 ? EFlow::Software : EFlow::None;
}

EParity parity(const termios &line)
{
    if ((line.c_cflag & PARENB) == 0) {
        return EParity::None;
    }
    return (line.c_cflag & PARODD) != 0 ? EParity::Odd : EParity::Even;
}

} // namespace

std::optional<LineSettings> readLineSettings(int masterDescriptor)
{
    termios line = {};
    if (tcgetattr(masterDescriptor, &line) != 0) {
        return std::nullopt;
    }
    return LineSettings{baudRate(cfgetospeed(&line)), flow(line), parity(line)};
}

bool matches(const LineSettings &own, const LineSettings &actual)
{
    const bool fitsParity = !own.parity.has_value() || own.parity == actual.parity;
    return own.baudRate == actual.baudRate && own.flow == actual.flow && fitsParity;
}

std::optional<EFlow> flowFromName(const QString &name)
{
    if (name == QLatin1String("none")) {
        return EFlow::None;
    }
    if (name == QLatin1String("hardware")) {
        return EFlow::Hardware;
    }
    return name == QLatin1String("software") ? std::optional(EFlow::Software) : std::nullopt;
}

std::optional<EParity> parityFromName(const QString &name)
{
    if (name == QLatin1String("none")) {
        return EParity::None;
    }
    if (name == QLatin1String("even")) {
        return EParity::Even;
    }
    return name == QLatin1String("odd") ? std::optional(EParity::Odd) : std::nullopt;
}

} // namespace printersim
