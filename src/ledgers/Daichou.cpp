#include "ledgers/Daichou.h"
#include <array>
#include "ledgers/LedgerRun.h"
#include "ledgers/LedgerSteps.h"

namespace {

bool isCustomer(const QString& kind) { return kind == QLatin1String("TTO"); }

// Key filter of one head: (TorCode, NouCode, EigCode) or (SirCode, EigCode).
struct HeadKey {
    bool customer;
    qint64 code;
    qint64 nou;
    short eig;
    const MoneySide& side() const { return customer ? customerSide() : supplierSide(); }
    QString where(const QString& alias = {}) const
    {
        const QString a = alias.isEmpty() ? QString() : alias + QLatin1Char('.');
        return customer ? QStringLiteral("%1TorCode=? AND %1NouCode=? AND %1EigCode=?").arg(a)
                        : QStringLiteral("%1SirCode=? AND %1EigCode=?").arg(a);
    }
    QVariantList binds() const
    {
        return customer ? QVariantList{code, nou, eig} : QVariantList{code, eig};
    }
};

bool addHead(LedgerRun& run, const HeadKey& k, short SeiFlag)
{
    if (k.customer) {
        const bool dest = k.nou != 0;
        const QString nouName = dest ? QStringLiteral("(SELECT Namae FROM Nou WHERE TorCode=? AND Code=?)")
                                     : QStringLiteral("' '");
        QVariantList binds{k.code, k.nou};
        if (dest) binds << k.code << k.nou << SeiFlag;
        else binds << QVariant();
        binds << run.nendo << k.eig << k.code;
        return run.exec(QStringLiteral(
            "INSERT INTO Tto (TorCode, NouCode, TorNamae, TbnCode, TbnNamae, NouNamae, SeiFlag, Nendo, Zan, Sime, EigCode) "
            "SELECT ?, ?, Tor.Namae, Tor.TbnCode, Tbn.Namae, %1, ?, ?, 0, Tor.Sime, ? "
            "FROM (SELECT 1) LEFT JOIN Tor ON Tor.Code=? LEFT JOIN Tbn ON Tbn.Code=Tor.TbnCode").arg(nouName),
            binds);
    }
    return run.exec(QStringLiteral(
        "INSERT INTO Tsi (SirCode, SirNamae, SbnCode, SbnNamae, Nendo, Zan, Sime, EigCode) "
        "SELECT ?, Sir.Namae, Sir.SbnCode, Sbn.Namae, ?, 0, Sir.Sime, ? "
        "FROM (SELECT 1) LEFT JOIN Sir ON Sir.Code=? LEFT JOIN Sbn ON Sbn.Code=Sir.SbnCode"),
        {k.code, run.nendo, k.eig, k.code});
}

bool addMonthRows(LedgerRun& run, const HeadKey& k)
{
    const MoneySide& s = k.side();
    // The thirteen month rows of the head, all figures zero; rows already there stay.
    return run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO {months} ({keys}, Getudo, {figures}) "
                                           "SELECT {marks}, m, {zeros} FROM {monthNumbers}"),
                            {{"months", s.months}, {"keys", s.keyList()}, {"figures", zeroFigureColumns()},
                             {"marks", k.customer ? QStringLiteral("?, ?, ?") : QStringLiteral("?, ?")},
                             {"zeros", zeroFigureValues()}, {"monthNumbers", monthRows()}}),
                    k.binds());
}

bool carry(LedgerRun& run, const HeadKey& k)
{
    const MoneySide& s = k.side();
    struct Row { bool exists = false; Money zen, kTotal, zei, nTotal; };
    std::array<Row, 13> rows{};
    QSqlQuery& q = run.query(QStringLiteral("SELECT Getudo, Zenkaigaku, KTotal, Zeigaku, NTotal FROM %1 WHERE %2 "
                                            "AND Getudo BETWEEN 1 AND 12").arg(s.months, k.where()),
                             k.binds());
    while (q.next()) {
        Row& r = rows[q.value(0).toInt()];
        r = Row{true, Money::fromStore(q.value(1)), Money::fromStore(q.value(2)),
                Money::fromStore(q.value(3)), Money::fromStore(q.value(4))};
    }
    if (!run.ok()) return false;
    auto leaving = [&](int m) { const Row& r = rows[m]; return r.zen + r.kTotal + r.zei - r.nTotal; };
    const QString set = QStringLiteral("UPDATE %1 SET Zenkaigaku=? WHERE %2 AND Getudo=?").arg(s.months, k.where());
    for (int m = run.firstMonth; m != run.lastMonth && run.ok(); m = nextMonth(m)) {
        const int next = nextMonth(m);
        rows[next].zen = leaving(m);
        if (rows[next].exists) run.exec(set, QVariantList{rows[next].zen.toStore()} + k.binds() + QVariantList{next});
    }
    return run.exec(QStringLiteral("UPDATE %1 SET Zan=? WHERE %2").arg(s.head, k.where()),
                    QVariantList{leaving(run.lastMonth).toStore()} + k.binds());
}

bool postLedger(LedgerRun& run, const HeadKey& k, const LedgerAmounts& a, int month, short SeiFlag)
{
    const MoneySide& s = k.side();
    QSqlQuery& head = run.query(QStringLiteral("SELECT 1 FROM %1 WHERE %2").arg(s.head, k.where()), k.binds());
    const bool exists = head.next();
    if (!run.ok()) return false;
    if (!exists && !addHead(run, k, SeiFlag)) return false;
    if (!addMonthRows(run, k)) return false;

    // Sales and purchases never come this way: only the money columns of the month move, and
    // NTotal with them.
    const QVariantList money{a.Genkin.toStore(), a.Kogite.toStore(), a.Furikomi.toStore(),
                             a.Tegata.toStore(), a.Sousai.toStore(), a.Chousei.toStore()};
    run.exec(sqlText(QStringLiteral("UPDATE {months} SET Genkin=Genkin+?, Kogite=Kogite+?, Furikomi=Furikomi+?, "
                                    "Tegata=Tegata+?, Sousai=Sousai+?, Chousei=Chousei+?, "
                                    "NTotal=(Genkin+?)+(Kogite+?)+(Furikomi+?)+(Tegata+?)+(Sousai+?)+(Chousei+?) "
                                    "WHERE {ofHead} AND Getudo=?"),
                     {{"months", s.months}, {"ofHead", k.where()}}),
             money + money + k.binds() + QVariantList{month});
    if (!carry(run, k)) return false;

    // Row 13 carries the head's Zan into the next year.
    const QString carried = rowText(LedgerRow::CarriedOut);
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO {months} ({keys}, Getudo) VALUES ({marks}, {carried})"),
                     {{"months", s.months}, {"keys", s.keyList()},
                      {"marks", k.customer ? QStringLiteral("?, ?, ?") : QStringLiteral("?, ?")}, {"carried", carried}}),
             k.binds());
    return run.exec(sqlText(QStringLiteral("UPDATE {months} SET Zenkaigaku=(SELECT Zan FROM {head} WHERE {ofHead}) "
                                           "WHERE {ofHead} AND Getudo={carried}"),
                            {{"months", s.months}, {"head", s.head}, {"ofHead", k.where()}, {"carried", carried}}),
                    k.binds() + k.binds());
}

int monthNumber(const QString& month)
{
    bool ok = false;
    const int m = month.trimmed().toInt(&ok);
    return ok && m >= 1 && m <= 13 ? m : 0;
}

// Runs `body` as one unit of work and hands back the outcome.
template <typename Body>
bool inUnit(QString* error, Body body)
{
    LedgerRun run;
    PostingUnit unit(run.db);
    if (!unit.active()) run.fail(unit.beginError());
    else body(run);
    return finishUnit(run, unit, error);
}

// A closing month that is not 1..13 (a date outside the year) posts nothing and says so.
bool badMonth(const QString& month, QString* error)
{
    if (error) *error = QStringLiteral("対象年度の範囲内ではありません。") + QStringLiteral("(") + month.trimmed() + QStringLiteral(")");
    return false;
}

} // namespace

bool PostCustomer(qint64 TorCode, qint64 NouCode, const LedgerAmounts& amounts, const QString& month,
                  short EigCode, short SeiFlag, QString* error)
{
    const int m = monthNumber(month);
    if (!m) return badMonth(month, error);
    return inUnit(error, [&](LedgerRun& run) {
        QSqlQuery& q = run.query(QStringLiteral("SELECT TorCode FROM Nou WHERE TorCode=?"), {TorCode});
        const bool hasDestinations = q.next();
        if (!run.ok()) return false;
        const HeadKey own{true, TorCode, 0, EigCode};
        if (NouCode == 0 && hasDestinations) {
            if (!postLedger(run, own, amounts, m, SeiFlag)) return false;
        } else if (!postLedger(run, HeadKey{true, TorCode, NouCode, EigCode}, amounts, m, SeiFlag)) {
            return false;
        }
        // A destination billed by itself keeps its money off the customer's row.
        if (NouCode != 0 && SeiFlag != 2) return postLedger(run, own, amounts, m, SeiFlag);
        return true;
    });
}

bool PostLedger(const QString& kind, qint64 code, qint64 NouCode, const LedgerAmounts& amounts,
                const QString& month, short EigCode, short SeiFlag, int /*rollUp*/, QString* error)
{
    const int m = monthNumber(month);
    if (!m) return badMonth(month, error);
    const bool customer = isCustomer(kind);
    return inUnit(error, [&](LedgerRun& run) {
        return postLedger(run, HeadKey{customer, code, customer ? NouCode : 0, EigCode}, amounts, m, SeiFlag);
    });
}

bool CarryBalance(const QString& kind, qint64 code, qint64 NouCode, short EigCode, QString* error)
{
    const bool customer = isCustomer(kind);
    return inUnit(error, [&](LedgerRun& run) {
        return carry(run, HeadKey{customer, code, customer ? NouCode : 0, EigCode});
    });
}
