#pragma once
// The slip company with what deposits and payments need on top: customer 2 usually pays by
// transfer (振込) and closes on the 20th; customer 1 has destination 5 billed through it and
// destination 6 billed on its own; supplier 1 follows the company's closing day (25th here),
// supplier 2 closes on its own 20th and pays by bill (手形).
#include "slips/CashRegister.h"
#include "slips/CashSlipEditor.h"
#include "slips/SlipFixture.h"

class CashTest : public SlipTest {
protected:
    void SetUp() override
    {
        SlipTest::SetUp();
        session().CashDate = QDate(2026, 5, 15);
        session().Sime = 25;
        slipRun("UPDATE Tor SET Shicode=3 WHERE Code=2");
        slipRun("UPDATE Nou SET SeiFlag=1 WHERE TorCode=1 AND Code=5");
        slipRun("INSERT INTO Nou (TorCode, Code, Namae, Ryaku, Tenmei, SeiFlag) VALUES (1, 6, '南支店', '南店', '南口', 2)");
        slipRun("UPDATE Sir SET SimeFlag=0, Sime=31 WHERE Code=1");
        slipRun("INSERT INTO Sir (Code, SbnCode, Kana, Namae, Sime, SimeFlag, Shicode, TanCode) "
                "VALUES (2, 1, 'ｶﾜﾀﾞ', '川田工業', 20, 2, 4, 1)");
    }

    using SlipTest::load;
    static CashSlipEditor::NumberOutcome load(CashSlipEditor& ed, const QString& number)
    {
        ed.loadLists();
        ed.clearHead();
        ed.clearDisplay();
        ed.head.Dno = number;
        return ed.enterNumber();
    }
    // Number and Enter, then the partner (and destination) as a clerk chooses them.
    static void startCash(CashSlipEditor& ed, const QString& number, qint64 partner, std::optional<qint64> nou = {})
    {
        load(ed, number);
        ed.head.Partner = partner;
        ed.partnerChosen();
        if (nou) {
            ed.head.NouCode = nou;
            ed.showPartnerMonths();
        }
    }
    // Kind 1..6 ("現  金" .. "調  整") or 0 for none.
    static void row(CashSlipEditor& ed, int i, int kind, const QString& amount, const QString& text = {})
    {
        ed.rows[i].Kubun = kind - 1;
        ed.rows[i].Naiyou = text;
        ed.rows[i].Gaku = amount;
        ed.SumGaku();
    }
    // F10 on the core: the period first, then the save in the screen's mode.
    static SlipSaveResult save(CashSlipEditor& ed)
    {
        if (!ed.checkCashPeriod()) return {};
        return Register(ed, ed.mode);
    }
    // A deposit slip typed from scratch: one row per amount, all cash.
    SlipSaveResult deposit(qint64 tor, const QString& date, const QList<int>& amounts, std::optional<qint64> nou = {})
    {
        CashSlipEditor ed("Dny");
        startCash(ed, "0", tor, nou);
        const QStringList d = date.split('/');
        ed.head.Year = d[0];
        ed.head.Month = d[1];
        ed.head.Day = d[2];
        for (int i = 0; i < amounts.size(); ++i) row(ed, i, 1, QString::number(amounts[i]));
        return save(ed);
    }

    // A ledger figure in yen; -1 when the row does not exist.
    static qint64 yenOf(const QString& sql, const QVariantList& b)
    {
        const QVariant v = slipOne(sql, b);
        return v.isValid() ? v.toLongLong() / 10000 : -1;
    }
    static qint64 tto(qint64 tor, qint64 nou, int getudo, const char* column)
    {
        return yenOf(QString("SELECT %1 FROM TtoD WHERE TorCode=? AND NouCode=? AND Getudo=? AND EigCode=1").arg(column),
                     {tor, nou, getudo});
    }
    static qint64 tsi(qint64 sir, int getudo, const char* column)
    {
        return yenOf(QString("SELECT %1 FROM TsiD WHERE SirCode=? AND Getudo=? AND EigCode=1").arg(column), {sir, getudo});
    }
    static qint64 zanTto(qint64 tor, qint64 nou)
    {
        return yenOf("SELECT Zan FROM Tto WHERE TorCode=? AND NouCode=? AND EigCode=1", {tor, nou});
    }
};
