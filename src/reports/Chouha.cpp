#include "reports/Chouha.h"
#include "entry/ChoiceLists.h"
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Session.h"

namespace {
const QString kAmount = QStringLiteral("###,###,###");
}

Chouha::Chouha(const QString& code) : code_(code)
{
    if (code_ != QLatin1String("KAI") && code_ != QLatin1String("TAN")) code_ = QStringLiteral("URI");
}

QString Chouha::titleWord() const
{
    if (code_ == QLatin1String("KAI")) return QStringLiteral("仕入明細表");
    if (code_ == QLatin1String("TAN")) return QStringLiteral("担当者別売上");
    return QStringLiteral("売上明細表");
}

QString Chouha::title() const { return NendoText() + titleWord(); }

QStringList Chouha::orderTexts() const { return orderListTexts(code_); }

QStringList Chouha::gridHeads() const
{
    const bool kai = purchases();
    QString partner = QStringLiteral("得意先名");
    if (kai) partner = QStringLiteral("仕入先名");
    if (code_ == QLatin1String("TAN")) partner = QStringLiteral("担当者名");
    return {QStringLiteral("コード"), partner, kai ? QStringLiteral("仕入") : QStringLiteral("売上"),
            QStringLiteral("返品"), QStringLiteral("値引"), QStringLiteral("経費"), QStringLiteral("税抜合計"),
            kai ? QStringLiteral("売上合計") : QStringLiteral("仕入合計"), QStringLiteral("粗利"),
            QStringLiteral("粗利率")};
}

MeiTResult Chouha::run(const QDate& from, const QDate& to, int order, QString* error)
{
    order_ = order < 1 || order > 3 ? 1 : order;
    current_ = -1;
    MeiTRequest r{code_, from, to, order_, session().EigCode};
    QList<MeiTRow> rows;
    const MeiTResult result = FillMeiT(r, &rows, error);
    rows_ = result == MeiTResult::Done ? rows : QList<MeiTRow>();
    return result;
}

SummaryGrid Chouha::grid() const
{
    SummaryGrid g;
    const QStringList heads = gridHeads();
    const int widths[] = {800, 2600, 1300, 1300, 1300, 1300, 1300, 1300, 1300, 900};
    for (int c = 0; c < heads.size(); ++c) {
        SummaryColumn col;
        col.Caption = heads[c];
        col.Kind = c == 1 ? QStringLiteral("S") : QStringLiteral("N");
        col.Format = c == 0 ? QStringLiteral("######") : c == 9 ? QStringLiteral("##0.00") : kAmount;
        col.Width = widths[c];
        g.columns << col;
    }
    if (rows_.isEmpty()) return g;
    Money sums[7];
    for (const MeiTRow& r : rows_) {
        const Money amounts[7] = {r.UGaku, r.HGaku, r.NGaku, r.KGaku, r.net(), r.SGaku, r.Arari};
        QStringList cells{FormatRight(double(r.Code), QStringLiteral("######")), r.Namae};
        for (int i = 0; i < 7; ++i) {
            cells << FormatRight(amounts[i], kAmount);
            sums[i] += amounts[i];
        }
        cells << FormatRight(r.rate(), QStringLiteral("##0.00"));
        g.rows << cells;
    }
    QStringList last{QString(), QStringLiteral("合計")};
    for (const Money& s : sums) last << FormatRight(s, kAmount);
    last << QString();
    g.rows << last;
    return g;
}

QVariant Chouha::alpha(short& n)
{
    if (n != 0 || current_ < 0 || current_ >= rows_.size()) return {};
    return rows_[current_].net().toDouble();
}
