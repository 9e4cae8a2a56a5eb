// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "hostilehtml.h"

#include "testfixture.h"

#include <QTextDocument>

// Hostile values in HTML, read by Qt's own reader; tst_browser has a browser read the same.

class tst_HostileHtml : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void isText_data();
    void isText();
};

void tst_HostileHtml::isText_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("text");

    const auto cases = hostileCases(QStringLiteral("http://127.0.0.1:1/"));
    for (const HostileCase &hostile : cases) {
        QTest::newRow(qPrintable(hostile.name)) << hostile.html << hostile.text;
    }
}

void tst_HostileHtml::isText()
{
    QFETCH(QString, html);
    QFETCH(QString, text);
    // The library's own elements and their attributes; nothing else may look like an element.
    static const QRegularExpression element(QStringLiteral(
        "</?(html|head|body|meta|p|table|tr|td|div|pre|br|font|b|i|u)"
        "( *(http-equiv|content|width|cellspacing|cellpadding|colspan|align|size) ?= ?(\"[^\"<>]*\"|[0-9]+))*>"));
    const QString bare = QString(html).remove(element);
    QVERIFY2(!bare.contains(QLatin1Char('<')) && !bare.contains(QLatin1Char('>')), qPrintable(bare));

    QTextDocument document;
    document.setHtml(html);
    QCOMPARE(withPlainBlanks(document.toPlainText()), text);
}

QTEST_MAIN(tst_HostileHtml)
#include "tst_hostilehtml.moc"
