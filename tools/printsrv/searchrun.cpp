// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "searchrun.h"

#include "interruption.h"
#include "outputwriter.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>

#include <cstdio>

#include <unistd.h>

namespace printsrv {

namespace {

using namespace std::chrono_literals;

constexpr auto ProgressInterval = 250ms;

/** One line per port at the end of the terminal, written over and over. */
class ProgressLines
{
public:
    ProgressLines(const WireListener &listener, const QVector<PortFacts> &ports)
        : m_listener(listener)
        , m_ports(ports)
    {
    }

    void show()
    {
        clear();
        QString text;
        for (const PortFacts &port : qAsConst(m_ports)) {
            const PortStory story = m_listener.story(port.name);
            text += QStringLiteral("%1: %2\n").arg(port.name, story.progress());
        }
        write(text);
        m_isShown = true;
    }

    void clear()
    {
        if (m_isShown) {
            // Up, and erase down to the end of the screen.
            write(QStringLiteral("\x1B[%1A\x1B[J").arg(m_ports.size()));
        }
        m_isShown = false;
    }

private:
    static void write(const QString &text)
    {
        std::fputs(text.toLocal8Bit().constData(), stderr);
    }

    const WireListener &m_listener;
    QVector<PortFacts> m_ports;
    bool m_isShown = false;
};

} // namespace

ExitCode writeReport(const QVector<Verdict> &verdicts, EReportForm form)
{
    QString text;
    QJsonArray array;
    for (const Verdict &verdict : verdicts) {
        text += toText(verdict) + QLatin1Char('\n');
        array.append(toJson(verdict));
    }
    return writeOutput({}, form == EReportForm::Json ? QJsonDocument(array).toJson() : text.toUtf8());
}

QVector<Verdict> runSearch(const WireListener &listener, const QVector<PortFacts> &ports,
                           const std::function<void(Search &)> &begin)
{
    const Interruption interruption;
    Search search(listener);
    ProgressLines lines(listener, ports);
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&search, &Search::over, &loop, &QEventLoop::quit);
    QObject::connect(&interruption, &Interruption::interrupted, &search, &Search::cancel);
    QObject::connect(&timer, &QTimer::timeout, &search, [&lines] { lines.show(); });
    if (isatty(STDERR_FILENO) != 0) {
        timer.start(ProgressInterval);
    }
    begin(search);
    loop.exec();
    lines.clear();
    return search.verdicts();
}

} // namespace printsrv
