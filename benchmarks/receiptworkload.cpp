// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptworkload.h"

#include <QDateTime>
#include <QRandomGenerator>

namespace workload {

const char *const ConditionalAmounts[6]
    = {"DISCOUNT", "CARD_DISCOUNT", "BONUS_POINTS", "DELIVERY", "PACKAGING", "COMMISSION"};

namespace {

constexpr quint32 Seed = 20240305;

double amount(QRandomGenerator &random, int maxCents)
{
    return random.bounded(1, maxCents) / 100.0;
}

QDate date(QRandomGenerator &random)
{
    return QDate(2024, 1, 1).addDays(random.bounded(366));
}

Texts englishTexts()
{
    return {QStringLiteral("GREEN MARKET"),
            QStringLiteral("12 Station Road, Springfield"),
            QStringLiteral("Tel. +1 555 0100"),
            QStringLiteral("Receipt No "),
            QStringLiteral("Cashier"),
            QStringLiteral("Terminal "),
            QStringLiteral("Shift "),
            QStringLiteral("Subtotal"),
            {QStringLiteral("Discount"), QStringLiteral("Loyalty card"), QStringLiteral("Bonus points"),
             QStringLiteral("Delivery"), QStringLiteral("Packaging"), QStringLiteral("Commission")},
            QStringLiteral("TOTAL"),
            QStringLiteral("Cash"),
            QStringLiteral("Change"),
            QStringLiteral("VAT 20 % included"),
            QStringLiteral("Shift opened"),
            QStringLiteral("Goods may be returned until"),
            {QStringLiteral("Thank you for your purchase!"), QStringLiteral("Please keep this receipt."),
             QStringLiteral("Opening hours: Mon-Sat 8-21, Sun 9-18"), QStringLiteral("Questions? Call us any time."),
             QStringLiteral("www.greenmarket.example"), QStringLiteral("We plant a tree for every 1000 receipts."),
             QStringLiteral("Collect ten stamps and get a free coffee."), QStringLiteral("See you soon!")},
            {QStringLiteral("Milk 2.5 % 1 l"), QStringLiteral("Rye bread 500 g"), QStringLiteral("Butter 200 g"),
             QStringLiteral("Apples, kg"), QStringLiteral("Coffee beans 250 g"), QStringLiteral("Mineral water 1.5 l")},
            {QStringLiteral("Anna Smith"), QStringLiteral("John Miller"), QStringLiteral("Maria Lopez")},
            QString(Width, QLatin1Char('-'))};
}

Texts russianTexts()
{
    return {QStringLiteral("ЗЕЛЁНЫЙ РЫНОК"),
            QStringLiteral("г. Энск, ул. Вокзальная, 12"),
            QStringLiteral("Тел. 8 800 555 01 00"),
            QStringLiteral("Чек № "),
            QStringLiteral("Кассир"),
            QStringLiteral("Терминал "),
            QStringLiteral("Смена "),
            QStringLiteral("Подытог"),
            {QStringLiteral("Скидка"), QStringLiteral("Карта клиента"), QStringLiteral("Бонусы"),
             QStringLiteral("Доставка"), QStringLiteral("Упаковка"), QStringLiteral("Комиссия")},
            QStringLiteral("ИТОГО"),
            QStringLiteral("Наличные"),
            QStringLiteral("Сдача"),
            QStringLiteral("В том числе НДС 20 %"),
            QStringLiteral("Смена открыта"),
            QStringLiteral("Возврат товара до"),
            {QStringLiteral("Спасибо за покупку!"), QStringLiteral("Пожалуйста, сохраните чек."),
             QStringLiteral("Часы работы: пн-сб 8-21, вс 9-18"), QStringLiteral("Есть вопросы? Звоните."),
             QStringLiteral("www.zelrynok.example"), QStringLiteral("Одно дерево за каждую тысячу чеков."),
             QStringLiteral("Соберите десять наклеек и получите кофе."), QStringLiteral("Ждём вас снова!")},
            {QStringLiteral("Молоко 2,5 % 1 л"), QStringLiteral("Хлеб ржаной 500 г"), QStringLiteral("Масло 200 г"),
             QStringLiteral("Яблоки, кг"), QStringLiteral("Кофе в зёрнах 250 г"), QStringLiteral("Вода 1,5 л")},
            {QStringLiteral("Анна Кузнецова"), QStringLiteral("Иван Мельник"), QStringLiteral("Мария Лопес")},
            QString(Width, QLatin1Char('-'))};
}

QVariantMap attributesOf(const Texts &texts, QRandomGenerator &random)
{
    QVariantMap attributes;
    attributes[QStringLiteral("NUMBER")] = random.bounded(1, 1000000);
    attributes[QStringLiteral("TERMINAL")] = random.bounded(1, 1000);
    attributes[QStringLiteral("SHIFT")] = random.bounded(1, 400);
    attributes[QStringLiteral("CASHIER")] = texts.cashiers.at(random.bounded(texts.cashiers.size()));
    attributes[QStringLiteral("DATE_TIME")] = QDateTime(date(random), QTime(random.bounded(24), random.bounded(60)));
    attributes[QStringLiteral("SHIFT_OPENED")] = date(random);
    attributes[QStringLiteral("RETURN_UNTIL")] = date(random);
    for (const char *name : {"SUBTOTAL", "TOTAL", "CASH", "CHANGE", "VAT_INCLUDED"}) {
        attributes[QLatin1String(name)] = amount(random, 1000000);
    }
    for (const char *name : ConditionalAmounts) {
        attributes[QLatin1String(name)] = random.bounded(2) == 0 ? 0.0 : amount(random, 10000);
    }
    return attributes;
}

Receipt receiptOf(const Texts &texts, QRandomGenerator &random)
{
    Receipt receipt;
    receipt.attributes = attributesOf(texts, random);
    QStringList entryLines;
    for (int i = 0; i < EntryCount; ++i) {
        const Entry entry{texts.goods.at(random.bounded(texts.goods.size())),
                          QString::number(amount(random, 100000), 'f', 2)};
        entryLines.append(entry.name + QLatin1Char('=') + entry.price);
        receipt.entries.append(entry);
    }
    receipt.document.setAttributes(receipt.attributes);
    receipt.document.setEntries(entryLines.join(QLatin1Char('\t')));
    return receipt;
}

} // namespace

Texts textsOf(const QString &language)
{
    return language == QLatin1String("ru") ? russianTexts() : englishTexts();
}

QString templateOf(const Texts &texts)
{
    QStringList lines{QLatin1String("<C><B><W2>") + texts.shop,
                      QLatin1String("<C>") + texts.address,
                      QLatin1String("<C>") + texts.phone,
                      QString(),
                      texts.receipt + QLatin1String("<NUMBER,000000><S><DATE_TIME,dd.mm.yyyy hh:nn>"),
                      texts.cashier + QLatin1String("<S><CASHIER>"),
                      texts.terminal + QLatin1String("<TERMINAL,0000><S>") + texts.shift + QLatin1String("<SHIFT,000>"),
                      texts.ruler,
                      QStringLiteral("<ENTRIES>"),
                      texts.ruler,
                      texts.subtotal + QLatin1String("<S><SUBTOTAL,0.00>")};
    for (int i = 0; i < 6; ++i) {
        lines.append(QLatin1Char('[') + texts.conditional[i] + QLatin1String("<S><")
                     + QLatin1String(ConditionalAmounts[i]) + QLatin1String(",0.00>]"));
    }
    lines << QLatin1String("<B>") + texts.total + QLatin1String("<S><TOTAL,0.00>")
          << texts.cash + QLatin1String("<S><CASH,0.00>") << texts.change + QLatin1String("<S><CHANGE,0.00>")
          << texts.vat + QLatin1String("<S><VAT_INCLUDED,0.00>") << texts.ruler
          << texts.shiftOpened + QLatin1String("<S><SHIFT_OPENED,dd.mm.yyyy>")
          << texts.returnUntil + QLatin1String("<S><RETURN_UNTIL,dd.mm.yyyy>") << QString();
    for (const QString &text : texts.farewell) {
        lines << QLatin1String("<C>") + text << QString();
    }
    return lines.join(QLatin1Char('\n'));
}

QVector<Receipt> receiptsOf(const Texts &texts, int count)
{
    QRandomGenerator random(Seed);
    QVector<Receipt> receipts;
    for (int i = 0; i < count; ++i) {
        receipts.append(receiptOf(texts, random));
    }
    return receipts;
}

} // namespace workload
