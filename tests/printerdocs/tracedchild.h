// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TRACEDCHILD_H
#define PRINTSRV_TRACEDCHILD_H

#include <functional>

/** What befalls a child process just before one of its system calls; the first call has the number 1. */
struct Fault
{
    enum EKind {
        None,
        Kill, /**< It is killed and the programs that it started run on. */
        KillAll, /**< It is killed with them. */
        FailOnce, /**< The call is not made and fails. */
        FailForEver, /**< So does every later one of the same name. */
    };

    EKind kind = None;
    int call = 0;
    int error = 0; /**< The errno of a call that fails. */
};

/** How a child process ended. */
struct ChildEnd
{
    bool isStruck; /**< The fault came; it does not when there are fewer calls, or when the call is none that can fail.
                    */
    int calls; /**< Those it began. */
    int signal; /**< What killed it, 0 when it ended by itself; SIGALRM when it did not end. */
    bool answer; /**< What it returned, when it ended by itself. */
};

/**
 * Runs a function in a child process, copied from this one, under ptrace, and returns how that ended.
 *
 * Calls for memory, time and threads, and those that wait for children, never fail: files, descriptors and processes
 * are what this is about. The call sync() does nothing: that of a busy machine takes minutes. A child that is about to
 * signal other processes than one of its own is killed. Programs that the child starts are not traced.
 */
ChildEnd runTraced(const std::function<bool()> &function, const Fault &fault = {});

/**
 * Runs a test program where its children see no other processes than their own, so that nothing else can be struck;
 * where that needs root rights and they are missing, as it is.
 */
int runApart(const std::function<int()> &program);

#endif
