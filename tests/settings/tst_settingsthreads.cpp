// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "crew.h"
#include "testfixture.h"

#include <checktemplatessettings.h>
#include <settingslocker.h>
#include <systemprintersettings.h>
#include <textprintersettings.h>

#include <QRandomGenerator>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <functional>
#include <vector>

namespace {

constexpr int Threads = 8;
constexpr int OperationsPerThread = 20000;

// The values that are written, told apart from any mixture of two; the first ones are the defaults.
const QVector<int> Numbers{5, 0x11111111, 0x22222222, -1};
const QVector<double> Lengths{0.0, 1.1111111111111111e111, -2.2222222222222222e-222};
const QVector<int> Timeouts{10000, 1000, 30000, 12345};
const QStringList Texts{QStringLiteral("cp866"), QString(300, QLatin1Char('x')), QString(7, QLatin1Char('y'))};
const QStringList Printers{QString(), QStringLiteral("CUSTOM_VKP_80"), QStringLiteral("GENERAL_EPSON_PROTOCOL"),
                           QStringLiteral("AV_268")};

// One thread's view of the settings: does one thing and tells whether what it read was ever written.
class Worker
{
public:
    explicit Worker(quint32 seed)
        : m_random(seed)
    {
        m_templates.setDefaultCheckTemplate(Texts.last());
    }

    bool step()
    {
        const auto &operations = allOperations();
        const int choice = m_random.bounded(static_cast<int>(operations.size()));
        return operations[static_cast<size_t>(choice)](*this);
    }

private:
    using Operation = std::function<bool(Worker &)>;

    template<typename Container>
    auto any(const Container &values)
    {
        return values.at(m_random.bounded(values.size()));
    }

    static QVariantMap change(const QString &group, const QString &key, const QVariant &value)
    {
        return {{QStringLiteral("group"), group}, {QStringLiteral("key"), key}, {QStringLiteral("value"), value}};
    }

    static bool isWritten(const QVariantMap &map)
    {
        const QString key = map.value(QStringLiteral("key")).toString();
        const QVariant value = map.value(QStringLiteral("value"));
        if (key == PrinterSettings::PRINTER_ID) {
            return Printers.contains(value.toString());
        }
        if (key == PrinterSettings::REMOTE_FR_PRINT_TIMEOUT) {
            return Timeouts.contains(value.toInt());
        }
        if (key == PrinterSettings::EMPTY_STRINGS_AT_END) {
            return Numbers.contains(value.toInt());
        }
        if (key == TextPrinterSettings::PRINTER_CODEC) {
            return Texts.contains(value.toString());
        }
        return key != SystemPrinterSettings::LEFT_MARGIN || Lengths.contains(value.toDouble());
    }

    static bool isWritten(const QVariantList &list, int smallestSize)
    {
        return list.size() >= smallestSize && std::all_of(list.begin(), list.end(), [](const QVariant &element) {
                   return isWritten(element.toMap());
               });
    }

    static const std::vector<Operation> &allOperations()
    {
        static const std::vector<Operation> operations = writing(reading({}));
        return operations;
    }

    static std::vector<Operation> reading(std::vector<Operation> all)
    {
        all.emplace_back([](Worker &w) { return Printers.contains(w.m_text.printerId()); });
        all.emplace_back([](Worker &w) { return Timeouts.contains(w.m_system.frPrintTout()); });
        all.emplace_back([](Worker &w) { return Numbers.contains(w.m_text.emptyStringsAtEnd()); });
        all.emplace_back([](Worker &w) { return Texts.contains(w.m_text.codec()); });
        all.emplace_back([](Worker &w) { return w.m_text.printerInfo().id() != QStringLiteral("PNG"); });
        all.emplace_back([](Worker &w) { return Lengths.contains(w.m_system.leftMargin(QString())); });
        all.emplace_back([](Worker &w) { return Texts.contains(w.m_templates.defaultCheckTemplate()); });
        all.emplace_back([](Worker &w) { return isWritten(w.m_text.toList(), 17); });
        all.emplace_back([](Worker &w) { return isWritten(w.m_system.toList(), 30); });
        all.emplace_back([](Worker &w) { return w.m_templates.toList().size() == 2; });
        all.emplace_back([](Worker &w) { return !w.m_text.port().isNull(); });
        all.emplace_back([](Worker &w) { return w.m_text.moveCheckTo() == 0 || w.m_text.moveCheckTo() >= 0; });
        return all;
    }

    static std::vector<Operation> writing(std::vector<Operation> all)
    {
        all.emplace_back([](Worker &w) { return w.m_text.setPrinterId(w.any(Printers)), true; });
        all.emplace_back([](Worker &w) { return w.m_text.setFrPrintTout(w.any(Timeouts)), true; });
        all.emplace_back([](Worker &w) { return w.m_text.setEmptyStringsAtEnd(w.any(Numbers)), true; });
        all.emplace_back([](Worker &w) { return w.m_text.setCodec(w.any(Texts)), true; });
        all.emplace_back([](Worker &w) { return w.m_system.setLeftMargin(QString(), w.any(Lengths)), true; });
        all.emplace_back([](Worker &w) { return w.m_templates.setDefaultCheckTemplate(w.any(Texts)), true; });
        all.emplace_back([](Worker &w) {
            return w.m_system.setValue(change(PrinterSettings::SECTION, PrinterSettings::PRINTER_ID, w.any(Printers)));
        });
        all.emplace_back([](Worker &w) {
            const QString printer = w.any(Printers); // current or not
            w.m_text.setValue(change(printer, TextPrinterSettings::PRINTER_CODEC, w.any(Texts)));
            w.m_system.setValue(change(printer, SystemPrinterSettings::LEFT_MARGIN, w.any(Lengths)));
            w.m_text.setValue(change(printer, QStringLiteral("parity"), 2));
            return true;
        });
        all.emplace_back([](Worker &w) {
            return w.m_templates.setValue(
                change(CheckTemplatesSettings::SECTION, CheckTemplatesSettings::DEFAULT_CHECK_TEMPLATE, w.any(Texts)));
        });
        all.emplace_back([](Worker &w) { return w.m_templates.setList(w.m_templates.toList()), true; });
        all.emplace_back([](Worker &w) { return w.m_text.setList(w.m_text.toList()), true; });
        all.emplace_back([](Worker &w) { return w.m_system.setList(w.m_system.toList()), true; });
        all.emplace_back([](Worker &w) { return w.m_text.setPortSettings(w.any(Printers), RS232Settings()), true; });
        all.emplace_back([](Worker &w) { return w.m_text.setPrintAsImage(true), true; });
        return all;
    }

    QRandomGenerator m_random;
    TextPrinterSettings m_text;
    SystemPrinterSettings m_system;
    CheckTemplatesSettings m_templates;
};

} // namespace

class TestSettingsThreads : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void endsAndReadsWhatWasWritten();
    void takesListsWhole();
#ifndef QT_NO_DEBUG
    void stopsThreadThatWouldWaitForItself();
#endif
};

void TestSettingsThreads::endsAndReadsWhatWasWritten()
{
    std::atomic_int strangeValues{0};
    runTogether(Threads, [&strangeValues](int thread) {
        Worker worker(quint32(thread) + 1);
        for (int i = 0; i < OperationsPerThread; ++i) {
            strangeValues += worker.step() ? 0 : 1;
        }
    });
    QCOMPARE(strangeValues.load(), 0);
}

// Two writers of lists whose values belong together: no reader sees one value of each.
void TestSettingsThreads::takesListsWhole()
{
    const auto write = [](const QString &text) {
        const auto change = [&](const QString &key) {
            return QVariantMap{{QStringLiteral("group"), CheckTemplatesSettings::SECTION},
                               {QStringLiteral("key"), key},
                               {QStringLiteral("value"), text}};
        };
        QVariantList list{change(CheckTemplatesSettings::CHECK_TEMPLATES_PATH)};
        std::fill_n(std::back_inserter(list), 2000, QVariant()); // takes time
        list.append(change(CheckTemplatesSettings::DEFAULT_CHECK_TEMPLATE));
        CheckTemplatesSettings().setList(list);
    };
    write(QStringLiteral("a"));
    std::atomic_int writers{2};
    std::atomic_int torn{0};
    runTogether(3, [&](int thread) {
        if (thread < 2) {
            for (int i = 0; i < 200; ++i) {
                write(thread == 0 ? QStringLiteral("a") : QStringLiteral("b"));
            }
            --writers;
            return;
        }
        while (writers > 0) {
            const QVariantList list = CheckTemplatesSettings().toList();
            const auto valueAt = [&](int i) {
                return list.at(i).toMap().value(QStringLiteral("value"));
            };
            torn += valueAt(0) == valueAt(1) ? 0 : 1;
        }
    });
    QCOMPARE(torn.load(), 0);
}

#ifndef QT_NO_DEBUG
void TestSettingsThreads::stopsThreadThatWouldWaitForItself()
{
    constexpr unsigned LongestSeconds = 10;
    const pid_t child = fork();
    if (child == 0) {
        qInstallMessageHandler(nullptr);
        std::signal(SIGABRT, SIG_DFL);
        alarm(LongestSeconds);
        QMutex mutex;
        const printsrv::SettingsLocker outer(mutex);
        const printsrv::SettingsLocker inner(mutex);
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
}
#endif

QTEST_GUILESS_MAIN(TestSettingsThreads)
#include "tst_settingsthreads.moc"
