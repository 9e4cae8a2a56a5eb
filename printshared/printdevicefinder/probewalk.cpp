// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "probes.h"

namespace printsrv {

bool walkCandidates(const ProbeContext &context, const QVector<PortSettings> &candidates, Conversation converse,
                    QString &model, PortSettings &settings)
{
    ProbeLine line(context);
    for (int i = 0; i < candidates.size(); ++i) {
        line.pumpEvents();
        if (line.isStopped()) {
            return false;
        }
        settings = candidates.at(i);
        if (converseAt(line, settings, {i + 1, candidates.size()}, converse, model)) {
            return true;
        }
        if (!line.isUsable()) {
            return false;
        }
    }
    return false;
}

bool converseAt(ProbeLine &line, const PortSettings &settings, WalkPosition position, Conversation converse,
                QString &model)
{
    if (!line.begin(settings, position)) {
        return false;
    }
    const ProbeVerdict verdict = converse(line);
    if (!verdict.has_value()) {
        line.awaitQuiet();
        return false;
    }
    if (!verdict->isNull()) {
        model = *verdict;
    }
    return true;
}

} // namespace printsrv
