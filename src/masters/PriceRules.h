#pragma once
// The agreed prices of one partner: Tka (customer), Ska (supplier), Nka (customer and
// delivery destination), one row per product.
#include <optional>
#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include "store/Money.h"
#include "store/Sql.h"

struct PriceKind {
    QString table;          // "Tka", "Ska", "Nka"
    QString partnerTable;   // "Tor" / "Sir"
    QString partnerColumn;  // "TorCode" / "SirCode"
    bool withNou = false;
    QString title;
    QString partnerCaption;
};
// "Tka" and "Ska" for Price_frm, "Nka" for PriceNka_frm; nullptr otherwise.
const PriceKind* priceKind(const QString& key);

// Who the prices are for; nou only with Nka.
struct PricePartner {
    qint64 code = 0;
    qint64 nou = 0;
};

struct PriceLine {
    QString hinCode;        // as stored
    QString namae;
    Money tanka;
};
// The partner's prices by product code. A price whose product has gone from Hin stays in
// its table, unseen here.
QList<PriceLine> showPriceList(const QSqlDatabase& db, const PriceKind& kind, const PricePartner& p);
// Writes one price: the row of the product is changed, or added with its key columns.
ErrorClass registerPrice(const QSqlDatabase& db, const PriceKind& kind, const PricePartner& p,
                         const QString& storedHinCode, Money tanka, QSqlError* error = nullptr);
ErrorClass erasePrice(const QSqlDatabase& db, const PriceKind& kind, const PricePartner& p,
                      const QString& storedHinCode, QSqlError* error = nullptr);
// Name of the partner (customer or supplier), of a destination; nothing when there is none.
std::optional<QString> pricePartnerName(const QSqlDatabase& db, const PriceKind& kind, qint64 code);
