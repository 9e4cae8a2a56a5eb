// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printershelper.h"
#include "probes.h"

#include <textprintermodels.h>

namespace printsrv {

namespace {

constexpr std::chrono::milliseconds AnswerTimeout{1400};
constexpr char Ack = 0x06;
constexpr char Nak = 0x15;
constexpr char FirstEcho = 0x11;
constexpr char SecondEcho = 0x12;

const QByteArray &firmwareRequest()
{
    static const QByteArray request = QByteArray::fromHex("1B 05 07");
    return request;
}

const QByteArray &readyRequest()
{
    static const QByteArray request = QByteArray::fromHex("1B 05 01");
    return request;
}

QByteArray echoRequest(char byte)
{
    return QByteArray::fromHex("1B 06") + byte;
}

/** The two bytes as the printer's maker prints them: signed. */
QString firmwareText(const QByteArray &answer)
{
    return QStringLiteral("FIRMWARE: %1.%2")
        .arg(int(static_cast<signed char>(answer.at(0))))
        .arg(int(static_cast<signed char>(answer.at(1))));
}

bool tellsFirmware(ProbeLine &line)
{
    const QByteArray answer = line.ask(firmwareRequest(), 2, AnswerTimeout);
    if (answer.isEmpty()) {
        return false;
    }
    if (SEARCH_PRINTERS().isDebugEnabled()) {
        line.log(firmwareText(answer));
    }
    return true;
}

bool tellsReadiness(ProbeLine &line)
{
    const QByteArray answer = line.ask(readyRequest(), 1, AnswerTimeout);
    if (answer == QByteArray(1, Nak)) {
        // A printer that is not ready may have more to say; it is one nevertheless.
        line.discard();
        return true;
    }
    return answer == QByteArray(1, Ack);
}

bool echoes(ProbeLine &line, char byte)
{
    return line.ask(echoRequest(byte), 1, AnswerTimeout) == QByteArray(1, byte);
}

} // namespace

ProbeVerdict talkToSwecoin(ProbeLine &line)
{
    const bool isFound
        = tellsFirmware(line) && tellsReadiness(line) && echoes(line, FirstEcho) && echoes(line, SecondEcho);
    return isFound ? ProbeVerdict(TextPrinterModels::MODEL_SWECOIN_TM_20XX) : std::nullopt;
}

} // namespace printsrv
