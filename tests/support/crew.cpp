// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "crew.h"

#include <QDeadlineTimer>

#include <atomic>
#include <thread>
#include <vector>

void runTogether(int count, const std::function<void(int)> &work)
{
    constexpr std::chrono::seconds Longest(100);
    constexpr std::chrono::milliseconds Pause(5);
    std::atomic_int atWork{count};
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&work, &atWork, i] {
            work(i);
            --atWork;
        });
    }
    const QDeadlineTimer deadline(Longest);
    while (atWork > 0) {
        if (deadline.hasExpired()) {
            qFatal("%d of %d threads do not come to an end", atWork.load(), count);
        }
        std::this_thread::sleep_for(Pause);
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
}
