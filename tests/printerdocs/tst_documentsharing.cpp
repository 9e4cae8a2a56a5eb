// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "numbereddocument.h"
#include "testfixture.h"

#include <sys/wait.h>
#include <unistd.h>

// Several processes save one path while this one reads it: each save comes to its end, and what is read is always one
// whole document and never one older than the last that was read from the same saver.

namespace {

constexpr int Savers = 3;
constexpr int Saves = 12;
constexpr int FirstOf = 100; // a saver's documents have the numbers from its own multiple of this on

// Starts a saver that ends well when every save was true.
pid_t startSaver(const QString &path, int saver)
{
    const pid_t process = fork();
    if (process == 0) {
        bool isGood = true;
        for (int i = 0; i < Saves; ++i) {
            isGood = numberedDocument(saver * FirstOf + i).saveToFile(path) && isGood;
        }
        _exit(isGood ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    return process;
}

} // namespace

class DocumentSharingTest : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void saversAndReader();
};

void DocumentSharingTest::saversAndReader()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("document.json"));
    QVERIFY(numberedDocument(0).saveToFile(path));
    QLoggingCategory::setFilterRules(QStringLiteral("printsrv.printerdocs.warning=false")); // files read half-way
    for (int saver = 1; saver <= Savers; ++saver) {
        QVERIFY(startSaver(path, saver) > 0);
    }
    std::array<int, Savers + 1> last{};
    int reads = 0;
    int status = 0;
    for (int running = Savers; running > 0; ++reads) {
        if (waitpid(-1, &status, WNOHANG) > 0) {
            QVERIFY2(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS, "a save failed");
            --running;
        }
        TextPrinterDocument document;
        QVERIFY2(document.loadFromFile(path), qPrintable(QString::number(reads)));
        const int number = document.symbolsPerLine();
        QCOMPARE(document, numberedDocument(number));
        int &before = last.at(size_t(number / FirstOf));
        QVERIFY2(number >= before, qPrintable(QStringLiteral("%1 after %2").arg(number).arg(before)));
        before = number;
    }
    QLoggingCategory::setFilterRules(QString());
    QVERIFY2(reads > Savers * Saves, "hardly a read fell into a save");
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 4);
}

QTEST_APPLESS_MAIN(DocumentSharingTest)
#include "tst_documentsharing.moc"
