// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PORTWAIT_H
#define PRINTSRV_PORTWAIT_H

#include <QSerialPort>

#include <atomic>

namespace printsrv {

enum class EWaitResult {
    Ready, /**< Input is there. */
    Silence, /**< The whole time passed without any. */
    Stopped, /**< The stop flag was raised. */
    Lost, /**< The device went away. */
};

/**
 * Waits for further input of an open port, in slices of at most 25 ms that look at @p stopFlag (null: never raised).
 *
 * @p timeoutMs of 0 looks once, a negative one never ends by itself. The time is the sum of the slices: the wait is as
 * exact as the system's own.
 */
EWaitResult waitForInput(QSerialPort &port, int timeoutMs, const std::atomic_bool *stopFlag);

} // namespace printsrv

#endif
