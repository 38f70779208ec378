#include "reports/RepoSales.h"

namespace {
const QString kAmount = QStringLiteral("###,###,###,##0");
}

QString RepoSales::title() const { return yearTitle() + sheetName(); }

QString RepoSales::sheetName() const { return supplier() ? QStringLiteral("仕入一覧表") : QStringLiteral("売上一覧表"); }

QStringList RepoSales::heads() const
{
    if (supplier())
        return {QStringLiteral("コード"), QStringLiteral("仕入先名称"), QStringLiteral("仕入金額"), QStringLiteral("返品値引等"),
                QStringLiteral("消費税額"), QStringLiteral("税込買上額")};
    return {QStringLiteral("コード"), QStringLiteral("得意先名称"), QStringLiteral("売上金額"), QStringLiteral("返品値引等"),
            QStringLiteral("消費税額"), QStringLiteral("税込売上額")};
}

QList<Money> RepoSales::figures(int r) const
{
    // The screen takes KTotal for the total; the print adds up the parts.
    return {m(r, "Gaku"), m(r, "HGaku") + m(r, "NGaku") + m(r, "KGaku"), m(r, "ZeiGaku"), m(r, "KTotal") + m(r, "ZeiGaku")};
}

void RepoSales::resetSums()
{
    for (Money& s : sums) s = Money();
}

void RepoSales::addRow(int r)
{
    const QList<Money> f = figures(r);
    for (int i = 0; i < 4; ++i) sums[i] += f[i];
}

QStringList RepoSales::screenRow(int r) const
{
    QStringList out{hCode(r), torName(r)};
    for (const Money& v : figures(r)) out << moneyText(v, kAmount);
    return out;
}

QStringList RepoSales::totals() const
{
    QStringList out;
    for (const Money& s : sums) out << moneyText(s, kAmount);
    return out;
}

Money RepoSales::alphaValue(int n, int r) const
{
    const Money others = m(r, "HGaku") + m(r, "NGaku") + m(r, "KGaku");
    switch (n) {
    case 0: return m(r, "Zenkaigaku") - m(r, "NTotal");
    case 1: return others;
    case 2: return m(r, "Gaku") + others + m(r, "ZeiGaku");
    default: return {};
    }
}

ReportDocument RepoSales::printDocument() const
{
    const bool s = supplier();
    ReportDocument d;
    d.fields = partnerFields();
    d.fields << amountField(s ? QStringLiteral("今回仕入金額") : QStringLiteral("今回売上金額"), QStringLiteral("Gaku"), 360)
             << amountField(QStringLiteral("返品値引等"), QStringLiteral("@1"), 240)
             << amountField(QStringLiteral("消 費 税"), QStringLiteral("Zeigaku"), 960)
             << amountField(s ? QStringLiteral("今回税込仕入額") : QStringLiteral("今回税込売上額"), QStringLiteral("@2"), 720);
    d.lines = pageLines(s ? QStringLiteral("仕 入 一 覧 表") : QStringLiteral("売 上 一 覧 表"));
    return d;
}

ReportSheet RepoSales::sheet() const
{
    const bool s = supplier();
    ReportSheet out;
    out.add({QStringLiteral("コード"), s ? QStringLiteral("仕入先") : QStringLiteral("得意先"),
             s ? QStringLiteral("今回仕入金額") : QStringLiteral("今回売上金額"), QStringLiteral("返品値引等"),
             QStringLiteral("消費税額"), s ? QStringLiteral("税込買上額") : QStringLiteral("税込売上額")});
    for (int r = 0; r < rows.size(); ++r) {
        QVariantList cells{hCode(r), torName(r)};
        for (const Money& v : figures(r)) cells << v.toDouble();
        out.add(cells);
    }
    return out;
}
