// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "probes.h"

#include <textprintermodels.h>

namespace printsrv {

namespace {

constexpr std::chrono::milliseconds AnswerTimeout{1000};
constexpr int LongestAnswer = 5;
constexpr int Repetitions = 3;

constexpr const char *StatusHex = "1B 76";
constexpr const char *ControlHex = "01 02 03 04";
constexpr const char *ClosingHex = "1B 69";

bool answersStatusWithOneByte(ProbeLine &line)
{
    line.writeWithoutFlush(QByteArray::fromHex(StatusHex));
    return line.readSome(LongestAnswer, AnswerTimeout).size() == 1;
}

} // namespace

ProbeVerdict talkToAv268(ProbeLine &line)
{
    for (int i = 0; i < Repetitions; ++i) {
        if (!answersStatusWithOneByte(line)) {
            return std::nullopt;
        }
    }
    line.writeWithoutFlush(QByteArray::fromHex(ControlHex));
    if (!line.keepsSilent(AnswerTimeout)) {
        return std::nullopt;
    }
    line.write(QByteArray::fromHex(ClosingHex));
    return TextPrinterModels::MODEL_AV_268;
}

void setAv268Parameters(PortSettings *settings)
{
    settings->setBaudRate(QSerialPort::Baud115200);
    settings->setDataBits(QSerialPort::Data8);
    settings->setStopBits(QSerialPort::OneStop);
    settings->setParity(QSerialPort::NoParity);
    settings->setFlowControl(QSerialPort::SoftwareControl);
}

} // namespace printsrv
