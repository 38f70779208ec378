#pragma once
// The session record: one process-wide structure, filled at start-up and read by every form.
// Written only by start-up, the office change, the target year change, the company master
// and the year-end update. It sits with the store because opening writes MasterDb,
// YearFolderMode and Nendo, and the entry framework below the shell reads it.
#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include "store/Money.h"

struct Session {
    QDate SlipDate;
    QDate CashDate;
    QSqlDatabase MasterDb;        // master file with the year's slip file attached as `slip`
    bool YearFolderMode = false;  // the marker file NENDO exists
    int Nendo = 0;
    Money Zeiritu;
    short sTuki = 4;
    short eTuki = 3;
    short Hiz = 2;
    short Sime = 31;
    short HsuType = 0;
    short Hsu = 0;
    short EigCode = 0;
    QString EigNamae;
    QStringList EigNames;         // filled only with more than one office, at most 21
    QList<short> EigCodes;
    QString Password;
    Money ScreenScale = Money::fromYen(1);
    bool PreviewMode = false;
    short SlipStyle = 0;
    short SeiStyle = 0;
    bool ShrinkMode = false;
    bool Code825Flag = false;
    bool KeepPageSetup = false;
    Money TaxRateNew;
    QDate TaxChangeDate;
    QString MenuKey;
    QString SlipCaller;
    bool SlipPrinting = false;    // a delivery slip is being printed
};

// The one session of the process.
Session& session();
