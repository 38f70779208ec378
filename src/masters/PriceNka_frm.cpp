#include "masters/PriceNka_frm.h"

PriceNka_frm::PriceNka_frm(QWidget* parent) : PriceForm(priceKind(QStringLiteral("Nka")), parent) {}
