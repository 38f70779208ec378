#include <gtest/gtest.h>
#include <optional>
#include "ledgers/LedgerCommands.h"
#include "shell/InstanceLock.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/TempCompany.h"

namespace {

// What a command wrote, and the lines of input it may take.
struct Console {
    QStringList out, err, input;
    int reads = 0;
    int run(const QStringList& args)
    {
        CommandConsole c;
        c.out = [this](const QString& s) { out << s; };
        c.err = [this](const QString& s) { err << s; };
        c.readLine = [this](QString* line) {
            ++reads;
            if (input.isEmpty()) return false;
            *line = input.takeFirst();
            return true;
        };
        const int rc = runLedgerCommand(args, c);
        // Every run ends with the store closed and the company free for the program.
        EXPECT_FALSE(session().MasterDb.isOpen());
        EXPECT_FALSE(processInstanceLock().held());
        return rc;
    }
};

struct PasswordEnv {
    explicit PasswordEnv(const std::optional<QString>& v)
    {
        if (v) qputenv("VELMORA_PASSWORD", v->toUtf8());
        else qunsetenv("VELMORA_PASSWORD");
    }
    ~PasswordEnv() { qunsetenv("VELMORA_PASSWORD"); }
};

// The company in the working directory, with marked lines as the slip screens leave them:
// customer 100 sells 1200 + 800 in office 1 and 5000 in office 2, supplier 7 delivers 600 in
// office 1, all in May. The store is closed between steps, as the commands open it themselves.
class Company {
public:
    explicit Company(const QString& password = QStringLiteral(" ")) : co_(2026, 4)
    {
        sql({"UPDATE zSysFunc SET contents=? WHERE Code=123",
             "INSERT INTO Eig (Code, Namae, DurNo, DsrNo, DshNo, DnyNo, SeikyuNo) VALUES (2, '大阪', 1, 1, 1, 1, 1)",
             "INSERT INTO Tor (Code, Namae, Zeituuchi, HsuType, Hsu, Sime) VALUES (100, '得意先', 1, 1, 1, 31)",
             "INSERT INTO Sir (Code, Namae, Zeituuchi, HsuType, Hsu, Sime) VALUES (7, '仕入先', 1, 1, 1, 31)",
             "INSERT INTO Hin (Code, HbnCode, Namae) VALUES ('0000000000001', 1, '商品')",
             "INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, TorCodeSei, NouCode, Kubun) VALUES "
             "(1, 1, '2026-05-10', 100, 100, 0, 0), (2, 1, '2026-05-10', 100, 100, 0, 0), (1, 2, '2026-05-10', 100, 100, 0, 0)",
             "INSERT INTO Dud (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinCode, Suu, UGaku, sGaku, ZeiFlag, ZeiGaku, Getudo, "
             "ThiFlag) VALUES (1, 1, 1, 0, '2026-05-10', 100, '0000000000001', 1, 12000000, 0, 1, 0, 5, -1), "
             "(2, 1, 1, 0, '2026-05-10', 100, '0000000000001', 1, 8000000, 0, 1, 0, 5, -1), "
             "(1, 1, 2, 0, '2026-05-10', 100, '0000000000001', 1, 50000000, 0, 1, 0, 5, -1)",
             "INSERT INTO Dsr (Dno, EigCode, Hizuke, SirCode, Kubun) VALUES (1, 1, '2026-05-12', 7, 0)",
             "INSERT INTO Dsd (Dno, Eda, EigCode, Kubun, Hizuke, SirCode, HinCode, Suu, UGaku, sGaku, ZeiFlag, ZeiGaku, Getudo, "
             "ThiFlag) VALUES (1, 1, 1, 0, '2026-05-12', 7, '0000000000001', 3, 6000000, 0, 1, 0, 5, -1)"},
            {{password}});
    }
    void sql(const QStringList& statements, const QList<QVariantList>& binds = {})
    {
        EXPECT_TRUE(co_.open());
        for (int i = 0; i < statements.size(); ++i) {
            QSqlError e;
            EXPECT_EQ(execSql(session().MasterDb, statements[i], binds.value(i), &e), ErrorClass::None) << e.text().toStdString();
        }
        close();
    }
    // A figure of the store in yen; -1 when there is no such row.
    qint64 yen(const QString& query)
    {
        EXPECT_TRUE(co_.open());
        const QVariant v = scalar(session().MasterDb, query);
        close();
        return v.isNull() ? -1 : v.toLongLong() / 10000;
    }
    qint64 customerMay(int eig)
    {
        return yen(QStringLiteral("SELECT Gaku FROM TtoD WHERE TorCode=100 AND NouCode=0 AND Getudo=5 AND EigCode=%1").arg(eig));
    }
    qint64 supplierMay() { return yen(QStringLiteral("SELECT Gaku FROM TsiD WHERE SirCode=7 AND Getudo=5 AND EigCode=1")); }
    qint64 marked() { return yen("SELECT 10000 * ((SELECT COUNT(*) FROM Dud WHERE ThiFlag<>0) + (SELECT COUNT(*) FROM Dsd WHERE ThiFlag<>0))"); }
    QString path() const { return co_.path(); }

private:
    static void close()
    {
        CloseStore();
        session() = Session();
    }
    TempCompany co_;
};

// Office 2's sale reaches no customer ledger in office 1's run, whose end clears its mark with
// the rest, nor in any run after it: the batch of office 1 says so on standard error.
const QStringList kOfficeTwoLeftOut{"台帳に入らなかった明細があります（1 行）。\n"
                                    "得意先台帳：営業所 2 の売上伝票 1 枚 1 行：営業所 1 の台帳処理では入らず、この後の台帳処理でも入りません"};

} // namespace

TEST(LedgerCommands, BatchPostsTheMarkedLinesOnceForTheOffice)
{
    Company co;
    PasswordEnv env(std::nullopt);
    Console c;
    EXPECT_EQ(c.run({"batch"}), 0);
    EXPECT_EQ(c.err, kOfficeTwoLeftOut);
    EXPECT_EQ(c.reads, 0);   // no password set: nothing is read
    EXPECT_EQ(co.customerMay(1), 2000);
    EXPECT_EQ(co.customerMay(2), -1);
    EXPECT_EQ(co.supplierMay(), 600);

    Console again;
    EXPECT_EQ(again.run({"batch"}), 0);
    EXPECT_EQ(co.customerMay(1), 2000);
    EXPECT_EQ(co.marked(), 0);
    // Office 2's own run comes too late for it, as office 1's run said.
    Console officeTwo;
    EXPECT_EQ(officeTwo.run({"batch", "--office", "2"}), 0);
    EXPECT_TRUE(officeTwo.err.isEmpty());
    EXPECT_EQ(co.customerMay(2), -1);

    // The run clears every mark; marked again, office 2's line goes to its own ledger.
    co.sql({"UPDATE Dud SET ThiFlag=-1 WHERE EigCode=2"});
    EXPECT_EQ(Console().run({"batch", "--office", "2"}), 0);
    EXPECT_EQ(co.customerMay(2), 5000);
    EXPECT_EQ(co.customerMay(1), 2000);
}

TEST(LedgerCommands, PasswordFromTheEnvironmentOrTheInput)
{
    struct Row { std::optional<QString> env; QStringList input; int rc, reads; } rows[] = {
        {QString("秘密1"), {}, 0, 0},
        {std::nullopt, {"秘密1"}, 0, 1},
        {std::nullopt, {"秘密2"}, 1, 1},
        {std::nullopt, {}, 1, 1},             // end of input
        {QString("違う"), {"秘密1"}, 1, 0},    // the environment wins
    };
    for (const Row& r : rows) {
        Company co("秘密1");
        PasswordEnv env(r.env);
        Console c;
        c.input = r.input;
        EXPECT_EQ(c.run({"batch"}), r.rc) << r.env.value_or("<unset>").toStdString();
        EXPECT_EQ(c.reads, r.reads);
        EXPECT_EQ(c.err, r.rc ? QStringList{"パスワードが異なります。"} : kOfficeTwoLeftOut);
        EXPECT_EQ(co.marked(), r.rc ? 4 : 0);
    }
}

TEST(LedgerCommands, RebuildOfARangeAndKind)
{
    Company co;
    ASSERT_EQ(Console().run({"batch"}), 0);
    // Months spoilt as an interrupted run would leave them.
    co.sql({"UPDATE TtoD SET Gaku=Gaku+10000 WHERE Getudo IN (4, 5)", "UPDATE TsiD SET Gaku=Gaku+10000 WHERE Getudo=5"});

    Console c;
    EXPECT_EQ(c.run({"rebuild", "--from", "5", "--to", "5", "--kind", "tto"}), 0);
    EXPECT_TRUE(c.err.isEmpty()) << c.err.join('\n').toStdString();
    EXPECT_EQ(co.customerMay(1), 2000);
    EXPECT_EQ(co.yen("SELECT Gaku FROM TtoD WHERE TorCode=100 AND NouCode=0 AND Getudo=4 AND EigCode=1"), 1);
    EXPECT_EQ(co.supplierMay(), 601);

    // December to May, over the turn of the year, every ledger.
    EXPECT_EQ(Console().run({"rebuild", "--from", "12", "--to", "5"}), 0);
    EXPECT_EQ(co.yen("SELECT Gaku FROM TtoD WHERE TorCode=100 AND NouCode=0 AND Getudo=4 AND EigCode=1"), 0);
    EXPECT_EQ(co.supplierMay(), 600);
}

TEST(LedgerCommands, RefusalsChangeNothing)
{
    Company co;
    const QString months = "--from と --to には 1 から 12 の月を指定してください。";
    const QString office = "--office には営業所コード（数字）を指定してください。";
    struct Row { QStringList args; int rc; QString err; } rows[] = {
        {{"rebuild", "--from", "0", "--to", "2"}, 2, months},
        {{"rebuild", "--from", "4", "--to", "13"}, 2, months},
        {{"rebuild", "--from", "4", "--to", "5", "--kind", "THX"}, 2, "--kind には ALL、THI、TTO、TSI のいずれかを指定してください。"},
        {{"batch", "--office", "9"}, 2, "営業所 9 は登録されていません。"},
        {{"batch", "--office", "大阪"}, 2, office},
        {{"rebuild", "--from", "5", "--to", "5", "--office", "0"}, 2, office},
        {{"rebuild", "--from", "4"}, 2, "使い方:"},
        {{"batch", "now"}, 2, "使い方:"},
        {{"batch", "--office", "1", "--office", "2"}, 2, "使い方:"},
    };
    for (const Row& r : rows) {
        Console c;
        EXPECT_EQ(c.run(r.args), r.rc) << r.args.join(' ').toStdString();
        ASSERT_EQ(c.err.size(), 1);
        EXPECT_TRUE(c.err.first().startsWith(r.err)) << c.err.first().toStdString();
        EXPECT_TRUE(c.out.isEmpty());
    }
    // The program itself holds the company.
    InstanceLock program;
    ASSERT_TRUE(program.acquire(co.path()));
    Console c;
    EXPECT_EQ(c.run({"batch"}), 1);
    EXPECT_EQ(c.err, QStringList{"この会社は他の Velmora で使用中です。終了してから実行してください。"});
    program.release();
    EXPECT_EQ(co.marked(), 4);
}
