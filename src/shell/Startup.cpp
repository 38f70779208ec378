#include "shell/Startup.h"
#include <QDir>
#include <QHash>
#include <QSqlRecord>
#include "entry/Convert.h"
#include "shell/Dialogs.h"
#include "shell/InstanceLock.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

void call(const std::function<void()>& f)
{
    if (f) f();
}

QString sqlFailure(const Query& q) { return StoreErrorText(q.error()); }

StartupResult stopAfter(const QString& message)
{
    if (!message.isEmpty()) Tell(message);
    CloseStore();
    processInstanceLock().release();
    StartupResult r;
    r.kind = StartupResult::StopAfterMessage;
    return r;
}

// Step 5: the company row.
QString readCompany(Session& s, QString* title)
{
    Query q(s.MasterDb, QStringLiteral("SELECT * FROM Com"));
    if (!q.ok()) return sqlFailure(q);
    if (!q.next()) return QStringLiteral("会社の情報（Com）が登録されていません。終了します。");
    const QSqlRecord rec = q.raw().record();
    static const char* const needed[] = {"Zeiritu", "sTuki", "SKai", "Hiz", "Sime", "HsuType", "Hsu", "Kaisya"};
    for (const char* col : needed)
        if (rec.indexOf(QLatin1String(col)) < 0)
            return QStringLiteral("会社の情報（Com）に項目 %1 がありません。終了します。").arg(QLatin1String(col));
    s.Zeiritu = Money::fromStore(q.value(QStringLiteral("Zeiritu")));
    s.sTuki = static_cast<short>(q.value(QStringLiteral("sTuki")).toInt());
    s.eTuki = EndMonth(s.sTuki);
    s.Nendo = NendoFromSKai(NullToEmpty(q.value(QStringLiteral("SKai"))));
    s.Hiz = static_cast<short>(q.value(QStringLiteral("Hiz")).toInt());
    s.Sime = static_cast<short>(q.value(QStringLiteral("Sime")).toInt());
    s.HsuType = static_cast<short>(q.value(QStringLiteral("HsuType")).toInt());
    s.Hsu = static_cast<short>(q.value(QStringLiteral("Hsu")).toInt());
    *title = NullToEmpty(q.value(QStringLiteral("Kaisya"))) + QStringLiteral(" 業務メニュー");
    return {};
}

// Step 7: the offices. Returns an error text, or empty.
QString readOffices(Session& s, bool* showOffice)
{
    s.EigCode = 0;
    s.EigNamae.clear();
    s.EigNames.clear();
    s.EigCodes.clear();
    *showOffice = false;
    Query q(s.MasterDb, QStringLiteral("SELECT * FROM Eig ORDER BY Code"));
    if (!q.ok()) return sqlFailure(q);
    QList<QPair<short, QString>> rows;
    while (q.next())
        rows << qMakePair(static_cast<short>(q.value(QStringLiteral("Code")).toInt()),
                          NullToEmpty(q.value(QStringLiteral("Namae"))));
    if (rows.isEmpty()) return {};
    s.EigCode = rows.first().first;
    s.EigNamae = rows.first().second;
    if (rows.size() == 1) return {};
    constexpr int maxOffices = 21;
    for (int i = 0; i < rows.size() && i < maxOffices; ++i) {
        s.EigCodes << rows[i].first;
        s.EigNames << rows[i].second;
    }
    *showOffice = true;
    if (rows.size() > maxOffices)
        Tell(QStringLiteral("営業所は21件までです。22件目以降の営業所は一覧に入りません。"));
    return {};
}

// Step 8: the switches of zSysFunc.
QString readSwitches(Session& s)
{
    Query q(s.MasterDb, QStringLiteral("SELECT * FROM zSysFunc ORDER BY Code"));
    if (!q.ok()) return sqlFailure(q);
    QHash<qint64, QString> rows;
    while (q.next()) rows.insert(q.value(QStringLiteral("Code")).toLongLong(), NullToEmpty(q.value(QStringLiteral("contents"))));
    s.Password.clear();
    s.ScreenScale = Money::fromYen(1);
    s.PreviewMode = false;
    s.SlipStyle = 0;
    s.SeiStyle = 0;
    s.ShrinkMode = false;
    s.Code825Flag = false;
    s.KeepPageSetup = false;
    if (rows.isEmpty()) return {};
    // Without row 123 nobody could tell what the password is; better to stop than to let
    // everybody in.
    if (!rows.contains(123))
        return QStringLiteral("パスワードの設定（システム機能 123）がありません。終了します。");
    const QString pw = rows.value(123);
    // A blank is how the store writes an empty text.
    s.Password = pw.trimmed().isEmpty() ? QString() : pw;
    s.ScreenScale = ScaleFromContents(rows.value(1));
    if (rows.contains(2)) s.PreviewMode = ToNum(rows.value(2)) == 1.0;
    if (rows.contains(301)) s.SlipStyle = ToInt16(rows.value(301));
    if (rows.contains(302)) s.SeiStyle = ToInt16(rows.value(302));
    if (rows.contains(823)) s.ShrinkMode = rows.value(823).trimmed() == QLatin1String("Taiwan");
    if (rows.contains(825)) s.Code825Flag = rows.value(825).trimmed() == QLatin1String("Mexico");
    if (rows.contains(184)) s.KeepPageSetup = rows.value(184).trimmed() == QLatin1String("GZL");
    return {};
}

// Steps 13 and 14: the rate change, with its defaults written on the first run.
void readRates(Session& s, bool* firstRun)
{
    QHash<qint64, QString> rows;
    Query q(s.MasterDb, QStringLiteral("SELECT * FROM UserOP"));
    while (q.next()) rows.insert(q.value(QStringLiteral("Code")).toLongLong(), NullToEmpty(q.value(QStringLiteral("contents"))));
    *firstRun = !rows.contains(725);
    if (!*firstRun) {
        const QString d = rows.value(725).trimmed();
        s.TaxChangeDate = QDate(d.left(4).toInt(), d.mid(4, 2).toInt(), d.mid(6, 2).toInt());
        s.TaxRateNew = ToCur(rows.value(726));
        return;
    }
    s.TaxChangeDate = QDate(1997, 3, 31);
    s.Zeiritu = Money::fromYen(3);
    s.TaxRateNew = Money::fromYen(5);
    QSqlError err;
    {
        UnitOfWork unit(s.MasterDb);
        ErrorClass e = unit.active() ? ErrorClass::None : unit.errorClass();
        if (!unit.active()) err = unit.error();
        if (e == ErrorClass::None)
            e = execSql(s.MasterDb, QStringLiteral("INSERT INTO UserOP (Code, contents) VALUES (725, ?)"),
                        {QStringLiteral("19970331")}, &err);
        if (e == ErrorClass::None)
            e = execSql(s.MasterDb, QStringLiteral("INSERT INTO UserOP (Code, contents) VALUES (726, ?)"),
                        {QStringLiteral("5")}, &err);
        if (e == ErrorClass::None)
            e = execSql(s.MasterDb, QStringLiteral("UPDATE Com SET Zeiritu = ?"), {Money::fromYen(3).toStore()}, &err);
        if (e == ErrorClass::None && unit.commit()) return;
        if (e == ErrorClass::None) err = unit.error();
    }
    // The session runs on the defaults either way; a store that refused them gets them next time.
    Tell(StoreErrorText(err));
}

} // namespace

short EndMonth(short sTuki)
{
    const int e = sTuki + 11;
    return static_cast<short>(e > 12 ? e - 12 : e);
}

int NendoFromSKai(const QString& sKai)
{
    const QString head = sKai.trimmed().left(4);
    int v = 0;
    for (QChar c : head) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) break;
        v = v * 10 + (c.unicode() - '0');
    }
    return v;
}

Money ScaleFromContents(const QString& contents)
{
    const Money m = ToCur(NumText(contents));
    return m == Money() ? Money::fromYen(1) : m;
}

void LoadMenuItems(MenuModel& menu, QStringList* problems)
{
    Query q(session().MasterDb, QStringLiteral("SELECT * FROM zSysFunc WHERE Code>20000 AND Code<21000 ORDER BY Code"));
    bool full[MenuModel::GroupSlots] = {};
    while (q.next()) {
        const QString contents = NullToEmpty(q.value(QStringLiteral("contents")));
        if (contents.isEmpty()) continue;
        const QChar d = contents.at(0);
        if (d < QLatin1Char('0') || d > QLatin1Char('9')) continue;
        const int group = d.unicode() - '0';
        const QString caption = contents.mid(1);
        if (group >= MenuModel::GroupSlots) {
            if (problems)
                *problems << QStringLiteral("メニューのグループ %1 はありません（コード %2「%3」）。")
                                 .arg(group).arg(q.value(QStringLiteral("Code")).toLongLong()).arg(caption);
            continue;
        }
        if (!menu.MenuAddItem(group, caption) && !full[group]) {
            full[group] = true;
            if (problems)
                *problems << QStringLiteral("メニューのグループ %1 は31項目までです。それ以降の項目は表示しません。").arg(group);
        }
    }
}

StartupResult runStartup(MenuModel& menu, const StartupHooks& hooks)
{
    Session& s = session();
    StartupResult r;
    // 1
    if (!processInstanceLock().acquire(QDir::currentPath())) return r;
    // 2
    s.SlipDate = QDate::currentDate();
    s.CashDate = s.SlipDate;
    // 3: a failure has shown the store's error box
    if (!OpenStore()) return stopAfter({});
    // 4
    call(hooks.showSplash);
    auto fail = [&](const QString& m) {
        call(hooks.hideSplash);
        return stopAfter(m);
    };
    // 5
    if (QString e = readCompany(s, &r.title); !e.isEmpty()) return fail(e);
    // 6
    if (!OpenSlip()) return fail({});   // the store's error box has been shown
    const bool attached = AttachSlipTables();
    CloseSlip();
    if (!attached) return fail(QStringLiteral("%1年度の伝票ファイルを接続できません。終了します。").arg(s.Nendo));
    // 7
    if (QString e = readOffices(s, &r.showOffice); !e.isEmpty()) return fail(e);
    // 8
    if (QString e = readSwitches(s); !e.isEmpty()) return fail(e);
    // 9: no second try
    const QString typed = Request(QStringLiteral("パスワードを入力してください。"), QString());
    if (typed != s.Password) return fail(QStringLiteral("パスワードが異なります。"));
    // 10
    call(hooks.loadLookupList);
    // 11
    call(hooks.scaleMenu);
    for (int g = 0; g < MenuModel::GroupSlots; ++g) menu.MenuClearGroup(g);
    QStringList problems;
    LoadMenuItems(menu, &problems);
    if (!problems.isEmpty()) Tell(problems.join(QLatin1Char('\n')));
    menu.selectStart();
    // 12
    call(hooks.hideSplash);
    // 13, 14
    readRates(s, &r.firstRun);
    // 15
    r.kind = StartupResult::Run;
    return r;
}
