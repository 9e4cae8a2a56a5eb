// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef TOLBUSLIB_CLIENTSTATE_H
#define TOLBUSLIB_CLIENTSTATE_H

#include <QDateTime>
#include <QMetaType>
#include <QString>

namespace tolbus {

/**
 * The state that a client of the terminal's message bus shows to the others: a severity, a text whose form belongs to
 * the client, a description for people, and the time at which it was true.
 *
 * A plain value. Reentrant.
 */
class Q_DECL_EXPORT ClientState
{
public:
    /** Severity of a state. */
    enum EStateType : qint8 {
        INVALID = -1, /**< Nothing is known of the client; the state of a new record. */
        NORMAL = 0, /**< The client works. */
        WARNING = 1, /**< The client works and something needs attention soon. */
        CRITICAL = 2, /**< The client does not work until something is mended. */
        FATAL = 3, /**< The client does not work and cannot recover without service. */
    };

    /** INVALID by default. */
    EStateType stateType() const;
    void setStateType(const EStateType &stateType);

    /** The client's own text, for instance JSON; empty by default. */
    QString state() const;
    void setState(const QString &state);

    /** Text for people; empty by default. */
    QString description() const;
    void setDescription(const QString &description);

    /** The time of the state; null by default. */
    QDateTime dt() const;
    void setDt(const QDateTime &dt);

    /** True when the type is not INVALID and the time is valid. */
    bool isValid() const;

    /** True when all four fields are equal. */
    bool operator==(const ClientState &other) const;
    bool operator!=(const ClientState &other) const;

private:
    EStateType m_stateType = INVALID;
    QString m_state;
    QString m_description;
    QDateTime m_dt;
};

} // namespace tolbus

Q_DECLARE_METATYPE(tolbus::ClientState)

#endif
