// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "probes.h"

#include <textprintermodels.h>

#include <algorithm>
#include <iterator>

namespace printsrv {

namespace {

constexpr std::chrono::milliseconds AnswerTimeout{300};

// The same request with its argument as a number and as a character; a printer knows one of them or both.
constexpr const char *RequestsHex[] = {"1D 49 01", "1D 49 31"};

struct Model
{
    quint8 byte;
    /** Null for a printer without a name. */
    const QString *id;
    /** Sent after success, each followed by a flush; null for nothing. */
    const char *closingHex[2];
};

constexpr Model Models[] = {
    {0x20, &TextPrinterModels::MODEL_CITIZEN_CPP_8001, {"1B 33 FF 0A", "1B 69"}},
    {0x27, &TextPrinterModels::MODEL_EPSON_EU_4XX, {"1D 56 66 A0", nullptr}},
    {0x30, &TextPrinterModels::MODEL_CITIZEN_CBM_1000, {"1B 33 FF 0A", "1B 69"}},
    // Contract: found, but neither named nor told anything.
    {0x3D, nullptr, {nullptr, nullptr}},
    {0x51, &TextPrinterModels::MODEL_CITIZEN_CTS_2000, {"20 0A 20 0A 1B 69 20 0A", nullptr}},
    {0x5D, &TextPrinterModels::MODEL_CUSTOM_VKP_80, {"1B 69 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A", "1D 65 02"}},
    {0x5E, &TextPrinterModels::MODEL_CUSTOM_VKP_80, {"1B 69 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A 20 0A", "1D 65 02"}},
    {0x75, &TextPrinterModels::MODEL_CITIZEN_PPU_700, {"1B 33 FF 0A", "1B 69"}},
    {0x93, &TextPrinterModels::MODEL_CUSTOM_TG_2480_SE, {"1C C0 AA 0F EE 0B 34", nullptr}},
    {0xA7, &TextPrinterModels::MODEL_CUSTOM_TG_2480_H, {"1C C0 AA 0F EE 0B 34", nullptr}},
    {0xA8, &TextPrinterModels::MODEL_CUSTOM_TG_2480_H, {"1C C0 AA 0F EE 0B 34", nullptr}},
};

const Model *modelOf(char byte)
{
    const auto *found = std::find_if(std::begin(Models), std::end(Models),
                                     [byte](const Model &model) { return model.byte == quint8(byte); });
    return found == std::end(Models) ? nullptr : found;
}

QByteArray askModelByte(ProbeLine &line)
{
    QByteArray answer;
    for (const char *request : RequestsHex) {
        answer = answer.isEmpty() ? line.ask(QByteArray::fromHex(request), 1, AnswerTimeout) : answer;
    }
    return answer;
}

void close(ProbeLine &line, const Model &model)
{
    for (const char *command : model.closingHex) {
        if (command != nullptr) {
            line.write(QByteArray::fromHex(command));
        }
    }
}

} // namespace

ProbeVerdict talkTo1D491(ProbeLine &line)
{
    const QByteArray identification = askModelByte(line);
    if (identification.isEmpty() || askModelByte(line) != identification) {
        return std::nullopt;
    }
    const Model *model = modelOf(identification.at(0));
    if (model == nullptr) {
        line.log(QStringLiteral("unknown model byte 0x%1 at %2 baud")
                     .arg(QString::fromLatin1(identification.toHex()))
                     .arg(line.baudRate()));
        return std::nullopt;
    }
    close(line, *model);
    return model->id == nullptr ? QString() : *model->id;
}

} // namespace printsrv
