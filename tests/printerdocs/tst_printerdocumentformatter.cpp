// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocumentformatter.h"

#include "checktemplatessettings.h"
#include "receiptdata.h"
#include "testfixture.h"
#include "textprinterdocument.h"

#include <QTemporaryDir>

#include <ctime>

// Loading and splitting a template, and the steps that add lines or take lines out.

namespace {

QString written(const QTemporaryDir &folder, const QString &name, const QByteArray &content)
{
    QFile file(folder.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName() : QString();
}

QByteArray symbolFile(int code)
{
    return QByteArrayLiteral("<SpecialSymbolImages><Font Height=\"1\" Width=\"8\"><Symbol Code=\"")
        + QByteArray::number(code)
        + QByteArrayLiteral("\"><Line>10000001</Line></Symbol></Font></SpecialSymbolImages>");
}

} // namespace

class tst_PrinterDocumentFormatter : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void setTemplate();
    void loadTemplate_data();
    void loadTemplate();
    void loadTemplateFailure_data();
    void loadTemplateFailure();
    void splitByFiscalInfo_data();
    void splitByFiscalInfo();
    void addCopyInfo_data();
    void addCopyInfo();
    void unpackEntries_data();
    void unpackEntries();
    void limitOfExpansions();
    void expansionsOfOneLine();
    void loadSpecSymbols_data();
    void loadSpecSymbols();
    void missingSymbolsKeepTheFormer();
};

void tst_PrinterDocumentFormatter::startsEmpty()
{
    QObject parent;
    const auto *formatter = new PrinterDocumentFormatter(5, &parent);
    QVERIFY(!formatter->isValid());
    QCOMPARE(formatter->getTemplate(), QStringList());
    QCOMPARE(formatter->specCharsPath(), CheckTemplatesSettings().checkTemplatesPath());
    QCOMPARE(formatter->parent(), &parent);
    QCOMPARE(formatter->prepareDocument(documentWith(QString())), QStringList());
}

void tst_PrinterDocumentFormatter::setTemplate()
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringLiteral("a\n\nb\n"));
    QCOMPARE(formatter.getTemplate(), lines("a||b|"));
    formatter.setTemplate(QString());
    QCOMPARE(formatter.getTemplate(), lines(""));
    QVERIFY(formatter.isValid());
}

void tst_PrinterDocumentFormatter::loadTemplate_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QStringList>("expected");

    const QByteArray utf8("UTF-8");
    QTest::newRow("final newline") << QByteArray("a\n\nb\n") << utf8 << lines("a||b");
    QTest::newRow("no final newline") << QByteArray("a\n\nb") << utf8 << lines("a||b");
    QTest::newRow("carriage returns") << QByteArray("a\r\n\r\nb\r\n") << utf8 << lines("a||b");
    QTest::newRow("one newline") << QByteArray("\n") << utf8 << lines("");
    QTest::newRow("empty") << QByteArray() << utf8 << lines(nullptr);
    QTest::newRow("UTF-8") << QByteArray("\xD0\xA7\xD0\xB5\xD0\xBA") << utf8 << lines("Чек");
    QTest::newRow("cp1251") << QByteArray("\xD7\xE5\xEA") << QByteArray("windows-1251") << lines("Чек");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF<C>a") << utf8 << lines("<C>a");
    QTest::newRow("unknown codec") << QByteArray("a\nb") << QByteArray("no-such-codec") << lines("a|b");
    QTest::newRow("no codec") << QByteArray("a\nb") << QByteArray() << lines("a|b");
}

void tst_PrinterDocumentFormatter::loadTemplate()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, codec);
    QFETCH(QStringList, expected);
    const QTemporaryDir folder;
    const QString file = written(folder, QStringLiteral("check.cpt"), content);
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringLiteral("former"));

    const bool isLoaded = formatter.loadTemplate(file, codec.isNull() ? nullptr : codec.constData());

    QCOMPARE(formatter.getTemplate(), expected);
    QCOMPARE(isLoaded, !expected.isEmpty());
    QCOMPARE(formatter.isValid(), !expected.isEmpty());
}

void tst_PrinterDocumentFormatter::loadTemplateFailure_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing file") << "none.cpt";
    QTest::newRow("folder") << ".";
    QTest::newRow("missing folder") << "none/check.cpt";
    QTest::newRow("too long") << "long.cpt";
}

void tst_PrinterDocumentFormatter::loadTemplateFailure()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const QString path = folder.filePath(name);
    QFile longFile(folder.filePath(QStringLiteral("long.cpt")));
    QVERIFY(longFile.open(QIODevice::WriteOnly) && longFile.resize(33554433));
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QStringLiteral("former"));
    expectWarning(QLatin1Char('"') + QRegularExpression::escape(path) + QStringLiteral("\".*\"[^\"]+\""));

    QVERIFY(!formatter.loadTemplate(path, "UTF-8"));

    QCOMPARE(formatter.getTemplate(), lines("former"));
}

void tst_PrinterDocumentFormatter::splitByFiscalInfo_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QList<QStringList>>("parts");

    const auto part = [](const char *text) {
        return lines(text);
    };
    using Parts = QList<QStringList>;
    QTest::newRow("no template") << lines(nullptr) << Parts();
    QTest::newRow("no tag") << lines("a||b") << Parts{part("a||b")};
    QTest::newRow("line of its own") << lines("a|<FISCAL_INFO>|b") << Parts{part("a"), part("b")};
    QTest::newRow("inside a line") << lines("a| b <FISCAL_INFO> c |d") << Parts{part("a|b"), part("c|d")};
    QTest::newRow("lower case") << lines("a<fiscal_Info>b") << Parts{part("a"), part("b")};
    QTest::newRow("letters that grow in upper case") << lines("ßß<fiscal_info>b") << Parts{part("ßß"), part("b")};
    QTest::newRow("first line") << lines("<FISCAL_INFO>|a") << Parts{part("a")};
    QTest::newRow("last line") << lines("a|<FISCAL_INFO>") << Parts{part("a")};
    QTest::newRow("twice") << lines("a<FISCAL_INFO>b|c<FISCAL_INFO>d") << Parts{part("a"), part("b|c|d")};
    QTest::newRow("twice in a line") << lines("a<FISCAL_INFO>b<FISCAL_INFO>c")
                                     << Parts{part("a"), part("b<FISCAL_INFO>c")};
    QTest::newRow("empty lines stay") << lines("|<FISCAL_INFO>|") << Parts{part(""), part("")};
    QTest::newRow("only the tag") << lines("<FISCAL_INFO>") << Parts();
}

void tst_PrinterDocumentFormatter::splitByFiscalInfo()
{
    QFETCH(QStringList, given);
    PrinterDocumentFormatter formatter;
    if (!given.isEmpty()) {
        formatter.setTemplate(given.join(QLatin1Char('\n')));
    }
    formatter.setSpecCharsPath(QStringLiteral("/symbols"));

    QList<QStringList> parts;
    const auto formatters = formatter.splitByFiscalInfo();
    for (const auto &part : formatters) {
        parts.append(part->getTemplate());
        QCOMPARE(part->specCharsPath(), QStringLiteral("/symbols"));
        QVERIFY(part->parent() == nullptr);
    }

    QTEST(parts, "parts");
    QCOMPARE(formatter.getTemplate(), given);
}

void tst_PrinterDocumentFormatter::addCopyInfo_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QStringList>("ofCopy");

    QTest::newRow("behind the line") << lines("a|No <DOCNO>|b") << lines("a|No <DOCNO>|<C>CHECK_COPY|b");
    QTest::newRow("last line") << lines("<docNo>") << lines("<docNo>|<C>CHECK_COPY");
    QTest::newRow("first one only") << lines("<DOCNO>|<DOCNO>") << lines("<DOCNO>|<C>CHECK_COPY|<DOCNO>");
    QTest::newRow("none") << lines("a|DOCNO") << lines("a|DOCNO");
    QTest::newRow("no lines") << lines(nullptr) << lines(nullptr);
}

void tst_PrinterDocumentFormatter::addCopyInfo()
{
    QFETCH(QStringList, given);
    QStringList ofOriginal = given;
    QStringList ofCopy = given;
    PrinterDocumentFormatter().addCopyInfo(ofOriginal, documentWith(QString(), false));
    PrinterDocumentFormatter().addCopyInfo(ofCopy, documentWith(QString(), true));
    QCOMPARE(ofOriginal, given);
    QTEST(ofCopy, "ofCopy");
}

void tst_PrinterDocumentFormatter::unpackEntries_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("text around") << lines("a|  <ENTRIES>;|b") << "Milk=1.00\tBread=2.00"
                                 << lines("a|  Milk<S>1.00|Bread<S>2.00;|b");
    QTest::newRow("any case") << lines("<entries>") << "Milk" << lines("Milk");
    QTest::newRow("letters that grow in upper case") << lines("ß<entries>ß") << "a" << lines("ßaß");
    QTest::newRow("empty entries") << lines("a<ENTRIES>b") << "" << lines("ab");
    QTest::newRow("empty parts") << lines("<ENTRIES>") << "a\t\tb\t" << lines("a||b|");
    QTest::newRow("newlines stay") << lines("<ENTRIES>") << "a\nb" << lines("a\nb");
    QTest::newRow("only \"=\" of the entries") << lines("a=b<ENTRIES>c=d") << "=" << lines("a=b<S>c=d");
    QTest::newRow("two lines") << lines("<ENTRIES>|<ENTRIES>") << "a\tb" << lines("a|b|a|b");
    QTest::newRow("two tags in a line") << lines("<ENTRIES>-<ENTRIES>") << "a\tb" << lines("a|b-a|b");
    QTest::newRow("Contract: the first entry line is not looked at again")
        << lines("<ENTRIES>-<ENTRIES>") << "a" << lines("a-<ENTRIES>");
    QTest::newRow("no tag") << lines("ENTRIES|< ENTRIES>") << "a" << lines("ENTRIES|< ENTRIES>");
    QTest::newRow("no lines") << lines(nullptr) << "a" << lines(nullptr);
}

void tst_PrinterDocumentFormatter::unpackEntries()
{
    QFETCH(QStringList, given);
    QFETCH(QString, entries);
    PrinterDocumentFormatter().unpackEntries(given, documentWith(entries));
    QTEST(given, "expected");
}

void tst_PrinterDocumentFormatter::limitOfExpansions()
{
    QStringList prepared{QStringLiteral("<ENTRIES>"), QStringLiteral("<ENTRIES>")};
    expectWarning(QStringLiteral("\\b1001\\b"));
    PrinterDocumentFormatter().unpackEntries(prepared, documentWith(QStringLiteral("a\t<ENTRIES>")));
    QCOMPARE(prepared.size(), 1002);
    QCOMPARE(prepared.at(999), QStringLiteral("a"));
    QCOMPARE(prepared.at(1000), QStringLiteral("<ENTRIES>"));
    QCOMPARE(prepared.at(1001), QStringLiteral("<ENTRIES>"));
}

// Each expansion used to copy the rest of the line and to keep the copy: gigabytes for a line of some megabytes.
void tst_PrinterDocumentFormatter::expansionsOfOneLine()
{
    const QString tag = QStringLiteral("<ENTRIES>");
    QStringList prepared{tag.repeated(200000)};
    expectWarning(QStringLiteral("\\b2001\\b"));
    const std::clock_t begin = std::clock();
    PrinterDocumentFormatter().unpackEntries(prepared, documentWith(QStringLiteral("a\tb\tc")));
    const double seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    QCOMPARE(prepared.size(), 2001);
    QCOMPARE(prepared.mid(0, 4),
             QStringList() << QStringLiteral("a") << QStringLiteral("b") << QStringLiteral("ca")
                           << QStringLiteral("b"));
    QVERIFY(prepared.last() == QLatin1Char('c') + tag.repeated(199000));
    QVERIFY2(seconds < 1, qPrintable(QString::number(seconds)));
}

void tst_PrinterDocumentFormatter::loadSpecSymbols_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QList<int>>("codes");

    using Codes = QList<int>;
    QTest::newRow("none") << lines("a|b") << lines("a|b") << Codes();
    QTest::newRow("with ending") << lines("<SPECSYMBOLS=one.ssi>|a") << lines("a") << Codes{1};
    QTest::newRow("without ending") << lines("a|<SPECSYMBOLS=one>") << lines("a") << Codes{1};
    QTest::newRow("ending in upper case") << lines("<SPECSYMBOLS=THREE.SSI>|a") << lines("a") << Codes{3};
    QTest::newRow("blanks around") << lines(" \t<SPECSYMBOLS=one> |a") << lines("a") << Codes{1};
    QTest::newRow("the lower one counts")
        << lines("<SPECSYMBOLS=one>|a|<SPECSYMBOLS=two>|b") << lines("a|b") << Codes{2};
    QTest::newRow("the lower one is missing")
        << lines("<SPECSYMBOLS=one>|<SPECSYMBOLS=none>") << lines(nullptr) << Codes();
    QTest::newRow("no whole line") << lines("a<SPECSYMBOLS=one>|<SPECSYMBOLS=one")
                                   << lines("a<SPECSYMBOLS=one>|<SPECSYMBOLS=one") << Codes();
    QTest::newRow("lower case") << lines("<specsymbols=one>") << lines("<specsymbols=one>") << Codes();
    QTest::newRow("no name") << lines("<SPECSYMBOLS=>|a") << lines("a") << Codes();
}

void tst_PrinterDocumentFormatter::loadSpecSymbols()
{
    QFETCH(QStringList, given);
    QTemporaryDir folder;
    written(folder, QStringLiteral("one.ssi"), symbolFile(1));
    written(folder, QStringLiteral("two.ssi"), symbolFile(2));
    written(folder, QStringLiteral("THREE.SSI"), symbolFile(3));
    PrinterDocumentFormatter formatter;
    formatter.setSpecCharsPath(folder.path());

    formatter.loadSpecSymbols(given);

    QTEST(given, "expected");
    QList<int> codes;
    const auto images = formatter.plainTextToTextPrinterDocument(QString()).charImages();
    for (auto image = images.begin(); image != images.end(); ++image) {
        codes.append(image.key());
    }
    QTEST(codes, "codes");
}

void tst_PrinterDocumentFormatter::missingSymbolsKeepTheFormer()
{
    QTemporaryDir folder;
    written(folder, QStringLiteral("one.ssi"), symbolFile(1));
    PrinterDocumentFormatter formatter;
    formatter.setSpecCharsPath(folder.path());
    formatter.setTemplate(QStringLiteral("<SPECSYMBOLS=one>"));
    QCOMPARE(formatter.toTextPrinterDocument(PrinterDocument()).charImages().size(), 1);
    formatter.setTemplate(QStringLiteral("<SPECSYMBOLS=none>"));
    QCOMPARE(formatter.toTextPrinterDocument(PrinterDocument()).charImages().size(), 1);
}

QTEST_GUILESS_MAIN(tst_PrinterDocumentFormatter)
#include "tst_printerdocumentformatter.moc"
