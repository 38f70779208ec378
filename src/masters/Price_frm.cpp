#include "masters/Price_frm.h"

#include "shell/Session.h"

namespace {
const PriceKind* kindOfSession()
{
    const PriceKind* k = priceKind(session().MenuKey);
    // Only the two partner kinds open this form.
    if (!k || k->withNou) k = priceKind(QStringLiteral("Tka"));
    return k;
}
}  // namespace

Price_frm::Price_frm(QWidget* parent) : PriceForm(kindOfSession(), parent) {}
