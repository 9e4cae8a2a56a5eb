// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "probes.h"

#include <textprintermodels.h>

namespace printsrv {

namespace {

using namespace std::chrono_literals;

constexpr auto StatusTimeout = 300ms;
constexpr auto ShortTimeout = 100ms;
constexpr auto TextTimeout = 1000ms;
constexpr int LongestAnswer = 16;

constexpr const char *StatusHex = "1B 1E 60 02 1B 06 01";
constexpr const char *EchoHex = "1B 06 01";
constexpr const char *RealTimeHex = "05";
constexpr const char *PaperHex = "04";
constexpr const char *ControlHex = "01 02 03";
constexpr const char *ClosingHex = "1B 64 32";
// Contract: the first three bytes of "STAR-TEST" only; a printer keeps silent on them.
constexpr const char *TextHex = "53 54 41";

bool isEcho(const QByteArray &answer)
{
    return answer.startsWith(QByteArray::fromHex(EchoHex)) || answer.startsWith(QByteArray::fromHex(StatusHex));
}

bool tellsStatus(ProbeLine &line)
{
    line.write(QByteArray::fromHex(StatusHex));
    const QByteArray answer = line.readWhole(LongestAnswer, StatusTimeout);
    line.discard(QSerialPort::Input);
    return !answer.isEmpty() && !isEcho(answer);
}

bool answers(ProbeLine &line, const char *requestHex)
{
    line.write(QByteArray::fromHex(requestHex));
    return !line.readWhole(LongestAnswer, ShortTimeout).isEmpty();
}

bool ignores(ProbeLine &line, const char *requestHex, std::chrono::milliseconds timeout)
{
    line.write(QByteArray::fromHex(requestHex));
    return line.keepsSilent(timeout);
}

} // namespace

ProbeVerdict talkToStar(ProbeLine &line)
{
    const bool isFound = tellsStatus(line) && answers(line, RealTimeHex) && answers(line, PaperHex)
        && ignores(line, TextHex, TextTimeout) && ignores(line, ControlHex, ShortTimeout);
    if (!isFound) {
        return std::nullopt;
    }
    line.write(QByteArray::fromHex(ClosingHex));
    return TextPrinterModels::MODEL_TSP_TUP;
}

} // namespace printsrv
