// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTERSHELPER_H
#define PRINTSRV_PRINTERSHELPER_H

#include <portsettings.h>

#include <QLoggingCategory>
#include <QObject>
#include <QSerialPort>
#include <QSharedPointer>
#include <QVector>

#include <atomic>

/**
 * Returns the logging category "printers" of device discovery, the same object at every call. Thread-safe.
 *
 * Debug lines tell what the probes try, write and read; each begins with the probe's name. Critical lines tell that
 * nothing could be tried at all.
 *
 * A second category, "printers.wire", is off unless its debug output is asked for (QLoggingCategory::setFilterRules(),
 * an installed filter or QT_LOGGING_RULES). Each of its lines is one JSON object for programs, not for people, so that
 * a message handler can follow or record a search. Members of every line: "ms" (monotonic, from the process's first
 * such line), "port" (as QSerialPort::portName() gives it), "probe" (empty outside of one) and "event", which is one of
 * - "settings": these are now tried; "entry" (from 1), "entries", "baudRate", "dataBits", "parity" ("none", "even",
 *   "odd"), "stopBits", "flowControl" ("none", "hardware", "software");
 * - "write", "read": "bytes" in hexadecimal digits; "discard": the same of input that no probe asked for;
 * - "silence": nothing came, or less than was asked for, within "timeoutMs";
 * - "opened", "refused" (with "error"), "lost" (the device went away), "closed".
 * Of more than 1024 bytes the first 1024 are given, and "size".
 */
Q_DECL_EXPORT const QLoggingCategory &SEARCH_PRINTERS();

/**
 * Identifies the text printer on one serial port by holding short conversations with it.
 *
 * A helper tries a list of candidate settings, at first the 54 combinations of 115200 to 4800 baud (outermost), parity
 * none, even, odd, and flow control none, hardware, software (innermost), each with 8 data bits and one stop bit. Every
 * probe leaves in `settings` the last set that it tried, also when it found nothing, and the first one when the port is
 * not open.
 *
 * The helper and its port belong to one thread, in which everything is called and no other object reads from the port.
 * An answer of an exact number of bytes is waited for until its timeout has passed. A device that goes away, which the
 * system tells by waits that end at once while the port still calls itself open, ends the probe at once: the helper
 * then closes the port. Nothing is thrown.
 */
class Q_DECL_EXPORT PrintersHelper : public QObject
{
    Q_OBJECT

public:
    /**
     * Makes a helper for @p port, which is shared with the caller, opened or not, and may be null: then every search
     * fails. The object name becomes "printersHelper[%1]" with the port's name, "printersHelper[]" without a port.
     */
    PrintersHelper(const QSharedPointer<QSerialPort> &port, QObject *parent = nullptr);

    /** Gives its share of the port back, neither closed nor deleted unless it was the last one. */
    ~PrintersHelper() override;

    /**
     * Lets another thread end a search: while @p flag is true no probe succeeds and nothing more is written. It is
     * looked at before each candidate entry and at least every 50 ms within a wait. Null, as at construction, is a flag
     * that is never raised. To be set before a search, in the helper's thread; the value may change in any.
     */
    void setStopFlag(const QSharedPointer<const std::atomic_bool> &flag);

    /**
     * Applies the five serial parameters of @p settings to the port, its name apart; nothing without a port. What the
     * port refuses it refuses silently: pseudo-terminals know no parity, and still talk.
     */
    void setPortSettings(const PortSettings &settings);

    /** True when there is a port and it is open. */
    bool portIsValid() const;

    /**
     * Waits up to @p msecs milliseconds for input, after the thread's events have been handled (socket notifiers
     * apart).
     *
     * True when input is there, at once when some was there already; negative times have no end. False when nothing
     * came, and at once when there is no open port, the stop flag is raised or the device went away, which closes the
     * port.
     */
    bool waitForReadyRead(int msecs);

    /**
     * Searches the port for a printer, opening it for reading and writing when it is not open; it stays open.
     *
     * With an empty @p model all probes are tried: scan1D491(), scanSwecoin(), scanStar(), scanAV268(), scanSimple(),
     * over their own lists of settings. Otherwise only the probe of that model is tried, and only with @p settings,
     * which replace the candidate settings for the rest of the helper's life; other identifiers than those that the
     * probes name, MODEL_CITIZEN_CPP_8001 among them, find nothing and write nothing.
     *
     * @return true when a printer answered: @p model and @p settings then tell which and how. A verification that meets
     * another model of the same family is a success with that model. False without a port and when it cannot be opened,
     * each with one critical line.
     */
    bool scan(QString &model, PortSettings &settings);

    /** Looks for a Swecoin TM 20xx, 1400 ms for each answer. Model and closing bytes: MODEL_SWECOIN_TM_20XX, none. */
    bool scanSwecoin(QString &model, PortSettings &settings);

    /**
     * Looks for the printers that report a model byte to GS I, 300 ms for each answer.
     *
     * Contract: a printer that reports 0x3D is found without a name; the result is true and @p model stays as it was.
     */
    bool scan1D491(QString &model, PortSettings &settings);

    /**
     * Looks for a Star TSP or TUP with the settings of prepareStarSettings(), or with those to verify within scan().
     * The candidate settings are as before when it returns. Model: MODEL_TSP_TUP.
     *
     * For each set: 1B 1E 60 02 1B 06 01 is answered by 1 to 16 bytes within 300 ms that are not an echo (1B 06 01, or
     * what was sent), 05 and then 04 by one or more bytes within 100 ms each; "STA" is not answered within 1000 ms and
     * 01 02 03 not within 100 ms. An answer has ended when nothing more has come for 50 ms.
     */
    bool scanStar(QString &model, PortSettings &settings);

    /**
     * Looks for a printer that answers the ESC v status request twice with one byte each and keeps silent otherwise,
     * 1000 ms for each answer, at 19200 baud and below. Model: MODEL_CITIZEN_PPU_231.
     */
    bool scanSimple(QString &model, PortSettings &settings);

    /**
     * Looks for an AV-268 with its one set of parameters, 115200 baud and software flow control, which stay in
     * @p settings also when it is not found; the port name in there stays as it was. Model: MODEL_AV_268.
     */
    bool scanAV268(QString &model, PortSettings &settings);

    /**
     * Returns the 24 settings of the Star probe: 38400, 19200, 9600, 4800 baud (outermost), parity none, even, odd,
     * flow control none, hardware (innermost).
     */
    QVector<PortSettings> prepareStarSettings();

private:
    bool isStopped() const;
    bool openPort();
    bool runAllProbes(QString &model, PortSettings &settings);
    bool runProbeOf(QString &model, PortSettings &settings);
    bool walkStar(const QVector<PortSettings> &candidates, QString &model, PortSettings &settings);

    QSharedPointer<QSerialPort> m_port;
    QVector<PortSettings> m_candidates;
    QSharedPointer<const std::atomic_bool> m_stopFlag;
};

#endif
