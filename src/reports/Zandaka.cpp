#include "reports/Zandaka.h"

QStringList Zandaka::heads() const
{
    if (supplier())
        return {QStringLiteral("コード"), QStringLiteral("仕入先名称"), QStringLiteral("前回未払額"), QStringLiteral("支払金額"),
                QStringLiteral("繰越金額"), QStringLiteral("仕入金額"), QStringLiteral("返品値引等"), QStringLiteral("消費税額"),
                QStringLiteral("税込買掛残高")};
    return {QStringLiteral("コード"), QStringLiteral("得意先名称"), QStringLiteral("前回請求額"), QStringLiteral("入金金額"),
            QStringLiteral("繰越金額"), QStringLiteral("売上金額"), QStringLiteral("返品値引等"), QStringLiteral("消費税額"),
            QStringLiteral("税込売掛残高")};
}

void Zandaka::addRow(int r)
{
    // A destination's row of the detailed list is already inside its customer's own row.
    if (code == QLatin1String("UzaDtl") && destinationRow(r)) return;
    sums[0] += m(r, "Zenkaigaku");
    sums[1] += m(r, "NTotal");
    sums[3] += m(r, "Gaku");
    sums[4] += returnsEtc(r);
    sums[5] += m(r, "ZeiGaku");
    sums[2] = sums[0] - sums[1];
    sums[6] = sums[2] + sums[3] + sums[4] + sums[5];
}

QList<Money> Zandaka::screenFigures(int r) const
{
    const bool detail = code == QLatin1String("UzaDtl") && destinationRow(r);
    const Money zen = detail ? Money() : m(r, "Zenkaigaku");
    const Money nTotal = detail ? Money() : m(r, "NTotal");
    return {zen, nTotal, zen - nTotal, m(r, "Gaku"), returnsEtc(r), m(r, "ZeiGaku"), zen - nTotal + m(r, "KTotal") + m(r, "ZeiGaku")};
}

Money Zandaka::alphaValue(int n, int r) const
{
    // The print has no special case for destination rows.
    const Money zen = m(r, "Zenkaigaku"), nTotal = m(r, "NTotal");
    switch (n) {
    case 0: return zen - nTotal;
    case 1: return returnsEtc(r);
    case 2: return zen - nTotal + m(r, "KTotal") + m(r, "ZeiGaku");
    case 3: return m(r, "Gaku") + returnsEtc(r) + m(r, "ZeiGaku");
    default: return {};
    }
}

ReportDocument Zandaka::printDocument() const
{
    const bool s = supplier();
    ReportDocument d;
    d.fields = partnerFields();
    d.fields << amountField(s ? QStringLiteral("前回未払額") : QStringLiteral("前回請求額"), QStringLiteral("Zenkaigaku"), 240)
             << amountField(s ? QStringLiteral("支 払 額") : QStringLiteral("入 金 額"), QStringLiteral("NTotal"), 240)
             << amountField(QStringLiteral("繰越金額"), QStringLiteral("@0"), 720)
             << amountField(s ? QStringLiteral("今回仕入金額") : QStringLiteral("今回売上金額"), QStringLiteral("Gaku"), 360)
             << amountField(QStringLiteral("返品値引等"), QStringLiteral("@1"), 240)
             << amountField(QStringLiteral("消 費 税"), QStringLiteral("Zeigaku"), 960)
             << amountField(s ? QStringLiteral("今回税込仕入額") : QStringLiteral("今回税込売上額"), QStringLiteral("@3"), 720)
             << amountField(s ? QStringLiteral("税込買掛残高") : QStringLiteral("税込売掛残高"), QStringLiteral("@2"), 720);
    d.lines = pageLines(s ? QStringLiteral("買 掛 残 高 一 覧 表") : QStringLiteral("売 掛 残 高 一 覧 表"));
    return d;
}

ReportSheet Zandaka::sheet() const
{
    const bool s = supplier();
    ReportSheet out;
    out.add({QStringLiteral("コード"), s ? QStringLiteral("仕入先") : QStringLiteral("得意先"),
             s ? QStringLiteral("前回未払額") : QStringLiteral("前回請求額"), s ? QStringLiteral("支払金額") : QStringLiteral("入金金額"),
             QStringLiteral("繰越金額"), s ? QStringLiteral("今回仕入金額") : QStringLiteral("今回売上金額"),
             QStringLiteral("返品値引等"), QStringLiteral("消費税額"),
             s ? QStringLiteral("税込買掛残高") : QStringLiteral("税込売掛残高")});
    for (int r = 0; r < rows.size(); ++r) {
        const Money zen = m(r, "Zenkaigaku"), nTotal = m(r, "NTotal");
        const QList<Money> shown = screenFigures(r);
        out.add({rows.at(r, s ? QStringLiteral("SirCode") : QStringLiteral("TorCode")).toLongLong(), torName(r),
                 zen.toDouble(), nTotal.toDouble(), (zen - nTotal).toDouble(), m(r, "Gaku").toDouble(),
                 returnsEtc(r).toDouble(), m(r, "ZeiGaku").toDouble(),
                 shown[6].toDouble()});
    }
    return out;
}

QString Zandaka::sheetName() const { return supplier() ? QStringLiteral("買掛残高一覧") : QStringLiteral("売掛残高一覧"); }
