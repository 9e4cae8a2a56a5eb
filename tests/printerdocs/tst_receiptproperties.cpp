// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptcomparison.h"

#include "testfixture.h"

#include <QDeadlineTimer>

// Random receipts: the library and the reference print the same.
//
// PRINTSRV_PROPERTY_RUNS is the number of receipts (5000), PRINTSRV_PROPERTY_SEED the seed of the first one; each of
// the others takes the next number, so that the seed of a failure alone, with one run, shows it again. More than 20,000
// receipts need a QTEST_FUNCTION_TIMEOUT of more than its five minutes (in ms).

using Check = QStringList (*)(const Receipt &);
Q_DECLARE_METATYPE(Check)

namespace {

QStringList prepared(const Receipt &receipt)
{
    return comparison::prepared(receipt, [] { TestFixture::expectWarning(QStringLiteral(".")); });
}

/** Receipts that are a little smaller: without a line, an attribute, or a part of a text. */
QVector<Receipt> smaller(const Receipt &receipt)
{
    QVector<Receipt> all;
    const auto add = [&](const auto &change) {
        all.append(receipt);
        change(all.last());
    };
    const auto addTexts = [&](const QString &text, const auto &set) {
        for (int size = std::max(1, text.size() / 2); size > 0; size /= 2) {
            for (int at = 0; at + size <= text.size(); at += size) {
                add([&](Receipt &less) { set(less, QString(text).remove(at, size)); });
            }
        }
    };
    const QStringList names = receipt.attributes.keys();
    for (const QString &name : names) {
        add([&](Receipt &less) { less.attributes.remove(name); });
        if (receipt.attributes.value(name).type() == QVariant::String) {
            addTexts(receipt.attributes.value(name).toString(),
                     [&](Receipt &less, const QString &text) { less.attributes[name] = text; });
        }
    }
    for (int i = 0; i < receipt.lines.size(); ++i) {
        add([&](Receipt &less) { less.lines.removeAt(i); });
        addTexts(receipt.lines.at(i), [&](Receipt &less, const QString &text) { less.lines[i] = text; });
    }
    addTexts(receipt.entries, [](Receipt &less, const QString &text) { less.entries = text; });
    return all;
}

/** The smallest receipt that is found in time to fail in the same way, by going to the first smaller one that does. */
Receipt shrunk(const Receipt &receipt, Check check, QDeadlineTimer time)
{
    const QString kind = check(receipt).constFirst();
    for (const Receipt &less : smaller(receipt)) {
        if (time.hasExpired()) {
            break;
        }
        const QStringList found = less.lines.isEmpty() ? QStringList() : check(less);
        if (!found.isEmpty() && found.constFirst() == kind) {
            return shrunk(less, check, time);
        }
    }
    return receipt;
}

QString report(quint32 seed, const Receipt &receipt, Check check)
{
    const Receipt least = shrunk(receipt, check, QDeadlineTimer(60000));
    const QStringList found = check(least);
    return QStringLiteral(
               "PRINTSRV_PROPERTY_SEED=%1 PRINTSRV_PROPERTY_RUNS=1 shows this again.\n%2\n%3, expected: %4\nfound: %5")
        .arg(QString::number(seed), least.toString(), found.at(0), found.at(1), found.at(2));
}

quint32 numberFrom(const char *variable, quint32 otherwise)
{
    bool isNumber = false;
    const uint number = qEnvironmentVariable(variable).toUInt(&isNumber);
    return isNumber ? number : otherwise;
}

} // namespace

class tst_ReceiptProperties : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void equalsReference_data();
    void equalsReference();

private:
    quint32 m_seed = 0;
    quint32 m_runs = 0;
};

void tst_ReceiptProperties::initTestCase()
{
    m_seed = numberFrom("PRINTSRV_PROPERTY_SEED", QRandomGenerator::global()->generate() / 2);
    m_runs = numberFrom("PRINTSRV_PROPERTY_RUNS", 5000);
    qInfo("%u receipts from seed %u", m_runs, m_seed);
}

void tst_ReceiptProperties::equalsReference_data()
{
    QTest::addColumn<Check>("check");
    QTest::newRow("prepared lines") << Check(prepared);
    QTest::newRow("outputs") << Check(comparison::outputs);
    QTest::newRow("all steps together") << Check(comparison::whole);
    QTest::newRow("steps one by one") << Check(comparison::steps);
}

void tst_ReceiptProperties::equalsReference()
{
    QFETCH(Check, check);
    for (quint32 seed = m_seed; seed != m_seed + m_runs; ++seed) {
        const Receipt receipt = ReceiptMaker(seed).receipt();
        if (!check(receipt).isEmpty()) {
            QFAIL(qPrintable(report(seed, receipt, check)));
        }
    }
}

QTEST_GUILESS_MAIN(tst_ReceiptProperties)
#include "tst_receiptproperties.moc"
