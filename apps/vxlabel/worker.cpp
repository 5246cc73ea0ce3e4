// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/worker.h"

#include "apps/vxlabel/exitcode.h"
#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <new>
#include <string_view>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// An answer of workers that no caller gets to see.
constexpr int withoutMemory = 99;

/// A batch of which every row is lost is not tried to its end.
constexpr std::size_t mostLost = 100;

/// More than the warnings that a batch tells.
constexpr std::size_t mostTold = 256;

/// What both processes see.
struct State
{
    struct Lost
    {
        qint64 row;
        int status; ///< as wait() tells it
    };

    WorkLimits limits;
    qint64 row = 0; ///< with which the worker is busy; 0 for none
    bool mayGoOn = false; ///< behind it
    BatchCount count; ///< of all workers so far
    QElapsedTimer clock; ///< since the batch began
    std::size_t toldCount = 0;
    std::array<std::size_t, mostTold> told; ///< hashes of what should be told once
    std::size_t lostCount = 0;
    std::array<Lost, mostLost> lost;
};

State *state = nullptr;
BatchCount before; ///< state->count when this worker began

volatile pid_t worker = 0;
volatile std::sig_atomic_t lastSignal = 0;
volatile std::sig_atomic_t isAskedTwice = 0;

/// A terminal tells both processes of ^C, a person or program one only. Who asks twice does not wait for the
/// row to be done; a job that hears of ^C from the terminal, and by SIGTERM from the process that started it,
/// is asked once.
void passOn(int signal, siginfo_t *information, void * /*context*/)
{
    if (signal == lastSignal)
        isAskedTwice = 1;
    lastSignal = signal;
    if (isAskedTwice)
        kill(worker, SIGKILL);
    else if (information->si_code <= 0)
        kill(worker, signal);
}

void passSignalsOn()
{
    struct sigaction action
    {
    };
    action.sa_sigaction = passOn;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

int statusOf(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) { }
    return status;
}

Problem problemOf(int status, const WorkLimits &limits)
{
    if (WIFEXITED(status))
        return { {}, {}, u"it needs more memory than the %1 MB that it may take"_s.arg(limits.megabytes),
            u"shorten its texts, use smaller pictures or a lower --dpi, or give --max-memory"_s };
    if (WTERMSIG(status) == SIGXCPU)
        return { {}, {}, u"it takes more than %1 s of processor time"_s.arg(limits.seconds),
            u"shorten its texts, use smaller pictures or a lower --dpi, or give --max-time"_s };
    if (WTERMSIG(status) == SIGKILL)
        return { {}, {}, u"the program was killed at it"_s,
            u"if the machine has no more memory, give a lower --max-memory or fewer --jobs"_s };
    return { {}, {},
        u"the program crashed at it (%1)"_s.arg(QString::fromLocal8Bit(strsignal(WTERMSIG(status)))),
        u"leave it out, and report it with the label"_s };
}

/// Whether the worker has come to an end that nobody chose.
bool isLost(int status)
{
    if (WIFEXITED(status))
        return WEXITSTATUS(status) == withoutMemory;
    const int signal = WTERMSIG(status);
    if (signal == SIGKILL) // mostly of the system, which has no more memory
        return !isAskedTwice;
    return signal != SIGINT && signal != SIGTERM && signal != SIGPIPE && signal != SIGHUP;
}

/// What the caller gets to see of a worker's end: the same.
int answerOf(int status)
{
    if (WIFSIGNALED(status) && isAskedTwice) {
        Interruption::tell();
        return int(ExitCode::Interrupted);
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    std::signal(WTERMSIG(status), SIG_DFL);
    std::raise(WTERMSIG(status));
    return 128 + WTERMSIG(status);
}

/// Qt does not always look whether it was given memory.
void tellScarcity(int signal)
{
    if (state->limits.memoryIsScarce())
        _exit(withoutMemory);
    std::raise(signal); // which ends the worker now
}

void watchMemory()
{
    static std::array<char, 65536> handlerStack; // the other one may be what is exhausted
    const stack_t stack { handlerStack.data(), 0, handlerStack.size() };
    sigaltstack(&stack, nullptr);
    struct sigaction action
    {
    };
    action.sa_handler = tellScarcity;
    action.sa_flags = int(SA_ONSTACK | SA_RESETHAND);
    sigaction(SIGSEGV, &action, nullptr);
    sigaction(SIGABRT, &action, nullptr);
}

/// Tells what no other worker can go on behind.
int refuse(int status)
{
    Problem problem = problemOf(status, state->limits);
    if (state->row > 0)
        problem.where = u"row %1"_s.arg(state->row);
    Terminal::complain(problem);
    return int(ExitCode::BadDocument);
}

/// True in the worker, and in this process if there is none.
bool begin()
{
    before = state->count;
    state->row = 0;
    state->mayGoOn = false;
    const pid_t parent = getpid();
    worker = fork();
    if (worker < 0)
        return true;
    if (worker > 0) {
        passSignalsOn();
        return false;
    }
    // Nobody would look after it any more.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(int(ExitCode::Interrupted));
    return true;
}

} // namespace

int Worker::run(const std::function<int()> &work)
{
    static State alone;
    state = &alone;
    void *shared = mmap(nullptr, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        return work();
    state = new (shared) State;
    for (;;) {
        if (begin())
            return work();
        const int status = statusOf(worker);
        if (!isLost(status))
            return answerOf(status);
        if (!state->mayGoOn || state->row == 0 || state->lostCount == mostLost)
            return refuse(status);
        state->lost[state->lostCount++] = { state->row, status };
    }
}

void Worker::letOthersGoOn()
{
    state->mayGoOn = true;
}

void Worker::setLimits(const WorkLimits &limits)
{
    state->limits = limits;
    limits.apply();
    watchMemory();
}

const WorkLimits &Worker::limits()
{
    return state->limits;
}

void Worker::beginRow(qint64 row)
{
    state->limits.renewTime();
    state->row = row;
}

void Worker::endRow(const BatchCount &count)
{
    state->count = count;
    state->row = 0;
    state->limits.renewTime();
}

QHash<qint64, Problem> Worker::lostRows()
{
    QHash<qint64, Problem> rows;
    for (std::size_t i = 0; i < state->lostCount; ++i)
        rows.insert(state->lost[i].row, problemOf(state->lost[i].status, state->limits));
    return rows;
}

void Worker::countAnew()
{
    before = {};
    state->clock.invalidate();
}

bool Worker::isNews(const QByteArray &text)
{
    const std::size_t hash = std::hash<std::string_view>()({ text.constData(), std::size_t(text.size()) });
    const auto end = state->told.begin() + std::ptrdiff_t(state->toldCount);
    if (std::find(state->told.begin(), end, hash) != end)
        return false;
    if (state->toldCount < mostTold)
        state->told[state->toldCount++] = hash;
    return true;
}

QElapsedTimer Worker::batchClock()
{
    if (!state->clock.isValid())
        state->clock.start();
    return state->clock;
}

BatchCount Worker::countBefore()
{
    return before;
}

void Worker::endWithoutMemory()
{
    _exit(withoutMemory);
}
