#pragma once
// "得意先別単価の設定" / "仕入先別単価の設定": prices agreed with one customer (MenuKey "Tka") or
// one supplier ("Ska").
#include "masters/QtPriceForm.h"

class Price_frm : public PriceForm {
    Q_OBJECT
public:
    explicit Price_frm(QWidget* parent = nullptr);
};
