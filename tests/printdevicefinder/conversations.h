// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CONVERSATIONS_H
#define PRINTSRV_CONVERSATIONS_H

#include <printdevicefinder.h>

#include <QHash>
#include <QJsonObject>
#include <QVector>

/** The models that are found by the byte that the printer answers, by that byte. */
const QHash<int, QString> &modelsByByte();

/** True for a model that is found by its byte alone: no silence, and so no time, decides about it. */
bool isFoundByItsByte(const QString &model);

/** What the searches of one log said on their ports: the oracle for what they found. */
class Conversations
{
public:
    /** @p events are those of "printers.wire", of searches whose waits were @p waitDivisor times shorter. */
    Conversations(const QVector<QJsonObject> &events, int waitDivisor);

    /**
     * Why this device was not to be found: no use of its port ended, at its settings, with the conversation that the
     * rules ask for. Empty when one did.
     */
    QString objection(const PrintDeviceInfo &device) const;

private:
    struct Talk
    {
        QString settings;
        /** "w" and "r" with the bytes, "s" for a whole silence, "!" with what else happened; blanks between. */
        QStringList said;
        int lastMs = 0;
    };

    void add(const QJsonObject &event);

    int m_waitDivisor;
    QHash<QString, Talk> m_running;
    QMultiHash<QString, Talk> m_ended;
};

#endif
