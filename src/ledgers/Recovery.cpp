#include "ledgers/Recovery.h"
#include <QStringList>
#include "ledgers/ProductPosting.h"
#include "ledgers/RebuildMonths.h"

namespace {

template <typename Body>
bool inUnit(const ProgressFn& progress, QString* error, Body body)
{
    LedgerRun run(progress);
    PostingUnit unit(run.db);
    if (!unit.active()) run.fail(unit.beginError());
    else body(run);
    return finishUnit(run, unit, error);
}

} // namespace

bool parseRebuildKind(const QString& text, RebuildKind* kind)
{
    static const QStringList names{QStringLiteral("ALL"), QStringLiteral("THI"), QStringLiteral("TTO"), QStringLiteral("TSI")};
    const int i = names.indexOf(text.trimmed().toUpper());
    if (i < 0) return false;
    if (kind) *kind = static_cast<RebuildKind>(i);
    return true;
}

bool isRebuildMonth(int month) { return month >= 1 && month <= 12; }

QList<int> rebuildMonths(int from, int to)
{
    QList<int> out;
    if (!isRebuildMonth(from) || !isRebuildMonth(to)) return out;
    for (int m = from;; m = nextMonth(m)) {
        out << m;
        if (m == to) break;
    }
    return out;
}

bool rebuildLedgers(RebuildKind kind, int fromMonth, int toMonth, const ProgressFn& progress, QString* error)
{
    const QList<int> months = rebuildMonths(fromMonth, toMonth);
    if (months.isEmpty()) return false;
    const bool ok = inUnit(progress, error, [&](LedgerRun& run) {
        run.show(QStringLiteral("商品台帳の調整中です．"));
        for (int m : months) {
            if (kind == RebuildKind::ALL || kind == RebuildKind::THI) RebuildProductMonth(run, m);
            if (kind == RebuildKind::ALL || kind == RebuildKind::TTO) RebuildCustomerMonth(run, m);
            if (kind == RebuildKind::ALL || kind == RebuildKind::TSI) RebuildSupplierMonth(run, m);
            if (!run.ok()) break;
        }
    });
    if (ok && progress) progress(QStringLiteral("終了しました．"));
    return ok;
}

bool refreshMasterNames(MasterNames which, const ProgressFn& progress, QString* error)
{
    static const char* const texts[] = {"商品台帳の調整中です．", "得意先台帳の調整中です．", "仕入先台帳の調整中です．"};
    const bool ok = inUnit(progress, error, [&](LedgerRun& run) {
        run.show(QString::fromUtf8(texts[static_cast<int>(which)]));
        switch (which) {
        case MasterNames::Products:
            run.exec(QStringLiteral("UPDATE Thi SET HinNamae=Hin.Namae, HbnCode=Hin.HbnCode FROM Hin WHERE Thi.HinCode=Hin.Code"));
            break;
        case MasterNames::Customers:
            // Customers without a class keep their old names: the class is joined, not looked up.
            run.exec(QStringLiteral("UPDATE Tto SET TbnCode=Tor.TbnCode,TbnNamae=Tbn.Namae,Sime=Tor.Sime,TorNamae=Tor.Namae "
                                    "FROM Tor INNER JOIN Tbn ON Tor.TbnCode=Tbn.Code WHERE Tto.TorCode=Tor.Code"));
            run.exec(QStringLiteral("UPDATE Tto SET NouNamae=COALESCE((SELECT CASE WHEN Nou.Namae IS NULL OR Nou.Namae='' "
                                    "THEN ' ' ELSE Nou.Namae END FROM Nou WHERE Nou.TorCode=Tto.TorCode "
                                    "AND Nou.Code=Tto.NouCode), ' ') WHERE NouCode<>0"));
            break;
        case MasterNames::Suppliers:
            run.exec(QStringLiteral("UPDATE Tsi SET SbnCode=Sir.SbnCode,SbnNamae=Sbn.Namae,Sime=Sir.Sime,SirNamae=Sir.Namae "
                                    "FROM Sir INNER JOIN Sbn ON Sir.SbnCode=Sbn.Code WHERE Tsi.SirCode=Sir.Code"));
            break;
        }
    });
    if (ok && progress) progress(QStringLiteral("終了しました．"));
    return ok;
}

bool RepairNulls(QString* error)
{
    return inUnit({}, error, [](LedgerRun& run) {
        const QString thid = QStringLiteral("SSuu SGaku SHGaku SNGaku SKGaku STotal USuu UGaku UHGaku UNGaku UKGaku "
                                            "UTotal ZSuu TSuu KSuu");
        const QString money = QStringLiteral("Zenkaigaku Gaku HGaku NGaku KGaku Zeigaku Genkin Kogite Furikomi Tegata "
                                             "Sousai Chousei NTotal");
        const QList<QPair<QString, QString>> tables{{QStringLiteral("ThiD"), thid},
                                                    {QStringLiteral("TtoD"), money},
                                                    {QStringLiteral("TsiD"), money}};
        for (const auto& t : tables)
            for (const QString& c : t.second.split(QLatin1Char(' ')))
                run.exec(QStringLiteral("UPDATE %1 SET %2=0 WHERE %2 IS NULL").arg(t.first, c));
    });
}

bool AfterNenjiKosin(const ProgressFn& progress, QString* error)
{
    const LedgerRun run;
    return rebuildLedgers(RebuildKind::ALL, run.firstMonth, run.firstMonth, progress, error);
}
