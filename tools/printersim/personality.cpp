// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "personality.h"

#include <algorithm>

namespace printersim {

namespace {

using namespace std::chrono_literals;

struct NamedBytes
{
    const char *hex;
    const char *meaning;
};

// Obeyed without an answer by every printer: what a search sends when it has found one.
constexpr NamedBytes SilentCommands[] = {
    {"1B 69", "cut"},
    {"1B 33 FF 0A", "set the line spacing and feed a line"},
    {"1D 56 66 A0", "feed and cut"},
    {"1C C0 AA 0F EE 0B 34", "present the ticket"},
    {"1D 65 02", "eject the ticket"},
    {"1B 64 32", "feed and cut"},
    {"20 0A", "print an empty line"},
};

enum class EForm {
    Numeric,
    Character,
};

struct ModelByte
{
    const char *name;
    const char *modelId;
    int byte;
    EForm form;
};

// The printers that report a model byte to GS I; ":CHAR" ones know the request with the character "1" only.
constexpr ModelByte ModelBytes[] = {
    {"CITIZEN_CPP_8001", "CITIZEN_CPP_8001", 0x20, EForm::Numeric},
    {"EPSON_EU_4XX", "EPSON_EU_4XX", 0x27, EForm::Numeric},
    {"CITIZEN_CBM_1000", "CITIZEN_CBM_1000", 0x30, EForm::Numeric},
    {"UNNAMED_3D", "", 0x3D, EForm::Numeric},
    {"CITIZEN_CTS_2000", "CITIZEN_CTS_2000", 0x51, EForm::Numeric},
    {"CUSTOM_VKP_80", "CUSTOM_VKP_80", 0x5D, EForm::Numeric},
    {"CUSTOM_VKP_80:5E", "CUSTOM_VKP_80", 0x5E, EForm::Numeric},
    {"CITIZEN_PPU_700", "CITIZEN_PPU_700", 0x75, EForm::Numeric},
    {"CUSTOM_TG_2480_SE", "CUSTOM_TG_2480_SE", 0x93, EForm::Numeric},
    {"CUSTOM_TG_2480_H", "CUSTOM_TG_2480_H", 0xA7, EForm::Numeric},
    {"CUSTOM_TG_2480_H:A8", "CUSTOM_TG_2480_H", 0xA8, EForm::Numeric},
    {"CUSTOM_VKP_80:CHAR", "CUSTOM_VKP_80", 0x5D, EForm::Character},
    {"UNKNOWN_EE", "", 0xEE, EForm::Numeric},
};

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

Rule rule(const char *request, const char *answer, const char *meaning)
{
    return {hex(request), {{hex(answer)}}, QString::fromLatin1(meaning)};
}

Personality build(const char *name, const char *modelId, const LineSettings &line, const QVector<Rule> &rules)
{
    QVector<Rule> all = rules;
    for (const NamedBytes &command : SilentCommands) {
        all.append({hex(command.hex), {}, QString::fromLatin1(command.meaning)});
    }
    return {QString::fromLatin1(name), QString::fromLatin1(modelId), {{line, all}}};
}

Personality modelBytePrinter(const ModelByte &model)
{
    const QByteArray byte(1, char(model.byte));
    QVector<Rule> rules{{hex("1D 49 31"), {{byte}}, QStringLiteral("which model (as a character)")}};
    if (model.form == EForm::Numeric) {
        rules.append({hex("1D 49 01"), {{byte}}, QStringLiteral("which model")});
    }
    return build(model.name, model.modelId, {19200, EFlow::None, {}}, rules);
}

Personality swecoin(const char *name, const char *statusAnswer)
{
    Personality result = build(name, "SWECOIN_TM_20XX", {9600, EFlow::None, {}},
                               {rule("1B 05 07", "01 02", "which firmware"), rule("1B 05 01", statusAnswer, "ready?"),
                                rule("1B 06 11", "11", "echo 11"), rule("1B 06 12", "12", "echo 12")});
    result.shortestWait = 1400ms;
    result.longestWait = 1400ms;
    return result;
}

Personality escV(const char *name, const LineSettings &line)
{
    Personality result = build(name, name, line, {rule("1B 76", "00", "status")});
    result.shortestWait = 1000ms;
    result.longestWait = 1000ms;
    return result;
}

Personality star()
{
    Personality result = build("TSP-TUP", "TSP-TUP", {9600, EFlow::None, {}},
                               {rule("1B 1E 60 02 1B 06 01", "23 86 00 00 00 00 00 00", "automatic status"),
                                rule("05", "00", "real-time status"), rule("04", "00", "paper status")});
    result.shortestWait = 100ms;
    result.longestWait = 300ms;
    return result;
}

QVector<Personality> buildAll()
{
    QVector<Personality> result;
    for (const ModelByte &model : ModelBytes) {
        result.append(modelBytePrinter(model));
    }
    result.append(swecoin("SWECOIN_TM_20XX", "06"));
    result.append(swecoin("SWECOIN_TM_20XX:NAK", "15"));
    result.append(star());
    result.append(escV("AV_268", {115200, EFlow::Software, {}}));
    result.append(escV("CITIZEN_PPU_231", {9600, EFlow::None, {}}));
    return result;
}

const QVector<Personality> &all()
{
    static const QVector<Personality> personalities = buildAll();
    return personalities;
}

bool isCommandLead(char byte)
{
    return byte == '\x1B' || byte == '\x1C' || byte == '\x1D';
}

bool mayBecomeRequest(const QByteArray &input, const QVector<Rule> &rules)
{
    return std::any_of(rules.cbegin(), rules.cend(), [&](const Rule &candidate) {
        return candidate.request.size() > input.size() && candidate.request.startsWith(input);
    });
}

int longestRule(const QByteArray &input, const QVector<Rule> &rules)
{
    int best = -1;
    for (int i = 0; i < rules.size(); ++i) {
        const bool isLonger = best < 0 || rules.at(i).request.size() > rules.at(best).request.size();
        if (isLonger && input.startsWith(rules.at(i).request)) {
            best = i;
        }
    }
    return best;
}

int requestSize(const QByteArray &input, const QVector<Rule> &rules, int rule)
{
    if (rule >= 0) {
        return rules.at(rule).request.size();
    }
    return isCommandLead(input.at(0)) && input.size() > 1 ? 2 : 1;
}

} // namespace

QStringList personalityNames()
{
    QStringList names;
    for (const Personality &candidate : all()) {
        names.append(candidate.name);
    }
    return names;
}

std::optional<Personality> personality(const QString &name)
{
    const auto found = std::find_if(all().cbegin(), all().cend(), [&](const Personality &candidate) {
        return candidate.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == all().cend() ? std::nullopt : std::optional(*found);
}

QVector<Request> takeRequests(QByteArray *input, const QVector<Rule> &rules)
{
    QVector<Request> requests;
    while (!input->isEmpty() && !mayBecomeRequest(*input, rules)) {
        const int found = longestRule(*input, rules);
        const int size = requestSize(*input, rules, found);
        requests.append({input->left(size), found});
        input->remove(0, size);
    }
    return requests;
}

} // namespace printersim
