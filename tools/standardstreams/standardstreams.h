// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_STANDARDSTREAMS_H
#define PRINTSRV_STANDARDSTREAMS_H

#include <fcntl.h>
#include <unistd.h>

namespace printsrv {

/**
 * Occupies the standard descriptors that the caller closed, before any file is opened: the first one would otherwise
 * get the number of standard output, and what is printed would go into it. Opened the wrong way round, so that reading
 * from them and writing to them fails as it does on a closed one.
 */
inline void occupyClosedStandardStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0) {
            // Takes the lowest number that is free, which is this one. Where there is no such device, nothing can be
            // done.
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

} // namespace printsrv

#endif
