// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "crew.h"

#include <QCoreApplication>
#include <QMutex>

#include <array>
#include <cstdio>
#include <cstring>

// Two threads add to one number, each under a mutex: the same one with the argument "right", one of its own with
// "wrong".
int main(int argc, char *argv[])
{
    if (argc != 2) {
        return 2;
    }
    const bool isRight = std::strcmp(argv[1], "right") == 0;
    std::array<QMutex, 2> mutexes;
    int number = 0;
    runTogether(2, [&](int thread) {
        constexpr int Rounds = 1000;
        for (int i = 0; i < Rounds; ++i) {
            const QMutexLocker locker(&mutexes.at(isRight ? 0 : size_t(thread)));
            ++number;
        }
    });
    std::printf("%d\n", number);
    return 0;
}
