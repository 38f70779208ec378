#include "reports/Chouha.h"
#include "entry/ChoiceLists.h"
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "pageout/Excel.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "shell/Session.h"

namespace {
const QString kAmount = QStringLiteral("###,###,###");
}

Chouha::Chouha(const QString& code) : code_(code)
{
    if (code_ != QLatin1String("KAI") && code_ != QLatin1String("TAN")) code_ = QStringLiteral("URI");
}

Chouha::~Chouha() = default;

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
    for (int c = 0; c < heads.size(); ++c) g.columns << SummaryColumn{heads[c], c != 1, widths[c]};
    g.RowHeight = 240;
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

namespace {

void field(VtmlField& f, const QString& caption, const char* name, const char* kind, const char* format, short gap,
           short total)
{
    VtmlFieldClear(f);
    f.Caption = caption;
    f.Name = QString::fromLatin1(name);
    f.Kind = QString::fromLatin1(kind);
    f.Format = QString::fromLatin1(format);
    f.Gap = gap;
    f.Total = total;
    VtmlAddField(f);
}

} // namespace

bool Chouha::print()
{
    QList<QVariantList> values;
    for (const MeiTRow& r : rows_)
        values << QVariantList{r.Code, r.Namae, moneyVariant(r.UGaku), moneyVariant(r.HGaku), moneyVariant(r.NGaku),
                               moneyVariant(r.KGaku), moneyVariant(r.SGaku), moneyVariant(r.Arari)};
    printRows_ = listRows({QStringLiteral("Code"), QStringLiteral("Namae"), QStringLiteral("UGaku"), QStringLiteral("HGaku"),
                           QStringLiteral("NGaku"), QStringLiteral("KGaku"), QStringLiteral("SGaku"), QStringLiteral("Arari")},
                          values);
    const bool kai = purchases();
    QString partner = kai ? QStringLiteral("仕入先") : QStringLiteral("得意先");
    if (code_ == QLatin1String("TAN")) partner = QStringLiteral("担当者");
    const char* amount = "###,###,###";
    VtmlClear();
    VtmlField f;
    field(f, QStringLiteral("コード"), "Code", "N", "######", 480, 0);
    field(f, partner, "Namae", "S", "30", 480, 0);
    field(f, kai ? QStringLiteral("仕入") : QStringLiteral("売上"), "UGaku", "N", amount, 480, 1);
    field(f, QStringLiteral("返品"), "HGaku", "N", amount, 480, 1);
    field(f, QStringLiteral("値引"), "NGaku", "N", amount, 480, 1);
    field(f, QStringLiteral("経費"), "KGaku", "N", amount, 480, 1);
    field(f, kai ? QStringLiteral("仕入額") : QStringLiteral("売上額"), "@0", "N", amount, 120, 1);
    field(f, kai ? QStringLiteral("売上合計") : QStringLiteral("仕入合計"), "SGaku", "N", amount, 120, 1);
    field(f, QStringLiteral("粗利"), "Arari", "N", amount, 120, 1);
    PbSetRows(printRows_.get());
    PbSetForm(this);
    for (const QString& line : {QStringLiteral("<AREA>21600,16080"), QStringLiteral("<FONT>ＭＳ 明朝"),
                                QStringLiteral("<SIZE>20"), QStringLiteral("<CENTER>"), title(), QStringLiteral("<LEFT>"),
                                QStringLiteral("<SIZE>9"), QStringLiteral("<LOCATE>16800,120"), QStringLiteral("<PAGE>"),
                                QStringLiteral("<LOCATE>16560,360"), QStringLiteral("<DATE>1"), QStringLiteral("<SIZE>12"),
                                QStringLiteral("<LOCATE>240,720"), QStringLiteral("<DTPOS>"), QStringLiteral("<ZOUBUN>240"),
                                QStringLiteral("<DTCNT>50")})
        VtmlAddLine(line);
    return VtmlPrint();
}

void Chouha::fillBook(ExcelBook& book) const
{
    const QStringList heads = gridHeads();
    for (int c = 0; c < 9; ++c) book.setCell(1, c + 1, heads[c]);
    int row = 1;
    for (const MeiTRow& r : rows_) {
        ++row;
        const QVariantList cells{r.Code, r.Namae, moneyVariant(r.UGaku), moneyVariant(r.HGaku), moneyVariant(r.NGaku),
                                 moneyVariant(r.KGaku), moneyVariant(r.net()), moneyVariant(r.SGaku), moneyVariant(r.Arari)};
        for (int c = 0; c < cells.size(); ++c) book.setCell(row, c + 1, cells[c]);
    }
}

bool Chouha::exportSheet() const
{
    ExcelBook book;
    if (!book.open()) return false;
    fillBook(book);
    return book.save(titleWord(), nullptr, nullptr);
}

bool Chouha::exportTo(const QString& path, QString* error) const
{
    ExcelBook book;
    fillBook(book);
    return book.saveAs(path, error);
}

QVariant Chouha::alpha(short& n)
{
    if (n != 0 || !printRows_) return {};
    Money net;
    for (const char* c : {"UGaku", "NGaku", "HGaku", "KGaku"}) net += variantMoney(printRows_->value(QString::fromLatin1(c)));
    return moneyVariant(net);
}
