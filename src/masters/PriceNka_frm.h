#pragma once
// "納入先別単価": prices agreed for one delivery destination of a customer.
#include "masters/QtPriceForm.h"

class PriceNka_frm : public PriceForm {
    Q_OBJECT
public:
    explicit PriceNka_frm(QWidget* parent = nullptr);
};
