// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "crew.h"

#include <QMutex>
#include <QString>

#include <array>
#include <cstdio>
#include <cstring>

// Two threads add to one number, each under a mutex: the same one with the argument "right", one of its own with
// "wrong". With "inside" they fill one text without a mutex, in code of QtCore that allocates nothing: only a QtCore
// that is instrumented itself shows that.
int main(int argc, char *argv[])
{
    if (argc != 2) {
        return 2;
    }
    const bool isRight = std::strcmp(argv[1], "right") == 0;
    const bool isInside = std::strcmp(argv[1], "inside") == 0;
    std::array<QMutex, 2> mutexes;
    int number = 0;
    QString text(16, QLatin1Char('-'));
    runTogether(2, [&](int thread) {
        constexpr int Rounds = 1000;
        for (int i = 0; i < Rounds; ++i) {
            if (isInside) {
                text.fill(QLatin1Char('x'));
                continue;
            }
            const QMutexLocker locker(&mutexes.at(isRight ? 0 : size_t(thread)));
            ++number;
        }
    });
    std::printf("%d\n", number);
    return 0;
}
