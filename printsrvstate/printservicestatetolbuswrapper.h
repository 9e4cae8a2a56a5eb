// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTSERVICESTATETOLBUSWRAPPER_H
#define PRINTSRV_PRINTSERVICESTATETOLBUSWRAPPER_H

#include "clientstate.h"
#include "printservicestate.h"

/**
 * Carries a PrintServiceState over the terminal's message bus: turns it into a client state, with a severity computed
 * from the two states and the record as JSON text, and reads it back.
 *
 * A plain value. Reentrant.
 */
class Q_DECL_EXPORT PrintServiceStateTolbusWrapper
{
public:
    /** Type INVALID, no description, a null time and a default record. */
    PrintServiceStateTolbusWrapper() = default;

    /** Carries @p state; type INVALID and a null time. */
    PrintServiceStateTolbusWrapper(const PrintServiceState &state);

    /** Reads @p clientState as setClientState() does; isValid() tells whether it could be read. */
    PrintServiceStateTolbusWrapper(const tolbus::ClientState &clientState);

    /** The severity that was read; INVALID by default. toClientState() computes its own. */
    tolbus::ClientState::EStateType stateType() const;

    /** The description that was read; empty by default. */
    QString stateDescription() const;

    /** The time that was read; null by default. */
    QDateTime stateDt() const;

    /** The record. */
    PrintServiceState state() const;

    /**
     * The client state of the record, at this moment: the record as compact JSON, no description, and the type.
     *
     * The type is INVALID for a service state 0xFF, else CRITICAL for a service state above 3, else by the device
     * state: 0 and 1 NORMAL, 2 WARNING, 3 CRITICAL, 4 FATAL, all others INVALID.
     */
    tolbus::ClientState toClientState() const;

    /**
     * Takes type, description and time of @p clientState, and those fields of the record that its JSON text holds; JSON
     * that is no object holds none.
     *
     * @return ClientState::isValid() of it. Text that is no JSON gives false and one warning with the parser's error
     * and the text; type and time become invalid, states, codes and message those of a new record, while the
     * description and the tape flag stay as they were.
     */
    bool setClientState(const tolbus::ClientState &clientState);

    /** True when the type is not INVALID, the time is valid, and neither state is 0xFF. */
    bool isValid() const;

    /** True when isValid(), the service state is 1 to 3 and the device state is 0 to 2: receipts can be printed. */
    bool isWorkable() const;

    /**
     * The fields for displays and logs: "stateType" (int), "stateDt" (ISO 8601, in UTC), "stateDescription",
     * "serviceState" and "deviceState" (int), "deviceErrorCode" and "deviceNativeCode" (uint), "deviceErrorMsg",
     * "tapeAvailablle" (bool).
     * Contract: "stateDescription" is the name of the type, "NORMAL" for instance, and empty for a type without a name;
     * "tapeAvailablle" is spelled so.
     */
    QVariantMap toMap() const;

    /** True when all four fields are equal. */
    bool operator==(const PrintServiceStateTolbusWrapper &other) const;
    bool operator!=(const PrintServiceStateTolbusWrapper &other) const;

private:
    tolbus::ClientState::EStateType m_stateType = tolbus::ClientState::INVALID;
    QString m_stateDescription;
    QDateTime m_stateDt;
    PrintServiceState m_state;
};

Q_DECLARE_METATYPE(PrintServiceStateTolbusWrapper)

/** Writes toMap(). */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const PrintServiceStateTolbusWrapper &wrapper);

#endif
