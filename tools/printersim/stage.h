// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_STAGE_H
#define PRINTERSIM_STAGE_H

#include "commandline.h"

#include <QFile>
#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <vector>

namespace printersim {

/** That standard output could not be written, and why by the system's last error. */
QString outputFailure();

/** Runs the printers of a play: prints their ports, shows what is said and tidies its links up when it is interrupted.
 */
class Stage : public QObject
{
public:
    explicit Stage(const Play &play);
    ~Stage() override;

    /** Switches everything on; false, with the reason in errorString(), when something could not be opened. */
    [[nodiscard]] bool open();
    /** Why it could not be opened, or why the conversation is not in the log from some time on; empty otherwise. */
    QString errorString() const;

private:
    bool openLog();
    bool printPort(const SimulatedPrinter &printer);
    bool openPrinter(const Personality &personality);
    bool link(const SimulatedPrinter &printer);
    void watchInterrupts();
    void print(const QString &line);
    void show(const SimulatedPrinter &printer, const Exchange &exchange);

    Play m_play;
    QString m_errorString;
    QFile m_log;
    QStringList m_links;
    std::vector<std::unique_ptr<SimulatedPrinter>> m_printers;
    std::unique_ptr<QSocketNotifier> m_interrupts;
    int m_signalDescriptor = -1;
};

} // namespace printersim

#endif
