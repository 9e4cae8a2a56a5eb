// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_WIRETRACE_H
#define PRINTSRV_WIRETRACE_H

#include <portsettings.h>

#include <QByteArray>
#include <QString>

namespace printsrv {

/** Where in a probe's walk over its settings one entry stands. */
struct WalkPosition
{
    /** From 1. */
    int entry = 1;
    int entries = 1;
};

/**
 * Writes what happens on one port to the category "printers.wire", as SEARCH_PRINTERS() documents it. Costs one test
 * while the category is off.
 */
class WireTrace
{
public:
    explicit WireTrace(const QString &portName, const char *probe = "");

    /** False while nobody wants the lines; then all others do nothing. */
    static bool isOn();

    void settings(const PortSettings &settings, WalkPosition position) const;
    /** One of "write", "read" and "discard"; nothing for no bytes. */
    void bytes(const char *event, const QByteArray &bytes) const;
    void silence(int timeoutMs) const;
    /** One of "opened", "refused", "lost" and "closed"; @p error is the system's text, empty when there is none. */
    void port(const char *event, const QString &error = {}) const;

private:
    QString m_portName;
    const char *m_probe;
};

} // namespace printsrv

#endif
