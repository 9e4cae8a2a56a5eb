// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <transcript.h>

#include "support.h"
#include "targets.h"

namespace {

// Each voice looks for each of its requests.
constexpr int LongestPlayed = 4096;

} // namespace

void fuzz::transcript(const QByteArray &input)
{
    QString reason;
    const auto printer = printersim::personalityFromTranscript(input, &reason);
    require(printer.has_value() == reason.isEmpty(), "a transcript is taken, or a reason given");
    if (!printer.has_value() || input.size() > LongestPlayed) {
        return;
    }
    for (const printersim::Voice &voice : printer->voices) {
        QByteArray requests = input;
        printersim::takeRequests(&requests, voice.rules);
        require(requests.size() <= input.size(), "requests are taken from the front");
        for (const printersim::Rule &rule : voice.rules) {
            require(!rule.request.isEmpty() && !rule.answers.isEmpty(), "each request has an answer");
            for (const printersim::Answer &answer : rule.answers) {
                require(answer.delay.count() >= 0, "no answer comes before its request");
            }
        }
    }
}
