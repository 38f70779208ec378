#pragma once
// The master side of the demo company: who trades, what is sold and at which prices. Built in
// memory first (the slips need the partners' rules and prices), written once the slips are in
// and the office counters are known.
#include <QHash>
#include <QList>
#include <QMap>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include "ledgers/Tax.h"
#include "store/Money.h"

class DemoRandom;

// The tax settings the demo company starts with (rate change 2019-09-30, 8 % then 10 %).
TaxRates demoTaxRates();

// What a partner's slips are worked out with.
struct DemoPartnerRule {
    short Sime = 31;
    short Zeituuchi = 1;
    short HsuType = 1;
    short Hsu = 1;
};

struct DemoProduct {
    QString code;       // stored form
    QString name;
    short hbn = 0;
    short zeiFlag = 1;
    Money uTanka;
    Money sTanka;
};

struct DemoCustomer {
    qint32 code = 0;
    short tbn = 0;
    short tan = 0;
    qint32 seikyu = 0;   // billing customer, 0 bills itself
    short office = 1;    // the office that sells to it
    DemoPartnerRule rule;
    int weight = 1;      // how often it buys
    int cashPercent = 0; // share of cash slips
    short shicode = 3;   // usual way of paying, the money kinds 1..6
    short kTuki = 2;     // collection month: 1 the closing month, 2 the next, 3 the one after
    short kHi = 31;      // collection day, 31 the end of the month
    QHash<int, Money> tka;       // product index -> price
    QList<int> tkaProducts;
    QList<int> destinations;     // indexes into DemoMasterData::destinations
};

struct DemoDestination {
    qint32 torCode = 0;
    qint32 code = 0;
    short seiFlag = 1;   // 2: billed on its own, it pays its own invoices
    QHash<int, Money> nka;
    QList<int> nkaProducts;
};

struct DemoSupplier {
    qint32 code = 0;
    short sbn = 0;
    short tan = 0;
    short office = 1;    // the office that buys from it
    DemoPartnerRule rule;
    int weight = 1;
    int cashPercent = 0;
    short shicode = 3;   // how the company pays it, the money kinds 1..6
    short simeFlag = 1;  // 2: its own closing day rules its payments too
    short tesuryo = 2;   // transfer fee borne by 1 the supplier, 2 the company
    short saito = 0;     // days of its bills, 0 none agreed
    QHash<int, Money> ska;
    QList<int> products;         // what it delivers
};

// Rows of one master table, ready to insert.
struct DemoRows {
    QString table;
    QStringList columns;
    QList<QVariantList> rows;
};

struct DemoMasterData {
    int nendo = 0;
    short sTuki = 4;
    QList<DemoCustomer> customers;
    QList<DemoDestination> destinations;
    QList<DemoSupplier> suppliers;
    QList<DemoProduct> products;
    QList<DemoRows> tables;
    int priceRows = 0;           // Tka + Nka + Ska
};

// Next slip numbers per office, as the slips leave them.
struct DemoCounters {
    QMap<short, qint32> DurNo;
    QMap<short, qint32> DsrNo;
};

QString demoCompanyName();
// The offices of the demo company, code -> name; office 1 first.
QMap<short, QString> demoOffices();

DemoMasterData buildDemoMasters(DemoRandom& rnd, int nendo, short sTuki, int customers = 100);
// Company row, tax options, offices with their counters, and every master table.
bool writeDemoMasters(QSqlDatabase db, const DemoMasterData& data, const DemoCounters& counters,
                      QString* error);
