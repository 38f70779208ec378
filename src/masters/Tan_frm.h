#pragma once
// "担当者": the staff master, the simple master with a level.
#include "masters/ms_frm.h"

class Tan_frm : public ms_frm {
    Q_OBJECT
public:
    explicit Tan_frm(QWidget* parent = nullptr);
};
