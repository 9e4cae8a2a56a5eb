// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "tracedchild.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned LongestLifeS = 60;
constexpr int SystemCallStop = SIGTRAP | 0x80;
#ifdef __x86_64__
constexpr size_t NumberRegister = offsetof(user, regs.orig_rax);
constexpr size_t ResultRegister = offsetof(user, regs.rax);
constexpr size_t FirstArgument = offsetof(user, regs.rdi);
#else
constexpr size_t NumberRegister = offsetof(user, regs.orig_eax);
constexpr size_t ResultRegister = offsetof(user, regs.eax);
constexpr size_t FirstArgument = offsetof(user, regs.ebx);
#endif

constexpr std::array<long, 19> CallsThatNeverFail{
    SYS_brk,
    SYS_clock_nanosleep,
    SYS_exit,
    SYS_exit_group,
    SYS_futex,
    SYS_gettid,
    SYS_madvise,
    SYS_mmap,
    SYS_mprotect,
    SYS_mremap,
    SYS_munmap,
    SYS_rt_sigaction,
    SYS_rt_sigprocmask,
    SYS_rt_sigreturn,
    SYS_wait4,
    SYS_waitid,
#ifdef SYS_mmap2 // 32-bit
    SYS_mmap2,
    SYS_clock_nanosleep_time64,
    SYS_futex_time64,
#endif
};

void *registerOf(size_t offset)
{
    return reinterpret_cast<void *>(offset); // NOLINT(performance-no-int-to-ptr): the form that ptrace wants
}

class Tracer
{
public:
    Tracer(pid_t child, const Fault &fault)
        : m_child(child)
        , m_fault(fault)
    {
    }

    ChildEnd follow();

private:
    void enterCall();
    void leaveCall();
    bool isToFail(long number);

    pid_t m_child;
    Fault m_fault;
    ChildEnd m_end{false, 0, 0, false};
    long m_failingCall = -1;
    bool m_isInCall = false;
    bool m_isAnswered = false; // the call, by us
    long m_result = 0;
};

// The child stands before its first call.
ChildEnd Tracer::follow()
{
    int status = 0;
    long signal = 0;
    ptrace(PTRACE_SETOPTIONS, m_child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    do {
        ptrace(PTRACE_SYSCALL, m_child, nullptr, signal); // fails when it has just been killed
        waitpid(m_child, &status, 0);
        signal = WSTOPSIG(status) == SystemCallStop ? 0 : WSTOPSIG(status);
        if (WIFSTOPPED(status) && signal == 0) {
            m_isInCall = !m_isInCall;
            m_isInCall ? enterCall() : leaveCall();
        }
    } while (WIFSTOPPED(status));
    m_end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    m_end.answer = WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
    return m_end;
}

void Tracer::enterCall()
{
    ++m_end.calls;
    if (m_fault.kind == Fault::Kill || m_fault.kind == Fault::KillAll) {
        m_end.isStruck = m_end.calls == m_fault.call;
        if (m_end.isStruck) {
            kill(m_fault.kind == Fault::Kill ? m_child : -m_child, SIGKILL);
        }
        return;
    }
    const long number = ptrace(PTRACE_PEEKUSER, m_child, registerOf(NumberRegister), nullptr);
    if (number == SYS_kill && int(ptrace(PTRACE_PEEKUSER, m_child, registerOf(FirstArgument), nullptr)) <= 0) {
        kill(m_child, SIGKILL); // it was about to signal a group, or every process
    }
    const bool isFailing = isToFail(number);
    m_end.isStruck = m_end.isStruck || isFailing;
    m_isAnswered = isFailing || number == SYS_sync; // that of a whole busy machine takes a minute
    m_result = isFailing ? -long(m_fault.error) : 0;
    if (m_isAnswered && number != SYS_close) { // a descriptor is closed, whatever that tells
        ptrace(PTRACE_POKEUSER, m_child, registerOf(NumberRegister), -1L);
    }
}

void Tracer::leaveCall()
{
    if (m_isAnswered) {
        ptrace(PTRACE_POKEUSER, m_child, registerOf(ResultRegister), m_result);
    }
}

bool Tracer::isToFail(long number)
{
    if (m_fault.kind == Fault::None || m_end.calls < m_fault.call
        || std::count(CallsThatNeverFail.begin(), CallsThatNeverFail.end(), number) != 0) {
        return false;
    }
    if (m_end.calls == m_fault.call) {
        m_failingCall = number;
        return true;
    }
    return m_fault.kind == Fault::FailForEver && number == m_failingCall;
}

} // namespace

ChildEnd runTraced(const std::function<bool()> &function, const Fault &fault)
{
    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0);
        alarm(LongestLifeS);
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        _exit(function() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, WUNTRACED) != child || !WIFSTOPPED(status)) {
        return {false, 0, SIGSTOP, false};
    }
    return Tracer(child, fault).follow();
}

int runApart(const std::function<int()> &program)
{
    const pid_t child = unshare(CLONE_NEWPID) == 0 ? fork() : -1;
    if (child < 0) {
        return program();
    }
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::exit(program());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}
