#include "YearEndFixture.h"
#include <QDir>
#include <QFile>
#include "ledgers/YearEnd.h"
#include "shell/Session.h"
#include "shell/Startup.h"
#include "store/Sql.h"
#include "store/Store.h"

ClosingYear::ClosingYear(bool marker) : LedgerCompany(4, 2026)
{
    addTor(100);
    addTor(200);
    addSir(7);
    addHin(kP1);
    addHin(kP2);
    sale(1, QDate(2026, 12, 10), 100, 0, 12, {line(1000, 0, 1, 2)});    // closed
    sale(2, QDate(2027, 3, 31), 100, 0, 13, {line(2000, 0, 1, 3)});     // open: behind the last closing
    sale(3, QDate(2027, 3, 20), 100, 0, 3, {line(500)});                // both sides of the year
    exec(QStringLiteral("INSERT INTO Dud (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinCode, Suu, UGaku, ZeiFlag, "
                        "ZeiGaku, Getudo, ThiFlag) VALUES (3, 2, 1, 0, '2027-03-31', 100, ?, 1, 7000000, 1, 0, 13, -1)"),
         {kP1});
    sale(4, QDate(2027, 3, 5), 200, 0, 3, {line(800)});
    purchase(1, QDate(2026, 12, 5), 7, 12, {line(600)});
    purchase(2, QDate(2027, 3, 31), 7, 13, {line(900)});
    exec(QStringLiteral("INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, NouCode, Kubun, NGaku, Getudo) VALUES "
                        "(1, 1, 1, '2027-03-31', 100, 0, 1, 3000000, 13), (2, 1, 1, '2027-03-10', 100, 0, 1, 4000000, 3)"));
    exec(QStringLiteral("INSERT INTO Dsh (Dno, Eda, EigCode, Hizuke, SirCode, Kubun, sGaku, Getudo) VALUES "
                        "(1, 1, 1, '2027-03-31', 7, 1, 1000000, 13), (2, 1, 1, '2027-02-10', 7, 1, 2000000, 2)"));
    exec(QStringLiteral("INSERT INTO Mit (Dno, EigCode, Hizuke, TorCode) VALUES (5, 1, '2026-06-01', 100)"));
    batch();
    // The figures the new year starts from: customer 100's row 13 (open items and the balance
    // carried), customer 200 with no row 13 at all, supplier 7's row 13, product 1's last month.
    exec(QStringLiteral("UPDATE TtoD SET Zenkaigaku=10000000, Gaku=5000000, Genkin=1000000, KTotal=5000000, "
                        "Zeigaku=250000, NTotal=3000000 WHERE TorCode=100 AND Getudo=13"));
    exec(QStringLiteral("DELETE FROM TtoD WHERE TorCode=200 AND Getudo=13"));
    exec(QStringLiteral("UPDATE TsiD SET Zenkaigaku=20000000, KTotal=4000000, Zeigaku=0, NTotal=1000000 "
                        "WHERE SirCode=7 AND Getudo=13"));
    exec(QStringLiteral("UPDATE ThiD SET SSuu=5, SGaku=500000, USuu=2, UGaku=300000, UTotal=300000, ZSuu=10, "
                        "TSuu=13, KSuu=1 WHERE HinCode=? AND Getudo=3"), {kP1});
    exec(QStringLiteral("INSERT INTO Thi (HinCode, SizCode, EigCode, HinNamae) VALUES (?, 0, 1, '新商品')"), {kP2});
    // The company has been started before: the start-up writes nothing of its own.
    exec(QStringLiteral("INSERT INTO UserOP (Code, contents) VALUES (725, '20190930'), (726, '10')"));
    exec(QStringLiteral("UPDATE Com SET Zeiritu=80000"));
    exec(QStringLiteral("UPDATE Eig SET DurNo=57, DsrNo=12, DshNo=3, DnyNo=4, SeikyuNo=8"));
    exec(QStringLiteral("INSERT INTO Eig (Code, Namae, DurNo, DsrNo, DshNo, DnyNo, SeikyuNo) VALUES (2, '大阪', 9, 9, 9, 9, 9)"));
    if (marker) {
        CloseStore();
        QFile::remove(QStringLiteral("MASTER.db"));
        EXPECT_TRUE(QFile::rename(QStringLiteral("MASTER/MASTER.db"), QStringLiteral("2026/MASTER.db")));
        QDir(QStringLiteral("MASTER")).removeRecursively();
        QFile n(QStringLiteral("NENDO"));
        EXPECT_TRUE(n.open(QIODevice::WriteOnly));
        n.write("2026\r\n");
    }
    EXPECT_TRUE(reopen());
}

bool ClosingYear::reopen()
{
    CloseStore();
    if (!OpenStore()) return false;
    Session& s = session();
    s.Nendo = NendoFromSKai(scalar(s.MasterDb, QStringLiteral("SELECT SKai FROM Com")).toString());
    const bool ok = OpenSlip() && AttachSlipTables();
    CloseSlip();
    return ok;
}
