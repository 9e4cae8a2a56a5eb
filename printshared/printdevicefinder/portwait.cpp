// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "portwait.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>

namespace printsrv {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr milliseconds LongestSlice{25};

microseconds elapsed(const QElapsedTimer &timer)
{
    return microseconds(timer.nsecsElapsed() / 1000);
}

/** Waits one slice and takes the time that it took from @p left; a lost device's wait ends early and without a reason.
 */
EWaitResult waitSlice(QSerialPort &port, microseconds *left)
{
    const auto slice = std::min(LongestSlice, std::chrono::round<milliseconds>(*left));
    QElapsedTimer timer;
    timer.start();
    port.clearError();
    if (port.waitForReadyRead(int(slice.count()))) {
        return EWaitResult::Ready;
    }
    const bool isWhole = port.error() == QSerialPort::TimeoutError || elapsed(timer) >= slice;
    *left -= std::max<microseconds>(slice, elapsed(timer));
    return isWhole && port.error() != QSerialPort::ResourceError ? EWaitResult::Silence : EWaitResult::Lost;
}

} // namespace

EWaitResult waitForInput(QSerialPort &port, int timeoutMs, const std::atomic_bool *stopFlag)
{
    const auto isStopped = [stopFlag] {
        return stopFlag != nullptr && *stopFlag;
    };
    microseconds left = milliseconds(timeoutMs);
    EWaitResult result = EWaitResult::Silence;
    do {
        if (isStopped()) {
            return EWaitResult::Stopped;
        }
        left = timeoutMs < 0 ? LongestSlice : left;
        result = waitSlice(port, &left);
    } while (result == EWaitResult::Silence && (timeoutMs < 0 || std::chrono::round<milliseconds>(left).count() > 0));
    return isStopped() ? EWaitResult::Stopped : result;
}

} // namespace printsrv
