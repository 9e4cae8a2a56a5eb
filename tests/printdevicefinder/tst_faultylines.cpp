// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "conversations.h"
#include "discoverysupport.h"
#include "resources.h"
#include "testfixture.h"

#include <simulatorthread.h>
#include <textprintermodels.h>

#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QThreadPool>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>

// Many lines at once, each with a fault of its own, searched by callers that start, cancel and destroy at random
// moments. PRINTSRV_FAULT_PORTS and PRINTSRV_FAULT_SECONDS set how many and how long, PRINTSRV_FAULT_SEED repeats the
// dice of a run; the threads' own moments differ each time.

using namespace printersim;
using Models = TextPrinterModels;
using std::chrono::milliseconds;

namespace {

constexpr int Patience = 30'000;
constexpr int UsualPorts = 40;
constexpr int UsualSeconds = 3;
constexpr int WarmUpRounds = 2;
constexpr int FewestRounds = 4;
constexpr int TickMs = 5;
// A cancel, also the one that a result makes, takes up to 100 ms, and about one gap in ten has one. The rest is what a
// machine whose processors are all taken adds: a few cancels' time to the usual gap, much more to the worst of
// thousands; and ThreadSanitizer makes every step some ten times longer.
#ifdef __SANITIZE_THREAD__
constexpr int Slowness = 10;
#else
constexpr int Slowness = 1;
#endif
constexpr int UsualGapMs = 500 * Slowness;
constexpr int LongestGapMs = 3000 * Slowness;
// Qt's tables grow with the most that was ever in use at the same time, timers above all; a leak for each search or
// line comes to more, even in the usual run.
constexpr qint64 MostGrownBytes = qint64(1024) * 1024;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

int environmentNumber(const char *name, int usual)
{
    const int number = qEnvironmentVariableIntValue(name);
    return number > 0 ? number : usual;
}

/** Everything random of one run, from one seed. */
class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_random(seed)
    {
    }

    /** From 0 to @p count - 1. */
    int below(int count)
    {
        return int(m_random() % unsigned(count));
    }

    bool isOneOf(int count)
    {
        return below(count) == 0;
    }

    template<typename List>
    auto oneOf(const List &list)
    {
        return list.at(below(int(list.size())));
    }

private:
    std::mt19937 m_random;
};

/** How long an event loop did not come round, each time. */
class LoopGaps
{
public:
    void add(qint64 milliseconds)
    {
        ++m_counts.at(size_t(std::min<qint64>(milliseconds, LongestGapMs + 1)));
        m_worst = std::max(m_worst, milliseconds);
    }

    qint64 worst() const
    {
        return m_worst;
    }

    /** Ninety-nine of a hundred were at most so long. */
    int usual() const
    {
        const int all = std::accumulate(m_counts.cbegin(), m_counts.cend(), 0);
        int milliseconds = -1;
        for (int counted = 0; counted < all - all / 100;) {
            counted += m_counts.at(size_t(++milliseconds));
        }
        return milliseconds;
    }

private:
    std::array<int, LongestGapMs + 2> m_counts{};
    qint64 m_worst = 0;
};

/** One line and what is wrong with it. */
struct Line
{
    /** The printer that is played, for a verification; without an id for one that is searched for. */
    PrintDeviceInfo device;
    EFault fault = EFault::None;
    /** The model that may be found there by its byte. */
    QString modelByByte;
};

EFault randomFault(Dice *dice, bool mayBeFound)
{
    static const QVector<EFault> lasting{EFault::Silent,      EFault::Echo,        EFault::SlowEcho, EFault::Garbage,
                                         EFault::Constant,    EFault::ChangesMind, EFault::Closes,   EFault::Unplugs,
                                         EFault::LateOutside, EFault::Silent,      EFault::Garbage,  EFault::Constant};
    static const QVector<EFault> brief{EFault::None, EFault::LateInside, EFault::TwoPieces, EFault::Drops};
    if (dice->isOneOf(64)) {
        return EFault::Noise;
    }
    return mayBeFound && dice->isOneOf(4) ? dice->oneOf(brief) : dice->oneOf(lasting);
}

Misbehaviour randomMisbehaviour(Dice *dice, bool mayBeFound, int waitDivisor)
{
    constexpr int LongestWait = 1400;
    Misbehaviour result;
    result.fault = randomFault(dice, mayBeFound);
    result.seed = quint32(1 + dice->below(1'000'000));
    do {
        result.constant = char(dice->isOneOf(2) ? dice->oneOf(modelsByByte().keys()) : dice->below(256));
    } while (!mayBeFound && modelsByByte().contains(quint8(result.constant)));
    // As likely before the end of a wait as behind it, in the next candidate.
    result.delay = milliseconds(dice->isOneOf(4) ? 2 * dice->below(LongestWait) / waitDivisor : 0);
    result.unplugAfter = milliseconds(dice->isOneOf(4) ? 1 + dice->below(600) : 0);
    return result;
}

Line plugIn(SimulatorThread *simulator, const Misbehaviour &misbehaviour, const QString &name)
{
    const Personality personality = known(name);
    const SimulatedPrinter *printer = simulator->add(personality, misbehaviour);
    if (printer == nullptr) {
        return {};
    }
    const bool isPlayed
        = !QVector<EFault>{EFault::Silent, EFault::Echo, EFault::SlowEcho, EFault::Garbage, EFault::Noise}.contains(
            misbehaviour.fault);
    const QString played = isPlayed ? personality.modelId : QString();
    const auto constant = quint8(misbehaviour.constant);
    // Contract: a printer that sends 0x3D keeps the name that it was given.
    const QString made = constant == 0x3D ? personality.modelId : modelsByByte().value(constant);
    return {config(personality.modelId, ownSettings(printer->portName(), personality)), misbehaviour.fault,
            misbehaviour.fault == EFault::Constant ? made : played};
}

/** Somebody who searches some ports again and again, and notes what the finder should not have done. */
class Caller
{
public:
    void add(const PrintDeviceInfo &device)
    {
        m_devices.append(device);
        m_ports.append(device.settings().portName());
    }

    /** Searches, verifies, cancels, destroys or waits on. */
    void act(Dice *dice)
    {
        checkRest();
        const int choice = dice->below(6);
        switch (choice) {
        case 0:
        case 1:
            m_search.finder->start(m_ports);
            break;
        case 2:
            m_search.finder->test(m_devices);
            break;
        case 3:
            m_search.finder->cancel();
            m_restsWith = m_search.log->signalsSeen.size();
            m_isAtRest = true;
            checkPorts();
            break;
        case 4:
            destroy();
            m_search = Search(nullptr);
            break;
        default:
            break;
        }
        if (choice <= 2) {
            m_isAtRest = false;
            ++starts;
        }
    }

    void destroy()
    {
        checkRest();
        const int signalled = m_search.log->signalsSeen.size();
        m_search.finder.reset();
        checkPorts();
        complainUnless(m_search.log->signalsSeen.size() == signalled, "signals of a destroyed finder");
        static const QRegularExpression order(QRegularExpression::anchoredPattern(
            text("(noDevices There no devices finded;finished;|finished;(deviceFinded [^;]+;)?)*")));
        const QStringList signalsSeen = m_search.log->withoutNeedCancel();
        complainUnless(
            order.match(signalsSeen.join(QLatin1Char(';')) + text(signalsSeen.isEmpty() ? "" : ";")).hasMatch(),
            "wrong order");
        found += m_search.log->found;
        m_isAtRest = false;
    }

    QVector<PrintDeviceInfo> found;
    QStringList complaints;
    int starts = 0;

private:
    void checkRest()
    {
        complainUnless(!m_isAtRest || m_search.log->signalsSeen.size() == m_restsWith, "signals after cancel()");
    }

    void checkPorts()
    {
        complainUnless(std::none_of(m_ports.cbegin(), m_ports.cend(), isLocked), "ports left open");
    }

    void complainUnless(bool isRight, const char *what)
    {
        if (!isRight) {
            complaints.append(text(what) + text(": ") + m_search.log->signalsSeen.join(text(", ")));
        }
    }

    QStringList m_ports;
    QList<PrintDeviceInfo> m_devices;
    Search m_search{nullptr};
    bool m_isAtRest = false;
    int m_restsWith = 0;
};

/** Some callers and their lines for some hundred milliseconds. */
class Round
{
public:
    /** Without @p mayBeFound all searches go on until they are stopped, but for rare chances. */
    Round(Dice *dice, int ports, bool mayBeFound)
        : m_dice(dice)
        , m_waitDivisor(dice->oneOf(QVector<int>{1, 10, 50, 100}))
        , m_shortWaits(m_waitDivisor)
    {
        // The conversations are judged, not shown.
        QLoggingCategory::setFilterRules(text("printers.wire.debug=true\nprinters.debug=false\ndefault.debug=false"));
        m_callers.resize(size_t(1 + dice->below(4)));
        for (int i = 0; i < ports; ++i) {
            m_lines.append(!mayBeFound && dice->isOneOf(4) ? plugInSilent() : plugInAny(mayBeFound));
            m_callers.at(size_t(i) % m_callers.size()).add(m_lines.last().device);
        }
    }

    void play(LoopGaps *gaps)
    {
        QEventLoop loop;
        QElapsedTimer clock;
        QTimer tick;
        QTimer next;
        QObject::connect(&tick, &QTimer::timeout, [&] { gaps->add(clock.restart()); });
        QObject::connect(&next, &QTimer::timeout, [&] {
            m_callers.at(size_t(m_dice->below(int(m_callers.size())))).act(m_dice);
            // Now and then long enough for a search to come to an end.
            next.start(m_dice->isOneOf(16) ? m_dice->below(400) : m_dice->below(30));
        });
        QTimer::singleShot(200 + m_dice->below(800), &loop, &QEventLoop::quit);
        clock.start();
        tick.start(TickMs);
        next.start(0);
        loop.exec();
        for (Caller &caller : m_callers) {
            caller.destroy();
            gaps->add(clock.restart());
        }
    }

    /** What the finders did wrong. */
    QStringList complaints() const
    {
        const Conversations conversations(WireLog::events(), m_waitDivisor);
        QStringList result;
        for (const Caller &caller : m_callers) {
            result += caller.complaints;
            for (const PrintDeviceInfo &device : caller.found) {
                result += conversations.objection(device);
                result += objection(device);
            }
        }
        result.removeAll({});
        return result;
    }

    int starts() const
    {
        return std::accumulate(m_callers.cbegin(), m_callers.cend(), 0,
                               [](int sum, const Caller &caller) { return sum + caller.starts; });
    }

    int found() const
    {
        return std::accumulate(m_callers.cbegin(), m_callers.cend(), 0,
                               [](int sum, const Caller &caller) { return sum + caller.found.size(); });
    }

private:
    Line plugInAny(bool mayBeFound)
    {
        const Misbehaviour misbehaviour = randomMisbehaviour(m_dice, mayBeFound, m_waitDivisor);
        return plugIn(&m_simulator, misbehaviour, m_dice->oneOf(personalityNames()));
    }

    /** A printer that goes away before it has kept silent long enough to be found. */
    Line plugInSilent()
    {
        constexpr int Silence = 1000;
        static const QStringList names{text("AV_268"), text("CITIZEN_PPU_231"), text("TSP-TUP")};
        Misbehaviour misbehaviour;
        misbehaviour.unplugAfter = milliseconds(1 + m_dice->below(Silence) / m_waitDivisor);
        return plugIn(&m_simulator, misbehaviour, m_dice->oneOf(names));
    }

    /** What is found by its byte is the printer that is played, or what the constant byte makes. */
    QString objection(const PrintDeviceInfo &device) const
    {
        const auto line = std::find_if(m_lines.cbegin(), m_lines.cend(), [&](const Line &candidate) {
            return candidate.device.settings().portName() == device.settings().portName();
        });
        if (line == m_lines.cend()) {
            return text("found at a port that was not searched: ") + device.settings().portName();
        }
        const bool isWrong = isFoundByItsByte(device.deviceId()) && device.deviceId() != line->modelByByte;
        return isWrong
            ? text("%1 found on a line with the fault %2").arg(device.deviceId(), faultNames().at(int(line->fault)))
            : QString();
    }

    Dice *m_dice;
    int m_waitDivisor;
    ShortWaits m_shortWaits;
    WireLog m_log;
    SimulatorThread m_simulator;
    QVector<Line> m_lines;
    std::vector<Caller> m_callers;
};

} // namespace

class TestFaultyLines : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void countsWhatIsInUse();
    void takesAConstantByteForItsModel();
    void survivesFaultsAtRandomMoments();

private:
    /** What is in use while nothing is searched. Threads that have ended may be listed a little longer. */
    QString m_atRest;
};

void TestFaultyLines::initTestCase()
{
    QLoggingCategory::setFilterRules(text("printers.debug=false\ndefault.debug=false"));
    const PrintDeviceFinder raisesThePoolsLimit;
    m_atRest = inUse();
}

// The counters of the test below see what they are to see.
void TestFaultyLines::countsWhatIsInUse()
{
    {
        SimulatorThread simulator;
        const QString name = simulator.add(known(text("AV_268")))->portName();
        QSerialPort port(name);
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY(isLocked(name));
        QCOMPARE(lockFiles(), 1);
        QVERIFY(inUse() != m_atRest);
    }
    QTRY_COMPARE(inUse(), m_atRest);
    const qint64 bytes = heapBytes();
    const QByteArray block(int(MostGrownBytes) + 1, 'x');
    QVERIFY(heapBytes() - bytes > MostGrownBytes);
}

void TestFaultyLines::takesAConstantByteForItsModel()
{
    constexpr int AtATime = 16;
    const QString configured = Models::MODEL_CITIZEN_PPU_700;
    for (int first = 0; first < 256; first += AtATime) {
        SimulatorThread simulator;
        std::vector<Search> searches;
        for (int byte = first; byte < first + AtATime; ++byte) {
            searches.emplace_back(simulator.add(scripted({}), {EFault::Constant, {}, 1, char(byte)}));
            QList<PrintDeviceInfo> configs{config(configured, portSettings(searches.back().printer->portName(), 9600))};
            searches.back().finder->test(configs);
        }
        for (int i = 0; i < AtATime; ++i) {
            QTRY_VERIFY_WITH_TIMEOUT(searches[size_t(i)].isOver(), Patience);
            const QVector<PrintDeviceInfo> &found = searches[size_t(i)].log->found;
            // Contract: a printer that sends 0x3D has no name of its own and keeps the one that it was given.
            const QString expected = first + i == 0x3D ? configured : modelsByByte().value(first + i);
            QCOMPARE(found.isEmpty() ? QString() : found.first().deviceId(), expected);
        }
    }
    QVERIFY(QThreadPool::globalInstance()->waitForDone(LongestGapMs));
    QTRY_COMPARE(inUse(), m_atRest);
}

void TestFaultyLines::survivesFaultsAtRandomMoments()
{
    const int ports = environmentNumber("PRINTSRV_FAULT_PORTS", UsualPorts);
    const int seconds = environmentNumber("PRINTSRV_FAULT_SECONDS", UsualSeconds);
    const int seed = environmentNumber("PRINTSRV_FAULT_SEED", int(QRandomGenerator::global()->generate() >> 1));
    qInfo("%d ports for %d s, PRINTSRV_FAULT_SEED=%d", ports, seconds, seed);
    Dice dice{quint32(seed)};
    LoopGaps gaps;
    qint64 bytesAfterWarmUp = 0;
    int starts = 0;
    int found = 0;
    int rounds = 0;
    const QDeadlineTimer end(std::chrono::seconds{seconds});
    while (!end.hasExpired() || rounds < FewestRounds) {
        QStringList complaints;
        {
            Round round(&dice, ports, rounds % 2 == 0);
            round.play(&gaps);
            // A thread may still be on its way back to the pool; waiting for all of them ends them, too.
            QVERIFY(QThreadPool::globalInstance()->waitForDone(LongestGapMs));
            QCOMPARE(lockFiles(), 0);
            complaints = round.complaints();
            starts += round.starts();
            found += round.found();
        }
        QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
        QTRY_COMPARE(inUse(), m_atRest);
        bytesAfterWarmUp = ++rounds == WarmUpRounds ? heapBytes() : bytesAfterWarmUp;
    }
    const qint64 grown = heapBytes() - bytesAfterWarmUp;
    qInfo("%d rounds, %d searches, %d printers found; event loop away for %lld ms at worst, %d ms in 99 of 100; %lld "
          "bytes more in use; %s",
          rounds, starts, found, gaps.worst(), gaps.usual(), grown, qPrintable(inUse()));
    QVERIFY2(gaps.worst() <= LongestGapMs && gaps.usual() <= UsualGapMs,
             "the caller's event loop was kept from running");
    QVERIFY2(grown <= MostGrownBytes, "memory grows");
    QVERIFY(starts > 0);
}

QTEST_GUILESS_MAIN(TestFaultyLines)

#include "tst_faultylines.moc"
