// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SEARCHRUN_H
#define PRINTSRV_SEARCHRUN_H

#include "search.h"
#include "subcommand.h"

#include <functional>

namespace printsrv {

/** How a search's report is written. */
enum class EReportForm {
    Text,
    Json,
};

/** Writes the verdicts to standard output, one line each or one JSON array. */
[[nodiscard]] ExitCode writeReport(const QVector<Verdict> &verdicts, EReportForm form);

/**
 * Runs a search that @p begin starts until it is over or interrupted, showing its progress when standard error is a
 * terminal, and returns the verdicts.
 */
QVector<Verdict> runSearch(const WireListener &listener, const QVector<PortFacts> &ports,
                           const std::function<void(Search &)> &begin);

} // namespace printsrv

#endif
