#include "reports/RepoSales.h"

QString RepoSales::sheetName() const { return supplier() ? QStringLiteral("仕入一覧表") : QStringLiteral("売上一覧表"); }

QStringList RepoSales::heads() const
{
    if (supplier())
        return {QStringLiteral("コード"), QStringLiteral("仕入先名称"), QStringLiteral("仕入金額"), QStringLiteral("返品値引等"),
                QStringLiteral("消費税額"), QStringLiteral("税込買上額")};
    return {QStringLiteral("コード"), QStringLiteral("得意先名称"), QStringLiteral("売上金額"), QStringLiteral("返品値引等"),
            QStringLiteral("消費税額"), QStringLiteral("税込売上額")};
}

QList<Money> RepoSales::screenFigures(int r) const
{
    // The screen takes KTotal for the total; the print adds up the parts.
    return {m(r, "Gaku"), returnsEtc(r), m(r, "ZeiGaku"), m(r, "KTotal") + m(r, "ZeiGaku")};
}

Money RepoSales::alphaValue(int n, int r) const
{
    switch (n) {
    case 0: return m(r, "Zenkaigaku") - m(r, "NTotal");
    case 1: return returnsEtc(r);
    case 2: return m(r, "Gaku") + returnsEtc(r) + m(r, "ZeiGaku");
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
        for (const Money& v : screenFigures(r)) cells << v.toDouble();
        out.add(cells);
    }
    return out;
}
