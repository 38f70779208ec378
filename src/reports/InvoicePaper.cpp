#include "reports/InvoicePaper.h"

#include <algorithm>
#include "reports/InvoiceData.h"
#include "slips/Slip_prnPen.h"
#include "store/Sql.h"

namespace {
const QString kMincho = QStringLiteral("ＭＳ 明朝");
const QString kGothic = QStringLiteral("ＭＳ ゴシック");
constexpr int Left = 480;
constexpr int TableTop = 2040, HeadBottom = 2340;
constexpr int TableBottom = InvoiceForm::DataY + InvoiceForm::Rows * InvoiceForm::RowPitch + 20;
constexpr int AmountLabelTop = 7560, AmountLabelBottom = 7860, AmountBottom = 8220;
constexpr int CompanyX = 5160;
}  // namespace

void drawInvoicePaper(const QSqlDatabase& db, qint64 tor)
{
    using namespace InvoiceForm;
    PaperPen pen;
    if (!pen.ready()) return;

    // Column edges follow the data: measured in the font the data are printed in.
    pen.font(kMincho, 11);
    const int suuRight = SuuX + int(pen.width(QuantityFormat));
    const int tankaRight = TankaX + int(pen.width(QuantityFormat));
    const int gakuRight = GakuX + int(pen.width(LineAmountFormat));
    const int amountWidth = int(pen.width(AmountFormat));
    const int right = std::max(gakuRight, TotalX + amountWidth) + 160;
    const int yearEnd = std::max(EraYearX + int(pen.width(QStringLiteral("平成 00"))),
                                 YearX + int(pen.width(QStringLiteral("0000"))));
    const int monthEnd = MonthX + int(pen.width(QStringLiteral("00")));
    const int dayEnd = DayX + int(pen.width(QStringLiteral("00")));

    pen.text(NameX + 3240, NameY, QStringLiteral("様"));
    pen.line(Left, NameY + 300, NameX + 3540, NameY + 300);
    pen.text(yearEnd + 40, PeriodY, QStringLiteral("年"));
    pen.text(monthEnd + 40, PeriodY, QStringLiteral("月"));
    pen.text(dayEnd + 40, PeriodY, QStringLiteral("日締切分"));

    pen.font(kGothic, 20);
    pen.textCentre(Left, right, 160, QStringLiteral("請　求　書"));

    const PrintedCompany company = readPrintedCompany(db);
    pen.font(kGothic, 12);
    pen.text(CompanyX, 620, company.name);
    pen.font(kMincho, 9);
    int y = 900;
    for (const QString& line : company.address) {
        pen.text(CompanyX, y, line);
        y += 200;
    }
    pen.text(CompanyX, y, company.phone);
    pen.text(Left + 120, 1680, QStringLiteral("毎度格別のお引き立てを賜り厚く御礼申し上げます。下記の通りご請求申し上げます。"));

    // The table of the lines: 21 rows under a band of column captions.
    const int edges[] = {Left, SuuX - 200, (suuRight + TankaX) / 2, (tankaRight + GakuX) / 2, right};
    const QString captions[] = {QStringLiteral("品　　　名"), QStringLiteral("数　量"), QStringLiteral("単　価"),
                                QStringLiteral("金　額")};
    pen.font(kMincho, 10);
    for (int i = 0; i < 4; ++i) pen.textCentre(edges[i], edges[i + 1], TableTop + 50, captions[i]);
    pen.box(Left, TableTop, right, TableBottom);
    pen.line(Left, HeadBottom, right, HeadBottom);
    for (int i = 1; i < 4; ++i) pen.line(edges[i], TableTop, edges[i], TableBottom);

    // The three amounts, each in a box under its label.
    const int xs[] = {KTotalX, ZeiX, TotalX};
    const QString labels[] = {QStringLiteral("今回御買上額"), QStringLiteral("消費税額"), QStringLiteral("今回御請求額")};
    pen.font(kMincho, 9);
    for (int i = 0; i < 3; ++i) {
        const int l = xs[i] - 160, r = xs[i] + amountWidth + 160;
        pen.box(l, AmountLabelTop, r, AmountBottom);
        pen.line(l, AmountLabelBottom, r, AmountLabelBottom);
        pen.textCentre(l, r, AmountLabelTop + 50, labels[i]);
    }
    // The customer pays into the account its master names; without one, into any of ours.
    const int account = scalar(db, QStringLiteral("SELECT BankCode FROM Tor WHERE Code = ?"), {tor}).toInt();
    const QStringList banks = company.banks.contains(account) ? QStringList{company.banks.value(account)}
                                                              : company.banks.values();
    if (!banks.isEmpty()) {
        y = AmountLabelTop;
        pen.text(right + 360, y, QStringLiteral("お振込先"));
        for (const QString& bank : banks) pen.text(right + 360, y += 200, bank);
    }
}
