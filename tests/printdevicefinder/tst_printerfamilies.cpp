// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "discoverysupport.h"
#include "testfixture.h"

#include <simulatorthread.h>
#include <textprintermodels.h>

#include <QLoggingCategory>

#include <algorithm>

using namespace printersim;
using Models = TextPrinterModels;

namespace {

constexpr int Patience = 60'000;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/** The personality at other settings; the AV-268 has one set of parameters only. */
Personality at(const LineSettings &line, Personality personality)
{
    const bool isFixed = personality.modelId == Models::MODEL_AV_268;
    personality.voices.first().line = isFixed ? LineSettings{115200, EFlow::Software, EParity::None} : line;
    return personality;
}

bool areOver(const std::vector<Search> &searches)
{
    return std::all_of(searches.cbegin(), searches.cend(), [](const Search &search) { return search.isOver(); });
}

} // namespace

/** Every printer that can be found, at its real waits. */
class TestPrinterFamilies : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsEveryFamily();
    void verifiesDespiteFaults_data();
    void verifiesDespiteFaults();
};

void TestPrinterFamilies::initTestCase()
{
    // Ten thousand lines of conversation help nobody.
    QLoggingCategory::setFilterRules(text("printers.debug=false"));
}

// Each family at settings in the middle of the sweep, so that the ones before it have to fail.
void TestPrinterFamilies::findsEveryFamily()
{
    SimulatorThread simulator;
    std::vector<Search> searches;
    for (const QString &name : personalityNames()) {
        const LineSettings line{9600, EFlow::Hardware, EParity::Odd};
        searches.emplace_back(simulator.add(at(line, known(name))));
        searches.back().finder->start({searches.back().printer->portName()});
    }
    QTRY_VERIFY_WITH_TIMEOUT(areOver(searches), Patience);
    for (const Search &search : searches) {
        const Personality &player = search.printer->personality();
        const QString expected = player.modelId.isEmpty() ? text("noDevices There no devices finded")
                                                          : text("deviceFinded ") + player.modelId;
        QVERIFY2(search.log->signalsSeen.contains(expected), qPrintable(player.name));
        if (!player.modelId.isEmpty()) {
            QCOMPARE(search.log->found.first().deviceType(), 1U);
            QCOMPARE(search.log->found.first().settings(), ownSettings(search.printer->portName(), player));
        }
    }
}

// Per fault the families that are found all the same; "any" leaves it to what the fault hits.
void TestPrinterFamilies::verifiesDespiteFaults_data()
{
    QTest::addColumn<QString>("found");
    const QString all = text("CUSTOM_VKP_80 SWECOIN_TM_20XX TSP-TUP AV_268 CITIZEN_PPU_231");
    QTest::newRow("none") << all;
    QTest::newRow("silent") << QString();
    QTest::newRow("echo") << QString();
    QTest::newRow("garbage") << QString();
    QTest::newRow("late-inside") << all;
    QTest::newRow("late-outside") << QString();
    QTest::newRow("two-pieces") << all;
    // Status bytes may change between two answers; model bytes and echoes may not.
    QTest::newRow("changes-mind") << text("TSP-TUP AV_268 CITIZEN_PPU_231");
    QTest::newRow("closes") << QString();
    QTest::newRow("unplugs") << QString();
    QTest::newRow("drops") << text("any");
    QTest::newRow("noise") << QString();
}

void TestPrinterFamilies::verifiesDespiteFaults()
{
    QFETCH(QString, found);
    const EFault fault = *faultFromName(text(QTest::currentDataTag()));
    SimulatorThread simulator;
    std::vector<Search> searches;
    for (const char *name : {"CUSTOM_VKP_80", "SWECOIN_TM_20XX", "TSP-TUP", "AV_268", "CITIZEN_PPU_231"}) {
        searches.emplace_back(simulator.add(known(text(name)), {fault, {}, 1}));
        const Search &search = searches.back();
        QList<PrintDeviceInfo> configs{config(text(name), ownSettings(search.printer->portName(), known(text(name))))};
        search.finder->test(configs);
    }
    QTRY_VERIFY_WITH_TIMEOUT(areOver(searches), Patience);
    for (const Search &search : searches) {
        const QString model = search.printer->personality().modelId;
        if (!search.log->found.isEmpty() || found != text("any")) {
            QCOMPARE(search.log->found.size(),
                     found == text("any") || found.split(QLatin1Char(' ')).contains(model) ? 1 : 0);
        }
        if (!search.log->found.isEmpty()) {
            QCOMPARE(search.log->found.first().deviceId(), model);
        }
    }
}

QTEST_GUILESS_MAIN(TestPrinterFamilies)

#include "tst_printerfamilies.moc"
