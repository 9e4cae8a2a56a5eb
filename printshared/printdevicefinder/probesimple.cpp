// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printershelper.h"
#include "probes.h"

#include <textprintermodels.h>

namespace printsrv {

namespace {

constexpr std::chrono::milliseconds AnswerTimeout{1000};
constexpr int LongestAnswer = 5;
constexpr int BusyBit = 0x10;

constexpr const char *StatusHex = "1B 76";
constexpr const char *ControlHex = "01 02 03";
constexpr const char *ClosingHex = "1B 69";

/** The status byte; nothing, with the reason in the log, for any other answer. */
std::optional<quint8> askStatus(ProbeLine &line)
{
    line.write(QByteArray::fromHex(StatusHex));
    const QByteArray answer = line.readSome(LongestAnswer, AnswerTimeout);
    if (answer.size() == 1) {
        return quint8(answer.at(0));
    }
    line.log(answer.isEmpty() ? PrintersHelper::tr("timeout") : PrintersHelper::tr("incorrect data"));
    return std::nullopt;
}

bool ignoresControlCharacters(ProbeLine &line)
{
    line.write(QByteArray::fromHex(ControlHex));
    const bool isSilent = line.keepsSilent(AnswerTimeout);
    if (!isSilent && line.isUsable()) {
        line.log(PrintersHelper::tr("incorrect data"));
    }
    return isSilent;
}

bool isReady(quint8 status)
{
    return (status & BusyBit) == 0;
}

} // namespace

ProbeVerdict talkToSimple(ProbeLine &line)
{
    if (!askStatus(line).has_value()) {
        return std::nullopt;
    }
    const std::optional<quint8> status = askStatus(line);
    const bool isFound = status.has_value() && ignoresControlCharacters(line)
        && line.baudRate() <= SimpleMaximumBaudRate && isReady(*status);
    if (!isFound) {
        return std::nullopt;
    }
    line.write(QByteArray::fromHex(ClosingHex));
    return TextPrinterModels::MODEL_CITIZEN_PPU_231;
}

} // namespace printsrv
