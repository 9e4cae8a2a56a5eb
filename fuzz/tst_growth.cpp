// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "targets.h"

#include "testfixture.h"

#include <linux/perf_event.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <ctime>

// What a long input costs: eight times the input may cost eight times the work, and what a file says of its sizes may
// cost nothing. PRINTSRV_GROWTH_BYTES is the size of the long input.

using Target = void (*)(const QByteArray &);
Q_DECLARE_METATYPE(Target)

namespace {

constexpr int Growth = 8;
constexpr int LargestSurpriseKib = 12 * 1024; // what is made once included
constexpr int UsualBytes = 512 * 1024;
constexpr int MostRounds = 5;

/** The work of this thread: instructions where the machine counts them, otherwise nanoseconds of its processor time. */
class Work
{
public:
    Work()
    {
        perf_event_attr attributes = {};
        attributes.type = PERF_TYPE_HARDWARE;
        attributes.size = sizeof attributes;
        attributes.config = PERF_COUNT_HW_INSTRUCTIONS;
        attributes.exclude_kernel = 1;
        m_counter = int(syscall(SYS_perf_event_open, &attributes, 0, -1, -1, PERF_FLAG_FD_CLOEXEC));
    }

    ~Work()
    {
        close(m_counter);
    }
    Q_DISABLE_COPY_MOVE(Work)

    qint64 done() const
    {
        qint64 count = 0;
        if (read(m_counter, &count, sizeof count) == sizeof count && count > 0) {
            return count;
        }
        timespec time = {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
    }

private:
    int m_counter;
};

/** The largest address space that the process has had, in KiB: memory counts that was never touched. */
qint64 largestMemory()
{
    QFile file(QStringLiteral("/proc/self/status"));
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const int begin = text.indexOf("VmPeak:") + 7;
    return text.mid(begin, text.indexOf(" kB", begin) - begin).trimmed().toLongLong();
}

qint64 workOf(Target target, const QByteArray &input)
{
    const Work work;
    const qint64 before = work.done();
    target(input);
    return work.done() - before;
}

} // namespace

class tst_Growth : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void claimedSizes_data();
    void claimedSizes();
    void work_data();
    void work();
};

void tst_Growth::claimedSizes_data()
{
    QTest::addColumn<Target>("target");
    QTest::addColumn<QByteArray>("input");

    const auto row = [](const char *name, Target target, const char *input) {
        QTest::newRow(name) << target << QByteArray(input);
    };
    row("symbols", fuzz::symbols,
        "<SpecialSymbolImages><Font Height=\"2147483647\" Width=\"2147483647\"><Symbol Code=\"1\"><Line>0</Line>");
    row("symbols without lines", fuzz::symbols,
        "<SpecialSymbolImages><Font Height=\"1000000000\"><Symbol Code=\"1\"></Symbol></Font></SpecialSymbolImages>");
    row("image", fuzz::document,
        "{\"blocks\":[{\"type\":1,\"img\":{\"w\":100000,\"h\":100000,\"data\":\"/w==\"}}],\"spl\":2147483647}");
    row("image of a symbol", fuzz::document, "{\"cis\":{\"ci_1\":{\"w\":46340,\"h\":46340,\"data\":\"\"}}}");
    row("files", fuzz::documentFiles, "{}\036=");
    row("catalogue", fuzz::catalogue, "[{\"paperTypes\":{\"2147483647\":{\"width\":2147483647}},\"resolution\":1e9}]");
    row("settings", fuzz::settings,
        "[{\"group\":\"PRINTER\",\"key\":\"emptyStringsAtEnd\",\"value\":2147483647},"
        "{\"group\":\"PRINTER\",\"key\":\"spacesBeforeString\",\"value\":2147483647}]");
    row("value", fuzz::receipt, "<TOTAL,0.0000000000>\036\036TOTAL=#1e300");
}

void tst_Growth::claimedSizes()
{
    QFETCH(Target, target);
    QFETCH(QByteArray, input);
    const qint64 before = largestMemory();
    target(input);
    const qint64 more = largestMemory() - before;
    QVERIFY2(more < LargestSurpriseKib, qPrintable(QString::number(more)));
}

void tst_Growth::work_data()
{
    QTest::addColumn<Target>("target");
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("repeated"); // "%1" is another number each time
    QTest::addColumn<QByteArray>("end");

    const auto row = [](const char *name, Target target, const char *begin, const char *repeated, const char *end) {
        QTest::newRow(name) << target << QByteArray(begin) << QByteArray(repeated) << QByteArray(end);
    };
    row("lines", fuzz::receipt, "", "Total<S><TOTAL,0.00>\n", "\036\036TOTAL=#12.5");
    row("attributes of a line", fuzz::receipt, "", "<TOTAL,0>", "\036\036TOTAL=#1");
    row("attributes of a receipt", fuzz::receipt, "x\036", "\036A%1=a", "");
    row("values that bring tags", fuzz::receipt, "", "<NAME>\n", "\036\036NAME=<B><NOTE>\036NOTE=<U>");
    row("a sum", fuzz::receipt, "<", "A%1+", ">\036\036A20=#1");
    row("groups side by side", fuzz::receipt, "", "[<NONE>]", "\036\036NONE=#0");
    row("groups in groups", fuzz::receipt, "", "[<NAME>", "\036\036NAME=#1");
    row("ends of groups", fuzz::receipt, "[<NONE>", "]<NONE>", "\036\036NONE=#0");
    row("groups that open and go", fuzz::receipt, "", "[[<NONE>..", "\036\036NONE=#0");
    row("brackets from values", fuzz::receipt, "", "<OPEN><NONE>[]..", "\036\036OPEN=[\036NONE=#0");
    row("tags that form anew", fuzz::receipt, "", "<<B>B>", "");
    row("opening brackets", fuzz::receipt, "", "<", "");
    row("brackets that close nothing", fuzz::receipt, "", "><", "");
    row("formats", fuzz::receipt, "", "<B>a<:B><B:><W2><F2>b<LS3>[c]<65>", "");
    row("spans", fuzz::receipt, "", "<B:>a<:B>b", "");
    row("digits of a font", fuzz::receipt, "<F", "1", ">a");
    row("X parts", fuzz::receipt, "", "<X:>a<:X>b\n", "");
    row("X parts that only open", fuzz::receipt, "", "<X:>", "");
    row("images", fuzz::receipt, "", "<I>8</I>", "");
    row("entry lines", fuzz::receipt, "<ENTRIES>\036", "a=1.00\t", "");
    row("tags of entries in a line", fuzz::receipt, "", "<ENTRIES>", "\036a");
    row("lines with entries", fuzz::receipt, "", "<ENTRIES>\n", "\036a\tb");
    row("sides", fuzz::receipt, "", "<S>", "");
    row("fiscal parts", fuzz::receipt, "", "<FISCAL_INFO>\n", "");
    row("lines to lint", fuzz::lint, "", "Total [a <SUM%1>]<TOTAL,0.00> <b><SUM>\n", "\036\036TOTAL=1");
    row("parts of lines to lint", fuzz::lint, "", "<X:>a<:X>[<NAME>]<I>8</I>b\n", "\036\036NAME=0");
    row("tags of a line to lint", fuzz::lint, "", "[<NAME%1,0.00><b>]<#0064>", "\036\036NAME=1");
    row("open groups to lint", fuzz::lint, "", "[<NAME,0.00>", "\036\036NAME=0");
    row("values to lint", fuzz::lint, "", "<NAME>\n", "\036a[b=c=d\036NAME=[<B>\u0416");
    row("entries to lint", fuzz::lint, "<ENTRIES>\036", "a[b=c=d\t", "");
    row("marks to escape", fuzz::escapedValue, "", "<[=", "");
    row("numbers of the data", fuzz::receiptData, "{\"attributes\":{\"A\":1", ",\"A%1\":1.5", "}}");
    row("entries of the data", fuzz::receiptData, "{\"entries\":[\"a\"", ",[\"a\",\"b\"]", "]}");
    row("nesting of the data", fuzz::receiptData, "", "[", "");
    row("nesting of a document", fuzz::document, "", "{\"blocks\":[", "");
    row("blocks", fuzz::document, "{\"blocks\":[{}",
        ",{\"type\":0,\"txt\":[\"a\"],\"fnt\":[\"AA==\"],\"fmt\":[\"AA==\"],\"ls\":[0]}", "]}");
    row("TABs of a block", fuzz::document, "{\"blocks\":[{\"type\":0,\"txt\":[\"", "\\t",
        "\"],\"fnt\":[\"\"],\"fmt\":[\"\"],\"ls\":[0],\"align\":3}]}");
    row("symbols of a document", fuzz::document, "{\"cis\":{\"a\":1", ",\"ci_%1\":{\"w\":8,\"h\":1,\"data\":\"qg==\"}",
        "}}");
    row("a key again and again", fuzz::document, "{\"a\":1", ",\"spl\":1", "}");
    row("a file", fuzz::documentFiles, "{\"spl\":1", " ", "}\036=");
    row("models", fuzz::catalogue, "[{}", ",{\"id\":\"%1\",\"paperTypes\":{\"0\":{}},\"fontTypes\":{\"0\":{}}}", "]");
    row("papers", fuzz::catalogue, "[{\"paperTypes\":{\"0\":{}", ",\"%1\":{}", "}}]");
    row("nesting of a catalogue", fuzz::catalogue, "", "[", "");
    row("descriptors", fuzz::settings, "[{}", ",{\"group\":\"PRINTER\",\"key\":\"printerName\",\"value\":\"%1\"}", "]");
    row("a setting", fuzz::settings, "[{\"group\":\"PRINTER\",\"key\":\"printerName\",\"value\":\"", "a,", "\"}]");
    row("a font", fuzz::settings, "[{\"group\":\"\",\"key\":\"defaultFont\",\"value\":\"", "a,", "\"}]");
    row("state", fuzz::state, "{\"serviceState\":1", ",\"a%1\":1", "}");
    row("broken state", fuzz::state, "{\"serviceState\":1", ",\"a%1\":1", "");
    const char *const voice = "{\"port\":\"a\",\"event\":\"settings\",\"baudRate\":1,\"flowControl\":\"none\"}\n";
    const QByteArray request = voice + QByteArray("{\"port\":\"a\",\"event\":\"write\",\"bytes\":\"05\"}\n");
    row("requests", fuzz::transcript, voice, "{\"port\":\"a\",\"event\":\"write\",\"bytes\":\"%1\"}\n", "");
    row("answers", fuzz::transcript, request.constData(), "{\"port\":\"a\",\"event\":\"read\",\"bytes\":\"06\"}\n", "");
    row("voices", fuzz::transcript, "", voice, request.constData());
    const char *const font = "<SpecialSymbolImages><Font Height=\"1\" Width=\"2\">";
    const char *const fontEnd = "</Font></SpecialSymbolImages>";
    row("symbols", fuzz::symbols, font, "<Symbol Code=\"%1\"><Line>01</Line></Symbol>", fontEnd);
    row("lines of a symbol", fuzz::symbols, "<SpecialSymbolImages><Font Height=\"1\" Width=\"1\"><Symbol>",
        "<Line>1</Line>", "</Symbol></Font></SpecialSymbolImages>");
    row("nesting of symbols", fuzz::symbols, font, "<a>", "");
    row("attributes of a symbol", fuzz::symbols, "<SpecialSymbolImages", " a%1=\"\"", "/>");
    row("name spaces", fuzz::symbols, "<SpecialSymbolImages", " xmlns:a%1=\"a\" a%1:b=\"\"", "/>");
    row("a name", fuzz::symbols, "<", "a", "/>");
    row("comments", fuzz::symbols, font, "<!-- = \"a\" -->", fontEnd);
}

void tst_Growth::work()
{
    QFETCH(Target, target);
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, repeated);
    QFETCH(QByteArray, end);
    const auto inputOf = [&](int bytes) {
        QByteArray input = begin;
        for (int number = 10; input.size() < bytes; ++number) {
            input += QByteArray(repeated).replace("%1", QByteArray::number(2 * number));
        }
        return input + end;
    };
    bool isSet = false;
    const int bytes = qEnvironmentVariableIntValue("PRINTSRV_GROWTH_BYTES", &isSet);
    const QByteArray large = inputOf(isSet ? bytes : UsualBytes);
    const QByteArray small = inputOf(large.size() / Growth);
    target(small); // what is made once
    // What else runs on the machine can only add to the time: the least of several counts.
    qint64 smallWork = workOf(target, small);
    qint64 largeWork = workOf(target, large);
    for (int round = 1; round < MostRounds && largeWork >= 2 * Growth * smallWork; ++round) {
        smallWork = qMin(smallWork, workOf(target, small));
        largeWork = qMin(largeWork, workOf(target, large));
    }
    const QString figures = QStringLiteral("%1 for %2").arg(largeWork).arg(smallWork);
    QVERIFY2(largeWork < 2 * Growth * smallWork, qPrintable(figures));
}

QTEST_GUILESS_MAIN(tst_Growth)
#include "tst_growth.moc"
