#include "slips/CashSlipEditor.h"

#include "entry/Convert.h"
#include "entry/Dates.h"
#include "entry/Utility.h"
#include "ledgers/Daichou.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipCodes.h"
#include "slips/SlipNumbering.h"
#include "store/Sql.h"

namespace {
QSqlDatabase db() { return session().MasterDb; }
}  // namespace

short CashSlipEditor::firstMonth() { return session().sTuki >= 1 && session().sTuki <= 12 ? session().sTuki : 4; }

Money CashSlipEditor::amountOf(const QString& text)
{
    const qint64 raw = ToCur(text).raw();
    const qint64 half = Money::Scale / 2;
    return Money::fromYen((raw + (raw < 0 ? -half : half)) / Money::Scale);
}

void addByKubun(LedgerAmounts& a, int kubun, Money amount)
{
    Money* fields[] = {&a.Genkin, &a.Kogite, &a.Furikomi, &a.Tegata, &a.Sousai, &a.Chousei};
    if (kubun >= 1 && kubun <= 6) *fields[kubun - 1] += amount;
}

CashSlipEditor::CashSlipEditor(const QString& kind) : SlipHeadEditor(QString(), true) { setKind(kind); }

void CashSlipEditor::setKind(const QString& kind)
{
    const bool payment = kind == QLatin1String("Dsh");
    setKindWord(payment ? QStringLiteral("Dsh") : QStringLiteral("Dny"), !payment);
    head = CashHead();
    classEntries.clear();
    partnerEntries.clear();
    nouEntries.clear();
    tanEntries.clear();
    mode.clear();
    loadedDno = 0;
    clearDisplay();
}

QString CashSlipEditor::title() const { return deposit() ? QStringLiteral("入金伝票処理") : QStringLiteral("支払伝票処理"); }
QString CashSlipEditor::dateCaption() const { return deposit() ? QStringLiteral("入金日") : QStringLiteral("支払日"); }
QString CashSlipEditor::refersCaption() const { return deposit() ? QStringLiteral("売上額") : QStringLiteral("仕入額"); }
QString CashSlipEditor::resultsCaption() const { return deposit() ? QStringLiteral("入金額") : QStringLiteral("支払額"); }
QString CashSlipEditor::classColumn() const { return deposit() ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode"); }
QString CashSlipEditor::partnerColumn() const { return deposit() ? QStringLiteral("TorCode") : QStringLiteral("SirCode"); }
QString CashSlipEditor::textColumn() const { return deposit() ? QStringLiteral("Nnaiyo") : QStringLiteral("Snaiyo"); }
QString CashSlipEditor::amountColumn() const { return deposit() ? QStringLiteral("NGaku") : QStringLiteral("sGaku"); }
QString CashSlipEditor::invoiceColumn() const { return deposit() ? QStringLiteral("NNo") : QStringLiteral("SNo"); }
QStringList CashSlipEditor::kubunTexts() { return fixedListTexts(FixedList::Kingaku); }

void CashSlipEditor::buildMonthCaptions(const QString& day)
{
    for (int i = 0; i < CashPanel::MonthCount; ++i) {
        int m = firstMonth() + i;
        if (m > 12) m -= 12;
        panel.Captions[i] = QString::number(m) + QStringLiteral(" 月") + day;
    }
}

void CashSlipEditor::clearDisplay()
{
    rows.fill(CashRow());
    Gakukei.clear();
    panel = CashPanel();
    buildMonthCaptions(QString());
}

void CashSlipEditor::clearHead()
{
    head = CashHead();
    nouEntries.clear();
    mode.clear();
    loadedDno = 0;
    sime = 0;
    Shicode = 0;
    Getudo.clear();
    weekday.clear();
    classEntries = CodeTableEntries(classTable());
    fillPartnerEntries();
    InputZero();
}

void CashSlipEditor::InputZero()
{
    head.Dno = FormatRight(double(GetNextDno(kind(), session().EigCode)), CashFormat::Dno);
}

CashSlipEditor::NumberOutcome CashSlipEditor::enterNumber()
{
    long n = 0;
    const std::optional<bool> stored = findNumber(n);
    if (!stored) return NumberOutcome::Unchanged;
    clearDisplay();
    if (*stored) {
        mode = QStringLiteral("EDIT");
        showCashSlip(n);
        loadedDno = n;
        head.Dno = FormatRight(double(n), CashFormat::Dno);
        showPartnerMonths();
        return NumberOutcome::Edit;
    }
    clearHead();
    mode = QStringLiteral("NEW");
    loadedDno = n;
    head.Dno = FormatRight(double(n), CashFormat::Dno);
    showDate(session().CashDate.isValid() ? session().CashDate : QDate::currentDate());
    return NumberOutcome::New;
}

bool CashSlipEditor::readPartner(qint64 code, bool displaying)
{
    Query q(db(), QStringLiteral("SELECT * FROM %1 WHERE Code = ?").arg(partnerTable()), {code});
    if (!q.next()) return false;   // vanished partner: nothing of it to take
    const short own = short(q.value(QStringLiteral("Sime")).toInt());
    // A supplier's own closing day counts only when it is flagged to; else the company's.
    sime = deposit() || q.value(QStringLiteral("SimeFlag")).toInt() == 2 ? own : session().Sime;
    Shicode = short(q.value(QStringLiteral("Shicode")).toInt());
    if (!displaying) takeClassAndStaff(q, code, classColumn());
    fillPayingDestinations();
    return true;
}

void CashSlipEditor::partnerChosen()
{
    if (!head.Partner) return;
    readPartner(*head.Partner, false);
    showPartnerMonths();
}

void CashSlipEditor::fillPayingDestinations()
{
    nouEntries.clear();
    if (deposit() && head.Partner) {
        // Only a destination billed on its own takes a deposit of its own.
        Query q(db(), QStringLiteral("SELECT Code,Ryaku,Tenmei FROM Nou WHERE TorCode=? AND SeiFlag=2 ORDER BY Code"),
                {*head.Partner});
        while (q.next()) {
            const QString text = NullToEmpty(q.value(1)).trimmed() + QLatin1Char(' ') + NullToEmpty(q.value(2)).trimmed();
            nouEntries << ListEntry{text.trimmed(), q.value(0).toLongLong()};
        }
        if (!nouEntries.isEmpty()) nouEntries.prepend(ListEntry{QStringLiteral("得意先"), 0});
    }
    if (head.NouCode && !containsCode(nouEntries, *head.NouCode)) head.NouCode.reset();
}

bool CashSlipEditor::checkCashPeriod()
{
    // The partner now in the list, which can change (Page Up, Page Down) without being left.
    if (head.Partner) {
        const short own = PartnerSime(deposit() ? QStringLiteral("TOR") : QStringLiteral("SIR"), long(*head.Partner));
        if (own > 0) sime = own;
    }
    return takeClosingMonth(sime);
}

bool CashSlipEditor::showCashSlip(long dno)
{
    Query q(db(), QStringLiteral("SELECT * FROM %1 WHERE Dno=? AND EigCode=? ORDER BY Eda").arg(kind()),
            {qlonglong(dno), session().EigCode});
    if (!q.next()) return false;
    showStoredHead(q, classColumn(), partnerColumn());
    head.NouCode = deposit() ? codeOf(q.value(QStringLiteral("NouCode"))) : std::nullopt;
    head.NNo = FormatRight(double(q.value(invoiceColumn()).toLongLong()), CashFormat::Dno);
    if (head.Partner) readPartner(*head.Partner, true);
    int i = 0;
    do {
        CashRow& r = rows[i];
        const int k = q.value(QStringLiteral("Kubun")).toInt();
        r.Kubun = k >= 1 && k <= 6 ? k - 1 : -1;
        r.Naiyou = NullToEmpty(q.value(textColumn())).trimmed();
        r.Gaku = formatGaku(Money::fromStore(q.value(amountColumn())).toText());
    } while (++i < RowCount && q.next());
    SumGaku();
    return true;
}

void CashSlipEditor::showPartnerMonths()
{
    panel = CashPanel();
    buildMonthCaptions(QString());
    if (!head.Partner || !checkCashPeriod()) return;
    const short office = session().EigCode;
    const QVariantList key = deposit() ? QVariantList{*head.Partner, head.NouCode.value_or(0), office}
                                       : QVariantList{*head.Partner, office};
    const QString where = deposit() ? QStringLiteral("TorCode=? AND NouCode=? AND EigCode=?")
                                    : QStringLiteral("SirCode=? AND EigCode=?");
    const QString headTable = deposit() ? QStringLiteral("Tto") : QStringLiteral("Tsi");
    const QVariant zan = scalar(db(), QStringLiteral("SELECT Zan FROM %1 WHERE %2").arg(headTable, where), key);
    Query q(db(), QStringLiteral("SELECT Getudo, Zenkaigaku, KTotal, Zeigaku, NTotal FROM %1D WHERE %2 "
                                 "ORDER BY Getudo").arg(headTable, where), key);
    bool any = false;
    const int first = firstMonth();
    while (q.next()) {
        any = true;
        const int m = q.value(0).toInt();
        if (m < 1 || m > 12) continue;
        if (m == first) panel.Kurikoshi = FormatRight(Money::fromStore(q.value(1)), CashFormat::Panel);
        const int line = (m - first + 12) % 12;
        panel.Refers[line] = FormatRight(Money::fromStore(q.value(2)) + Money::fromStore(q.value(3)), CashFormat::Panel);
        panel.Results[line] = FormatRight(Money::fromStore(q.value(4)), CashFormat::Panel);
    }
    if (!any || !zan.isValid()) {
        panel = CashPanel();
        buildMonthCaptions(QString());
        panel.Zandaka = NoLedger;
        return;
    }
    panel.Zandaka = FormatRight(Money::fromStore(zan), CashFormat::Panel);
    buildMonthCaptions(sime >= 31 || sime < 1 ? QStringLiteral("末日締") : QString::number(sime) + QStringLiteral("日締"));
}

SlipFocus CashSlipEditor::checkSlip() { return checkHead(HasText(head.Dno) && number() >= 1); }

void CashSlipEditor::SumGaku()
{
    Money sum;
    for (const CashRow& r : rows) sum += amountOf(r.Gaku);
    Gakukei = FormatRight(sum, CashFormat::Gakukei);
}

void CashSlipEditor::takeUsualKind(int row)
{
    if (row < 0 || row >= RowCount || rows[row].Kubun >= 0) return;
    if (Shicode >= 1 && Shicode <= 6) rows[row].Kubun = Shicode - 1;
}

void CashSlipEditor::blankRow(int row)
{
    if (row < 0 || row >= RowCount) return;
    rows[row] = CashRow();
    SumGaku();
}

void CashSlipEditor::deleteCashRow(int row)
{
    if (row < 0 || row >= RowCount) return;
    for (int i = row; i < RowCount - 1; ++i) rows[i] = rows[i + 1];
    rows[RowCount - 1] = CashRow();
    SumGaku();
}

void CashSlipEditor::insertCashRow(int row)
{
    if (row < 0 || row >= RowCount) return;
    for (int i = RowCount - 1; i > row; --i) rows[i] = rows[i - 1];
    rows[row] = CashRow();
    SumGaku();
}

QString CashSlipEditor::formatGaku(const QString& text)
{
    if (!HasText(text)) return QString();
    const Money m = amountOf(text);
    const QString shown = FormatRight(m, CashFormat::Gaku);
    // Wider than the picture: every digit stays rather than the left ones being cut.
    return shown.trimmed() == FormatNumber(m, CashFormat::Gaku) ? shown : FormatNumber(m, CashFormat::Gaku);
}

int CashSlipEditor::rowsToWrite() const
{
    for (int i = 0; i < RowCount; ++i)
        if (rows[i].Kubun < 0 || amountOf(rows[i].Gaku) == Money()) return i;
    return RowCount;
}

LedgerAmounts CashSlipEditor::amounts() const
{
    LedgerAmounts a;
    for (int i = 0; i < rowsToWrite(); ++i) addByKubun(a, rows[i].Kubun + 1, amountOf(rows[i].Gaku));
    return a;
}

short CashSlipEditor::seiFlag() const
{
    if (!deposit() || !head.Partner || head.NouCode.value_or(0) == 0) return 1;
    return short(NouBilling(*head.Partner, *head.NouCode).toInt());
}
