// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_WIRELISTENER_H
#define PRINTSRV_WIRELISTENER_H

#include "portstory.h"

#include <QFile>
#include <QHash>
#include <QMutex>

namespace printsrv {

/**
 * Listens to the category "printers.wire" while it exists: keeps the story of each port and writes the lines to a
 * recording. One at a time; other messages go to the handler that was there before. story() may be called at any time.
 */
class WireListener
{
public:
    WireListener();
    ~WireListener();
    WireListener(const WireListener &) = delete;
    WireListener &operator=(const WireListener &) = delete;

    /** Begins to record into the file; false, with the reason in errorString(), when it cannot be written. */
    [[nodiscard]] bool record(const QString &fileName);
    QString errorString() const;

    /** True unless a line could not be written. */
    bool isRecordComplete() const;

    /** The story of the port as it stands; an empty one when nothing happened there. */
    PortStory story(const QString &portName) const;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
    void hear(const QByteArray &line);

    mutable QMutex m_mutex;
    QHash<QString, PortStory> m_stories;
    QFile m_recording;
    bool m_isRecordComplete = true;
};

} // namespace printsrv

#endif
