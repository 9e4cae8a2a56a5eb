// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_VERDICT_H
#define PRINTSRV_VERDICT_H

#include "portfacts.h"
#include "portstory.h"

#include <printdevicefinder.h>

#include <QJsonObject>
#include <QString>

namespace printsrv {

/** What a search found out about one port. */
enum class EVerdict {
    Found,
    Silent,
    Echo,
    Foreign, /**< Something talks, but it is none of the printers. */
    Busy,
    Denied,
    Vanished,
    Missing,
    NoPort, /**< Not a serial port at all. */
    Refused, /**< The system does not open it, for another reason. */
    Unfinished, /**< The search was ended before this port's turn was over. */
    Skipped, /**< Not searched: known to be something else. */
    Planned, /**< A search would open it. */
};

/** One line of a search's report. */
struct Verdict
{
    EVerdict kind = EVerdict::Silent;
    PortFacts port;
    /** Valid when found. */
    PrintDeviceInfo device;
    /** What was said on a port that talks. */
    QVector<Utterance> utterances;
    /** The system's reason for EVerdict::Refused. */
    QString reason;
};

/** How a port's turn ended. */
enum class ETurn {
    Over,
    CutShort,
};

/** The verdict on a port that was searched; @p device is invalid when nothing was found there. */
Verdict judge(const PortFacts &port, const PortStory &story, const PrintDeviceInfo &device, ETurn turn);

/** What a dry run says of a port: that it would be searched, or why its file forbids that; who else uses it does not
 * count. */
Verdict forecast(const PortFacts &port);

/** In words, "ttyS0: silent", without a line end. */
QString toText(const Verdict &verdict);

QJsonObject toJson(const Verdict &verdict);

} // namespace printsrv

#endif
