#include "slips/SlipKinds.h"
#include <QList>

const SlipKind* slipKind(const QString& kind)
{
    static const QList<SlipKind> kinds = {
        {QStringLiteral("Dur"), QStringLiteral("Dud"), QStringLiteral("Slip_frm"), QStringLiteral("URI"), QStringLiteral("Tor"), QStringLiteral("売上伝票処理")},
        {QStringLiteral("Dsr"), QStringLiteral("Dsd"), QStringLiteral("Slip_frm"), QStringLiteral("KAI"), QStringLiteral("Sir"), QStringLiteral("仕入伝票処理")},
        {QString(), QStringLiteral("Dny"), QStringLiteral("Cashier_frm"), QString(), QStringLiteral("Tor"), QStringLiteral("入金伝票処理")},
        {QString(), QStringLiteral("Dsh"), QStringLiteral("Cashier_frm"), QString(), QStringLiteral("Sir"), QStringLiteral("支払伝票処理")},
    };
    for (const SlipKind& k : kinds)
        if ((!k.head.isEmpty() && k.head == kind) || (k.head.isEmpty() && k.line == kind)) return &k;
    return nullptr;
}

QStringList headKubunTexts(const QString& kind)
{
    return {kind == QLatin1String("Dsr") ? QStringLiteral("買掛") : QStringLiteral("売掛"), QStringLiteral("現金")};
}

QStringList lineKubunTexts(const QString& kind)
{
    return {kind == QLatin1String("Dsr") || kind == QLatin1String("Dsd") ? QStringLiteral("仕  入") : QStringLiteral("売  上"),
            QStringLiteral("返  品"), QStringLiteral("値  引"), QStringLiteral("経  費")};
}

QString moneyKubunText(int code)
{
    static const QStringList t = {QStringLiteral("現  金"), QStringLiteral("小切手"), QStringLiteral("振  込"),
                                  QStringLiteral("手  形"), QStringLiteral("相  殺"), QStringLiteral("調  整")};
    return code >= 1 && code <= t.size() ? t[code - 1] : QString();
}

QString zeiFlagText(int code)
{
    static const QStringList t = {QStringLiteral("外  税"), QStringLiteral("内  税"), QStringLiteral("非課税"),
                                  QStringLiteral("別計算")};
    return code >= 1 && code <= t.size() ? t[code - 1] : QString();
}
